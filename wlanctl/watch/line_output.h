// Lines for standard output, by a program that must not hang on it: where nobody reads, it waits only as long as nobody
// wants it to end.
#pragma once

#include <cstdint>
#include <string>

namespace wlanctl {

// SIGINT, SIGTERM and SIGHUP as something to wait for, as long as this lives. A pipe that was closed ends nobody.
class EndingSignals {
 public:
  EndingSignals();
  EndingSignals(const EndingSignals&) = delete;
  EndingSignals& operator=(const EndingSignals&) = delete;
  ~EndingSignals();

  int file() const { return file_; }

 private:
  int file_;
  struct Before;
  Before* before_;
};

enum class Written { kDone, kEnded, kClosed, kFailed };

// Writes a line as a whole, unless one of the signals comes, or the time, before there is room for it.
// `end_ms` is on the clock since boot; 0 for none.
Written write_line(const std::string& line, const EndingSignals& signals, int64_t end_ms);

// How long poll may wait for that moment; -1 for ever.
int wait_until(int64_t end_ms);

}  // namespace wlanctl
