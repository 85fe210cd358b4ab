#pragma once
#include <linux/timekeeping.h>

struct timespec {
  long long tv_sec;
  long tv_nsec;
};

static inline int clock_gettime(int clock, struct timespec* now) {
  struct timespec64 time;
  (void)clock;
  ktime_get_ts64(&time);
  now->tv_sec = time.tv_sec;
  now->tv_nsec = time.tv_nsec;
  return 0;
}
