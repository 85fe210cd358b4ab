// The command lines of a commit.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply/command_list.h"
#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using commands::bss;
using commands::committed;
using commands::down;
using commands::joined;
using commands::Lines;
using commands::up;
using commands::wds;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST(Commit, Plain2_4GTakesAllDownAndBringsTheSsidsUp) {
  dat::load(0, {});
  EXPECT_THAT(committed(0), ElementsAreArray({
                                "ifconfig wds0 down",
                                "brctl delif br-lan wds0",
                                "ifconfig wds1 down",
                                "brctl delif br-lan wds1",
                                "ifconfig wds2 down",
                                "brctl delif br-lan wds2",
                                "ifconfig wds3 down",
                                "brctl delif br-lan wds3",
                                "ifconfig ra0 down",
                                "brctl delif br-lan ra0",
                                "ifconfig ra1 down",
                                "brctl delif br-lan ra1",
                                "ifconfig ra0 up",
                                "brctl addif br-lan ra0",
                                "ifconfig ra1 up",
                                "brctl addif br-lan ra1",
                            }));
}

TEST(Commit, Plain5GTakesAllDownAndBringsTheSsidsUp) {
  dat::load(1, {});
  EXPECT_THAT(committed(1), ElementsAreArray({
                                "ifconfig wdsi0 down",
                                "brctl delif br-lan wdsi0",
                                "ifconfig wdsi1 down",
                                "brctl delif br-lan wdsi1",
                                "ifconfig wdsi2 down",
                                "brctl delif br-lan wdsi2",
                                "ifconfig wdsi3 down",
                                "brctl delif br-lan wdsi3",
                                "ifconfig rai0 down",
                                "brctl delif br-lan rai0",
                                "ifconfig rai1 down",
                                "brctl delif br-lan rai1",
                                "ifconfig rai0 up",
                                "brctl addif br-lan rai0",
                                "ifconfig rai1 up",
                                "brctl addif br-lan rai1",
                            }));
}

TEST(Commit, BringsWdsUpOnlyWhenEnableBeginsWithOne) {
  struct Case {
    const char* enable;
    bool up;
  };
  for (const int band : {0, 1}) {
    for (const Case& c : std::initializer_list<Case>{{"1", true},
                                                     {"1\n", true},
                                                     {"12", true},
                                                     {"0", false},
                                                     {"2", false},
                                                     {"3", false},
                                                     {"4", false},
                                                     {"01", false},
                                                     {"", false}}) {
      SCOPED_TRACE(testing::PrintToString(c.enable) + " on band " + std::to_string(band));
      dat::load(band, {});
      dat::put(band, -1, "WdsEnable", c.enable);
      EXPECT_THAT(committed(static_cast<uint32_t>(band)),
                  ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 2), up(bss(band), {0, 1}),
                                           c.up ? up(wds(band), {0, 1, 2, 3}) : Lines{}})));
    }
  }
}

TEST(Commit, BringsAllFourWdsLinksUpForOnePeer) {
  dat::load(0, {{"WdsEnable", "1"}, {"WdsList", "02:00:00:00:00:01"}});
  EXPECT_THAT(committed(0),
              ElementsAreArray(joined({down("wds", 4), down("ra", 2), up("ra", {0, 1}), up("wds", {0, 1, 2, 3})})));
}

TEST(Commit, UnreadableWdsEnableAndReloadFlagCountAsOff) {
  for (const int band : {0, 1}) {
    for (const char* key : {"WdsEnable", "ReloadFlag"}) {
      SCOPED_TRACE(key);
      sandbox::load(band, sandbox::full_dat_without(band, key));
      seams::put_chips_on_the_bus({"7615"});
      EXPECT_THAT(committed(static_cast<uint32_t>(band)),
                  ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 2), up(bss(band), {0, 1})})));
    }
  }
}

TEST(Commit, TakesDownAsManySsidsAsWereUp) {
  for (const int band : {0, 1}) {
    for (const int32_t count : {-1, INT32_MIN, 0, 1, 3, 8, 11}) {
      SCOPED_TRACE(count);
      dat::load(band, {});
      pre_wlan_state[band] = count;
      pre_wlan_state[1 - band] = 5;
      EXPECT_THAT(committed(static_cast<uint32_t>(band)),
                  ElementsAreArray(joined({down(wds(band), 4), down(bss(band), count), up(bss(band), {0, 1})})));
      EXPECT_EQ(count, pre_wlan_state[band]);
      EXPECT_EQ(5, pre_wlan_state[1 - band]);
    }
  }
}

TEST(Commit, BringsUpTheEnabledSsidsAlone) {
  struct Case {
    const char* count;
    const char* enabled;
    std::initializer_list<int> up;
  };
  for (const int band : {0, 1}) {
    for (const Case& c : std::initializer_list<Case>{
             {"2", "0;1", {1}},
             {"2", "1;0", {0}},
             {"2", "0;0", {}},
             {"2", "1", {0}},
             {"1", "1;1", {0}},
             {"4", "1;0;1;0", {0, 2}},
             {"8", "1;1;1;1;1;1;1;1", {0, 1, 2, 3, 4, 5, 6, 7}},
             {"8", "0;0;0;0;0;0;0;1", {7}},
             {"4", "01;2;-1;1x", {0, 3}},
             {"3", "11; 1;on", {1}},
             // What the ninth reads is nothing at all, not the value of the eighth.
             {"10", "1;1;1;1;1;1;1;1", {0, 1, 2, 3, 4, 5, 6, 7}},
         }) {
      SCOPED_TRACE(std::string(c.enabled) + " of " + c.count);
      dat::load(band, {{"BssidNum", c.count}, {"EnableSSID", c.enabled}});
      pre_wlan_state[band] = 0;
      EXPECT_THAT(committed(static_cast<uint32_t>(band)),
                  ElementsAreArray(joined({down(wds(band), 4), up(bss(band), c.up)})));
    }
  }
}

TEST(Commit, UnreadableEnableSsidBringsNothingUp) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    sandbox::load(band, sandbox::full_dat_without(band, "EnableSSID"));
    EXPECT_THAT(committed(static_cast<uint32_t>(band)),
                ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 2)})));
  }
}

TEST(Commit, AppliesTheWholeBandWhateverSsidItIsAskedFor) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"BssidNum", "3"}, {"EnableSSID", "1;0;1"}});
    for (const int32_t ssid_index : {1, 2, 3}) {
      SCOPED_TRACE(ssid_index);
      EXPECT_THAT(committed(static_cast<uint32_t>(band), ssid_index),
                  ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 3), up(bss(band), {0, 2})})));
    }
  }
}

TEST(Commit, RunsNothingWithoutALoadedBand) {
  EXPECT_EQ(1, wifimgr_lib_commit(0, 1));
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace
