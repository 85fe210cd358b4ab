// The command lines of a commit that may reload the driver module.
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
using commands::kChips;
using commands::Lines;
using commands::up;
using commands::wds;
using testing::ElementsAreArray;
using testing::IsEmpty;

TEST(CommitReload, WithEverythingOn2_4GReloadsBetweenDownAndUpAndEndsWithWds) {
  dat::load(0, {{"ReloadFlag", "1"}, {"WdsEnable", "1"}});
  seams::put_chips_on_the_bus({"7603", "7612"});
  EXPECT_THAT(committed(0),
              ElementsAreArray(joined({down("wds", 4),
                                       down("ra", 2),
                                       {kChips, "rmmod mt7603eap.ko", "insmod /lib/modules/4.4.115/mt7603eap.ko"},
                                       up("ra", {0, 1}),
                                       up("wds", {0, 1, 2, 3})})));
}

TEST(CommitReload, WithEverythingOn5GReloadsBetweenDownAndUpAndEndsWithWds) {
  dat::load(1, {{"ReloadFlag", "1"}, {"WdsEnable", "1"}});
  seams::put_chips_on_the_bus({"7603", "7612"});
  EXPECT_THAT(committed(1),
              ElementsAreArray(joined({down("wdsi", 4),
                                       down("rai", 2),
                                       {kChips, "rmmod mt7662e_ap", "insmod /lib/modules/4.4.115/mt7662e_ap.ko"},
                                       up("rai", {0, 1}),
                                       up("wdsi", {0, 1, 2, 3})})));
}

TEST(CommitReload, ReloadsTheModuleOfTheFirstChipThatServesTheBand) {
  const Lines none = {kChips};
  const Lines m7603 = {kChips, "rmmod mt7603eap.ko", "insmod /lib/modules/4.4.115/mt7603eap.ko"};
  const Lines m7662 = {kChips, "rmmod mt7662e_ap", "insmod /lib/modules/4.4.115/mt7662e_ap.ko"};
  const Lines m7615 = {kChips, "rmmod mt7615_ap", "insmod /lib/modules/4.4.115/mt7615_ap.ko"};
  const Lines m7663 = {kChips, "rmmod mt7663_ap", "insmod /lib/modules/4.4.115/mt7663_ap.ko"};
  struct Case {
    Lines chips;
    Lines reload[2];
  };
  const std::vector<Case> cases = {
      {{}, {none, none}},
      {{"7603"}, {m7603, none}},
      {{"7612"}, {none, m7662}},
      {{"7615"}, {m7615, m7615}},
      {{"7663"}, {none, m7663}},
      {{"7915"}, {none, none}},
      {{"7916"}, {none, none}},
      {{"7905"}, {none, none}},
      {{"7615", "7603"}, {m7603, m7615}},
      {{"7615", "7612"}, {m7615, m7662}},
      {{"7663", "7612"}, {none, m7662}},
      {{"7615", "7663"}, {m7615, m7663}},
      {{"7663", "7615", "7612", "7603"}, {m7603, m7662}},
      {{"7915", "7916", "7905", "7663", "7615"}, {m7615, m7663}},
  };
  for (const int band : {0, 1}) {
    for (const Case& c : cases) {
      SCOPED_TRACE(testing::PrintToString(c.chips) + " on band " + std::to_string(band));
      dat::load(band, {{"ReloadFlag", "1"}});
      seams::put_chips_on_the_bus(c.chips);
      EXPECT_THAT(
          committed(static_cast<uint32_t>(band)),
          ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 2), c.reload[band], up(bss(band), {0, 1})})));
    }
  }
}

TEST(CommitReload, ReloadsOnlyWhenTheFlagBeginsWithOne) {
  struct Case {
    const char* flag;
    bool reload;
    const char* afterwards;
  };
  for (const int band : {0, 1}) {
    for (const Case& c : std::initializer_list<Case>{{"1", true, "0"},
                                                     {"1\n", true, "0"},
                                                     {"10", true, "0"},
                                                     {"1yes", true, "0"},
                                                     {"0", false, "0"},
                                                     {"01", false, "01"},
                                                     {" 1", false, " 1"},
                                                     {"2", false, "2"},
                                                     {"", false, ""}}) {
      SCOPED_TRACE(testing::PrintToString(c.flag) + " on band " + std::to_string(band));
      dat::load(band, {});
      dat::put(band, -1, "ReloadFlag", c.flag);
      EXPECT_THAT(committed(static_cast<uint32_t>(band)),
                  ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 2), c.reload ? Lines{kChips} : Lines{},
                                           up(bss(band), {0, 1})})));
      EXPECT_EQ(c.afterwards, sandbox::field(band, "ReloadFlag", 1));
    }
  }
}

TEST(CommitReload, ReloadsNothingWhenTheChipsCannotBeRead) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {{"ReloadFlag", "1"}});
    EXPECT_FALSE(sandbox::exists("/tmp/devices"));
    EXPECT_THAT(committed(static_cast<uint32_t>(band)),
                ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 2), {kChips}, up(bss(band), {0, 1})})));
  }
}

TEST(CommitReload, LooksForNoChipsWithoutTheFlag) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {});
    seams::put_chips_on_the_bus({"7603", "7612", "7615", "7663"});
    EXPECT_THAT(committed(static_cast<uint32_t>(band)),
                ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 2), up(bss(band), {0, 1})})));
  }
}

TEST(CommitReload, AfterAChangedSsidCountTakesTheOldOnesDownAndReloads) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {{"EnableSSID", "1;1;1"}});
    seams::put_chips_on_the_bus({"7615"});
    const uint32_t number = static_cast<uint32_t>(band);
    ASSERT_EQ(0U, wifimgr_lib_set_bssidNum(number, -1, "3"));
    const Lines reload = {kChips, "rmmod mt7615_ap", "insmod /lib/modules/4.4.115/mt7615_ap.ko"};
    EXPECT_THAT(committed(number, 3),
                ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 2), reload, up(bss(band), {0, 1, 2})})));
    EXPECT_EQ("0", sandbox::field(band, "ReloadFlag", 1));
    ASSERT_EQ(0U, wifimgr_lib_set_bssidNum(number, -1, "1"));
    EXPECT_THAT(committed(number),
                ElementsAreArray(joined({down(wds(band), 4), down(bss(band), 3), reload, up(bss(band), {0})})));
  }
}

TEST(CommitReload, DoesNotLookAtWhatTheCommandsReturn) {
  for (const int status : {-1, 1, 256, 0x7f00}) {
    SCOPED_TRACE(status);
    dat::load(0, {{"ReloadFlag", "1"}, {"WdsEnable", "1"}});
    sandbox::write_file("/tmp/devices", "0100\t14c37615\t1a\n");
    seams::on_command = [status](const std::string&) { return status; };
    EXPECT_EQ(
        down("wds", 4).size() + down("ra", 2).size() + 3 + up("ra", {0, 1}).size() + up("wds", {0, 1, 2, 3}).size(),
        committed(0).size());
  }
}

}  // namespace
