#include "sim/outside/starter.h"

#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace gateway {
namespace {

bool is_detached() {
  struct sigaction action = {};
  return getsid(0) == getpid() || (sigaction(SIGHUP, nullptr, &action) == 0 && action.sa_handler == SIG_IGN);
}

}  // namespace

UniqueFd starter_to_watch(bool is_interactive) {
  const pid_t starter = getppid();
  if (is_interactive || is_detached() || starter <= 1) return UniqueFd();
  // Of the process: a signal at the parent's death would come at the end of the thread that started this one.
  return UniqueFd(static_cast<int>(syscall(SYS_pidfd_open, starter, 0)));
}

}  // namespace gateway
