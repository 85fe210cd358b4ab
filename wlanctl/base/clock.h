// The time since the boot in milliseconds: it goes on while the board sleeps, and nobody sets it.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <ctime>

namespace wlanctl {

inline constexpr int64_t kMsPerSecond = 1000;

inline int64_t ms_since_boot() {
  timespec now = {};
  (void)clock_gettime(CLOCK_BOOTTIME, &now);
  return now.tv_sec * kMsPerSecond + now.tv_nsec / 1000000;
}

// How long poll may wait for that moment; 0 stands for none: for ever.
inline int wait_until(int64_t end_ms) {
  if (end_ms == 0) return -1;
  return static_cast<int>(std::clamp<int64_t>(end_ms - ms_since_boot(), 0, INT_MAX));
}

}  // namespace wlanctl
