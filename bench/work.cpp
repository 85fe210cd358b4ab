#include "work.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

#include "gateway.h"
#include "limit.h"
#include "processes.h"
#include "vexa_lib_dbg.h"
#include "wifimgr_lib.h"

namespace bench {
namespace {

char g_value[WIFIMGR_VALUE_SIZE];

// A work that fails would be measured as a fast one.
void expect(bool holds, const char* what) {
  if (holds) return;
  (void)std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

void get_first() {
  expect(wifimgr_lib_get_beaconPeriod(0, -1, g_value, sizeof g_value) == 0, "the first key's getter");
}

void get_middle() {
  expect(wifimgr_lib_get_channel(0, -1, g_value, sizeof g_value) == 0, "the middle key's getter");
}

void get_last() {
  expect(wifimgr_lib_get_rtsThreshold(0, -1, g_value, sizeof g_value) == 0, "the last key's getter");
}

void get_per_ssid() {
  expect(wifimgr_lib_get_hideSSID(0, 1, g_value, sizeof g_value) == 0, "the getter of an SSID");
}

void set_middle() {
  expect(wifimgr_lib_set_channel(0, -1, "6") == 0, "the setter");
}

void load() {
  expect(creat_shm_from_datafile(0) == 0, "the load");
}

void save() {
  expect(wifimgr_lib_save_dataFile(0) == 0, "the save");
}

void commit() {
  commands.clear();
  expect(wifimgr_lib_commit(0, 1) == 0, "the commit");
}

void run_commands_of_commit() {
  static const std::vector<std::string> lines = [] {
    commit();
    return commands;
  }();
  for (const std::string& line : lines) run(line);
}

void lock_twice() {
  limit::lock_cycle();
  limit::lock_cycle();
}

void get_and_set() {
  get_middle();
  set_middle();
}

// Two trace points and a comparison, whatever the switch says.
void trace_twice() {
  benchmark::DoNotOptimize(merge_para(nullptr, nullptr, 0));
}

void ask_switch_twice() {
  benchmark::DoNotOptimize(get_itf_dbg_switch(8, 6));
  benchmark::DoNotOptimize(get_itf_dbg_switch(8, 6));
}

void measure(const char* name, void (*work)()) {
  benchmark::RegisterBenchmark(name, [work](benchmark::State& state) {
    for (auto _ : state) work();
  })->UseRealTime();
}

void measure_processes(const char* name, void (*work)()) {
  constexpr int kTimes = 300;
  benchmark::RegisterBenchmark(name,
                               [work](benchmark::State& state) {
                                 for (auto _ : state) state.SetIterationTime(seconds_of(size.processes, kTimes, work));
                               })
      ->UseManualTime()
      ->Iterations(4);
}

}  // namespace

void register_works() {
  measure("lock cycle", limit::lock_cycle);
  measure("two lock cycles", lock_twice);
  measure("get first", get_first);
  measure("get middle", get_middle);
  measure("get last", get_last);
  measure("get of an SSID", get_per_ssid);
  measure("set middle", set_middle);
  measure("load limit", limit::load);
  measure("load", load);
  measure("save limit", limit::save);
  measure("save", save);
  measure("commit", commit);
  measure("commands of a commit", run_commands_of_commit);
  measure("two trace points", trace_twice);
  measure("two calls of the switch", ask_switch_twice);
  measure_processes("processes limit", lock_twice);
  measure_processes("processes", get_and_set);
}

}  // namespace bench
