// The process-wide command flags and the answers that never change.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <climits>

#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::IsEmpty;

struct Flag {
  const char* name;
  int32_t& object;
  int32_t (*get)();
  int (*set)(uint32_t value);
};

const Flag kFlags[] = {
    {"11N", _11N_CMDflag, wifimgr_lib_get_11N_CMDflag, wifimgr_lib_set_11N_CMDflag},
    {"11AC", _11AC_CMDflag, wifimgr_lib_get_11AC_CMDflag, wifimgr_lib_set_11AC_CMDflag},
};

template <typename Check>
void for_each_flag(Check check) {
  for (const Flag& flag : kFlags) {
    SCOPED_TRACE(flag.name);
    check(flag);
  }
}

TEST(CommandFlag, IsMinusOneAtTheStart) {
  for_each_flag([](const Flag& flag) { EXPECT_EQ(-1, flag.object); });
}

TEST(CommandFlag, ReadsAs0UntilItIsSet) {
  for_each_flag([](const Flag& flag) {
    EXPECT_EQ(0, flag.get());
    EXPECT_EQ(-1, flag.object);
  });
}

TEST(CommandFlag, ReadsAsItWasSet) {
  for_each_flag([](const Flag& flag) {
    for (const uint32_t value : {1U, 0U, 2U, 0x7fffffffU}) {
      EXPECT_EQ(0, flag.set(value));
      EXPECT_EQ(static_cast<int32_t>(value), flag.get());
      EXPECT_EQ(static_cast<int32_t>(value), flag.object);
    }
  });
}

TEST(CommandFlag, IsNegativeFromThe32ndBitOn) {
  for_each_flag([](const Flag& flag) {
    EXPECT_EQ(0, flag.set(0x80000000U));
    EXPECT_EQ(INT_MIN, flag.get());
    EXPECT_EQ(0, flag.set(0xfffffffeU));
    EXPECT_EQ(-2, flag.get());
  });
}

TEST(CommandFlag, ReadsAs0AgainOnceSetToAllOnes) {
  for_each_flag([](const Flag& flag) {
    EXPECT_EQ(0, flag.set(1));
    EXPECT_EQ(0, flag.set(0xffffffffU));
    EXPECT_EQ(0, flag.get());
    EXPECT_EQ(-1, flag.object);
  });
}

TEST(CommandFlag, IsTheObjectThatCallersSee) {
  for_each_flag([](const Flag& flag) {
    flag.object = 9;
    EXPECT_EQ(9, flag.get());
    flag.object = -1;
    EXPECT_EQ(0, flag.get());
  });
}

TEST(CommandFlag, LeavesTheOtherOneAlone) {
  EXPECT_EQ(0, wifimgr_lib_set_11N_CMDflag(5));
  EXPECT_EQ(-1, _11AC_CMDflag);
  EXPECT_EQ(0, wifimgr_lib_get_11AC_CMDflag());
  EXPECT_EQ(0, wifimgr_lib_set_11AC_CMDflag(6));
  EXPECT_EQ(5, wifimgr_lib_get_11N_CMDflag());
  EXPECT_EQ(6, wifimgr_lib_get_11AC_CMDflag());
}

TEST(CommandFlag, BelongsToItsProcess) {
  const pid_t child = fork();
  if (child == 0) {
    (void)wifimgr_lib_set_11N_CMDflag(1);
    (void)wifimgr_lib_set_11AC_CMDflag(1);
    _exit(wifimgr_lib_get_11N_CMDflag() == 1 && wifimgr_lib_get_11AC_CMDflag() == 1 ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(child, waitpid(child, &status, 0));
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  for_each_flag([](const Flag& flag) { EXPECT_EQ(-1, flag.object); });
}

TEST(FixedAnswer, IgmpSnoopingIsSupported) {
  EXPECT_EQ(1, wifimgr_lib_get_wlan_igmp_snooping_support());
}

TEST(FixedAnswer, Is0WhateverIsPassed) {
  char text[] = "text";
  EXPECT_EQ(0, wifimgr_lib_set_AP2040Rescan());
  EXPECT_EQ(0, wifimgr_lib_set_AP2040Rescan(1));
  EXPECT_EQ(0, wifimgr_lib_set_AP2040Rescan(2, -1, text));
  EXPECT_EQ(0, wifimgr_lib_get_max_sta_num_ui());
  EXPECT_EQ(0, wifimgr_lib_get_max_sta_num_ui(1));
  EXPECT_EQ(0, wifimgr_lib_get_max_sta_num_ui(2, text, 5));
  EXPECT_STREQ("text", text);
}

TEST(WpsStartValue, IsStoredInTheCallersVariable) {
  for (const uint32_t value : {1U, 0U, 0x12345678U, 0xffffffffU}) {
    uint32_t variables[] = {7, 7, 7};
    EXPECT_EQ(0, wifimgr_lib_set_iswps5gstart_val(&variables[1], value));
    EXPECT_THAT(variables, testing::ElementsAre(7U, value, 7U));
  }
}

TEST(WpsStartValue, IsStoredNowhereForANullPointer) {
  EXPECT_EQ(0, wifimgr_lib_set_iswps5gstart_val(nullptr, 1));
}

TEST(CommandFlag, AndFixedAnswersTraceNothingAndRunNothing) {
  uint32_t variable = 0;
  EXPECT_THAT(seams::trace_of([&] {
                for_each_flag([](const Flag& flag) {
                  (void)flag.set(1);
                  (void)flag.get();
                });
                (void)wifimgr_lib_get_wlan_igmp_snooping_support();
                (void)wifimgr_lib_set_AP2040Rescan(1);
                (void)wifimgr_lib_get_max_sta_num_ui(1);
                (void)wifimgr_lib_set_iswps5gstart_val(&variable, 1);
                (void)wifimgr_lib_set_iswps5gstart_val(nullptr, 1);
              }),
              IsEmpty());
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace
