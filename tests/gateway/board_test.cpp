// What the library reads from and writes to the simulated board.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;

std::string probe(const std::string& steps) {
  return library_probe_program() + " " + steps;
}

TEST(Board, EachChipOnTheBusSetsItsFlag) {
  struct {
    const char* chips;
    const char* flags;
  } const kRows[] = {{"7603", "1000000"}, {"7612", "0100000"},      {"7615", "0010000"},
                     {"7663", "0001000"}, {"7915", "0000100"},      {"7916", "0000010"},
                     {"7905", "0000001"}, {"7603,7612", "1100000"}, {"7915,7916", "0000110"}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.chips);
    EXPECT_EQ(std::string("chips 0 ") + row.flags + "\n", run_script(probe("chips"), {"--chips", row.chips}).out);
  }
}

TEST(Board, KernelLogTakesAMessage) {
  EXPECT_EQ("radio is up", run_script(probe("log 'radio is up'") + "; cat /proc/zq2810/dbg_msg").out);
}

TEST(Board, DefaultDatFilesHoldBothBands) {
  const Result result = run_script(probe("init 0 get Channel 0 -1 init 1 get Channel 1 -1"));
  EXPECT_EQ("init 0\nChannel 0 6\ninit 0\nChannel 0 36\n", result.out);
}

TEST(Board, RefusalsReachStandardErrorWhenErrorsAreOn) {
  const Result result = run_script("printf 1 >/tmp/wifi_lib_dbg_enable; printf 1 >/tmp/vexalib_dbg; " +
                                   probe("init 0 set wifimgr_lib_set_channel 0 -1 181"));
  EXPECT_EQ("[wifimgr_lib_set_channel]:===Fail Exit===The input channel is invalid.Please input from 0 to 180\n",
            result.err);
}

TEST(Board, EverythingIsTracedAtTheHighestLevel) {
  const Result result =
      run_script("printf 1 >/tmp/wifi_lib_dbg_enable; printf 8 >/tmp/vexalib_dbg; " + probe("init 0"));
  EXPECT_THAT(result.err, HasSubstr("[wifimgr_lib_init]:===Enter===\n"));
  EXPECT_THAT(result.err, HasSubstr("[wifimgr_lib_init]:===Success Exit===\n"));
}

TEST(Board, NothingIsTracedWithoutTheSwitch) {
  EXPECT_EQ("", run_script(probe("init 0 set wifimgr_lib_set_channel 0 -1 181")).err);
}

TEST(Board, DebugLevelReachesTheSwitchsFiles) {
  EXPECT_EQ("level 0\n1\n8",
            run_script(probe("level 8") + "; head -n 1 /tmp/wifi_lib_dbg_enable; cat /tmp/vexalib_dbg").out);
}

}  // namespace
}  // namespace sim_test
