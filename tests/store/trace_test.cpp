// The debug trace: which levels, what it costs while it is off, and that it never changes a result.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kDat[] = "BssidNum=2\nChannel=6\nHT_TxStream=1;1\nSSID1=home\n";

struct Operation {
  const char* name;
  std::function<int()> run;
};

std::vector<Operation> operations() {
  static char buffer[160];
  static char comment[] = "#comment\n";
  static char line[] = "Key=a;b\n";
  static wifimgr_attr_record record;
  static unsigned number;
  record = {};
  return {
      {"read", [] { return read_attr(0, -1, "Channel", buffer, 160); }},
      {"read, refused", [] { return read_attr(0, -1, "Channel", buffer, 1); }},
      {"read, missing", [] { return read_attr(0, -1, "none", buffer, 160); }},
      {"read, null", [] { return read_attr(0, -1, nullptr, buffer, 160); }},
      {"update", [] { return update_attr(0, -1, "Channel", "6"); }},
      {"update by SSID", [] { return update_attr(0, 1, "HT_TxStream", "1"); }},
      {"update, index", [] { return update_attr(0, 9, "Channel", "6"); }},
      {"update, band", [] { return update_attr(2, -1, "Channel", "6"); }},
      {"load", [] { return creat_shm_from_datafile(0); }},
      {"initialise", [] { return wifimgr_lib_init(0); }},
      {"initialise, band", [] { return wifimgr_lib_init(2); }},
      {"count", [] { return wifimgr_lib_get_bssidnum(0, -1, buffer, 160); }},
      {"count, index", [] { return wifimgr_lib_get_bssidnum(0, 1, buffer, 160); }},
      {"save", [] { return wifimgr_lib_save_dataFile(0); }},
      {"path, band", [] { return wifimgr_lib_set_wifi_path(2, buffer); }},
      {"version", [] { return wifimgr_lib_get_version(0, buffer, 16); }},
      {"version, band", [] { return wifimgr_lib_get_version(2, buffer, 16); }},
      {"comment", [] { return parse_data_from_line(comment, &record); }},
      {"line", [] { return parse_data_from_line(line, &record); }},
      {"number", [] { return get_attr_num("SSID1", "SSID1", &number); }},
      {"number, other", [] { return get_attr_num_extended("SSID1", "SSID1", &number); }},
  };
}

TEST(Trace, OffCostsOneQuestionForEachTracePoint) {
  sandbox::load(0, kDat);
  for (const Operation& operation : operations()) {
    SCOPED_TRACE(operation.name);
    const size_t points = seams::trace_of([&] { operation.run(); }).size();
    ASSERT_GT(points, 0U);
    seams::trace.clear();
    seams::switch_calls = 0;
    operation.run();
    EXPECT_EQ(points, static_cast<size_t>(seams::switch_calls));
    EXPECT_THAT(seams::trace, IsEmpty());
  }
}

TEST(Trace, OfAReadIsEightPoints) {
  sandbox::load(0, kDat);
  char buffer[160];
  seams::switch_calls = 0;
  read_attr(0, -1, "Channel", buffer, sizeof buffer);
  EXPECT_EQ(8, seams::switch_calls);
}

TEST(Trace, NeverChangesAResult) {
  sandbox::load(0, kDat);
  for (const Operation& operation : operations()) {
    const int off = operation.run();
    for (int level : {1, 7, 8}) {
      int on = -77;
      seams::trace_of([&] { on = operation.run(); }, level);
      EXPECT_EQ(off, on) << operation.name << " at level " << level;
    }
  }
}

TEST(Trace, OfEntryAndExitIsLevelEight) {
  sandbox::load(0, kDat);
  char buffer[160];
  EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_get_version(0, buffer, 16); }, 8),
              ElementsAre("[wifimgr_lib_get_version]:===Enter===\n", "[wifimgr_lib_get_version]:===Success Exit===\n"));
  EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_get_version(0, buffer, 16); }, 7), IsEmpty());
}

TEST(Trace, OfAReasonIsLevelOne) {
  char buffer[160];
  const auto refused = [&] { wifimgr_lib_get_version(2, buffer, 16); };
  EXPECT_THAT(seams::trace_of(refused, 1),
              ElementsAre("[wifimgr_lib_get_version]:===Fail Exit===The wifi_type is wrong.\n"));
  EXPECT_THAT(seams::trace_of(refused, 0), IsEmpty());
}

TEST(Trace, OfAFailureWithoutAReasonIsLevelEight) {
  const auto refused = [] { wifimgr_lib_set_wifi_path(0, nullptr); };
  EXPECT_THAT(seams::trace_of(refused, 8), ElementsAre("[wifimgr_lib_set_wifi_path]:===Enter===\n",
                                                       "[wifimgr_lib_set_wifi_path]:===Fail Exit===\n"));
  EXPECT_THAT(seams::trace_of(refused, 7), IsEmpty());
}

TEST(Trace, EntryComesFirstEvenForNull) {
  char buffer[160];
  unsigned number = 0;
  const struct {
    const char* entry;
    std::function<void()> run;
  } rows[] = {
      {"[read_attr]:===Enter===\n", [&] { read_attr(2, -1, nullptr, buffer, 160); }},
      {"[update_attr]:===Enter===\n", [] { update_attr(2, -1, nullptr, nullptr); }},
      {"[is_attr_exist]:===Enter===\n", [] { is_attr_exist(nullptr, nullptr, nullptr); }},
      {"[update_common_attr]:===Enter===\n", [] { update_common_attr(nullptr, 0, nullptr, nullptr); }},
      {"[update_attr_by_ssid]:===Enter===\n", [] { update_attr_by_ssid(nullptr, 0, 1, nullptr, nullptr); }},
      {"[parse_data_from_line]:===Enter===\n", [] { parse_data_from_line(nullptr, nullptr); }},
      {"[get_attr_num]:===Enter===\n", [&] { get_attr_num(nullptr, nullptr, &number); }},
      {"[get_attr_num_extended]:===Enter===\n", [&] { get_attr_num_extended(nullptr, nullptr, &number); }},
      {"[merge_para]:===Enter===\n", [] { merge_para(nullptr, nullptr, 1); }},
      {"[update_datafile_from_shm]:===Enter===\n", [] { update_datafile_from_shm(2, 1); }},
      {"[wifimgr_lib_save_dataFile]:===Enter===\n", [] { wifimgr_lib_save_dataFile(2); }},
      {"[wifimgr_lib_get_bssidnum]:===Enter===\n", [] { wifimgr_lib_get_bssidnum(0, -1, nullptr, 160); }},
      {"[wifimgr_lib_get_version]:===Enter===\n", [] { wifimgr_lib_get_version(0, nullptr, 16); }},
      {"[parse_driver]:===Enter===\n", [] { parse_driver(nullptr, 7); }},
      {"[init_shm]:===Enter===\n", [] { init_shm(2); }},
      {"[print_shm]:===Enter===\n", [] { print_shm(2); }},
  };
  for (const auto& row : rows) {
    const std::vector<std::string> trace = seams::trace_of(row.run);
    ASSERT_GE(trace.size(), 2U) << row.entry;
    EXPECT_EQ(row.entry, trace.front());
  }
}

TEST(Trace, HelpersForTextAndMemoryHaveNone) {
  seams::switch_calls = 0;
  char text[] = "a;b;c;d;e";
  char out[32];
  unsigned count = 0;
  char* fields[8];
  parserstr(text, 9);
  rstrtok(text, ";");
  rtstrcasecmp("a", "b");
  strextract(out, "a;b;c;d;");
  attr_value_parser("Key", text, &count, fields);
  get_dat_para_num(0);
  std::free(os_zalloc(8));
  doCmdWrite("/tmp/file", "x");
  sandbox::stdout_of([] { zqdbg_blapi_printf("x"); });
  EXPECT_EQ(0, seams::switch_calls);
}

}  // namespace
