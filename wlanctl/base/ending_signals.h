// For what goes on until somebody ends it: its end is a decision between two steps, and its exit code is its own.
#pragma once

#include <signal.h>

namespace wlanctl {

// SIGINT, SIGTERM and, where nobody has had it ignored, SIGHUP as something to wait for, as long as this lives. Who asks
// again while the program ends does not make it end worse.
class EndingSignals {
 public:
  EndingSignals();
  EndingSignals(const EndingSignals&) = delete;
  EndingSignals& operator=(const EndingSignals&) = delete;
  ~EndingSignals();

  // Readable once one came; -1 where the kernel has no such file: they end the program then as they end others.
  int file() const { return file_; }

  // Whether one came within the time.
  bool come_within(unsigned seconds) const;

 private:
  int file_;
  sigset_t before_;
};

}  // namespace wlanctl
