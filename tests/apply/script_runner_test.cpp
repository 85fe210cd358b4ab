// Running an execute script: always on 2.4G, once per flag on 5G.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

#include "apply/calls.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

int flag_answer = 0;  // What setting the flag answers instead of its own 0.

std::vector<std::string> run(int32_t band, const char* command, uint64_t expected = 0) {
  seams::commands.clear();
  EXPECT_EQ(expected, wifimgr_lib_execute_wlan_script(band, command));
  return seams::commands;
}

TEST(ScriptRunner, RunsTheCommandAsItStandsOn2_4GWhateverTheFlag) {
  const std::string long_command = "sh /etc/Wireless/RT2860AP/WLAN_exec.sh " + std::string(1000, '%');
  for (const uint32_t flag : {0U, 1U, 2U}) {
    wifimgr_lib_set_11AC_CMDflag(flag);
    EXPECT_THAT(run(0, long_command.c_str()), ElementsAre(long_command));
    EXPECT_THAT(run(0, ""), ElementsAre(""));
    EXPECT_EQ(static_cast<int32_t>(flag), _11AC_CMDflag);
  }
}

TEST(ScriptRunner, RunsOncePerFlagOn5G) {
  wifimgr_lib_set_11AC_CMDflag(1);
  EXPECT_THAT(run(1, "sh %s script"), ElementsAre("sh %s script"));
  EXPECT_EQ(0, _11AC_CMDflag);
  EXPECT_THAT(run(1, "sh %s script"), IsEmpty());
}

TEST(ScriptRunner, RunsNothingOn5GForAnyOtherFlag) {
  EXPECT_THAT(run(1, "sh script"), IsEmpty());
  EXPECT_EQ(-1, _11AC_CMDflag);
  for (const uint32_t flag : {0U, 2U, 0x101U, 0xffffffffU}) {
    wifimgr_lib_set_11AC_CMDflag(flag);
    EXPECT_THAT(run(1, "sh script"), IsEmpty()) << flag;
    EXPECT_EQ(static_cast<int32_t>(flag), _11AC_CMDflag);
  }
}

TEST(ScriptRunner, OtherFlagDoesNotCount) {
  wifimgr_lib_set_11N_CMDflag(1);
  EXPECT_THAT(run(1, "sh script"), IsEmpty());
  wifimgr_lib_set_11AC_CMDflag(1);
  run(1, "sh script");
  EXPECT_EQ(1, _11N_CMDflag);
}

TEST(ScriptRunner, UsesTheFlagUpAfterTheCommandWhateverItAnswers) {
  int32_t during = 0;
  seams::on_command = [&](const std::string&) {
    during = _11AC_CMDflag;
    return -1;
  };
  wifimgr_lib_set_11AC_CMDflag(1);
  run(1, "sh script");
  EXPECT_EQ(1, during);
  EXPECT_EQ(0, _11AC_CMDflag);
  EXPECT_THAT(run(0, "sh script"), ElementsAre("sh script"));
}

TEST(ScriptRunner, AnswersWhatTheFlagsSetterAnswersOn5GAlone) {
  flag_answer = 5;
  _11AC_CMDflag = 1;
  run(0, "sh script", 0);
  run(1, "sh script", 5);
  EXPECT_EQ(0, _11AC_CMDflag);
  run(1, "sh script", 0);
}

TEST(ScriptRunner, TracesEntryAndExit) {
  EXPECT_THAT(seams::trace_of([] { run(0, "sh script"); }),
              ElementsAre("[wifimgr_lib_execute_wlan_script]:===Enter===\n",
                          "[wifimgr_lib_execute_wlan_script]:===Success Exit===\n"));
}

TEST(ScriptRunner, RunsNothingForAnUnknownBand) {
  wifimgr_lib_set_11AC_CMDflag(1);
  for (const int32_t band : {2, -1, INT32_MIN, INT32_MAX}) EXPECT_THAT(run(band, "sh script"), IsEmpty()) << band;
  EXPECT_EQ(1, _11AC_CMDflag);
}

TEST(ScriptRunner, NullCommandRunsNothingAndKeepsTheFlag) {
  wifimgr_lib_set_11AC_CMDflag(1);
  for (const int32_t band : {0, 1, 2}) EXPECT_THAT(run(band, nullptr), IsEmpty());
  EXPECT_EQ(1, _11AC_CMDflag);
}

}  // namespace

int wifimgr_lib_set_11AC_CMDflag(uint32_t value) {
  calls::real<decltype(wifimgr_lib_set_11AC_CMDflag)>("wifimgr_lib_set_11AC_CMDflag")(value);
  return flag_answer;
}
