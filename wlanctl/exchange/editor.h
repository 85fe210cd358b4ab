// The operator's editor, on a file that nobody else can read.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wlanctl {

// A file in a folder of its own, both for this user alone, in memory rather than on flash. The folder goes with all that
// the editor left in it, unless it is kept. Signals that end the tool must be held meanwhile.
class PrivateFile {
 public:
  PrivateFile();
  PrivateFile(const PrivateFile&) = delete;
  PrivateFile& operator=(const PrivateFile&) = delete;
  ~PrivateFile();

  // False with errno, and the text before is still there.
  bool write(const std::string& text);

  const std::string& path() const { return path_; }

  // What else is in the folder, which only the editor can have put there: its own copy of a text that it could not save.
  std::vector<std::string> others() const;

  void keep() { is_kept_ = true; }
  bool is_kept() const { return is_kept_; }

 private:
  std::string folder_;
  std::string path_;
  bool is_kept_ = false;
};

struct EditorEnd {
  enum class How { kDone, kFailed, kNotThere, kInterrupted };
  How how = How::kDone;
  int detail = 0;  // the exit code, errno, or the signal that ends the tool
};

// $VISUAL, $EDITOR or vi, with the words that may stand behind its name.
std::vector<std::string> editor_words();

// Runs it on the terminal and waits for its end. Signals must be held: ^C and ^Z are the editor's, the others are handed
// on to it and told.
EditorEnd run_editor(const std::vector<std::string>& words, const std::string& path);

}  // namespace wlanctl
