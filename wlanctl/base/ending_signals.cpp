#include "wlanctl/base/ending_signals.h"

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>

#include "wlanctl/base/clock.h"

namespace wlanctl {
namespace {

constexpr int kEndings[] = {SIGINT, SIGTERM, SIGHUP};

// As nohup has it. A shell has SIGINT ignored by what it runs in the background, but whoever sends it there means it.
bool is_hangup_ignored() {
  struct sigaction action;
  return sigaction(SIGHUP, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

EndingSignals::EndingSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : kEndings) sigaddset(&signals, number);
  if (is_hangup_ignored()) sigdelset(&signals, SIGHUP);
  (void)sigprocmask(SIG_BLOCK, &signals, &before_);
  file_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
  if (file_ < 0) (void)sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

EndingSignals::~EndingSignals() {
  signalfd_siginfo taken;
  bool is_asked = false;
  while (file_ >= 0 && read(file_, &taken, sizeof taken) > 0) is_asked = true;
  if (file_ >= 0) (void)close(file_);
  for (const int number : kEndings) {
    if (is_asked) (void)signal(number, SIG_IGN);
  }
  (void)sigprocmask(SIG_SETMASK, &before_, nullptr);
}

bool EndingSignals::come_within(unsigned seconds) const {
  const int64_t end_ms = ms_since_boot() + seconds * kMsPerSecond;
  pollfd waits = {file_, POLLIN, 0};
  for (;;) {
    const int ready = poll(&waits, 1, wait_until(end_ms));
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

}  // namespace wlanctl
