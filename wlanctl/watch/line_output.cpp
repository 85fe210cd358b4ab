#include "wlanctl/watch/line_output.h"

#include <limits.h>
#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "wlanctl/base/clock.h"

namespace wlanctl {

struct EndingSignals::Before {
  sigset_t mask;
};

EndingSignals::EndingSignals() : file_(-1), before_(new Before) {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) sigaddset(&signals, number);
  (void)sigprocmask(SIG_BLOCK, &signals, &before_->mask);
  sigdelset(&signals, SIGPIPE);
  file_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  // Where the kernel has no such file, they end the program as they end others.
  if (file_ < 0) (void)sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

EndingSignals::~EndingSignals() {
  // What came is done with.
  signalfd_siginfo taken;
  while (file_ >= 0 && read(file_, &taken, sizeof taken) > 0) continue;
  if (file_ >= 0) (void)close(file_);
  sigset_t pipe;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  const timespec at_once = {};
  (void)sigtimedwait(&pipe, nullptr, &at_once);
  (void)sigprocmask(SIG_SETMASK, &before_->mask, nullptr);
  delete before_;
}

int wait_until(int64_t end_ms) {
  if (end_ms == 0) return -1;
  return static_cast<int>(std::clamp<int64_t>(end_ms - ms_since_boot(), 0, INT_MAX));
}

Written write_line(const std::string& line, const EndingSignals& signals, int64_t end_ms) {
  for (size_t done = 0; done < line.size();) {
    pollfd waits[] = {{STDOUT_FILENO, POLLOUT, 0}, {signals.file(), POLLIN, 0}};
    const int ready = poll(waits, std::size(waits), wait_until(end_ms));
    if (ready < 0 && errno != EINTR) return Written::kFailed;
    if (ready == 0 || (waits[1].revents & POLLIN) != 0) return Written::kEnded;
    if ((waits[0].revents & POLLERR) != 0) return Written::kClosed;
    if (waits[0].revents == 0) continue;
    // There is room for so much in a pipe that has any.
    const size_t piece = std::min<size_t>(line.size() - done, PIPE_BUF);
    const ssize_t written = write(STDOUT_FILENO, line.data() + done, piece);
    if (written > 0) done += static_cast<size_t>(written);
    if (written < 0 && errno == EPIPE) return Written::kClosed;
    if (written < 0 && errno != EINTR && errno != EAGAIN) return Written::kFailed;
  }
  return Written::kDone;
}

}  // namespace wlanctl
