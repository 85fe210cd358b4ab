// What a verb has to say: text for a person, or one JSON document; problems with what to do next.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/base/json.h"
#include "wlanctl/base/text.h"

namespace wlanctl {

// The exit codes of the program.
enum ExitCode {
  kDone = 0,
  kRefused = 1,     // a value was refused, a check found something, an operation failed
  kWrongUsage = 2,  // wrong words on the command line, or a file that cannot be read
  kNoStore = 3,     // no store to attach to, and none can be made
  kBusy = 4,        // another wlanctl did not end in time
  kNoAnswer = 5,    // the driver or the board does not answer
  kNotInForce = 6,  // applied, but the kernel says that it is not in force
  kWarned = 7,      // check or doctor found nothing worse than warnings
};

// Of two exit codes the one to end with: what could not be begun is worse than what failed on the way, and that worse
// than what only did not answer.
int worse_of(int left, int right);

struct Problem {
  std::string message;
  std::string next;               // what the operator may do
  Json details = Json::object();  // such as key, value, accepted, file, line
};

// The details of a problem with a band.
Json about(Band band);
Json about(Band band, const std::string& interface);
Json about(Band band, int ssid);

class Report {
 public:
  // `verb` is empty until the command line is understood.
  void begin(const std::string& verb, bool as_json);

  // Text for standard output; not shown in JSON.
  Text& text() { return text_; }

  Json& data() { return data_; }

  void problem(Problem problem);

  // Something to know that is no problem; on standard error in text mode.
  void note(const std::string& text) { notes_.push_back(text); }
  const std::vector<std::string>& notes() const { return notes_; }
  bool has_problems() const { return !problems_.empty(); }
  const std::vector<Problem>& problems() const { return problems_; }

  // Prints everything and returns the exit code, which is a failure when it could not be printed. Text mode puts problems
  // on standard error, wrapped for a terminal.
  int finish(int exit_code);

  // For a verb that repeats itself: prints what there is so far, JSON on one line, and starts over. What comes after the
  // last one is printed by finish, if anything does.
  // False when it could not be printed.
  bool refresh(int exit_code);

  // Where the text is longer than the screen, the operator's pager shows it.
  void allow_pager() { may_page_ = true; }

  // For a verb that tells line by line: from now on finish prints problems alone.
  void begin_lines() { refreshed_ = true; }

  // The document of one line, as JSON, for the verb to print; starts over.
  std::string take_line(int exit_code);

 private:
  void start_over();
  Json document(int exit_code) const;
  bool print(int exit_code, bool on_one_line) const;

  std::string verb_;
  bool as_json_ = false;
  bool refreshed_ = false;
  bool may_page_ = false;
  Text text_;
  Json data_ = Json::object();
  std::vector<Problem> problems_;
  std::vector<std::string> notes_;
};

}  // namespace wlanctl
