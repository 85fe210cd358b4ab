// The time since the boot in milliseconds: it goes on while the board sleeps, and nobody sets it.
#pragma once

#include <cstdint>
#include <ctime>

namespace wlanctl {

inline constexpr int64_t kMsPerSecond = 1000;

inline int64_t ms_since_boot() {
  timespec now = {};
  (void)clock_gettime(CLOCK_BOOTTIME, &now);
  return now.tv_sec * kMsPerSecond + now.tv_nsec / 1000000;
}

}  // namespace wlanctl
