// Lines for standard output, by a program that must not hang on it: where nobody reads, it waits only as long as nobody
// wants it to end.
#pragma once

#include <signal.h>

#include <cstdint>
#include <string>

#include "wlanctl/base/ending_signals.h"

namespace wlanctl {

// A pipe that was closed ends nobody as long as this lives.
class PipeHold {
 public:
  PipeHold();
  PipeHold(const PipeHold&) = delete;
  PipeHold& operator=(const PipeHold&) = delete;
  ~PipeHold();

 private:
  sigset_t before_;
};

enum class Written { kDone, kEnded, kClosed, kFailed };

// Writes a line as a whole, unless one of the signals comes, or the time, before there is room for it.
// `end_ms` is on the clock since boot; 0 for none.
Written write_line(const std::string& line, const EndingSignals& signals, int64_t end_ms);

}  // namespace wlanctl
