#include "wlanctl/watch/line_output.h"

#include <limits.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "wlanctl/base/clock.h"

namespace wlanctl {

PipeHold::PipeHold() {
  sigset_t pipe;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  (void)sigprocmask(SIG_BLOCK, &pipe, &before_);
}

PipeHold::~PipeHold() {
  // What came is done with.
  sigset_t pipe;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  const timespec at_once = {};
  (void)sigtimedwait(&pipe, nullptr, &at_once);
  (void)sigprocmask(SIG_SETMASK, &before_, nullptr);
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
