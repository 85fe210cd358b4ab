#include "wlanctl/base/asked_line.h"

#include <poll.h>
#include <signal.h>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "wlanctl/base/signal_hold.h"

namespace wlanctl {

std::optional<std::string> first_line(std::FILE* file) {
  char* text = nullptr;
  size_t room = 0;
  const ssize_t length = getline(&text, &room, file);
  std::string line(text == nullptr ? "" : text, length > 0 ? static_cast<size_t>(length) : 0);
  std::free(text);
  if (length < 0) return std::nullopt;
  if (!line.empty() && line.back() == '\n') line.pop_back();
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

namespace {

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
