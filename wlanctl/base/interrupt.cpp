#include "wlanctl/base/interrupt.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <iterator>

#include "wlanctl/base/terminal.h"

namespace wlanctl {
namespace {

constexpr int kInterrupts[] = {SIGINT, SIGQUIT, SIGTERM};

bool g_is_answering = false;
bool g_came = false;
int g_listener = -1;  // standard error, which may be caught meanwhile
std::string& answer() {
  static std::string text;
  return text;
}

}  // namespace

InterruptAnswer::InterruptAnswer(const std::string& text) {
  answer() = text;
  g_listener = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  g_is_answering = true;
  g_came = false;
}

InterruptAnswer::~InterruptAnswer() {
  (void)is_interrupted();
  // A hang-up was outlived, and so is what is left to do: telling the result, wherever that goes, and the exit code.
  sigset_t hangup;
  sigemptyset(&hangup);
  sigaddset(&hangup, SIGHUP);
  const timespec at_once = {};
  while (sigtimedwait(&hangup, nullptr, &at_once) > 0) continue;
  g_is_answering = false;
  if (g_listener >= 0) (void)close(g_listener);
  g_listener = -1;
}

void add_interrupts(sigset_t* signals) {
  if (!g_is_answering) return;
  for (const int number : kInterrupts) sigaddset(signals, number);
}

void note_interrupt(int number) {
  if (std::find(std::begin(kInterrupts), std::end(kInterrupts), number) == std::end(kInterrupts)) return;
  const std::string line = message_lines("wlanctl: " + answer());
  if (!g_came && g_listener >= 0) (void)!write(g_listener, line.data(), line.size());
  g_came = true;
}

bool is_interrupted() {
  sigset_t signals;
  sigemptyset(&signals);
  add_interrupts(&signals);
  const timespec at_once = {};
  for (int number = 0; g_is_answering && (number = sigtimedwait(&signals, nullptr, &at_once)) > 0;) {
    note_interrupt(number);
  }
  return g_came;
}

}  // namespace wlanctl
