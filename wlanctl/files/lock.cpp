#include "wlanctl/files/lock.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/files/places.h"

namespace wlanctl {
namespace {

constexpr int kPollMs = 50;

bool g_held = false;

}  // namespace

int open_lock_file(const std::string& path) {
  return open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
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
    if (i == 0) (void)std::fputs("wlanctl: waiting for another wlanctl to end\n", stderr);
    if (i < tries) {
      poll(nullptr, 0, kPollMs);
      continue;
    }
    exit_code_ = kBusy;
    report.problem({"another wlanctl did not end within " + std::to_string(seconds) + " seconds",
                    "try again, or give it longer with --wait"});
    close(file);
    return;
  }
  file_ = file;
  g_held = true;
}

ToolLock::ToolLock() : file_(open_lock_file(place::kLock)) {
  if (file_ >= 0 && flock(file_, LOCK_EX | LOCK_NB) != 0) {
    close(file_);
    file_ = -1;
  }
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
