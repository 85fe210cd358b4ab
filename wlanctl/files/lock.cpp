#include "wlanctl/files/lock.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/process.h"

namespace wlanctl {
namespace {

constexpr int kPollMs = 50;

bool g_held = false;

// Who is named in a lock file.
pid_t holder_in(int file) {
  char text[24] = "";
  const ssize_t length = pread(file, text, sizeof text - 1, 0);
  return length > 0 ? static_cast<pid_t>(std::strtol(text, nullptr, 10)) : 0;
}

}  // namespace

int open_lock_file(const std::string& path) {
  return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
}

void sign_lock_file(int file) {
  const std::string text = std::to_string(getpid()) + "\n";
  if (ftruncate(file, 0) == 0) (void)pwrite(file, text.data(), text.size(), 0);
}

bool end_stopped_guardian(int file) {
  const pid_t holder = holder_in(file);
  if (!is_stopped(holder) || name_of_process(holder) != kGuardianName) return false;
  if (kill(holder, SIGKILL) != 0) return false;
  // With it go its locks, one after the other.
  constexpr int kTries = 50;
  for (int i = 0; is_running(holder) && i < kTries; ++i) poll(nullptr, 0, kPollMs / 2);
  return true;
}

ToolLock::ToolLock(Report& report, unsigned seconds) {
  const int file = open_lock_file(place::kLock);
  if (file < 0) {
    exit_code_ = kRefused;
    report.problem({std::string("cannot open ") + place::kLock + ": " + std::strerror(errno),
                    geteuid() == 0 ? "remove it: it must be a plain file" : "run as root"});
    return;
  }
  const uint64_t tries = uint64_t{seconds} * 1000 / kPollMs;
  for (uint64_t i = 0; flock(file, LOCK_EX | LOCK_NB) != 0; ++i) {
    (void)end_stopped_guardian(file);
    if (i == 0) (void)std::fputs("wlanctl: waiting for another wlanctl to end\n", stderr);
    if (i < tries) {
      poll(nullptr, 0, kPollMs);
      continue;
    }
    exit_code_ = kBusy;
    const std::string holder = std::to_string(holder_in(file));
    report.problem({"another wlanctl did not end within " + std::to_string(seconds) + " seconds",
                    is_stopped(holder_in(file))
                        ? "process " + holder + " is stopped: kill -CONT " + holder + " lets it go on"
                        : "try again, or give it longer with --wait"});
    close(file);
    return;
  }
  sign_lock_file(file);
  file_ = file;
  g_held = true;
}

ToolLock::ToolLock() : file_(open_lock_file(place::kLock)) {
  if (file_ >= 0 && flock(file_, LOCK_EX | LOCK_NB) != 0) {
    close(file_);
    file_ = -1;
  }
  if (file_ >= 0) sign_lock_file(file_);
  g_held = g_held || file_ >= 0;
}

ToolLock::~ToolLock() {
  if (file_ < 0) return;
  close(file_);
  g_held = false;
}

bool ToolLock::is_held_here() {
  return g_held;
}

}  // namespace wlanctl
