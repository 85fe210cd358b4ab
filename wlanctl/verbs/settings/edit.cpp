// edit: the settings in the operator's editor; what was changed there is stored, all of it or nothing.
#include <signal.h>
#include <syslog.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/exchange/edit_text.h"
#include "wlanctl/exchange/editor.h"
#include "wlanctl/exchange/reader.h"
#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/exchange/storing.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/plain_file.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// A signal that waits to end the tool; 0 for none.
int waiting_end() {
  sigset_t waiting;
  sigemptyset(&waiting);
  (void)sigpending(&waiting);
  for (const int number : {SIGHUP, SIGTERM}) {
    if (sigismember(&waiting, number) == 1) return number;
  }
  return 0;
}

class Edit {
 public:
  Edit(const Words& words, Report& report) : words_(words), report_(report), bands_(bands_of(words.band)) {}

  // `ending` receives a signal that is to end the tool.
  int run(int* ending) {
    std::optional<std::string> given;
    if (!words_.from.empty() && !(given = read_settings_file(words_.from, report_))) return kWrongUsage;
    for (const Band band : bands_) {
      if (!open_band(band, report_)) return kNoStore;
      const std::vector<FileSetting> settings = settings_of_store(band);
      shown_.insert(shown_.end(), settings.begin(), settings.end());
    }
    std::string unchanged = without_problems(edit_text_of(bands_, words_.secrets));
    std::string text = given ? without_problems(*given) : unchanged;
    first_ = text;
    for (;;) {
      if (!file_.write(text)) return tell_unwritten(errno);
      const EditorEnd end = run_editor(editor_words(), file_.path());
      if (end.how == EditorEnd::How::kInterrupted) *ending = end.detail;
      if (end.how != EditorEnd::How::kDone) return tell_end(end);
      Report said;
      const std::optional<std::string> read = edited_text(said);
      if (!read) return tell_unread(said);
      const std::string& edited = *read;
      const bool is_same = without_problems(edited) == unchanged;
      if (edited.find_first_not_of(" \t\r\n") == std::string::npos || (is_same && problems_.empty())) return nothing();
      if (is_same && said.problems().empty()) return refuse_text();
      const int code = said.has_problems() ? static_cast<int>(kRefused) : take(edited, said);
      if (code != kRefused || !said.has_problems()) return code;
      problems_ = said.problems();
      if (isatty(STDIN_FILENO) == 0) return refuse_text();
      text = with_problems(edited, problems_, file_.path());
      unchanged = without_problems(text);
      has_answer_ = true;
    }
  }

  // Where what the operator wrote is, and how to go on with it; "" where nothing of it is left.
  std::string kept_words() const {
    if (!file_.is_kept()) return "";
    const std::string places = joined(kept_, " and ");
    if (!reason_against_file(kept_.front()).empty())
      return "nothing is stored; what the editor left is kept in " + places;
    const std::string call = "wlanctl edit " + (words_.band.empty() ? "" : words_.band + " ");
    return "nothing is stored; what you wrote is kept in " + places + "; " + call + "--from " + kept_.front() +
           " goes on with it";
  }

 private:
  int fail(const std::string& message, const std::string& next) {
    report_.problem({message, next});
    return kRefused;
  }

  int nothing() {
    report_.text() << "nothing is changed, nothing is stored\n";
    tell_data({}, false);
    return kDone;
  }

  int tell_unwritten(int error) {
    if (has_answer_) keep_text();
    return fail("cannot write " + file_.path() + ": " + std::strerror(error), "is there room in /var/run?");
  }

  int tell_end(const EditorEnd& end) {
    const std::string name = editor_words().front();
    if (end.how == EditorEnd::How::kNotThere) {
      if (has_answer_) keep_text();
      return fail("there is no editor: " + name + ": " + std::strerror(end.detail), "name one in VISUAL or EDITOR");
    }
    keep_what_was_written();
    if (end.how == EditorEnd::How::kInterrupted) return kRefused;
    return fail(name + " ended with " + std::to_string(end.detail) + ", nothing is stored", "edit once more");
  }

  // None where it is not there and, with a problem, where it cannot be read.
  std::optional<std::string> edited_text(Report& said) {
    if (access(file_.path().c_str(), F_OK) != 0) return std::nullopt;
    return read_settings_file(file_.path(), said);
  }

  // It may have been renamed, or something else have been put into its place.
  int tell_unread(const Report& said) {
    keep_what_was_written();
    const std::string reason =
        said.has_problems() ? said.problems().front().message : "the text is not there any more: " + file_.path();
    return fail(reason + ", nothing is stored", "have the editor save it under the name that it is given");
  }

  // An editor that loses its terminal saves the text beside the file, or in it.
  void keep_what_was_written() {
    Report unheard;
    const std::string edited = without_problems(edited_text(unheard).value_or(""));
    kept_ = file_.others();
    if (!edited.empty() && edited != first_) kept_.insert(kept_.begin(), file_.path());
    // Behind those that --from may go on with.
    if (unheard.has_problems()) kept_.push_back(file_.path());
    if (kept_.empty()) return;
    file_.keep();
    report_.note(kept_words());
    tell_data({}, true);
  }

  void keep_text() {
    kept_ = {file_.path()};
    file_.keep();
    report_.note(kept_words());
    tell_data({}, true);
  }

  // What the operator wrote is not lost.
  int refuse_text() {
    for (const Problem& problem : problems_) report_.problem(problem);
    keep_text();
    return kRefused;
  }

  // Judges the text and stores what is changed in it.
  int take(const std::string& edited, Report& said) {
    SettingsText text = read_lines(edited, bands_.size() == 1 ? std::optional(bands_.front()) : std::nullopt);
    const std::vector<FileSetting> changed = changed_settings(&text, shown_);
    report_problems(file_.path(), text, said, text.problems.size());
    if (changed.empty() && !said.has_problems()) return nothing();
    const ToolLock lock(report_, words_.wait_seconds);
    if (!lock) {
      keep_text();
      return lock.exit_code();
    }
    std::vector<StorePlan> plans;
    std::vector<std::vector<ValueChange>> changes;
    for (const Band band : bands_) {
      if (!reopen_if_replaced(band, report_)) {
        keep_text();
        return kNoStore;
      }
      plans.push_back(try_out(band, wishes_of(changed, band, said), Order::kAsNeeded, words_.force, said));
      changes.push_back(changes_of(plans.back()));
    }
    if (said.has_problems()) return kRefused;
    for (const Band band : bands_) note_waiting(band, report_);
    for (const std::string& note : said.notes()) report_.note(note);
    if (!store_plans("edit", plans, report_)) {
      problems_.clear();
      return refuse_text();
    }
    for (size_t i = 0; i < plans.size(); ++i) report_.text() << text_of(plans[i].band, changes[i]);
    tell_data(changes, false);
    return report_.has_problems() ? kNoAnswer : kDone;
  }

  // Of what somebody else has set since the text was made, only what the operator insists on.
  std::vector<Wish> wishes_of(const std::vector<FileSetting>& changed, Band band, Report& said) {
    std::vector<Wish> wishes;
    for (const FileSetting& setting : changed) {
      if (setting.band != band) continue;
      const Wish wish = {setting.target, setting.value, file_.path(), setting.line};
      const Key& key = *setting.target.key;
      const std::string now = exact_value(band, setting.target).value_or("");
      const std::string before = value_before(setting);
      if (now == before || now == setting.value || words_.force) {
        wishes.push_back(wish);
      } else {
        refuse(said, band, wish,
               "meanwhile it has become \"" + shown_value(key, now) + "\", from \"" + shown_value(key, before) + "\"",
               "edit once more, or insist with --force");
      }
    }
    return wishes;
  }

  // What no line was made for stood nowhere else: the one that the store had counts.
  std::string value_before(const FileSetting& setting) {
    const auto known = std::find_if(shown_.begin(), shown_.end(), [&](const FileSetting& one) {
      return one.band == setting.band && one.target == setting.target;
    });
    return known != shown_.end() ? known->value : exact_value(setting.band, setting.target).value_or("");
  }

  void tell_data(const std::vector<std::vector<ValueChange>>& changes, bool is_kept) {
    Json shown = Json::array();
    for (size_t i = 0; i < bands_.size(); ++i) {
      shown.push_back(
          {{"band", label_of(bands_[i])}, {"changes", i < changes.size() ? json_of(changes[i]) : Json::array()}});
    }
    report_.data() = {{"bands", std::move(shown)}, {"kept", is_kept ? Json(kept_.front()) : Json()}};
  }

  const Words& words_;
  Report& report_;
  std::vector<Band> bands_;
  std::vector<FileSetting> shown_;
  std::vector<Problem> problems_;  // of the last round
  std::string first_;              // what the editor began with
  bool has_answer_ = false;        // whether the file has what the operator wrote, in a round before
  std::vector<std::string> kept_;
  PrivateFile file_;
};

// The terminal may be gone, and nothing of the report is printed.
void tell_kept(const std::string& kept) {
  if (kept.empty()) return;
  std::fputs(message_lines("wlanctl: " + kept).c_str(), stderr);
  openlog("wlanctl", LOG_PID, LOG_DAEMON);
  syslog(LOG_WARNING, "edit was ended: %s", kept.c_str());
}

int run(const Words& words, Report& report) {
  // What ends the tool does so when it is decided what becomes of the text.
  const SignalHold hold;
  int ending = 0;
  Edit edit(words, report);
  const int code = edit.run(&ending);
  if (ending == 0) ending = waiting_end();
  if (ending == 0) return code;
  tell_kept(edit.kept_words());
  (void)raise(ending);
  return code;
}

constexpr Word kWords[] = {
    word::kBand,
    {"--from",
     &Words::from,
     "A text that an edit has kept, instead of the settings as they are",
     {.value_name = "FILE", .offers = "file"}},
    {"--secrets", &Words::secrets, "Show passphrases and keys in the editor"},
    {"--force", &Words::force, "Store what is dangerous, cannot be served, or has changed meanwhile"},
    word::kCommandTimeout,
    word::kWait,
};

}  // namespace

const Verb kEdit = {"edit", "Change settings in an editor",
                    "The editor is $VISUAL, $EDITOR or vi. Each setting is a line KEY[:SSID]=VALUE\n"
                    "below what it means and takes. What was changed is judged when the editor ends:\n"
                    "all of it is stored, or nothing. At a terminal the editor opens again with what\n"
                    "is wrong above the lines; leaving it without a change ends that. What you wrote\n"
                    "is kept, and named, where it could not be stored or the terminal went away.\n\n"
                    "Examples:\n"
                    "  wlanctl edit 2.4g\n"
                    "  EDITOR='nano -w' wlanctl edit",
                    kWords, run};

}  // namespace wlanctl
