#include "wlanctl/base/asked_line.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "wlanctl/base/signal_hold.h"

namespace wlanctl {

std::string without_end(std::string line) {
  for (const char end : {'\n', '\r'}) {
    if (line.ends_with(end)) line.pop_back();
  }
  return line;
}

namespace {

// A device without an end does not fill the memory: no value is as long as that.
std::optional<std::string> first_line(std::FILE* file) {
  constexpr size_t kMost = 65536;
  std::string line;
  int c = 0;
  while (line.size() < kMost && (c = std::getc(file)) != EOF) {
    line += static_cast<char>(c);
    if (c == '\n') break;
  }
  if (line.empty()) return std::nullopt;
  return without_end(std::move(line));
}

// Those on hold that end the tool once they are let through: its caller may have had them ignored.
sigset_t signals_that_end() {
  sigset_t signals = SignalHold::held();
  for (int number = 1; number < NSIG; ++number) {
    struct sigaction action;
    if (sigismember(&signals, number) != 1 || sigaction(number, nullptr, &action) != 0) continue;
    if (action.sa_handler == SIG_IGN) sigdelset(&signals, number);
  }
  return signals;
}

// False when a signal that ends the tool comes first.
bool waits_for_line() {
  const sigset_t ending = signals_that_end();
  const int signals = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
  pollfd awaited[] = {{STDIN_FILENO, POLLIN, 0}, {signals, POLLIN, 0}};
  while (poll(awaited, 2, -1) < 0 && errno == EINTR) continue;
  if (signals >= 0) close(signals);
  return awaited[1].revents == 0;
}

}  // namespace

std::optional<std::string> asked_line(const std::string& what, bool unseen_input) {
  termios settings = {};
  if (isatty(STDIN_FILENO) == 0 || tcgetattr(STDIN_FILENO, &settings) != 0) return first_line(stdin);
  termios unseen = settings;
  if (unseen_input) unseen.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  std::optional<std::string> line;
  {
    // The terminal gets its echo back before a signal ends the tool: that takes effect at the end of the hold.
    const SignalHold hold;
    (void)tcsetattr(STDIN_FILENO, TCSAFLUSH, &unseen);
    (void)std::fprintf(stderr, "%s: ", what.c_str());
    if (waits_for_line()) line = first_line(stdin);
    (void)tcsetattr(STDIN_FILENO, TCSAFLUSH, &settings);
    if (unseen_input) (void)std::fputc('\n', stderr);
  }
  return line;
}

}  // namespace wlanctl
