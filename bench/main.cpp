// Measures the library's works and their limits in one run.
//
//   wifimgr_bench_free [--keys=N] [--ssids=N] [--processes=N] [options of Google Benchmark]
//   wifimgr_bench_standin likewise, with the shipped stand-in for the platform's debug library
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "gateway.h"
#include "work.h"

namespace {

// Takes a size from an argument "--name=N"; false when it is another.
bool take(const char* argument, const char* name, int& number) {
  const size_t length = std::strlen(name);
  if (std::strncmp(argument, name, length) != 0) return false;
  number = std::atoi(argument + length);
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<char*> rest;
  for (int i = 0; i < argc; ++i) {
    if (take(argv[i], "--keys=", bench::size.keys) || take(argv[i], "--ssids=", bench::size.ssids) ||
        take(argv[i], "--processes=", bench::size.processes)) {
      continue;
    }
    rest.push_back(argv[i]);
  }
  int count = static_cast<int>(rest.size());
  rest.push_back(nullptr);
  benchmark::Initialize(&count, rest.data());
  if (benchmark::ReportUnrecognizedArguments(count, rest.data())) return 2;
  bench::set_up();
  bench::register_works();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
