#include "wlanctl/confirm/apply_terminal.h"

#include <fcntl.h>
#include <unistd.h>

#include <climits>

#include "wlanctl/base/terminal.h"
#include "wlanctl/files/bytes.h"

namespace wlanctl {
namespace {

// Whoever logs in at it, or bars it to messages, changes the last of these.
bool is_same(const struct stat& one, const struct stat& other) {
  return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_rdev == other.st_rdev &&
         one.st_uid == other.st_uid && one.st_ctim.tv_sec == other.st_ctim.tv_sec &&
         one.st_ctim.tv_nsec == other.st_ctim.tv_nsec;
}

}  // namespace

ApplyTerminal::ApplyTerminal() {
  for (const int stream : {STDERR_FILENO, STDOUT_FILENO, STDIN_FILENO}) {
    char name[PATH_MAX] = "";
    if (isatty(stream) == 0 || ttyname_r(stream, name, sizeof name) != 0 || fstat(stream, &status_) != 0) continue;
    path_ = name;
    return;
  }
}

void ApplyTerminal::tell(const std::string& line) const {
  if (path_.empty() || line.empty()) return;
  const int file = open(path_.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW | O_CLOEXEC);
  if (file < 0) return;
  struct stat now = {};
  if (fstat(file, &now) == 0 && S_ISCHR(now.st_mode) && is_same(now, status_) && isatty(file) != 0) {
    // Whatever its program has made of it, which may be in the middle of a line.
    std::string text = "\r\n";
    for (const char c : message_lines(line)) text += c == '\n' ? std::string("\r\n") : std::string(1, c);
    (void)write_bytes(file, text);
  }
  (void)close(file);
}

}  // namespace wlanctl
