// What the operator's ^C means to a work that is not to be cut in the middle: it is noted, and answered with a line.
#pragma once

#include <signal.h>

#include <string>

namespace wlanctl {

// While this lives, SIGINT, SIGQUIT and SIGTERM are noted; the first one prints `answer` on standard error. They must be
// held (signal_hold.h), and so must SIGHUP: one that came meanwhile is forgotten at the end of this, and the result told.
// Neither noted nor answered where there is none.
class InterruptAnswer {
 public:
  explicit InterruptAnswer(const std::string& answer);
  InterruptAnswer(const InterruptAnswer&) = delete;
  InterruptAnswer& operator=(const InterruptAnswer&) = delete;
  ~InterruptAnswer();
};

// Whether one has come.
bool is_interrupted();

// For who waits for other signals as well: those to wait for are added, and what came is told.
void add_interrupts(sigset_t* signals);
void note_interrupt(int number);

}  // namespace wlanctl
