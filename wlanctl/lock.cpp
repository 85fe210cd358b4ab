#include "wlanctl/lock.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>

#include "wlanctl/places.h"

namespace wlanctl {
namespace {

constexpr int kPollMs = 50;

}  // namespace

ToolLock::ToolLock(Report& report, unsigned seconds) {
  const int file = open(place::kLock, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
  if (file < 0) {
    report.problem({std::string("cannot open ") + place::kLock + ": " + std::strerror(errno), "run as root"});
    return;
  }
  const unsigned tries = seconds * 1000 / kPollMs;
  for (unsigned i = 0; flock(file, LOCK_EX | LOCK_NB) != 0; ++i) {
    if (i == 0) std::cerr << "wlanctl: waiting for another wlanctl to end" << std::endl;
    if (i < tries) {
      poll(nullptr, 0, kPollMs);
      continue;
    }
    report.problem({"another wlanctl did not end within " + std::to_string(seconds) + " seconds",
                    "try again, or give it longer with --wait"});
    close(file);
    return;
  }
  file_ = file;
}

ToolLock::~ToolLock() {
  if (file_ >= 0) close(file_);
}

}  // namespace wlanctl
