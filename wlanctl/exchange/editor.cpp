#include "wlanctl/exchange/editor.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "wlanctl/base/signal_hold.h"
#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/places.h"

namespace wlanctl {
namespace {

std::vector<std::string> files_in(const std::string& path) {
  std::vector<std::string> files;
  DIR* const folder = opendir(path.c_str());
  if (folder == nullptr) return files;
  while (const dirent* const entry = readdir(folder)) {
    const std::string name = entry->d_name;
    if (name != "." && name != "..") files.push_back(path + "/" + name);
  }
  (void)closedir(folder);
  std::sort(files.begin(), files.end());
  return files;
}

void remove_folder(const std::string& path) {
  for (const std::string& file : files_in(path)) (void)unlink(file.c_str());
  (void)rmdir(path.c_str());
}

sigset_t awaited_signals() {
  sigset_t signals = SignalHold::held();
  sigaddset(&signals, SIGCHLD);
  return signals;
}

[[noreturn]] void become_editor(const std::vector<std::string>& words, const std::string& path, int failed) {
  const sigset_t signals = awaited_signals();
  // What it prints is no document of the tool.
  if (isatty(STDOUT_FILENO) == 0) (void)dup2(STDERR_FILENO, STDOUT_FILENO);
  std::vector<std::string> texts = words;
  texts.push_back(path);
  std::vector<char*> arguments;
  for (std::string& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);
  (void)sigprocmask(SIG_UNBLOCK, &signals, nullptr);
  (void)execvp(arguments[0], arguments.data());
  const int error = errno;
  (void)!::write(failed, &error, sizeof error);
  _exit(127);
}

// Waits for a signal; 0 when none comes in time, where there is a limit.
int next_signal(const sigset_t& signals, bool is_limited) {
  constexpr timespec kLongest = {.tv_sec = 2, .tv_nsec = 0};
  for (;;) {
    const int number = sigtimedwait(&signals, nullptr, is_limited ? &kLongest : nullptr);
    if (number > 0) return number;
    if (errno == EAGAIN) return 0;
  }
}

// Keys that were the editor's, and came just before its end.
void drop_keys() {
  constexpr timespec kAtOnce = {};
  sigset_t keys;
  sigemptyset(&keys);
  for (const int number : {SIGINT, SIGQUIT, SIGTSTP}) sigaddset(&keys, number);
  while (sigtimedwait(&keys, nullptr, &kAtOnce) > 0) continue;
}

// How the editor ended; `ending` receives a signal that is to end the tool.
int wait_for(pid_t editor, int* ending) {
  const sigset_t signals = awaited_signals();
  for (;;) {
    int status = 0;
    const pid_t ended = waitpid(editor, &status, WNOHANG | WUNTRACED);
    if (ended < 0) return 0;
    if (ended == editor && !WIFSTOPPED(status)) return status;
    if (ended == editor) {
      // The shell behind the terminal waits for this process to stop.
      (void)raise(SIGSTOP);
      (void)kill(editor, SIGCONT);
      continue;
    }
    const int number = next_signal(signals, *ending != 0);
    if (number == 0) {
      (void)kill(editor, SIGKILL);
    } else if (number == SIGHUP || number == SIGTERM) {
      *ending = number;
      (void)kill(editor, number);
      (void)kill(editor, SIGCONT);
    }
  }
}

}  // namespace

PrivateFile::PrivateFile() : folder_(std::string(place::kEdit) + "XXXXXX") {
  if (mkdtemp(folder_.data()) == nullptr) folder_.clear();
  path_ = folder_ + "/settings";
}

PrivateFile::~PrivateFile() {
  if (!folder_.empty() && !is_kept_) remove_folder(folder_);
}

bool PrivateFile::write(const std::string& text) {
  if (folder_.empty()) return false;
  const std::string next = path_ + ".next";
  (void)unlink(next.c_str());
  const int file = open(next.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (file < 0) return false;
  if (finish_file(file, text) && rename(next.c_str(), path_.c_str()) == 0) return true;
  const int error = errno;
  (void)unlink(next.c_str());
  errno = error;
  return false;
}

std::vector<std::string> PrivateFile::others() const {
  std::vector<std::string> files = folder_.empty() ? std::vector<std::string>() : files_in(folder_);
  std::erase(files, path_);
  return files;
}

std::vector<std::string> editor_words() {
  for (const char* const name : {"VISUAL", "EDITOR"}) {
    const char* const value = std::getenv(name);
    std::vector<std::string> words = words_of(value == nullptr ? "" : value);
    if (!words.empty()) return words;
  }
  return {"vi"};
}

EditorEnd run_editor(const std::vector<std::string>& words, const std::string& path) {
  using How = EditorEnd::How;
  int failed[2];
  if (pipe2(failed, O_CLOEXEC) != 0) return {How::kNotThere, errno};
  // A caller may have it ignored, and the end would not be told.
  (void)signal(SIGCHLD, SIG_DFL);
  sigset_t child;
  sigemptyset(&child);
  sigaddset(&child, SIGCHLD);
  sigset_t before;
  (void)sigprocmask(SIG_BLOCK, &child, &before);
  const pid_t editor = fork();
  if (editor == 0) become_editor(words, path, failed[1]);
  int error = errno;
  (void)close(failed[1]);
  int ending = 0;
  const int status = editor < 0 ? 0 : wait_for(editor, &ending);
  drop_keys();
  const bool is_not_there = editor < 0 || read(failed[0], &error, sizeof error) == sizeof error;
  (void)close(failed[0]);
  (void)sigprocmask(SIG_SETMASK, &before, nullptr);
  if (ending != 0) return {How::kInterrupted, ending};
  if (is_not_there) return {How::kNotThere, error};
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return {How::kDone, 0};
  return {How::kFailed, WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status)};
}

}  // namespace wlanctl
