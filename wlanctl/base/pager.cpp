#include "wlanctl/base/pager.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "wlanctl/base/colour.h"
#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

// As a shell says it.
constexpr int kCannotBeRun = 126;
constexpr int kNotThere = 127;

constexpr int kKeyboardSignals[] = {SIGINT, SIGQUIT, SIGPIPE};

std::string pager_command() {
  for (const char* const name : {"WLANCTL_PAGER", "PAGER"}) {
    if (const char* const command = std::getenv(name)) return command;
  }
  return "less";
}

// What is no terminal has no size, and all fits it.
bool fits_screen(const std::string& text) {
  winsize screen = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &screen) != 0 || screen.ws_row == 0 || screen.ws_col == 0) return true;
  size_t rows = 0;
  for (const std::string& line : lines_of(text)) {
    rows += std::max<size_t>(1, (width_of(line) + screen.ws_col - 1) / screen.ws_col);
  }
  // The prompt comes below.
  return rows < screen.ws_row;
}

// ^C is for the pager, and a pager that has seen enough is no failure.
class Deaf {
 public:
  Deaf() {
    struct sigaction ignoring = {};
    ignoring.sa_handler = SIG_IGN;
    for (size_t i = 0; i < std::size(kKeyboardSignals); ++i) {
      (void)sigaction(kKeyboardSignals[i], &ignoring, &before_[i]);
    }
  }
  Deaf(const Deaf&) = delete;
  Deaf& operator=(const Deaf&) = delete;
  ~Deaf() { give_back(); }

  void give_back() const {
    for (size_t i = 0; i < std::size(kKeyboardSignals); ++i) {
      (void)sigaction(kKeyboardSignals[i], &before_[i], nullptr);
    }
  }

 private:
  struct sigaction before_[std::size(kKeyboardSignals)] = {};
};

[[noreturn]] void become_pager(const std::string& command, int from, const Deaf& deaf) {
  deaf.give_back();
  (void)dup2(from, STDIN_FILENO);
  // It ends by itself where all is on the screen, lets colours through and leaves the text there.
  (void)setenv("LESS", "FRX", 0);
  (void)execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
  _exit(kNotThere);
}

void write_all(int file, const std::string& text) {
  for (size_t done = 0; done < text.size();) {
    const ssize_t written = write(file, text.data() + done, text.size() - done);
    if (written < 0 && errno != EINTR) return;
    if (written > 0) done += static_cast<size_t>(written);
  }
}

int status_of(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return kNotThere;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 0;
}

}  // namespace

bool show_in_pager(const std::string& text) {
  const std::string command = pager_command();
  if (command.empty() || command == "cat" || fits_screen(text)) return false;
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  const Deaf deaf;
  const pid_t process = fork();
  if (process == 0) become_pager(command, ends[0], deaf);
  (void)close(ends[0]);
  if (process > 0) write_all(ends[1], text);
  (void)close(ends[1]);
  if (process < 0) return false;
  const int status = status_of(process);
  return status != kCannotBeRun && status != kNotThere;
}

}  // namespace wlanctl
