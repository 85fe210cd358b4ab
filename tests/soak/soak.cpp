// Kills processes that use the store, and takes from them what they need, until a number of kills or a time is reached.
// Ends with its figures; the result is 1 when anything was broken.
//
//   soak [--kills NUMBER] [--seconds NUMBER] [--seed NUMBER] [--stride NUMBER]
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "soak/crowd.h"
#include "soak/stepwise.h"
#include "soak/world.h"

namespace {

struct Options {
  int kills = 10000;
  int seconds = 600;
  unsigned seed = 0;  // 0: the clock's
  int stride = 1;
};

timespec g_end;

timespec now() {
  timespec time;
  (void)clock_gettime(CLOCK_MONOTONIC, &time);
  return time;
}

// Much that is broken ends it too.
bool is_over() {
  if (soak::complaints() >= 20) return true;
  const timespec time = now();
  return time.tv_sec > g_end.tv_sec || (time.tv_sec == g_end.tv_sec && time.tv_nsec >= g_end.tv_nsec);
}

Options options_of(int argc, char** argv) {
  Options options;
  for (int i = 1; i + 1 < argc; i += 2) {
    const int number = std::atoi(argv[i + 1]);
    if (std::strcmp(argv[i], "--kills") == 0) options.kills = number;
    if (std::strcmp(argv[i], "--seconds") == 0) options.seconds = number;
    if (std::strcmp(argv[i], "--seed") == 0) options.seed = static_cast<unsigned>(number);
    if (std::strcmp(argv[i], "--stride") == 0 && number > 0) options.stride = number;
  }
  if (options.seed == 0) options.seed = static_cast<unsigned>(std::time(nullptr)) % 1000000 + 1;
  return options;
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = options_of(argc, argv);
  const time_t start = now().tv_sec;
  g_end = now();
  g_end.tv_sec += options.seconds;
  std::printf("soak: seed %u, at most %d seconds\n", options.seed, options.seconds);
  soak::make_world();

  const soak::Steps killed = soak::kill_stepwise(options.stride, is_over);
  std::printf("soak: %d killed before a system call\n", killed.kills);
  const soak::Steps failed = soak::fail_stepwise(options.stride, is_over);
  std::printf("soak: %d system calls failed\n", failed.faults);
  const long interrupted = soak::interrupt(options.seconds * 20, options.seed);
  std::printf("soak: %ld operations between signals\n", interrupted);
  const int at_random = soak::kill_at_random(options.kills - killed.kills, options.seed, is_over);

  const int broken = soak::complaints();
  std::printf(
      "soak: seed %u: %d kills (%d before a system call, %d at random), %d failing calls, %ld operations between "
      "signals, %d broken; %ld seconds\n",
      options.seed, killed.kills + at_random, killed.kills, at_random, failed.faults, interrupted, broken,
      static_cast<long>(now().tv_sec - start));
  return broken == 0 ? 0 : 1;
}
