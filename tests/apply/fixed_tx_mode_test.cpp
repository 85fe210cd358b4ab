// The fixed TX mode that follows the wireless mode.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply/calls.h"
#include "apply/dat_text.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> calls_of(uint32_t band, uint32_t ssid, uint32_t mode) {
  return calls::made_by([=] { update_fixedTxMode(band, ssid, mode); });
}

TEST(FixedTxMode, FollowsTheWirelessMode) {
  dat::load(0, {});
  for (uint32_t mode = 1; mode <= 18; ++mode) {
    SCOPED_TRACE(mode);
    const std::string value = mode == 1 ? "1" : mode == 4 ? "2" : "0";
    dat::put(0, 1, "FixedTxMode", "x");
    EXPECT_THAT(calls_of(0, 1, mode), ElementsAre("set_fixedTxMode(0,1," + value + ")"));
    EXPECT_EQ(value, sandbox::field(0, "FixedTxMode", 1));
  }
}

TEST(FixedTxMode, IsZeroInModesThatDoNotExist) {
  dat::load(0, {});
  for (const uint32_t mode : {100U, 0x80000000U, 0xffffffffU, 0xffffff04U}) {
    EXPECT_THAT(calls_of(0, 1, mode), ElementsAre("set_fixedTxMode(0,1,0)"));
  }
}

TEST(FixedTxMode, BecomesCckInTheMixedModeWhenItIsACckRate) {
  dat::load(0, {});
  for (const char* rate : {"1", "2", "5.5", "11"}) {
    for (const char* end : {"", "\n", "\r", "\r\n"}) {
      SCOPED_TRACE(testing::PrintToString(std::string(rate) + end));
      dat::put(0, 1, "FixedTxMode", std::string(rate) + end);
      EXPECT_THAT(calls_of(0, 1, 0), ElementsAre("get_fixedTxMode(0,1)", "set_fixedTxMode(0,1,1)"));
      EXPECT_EQ("1", sandbox::field(0, "FixedTxMode", 1));
    }
  }
}

TEST(FixedTxMode, StaysInTheMixedModeWhenItIsSomethingElse) {
  dat::load(0, {});
  for (const char* value :
       {"0", "0\n", "", "\n", "3", "5", "5.50", "12", "111", "01", " 1", "1 ", "6", "54", "1\nxy", "CCK"}) {
    SCOPED_TRACE(testing::PrintToString(value));
    dat::put(0, 1, "FixedTxMode", value);
    EXPECT_THAT(calls_of(0, 1, 0), ElementsAre("get_fixedTxMode(0,1)"));
    EXPECT_EQ(value, sandbox::field(0, "FixedTxMode", 1));
  }
}

TEST(FixedTxMode, BecomesOfdmInTheMixedModeWhenItCannotBeRead) {
  dat::load(0, {});
  dat::put(0, 1, "FixedTxMode", "1");
  calls::refuse("get_fixedTxMode");
  EXPECT_THAT(calls_of(0, 1, 0), ElementsAre("get_fixedTxMode(0,1)", "set_fixedTxMode(0,1,2)"));
  EXPECT_EQ("2", sandbox::field(0, "FixedTxMode", 1));
}

TEST(FixedTxMode, IsNotReadInOtherModes) {
  dat::load(0, {});
  calls::refuse("get_fixedTxMode");
  EXPECT_THAT(calls_of(0, 1, 1), ElementsAre("set_fixedTxMode(0,1,1)"));
}

TEST(FixedTxMode, ServesTheSsidAndBandItIsAskedForAlone) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    for (const int each : {0, 1}) dat::load(each, {{"FixedTxMode", "0;11"}});
    const std::string other = sandbox::segment_bytes(1 - band);
    update_fixedTxMode(static_cast<uint32_t>(band), 2, 0);
    EXPECT_EQ("0", sandbox::field(band, "FixedTxMode", 1));
    EXPECT_EQ("1", sandbox::field(band, "FixedTxMode", 2));
    EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
  }
}

TEST(FixedTxMode, FailuresAreSilentAndChangeNothing) {
  dat::load(0, {});
  const std::string store = sandbox::segment_bytes(0);
  for (const uint32_t mode : {0U, 1U, 4U, 9U}) {
    for (const uint32_t ssid : {0U, 3U, 0xffffffffU}) {
      EXPECT_THAT(sandbox::stdout_of([=] { update_fixedTxMode(0, ssid, mode); }), IsEmpty());
    }
    EXPECT_THAT(sandbox::stdout_of([=] { update_fixedTxMode(2, 1, mode); }), IsEmpty());
  }
  EXPECT_EQ(store, sandbox::segment_bytes(0));
}

}  // namespace
