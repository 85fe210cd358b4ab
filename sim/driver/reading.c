#include "sim/driver/reading.h"

#include <errno.h>
#include <limits.h>
#include <stdlib.h>
#include <time.h>

// How far a reading strays, for each of two movements of different length.
enum { kStraying = 2, kSlowMs = 31000, kFastMs = 7000, kPhaseMs = 4700 };

int64_t monotonic_ms(void) {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return (int64_t)now.tv_sec * 1000 + now.tv_nsec / 1000000;
}

// Goes from -kStraying to kStraying and back in a period.
static long to_and_fro(int64_t time_ms, int64_t period_ms) {
  const int64_t phase = time_ms % period_ms;
  const int64_t way = phase < period_ms / 2 ? phase : period_ms - phase;
  return (long)(way * (2 * kStraying + 1) * 2 / (period_ms + 2)) - kStraying;
}

long reading_at(const char* text, int64_t time_ms, unsigned which) {
  if (*text != '~') return atol(text);
  const int64_t shifted = time_ms + (int64_t)which * kPhaseMs;
  return atol(text + 1) + to_and_fro(shifted, kSlowMs) + to_and_fro(shifted, kFastMs) / 2;
}

bool is_reading(const char* text) {
  if (*text == '~') ++text;
  char* end = NULL;
  errno = 0;
  const long value = strtol(text, &end, 10);
  if (errno != 0 || end == text || *end != '\0') return false;
  return (*text == '-' || (*text >= '0' && *text <= '9')) && value >= INT_MIN && value <= UINT_MAX;
}
