#include "wlanctl/base/interrupt.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <iterator>

namespace wlanctl {
namespace {

constexpr int kInterrupts[] = {SIGINT, SIGQUIT, SIGTERM};

bool g_is_answering = false;
bool g_came = false;
std::string& answer() {
  static std::string text;
  return text;
}

}  // namespace

InterruptAnswer::InterruptAnswer(const std::string& text) {
  answer() = text;
  g_is_answering = true;
  g_came = false;
}

InterruptAnswer::~InterruptAnswer() {
  (void)is_interrupted();
  g_is_answering = false;
}

void add_interrupts(sigset_t* signals) {
  if (!g_is_answering) return;
  for (const int number : kInterrupts) sigaddset(signals, number);
}

void note_interrupt(int number) {
  if (std::find(std::begin(kInterrupts), std::end(kInterrupts), number) == std::end(kInterrupts)) return;
  if (!g_came) (void)std::fprintf(stderr, "wlanctl: %s\n", answer().c_str());
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
