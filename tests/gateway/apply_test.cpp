// A commit inside the simulated gateway: the commands that ran, and what the kernel says of the interfaces afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gateway.h"

namespace sim_test {
namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;

using Apply = Gateway;

// The calls that take links and BSSs down, or bring them up.
void add_calls(Words* calls, const std::string& prefix, const std::vector<int>& numbers, bool up) {
  for (const int number : numbers) {
    const std::string name = prefix + std::to_string(number);
    calls->push_back("ifconfig " + name + (up ? " up" : " down"));
    calls->push_back(std::string(up ? "brctl addif br-lan " : "brctl delif br-lan ") + name);
  }
}

const std::string kReload = "ReloadFlag=0\nWdsEnable=0\n";
const std::string kOther = dat_text(1, "1", kReload);

TEST_F(Apply, PlainCommitOf2_4GTakesAllDownAndEnabledSsidsUp) {
  const Outcome outcome = apply("init 0 commit 0 1", dat_text(3, "1;0;1", kReload), kOther);
  EXPECT_THAT(outcome.steps, ElementsAreArray({"init 0", "commit 0"}));
  Words calls;
  add_calls(&calls, "wds", {0, 1, 2, 3}, false);
  add_calls(&calls, "ra", {0, 1, 2}, false);
  add_calls(&calls, "ra", {0, 2}, true);
  EXPECT_EQ(calls, outcome.calls);
  EXPECT_THAT(outcome.interfaces, ElementsAreArray({"ra0 up br-lan", "ra1 down -", "ra2 up br-lan", "rai0 up br-lan",
                                                    "wds0 down -", "wds1 down -", "wds2 down -", "wds3 down -",
                                                    "wdsi0 down -", "wdsi1 down -", "wdsi2 down -", "wdsi3 down -"}));
}

TEST_F(Apply, PlainCommitOf5GTouchesNothingOf2_4G) {
  const Outcome outcome = apply("init 1 commit 1 2", kOther, dat_text(2, "0;1", kReload));
  Words calls;
  add_calls(&calls, "wdsi", {0, 1, 2, 3}, false);
  add_calls(&calls, "rai", {0, 1}, false);
  add_calls(&calls, "rai", {1}, true);
  EXPECT_EQ(calls, outcome.calls);
  EXPECT_THAT(outcome.interfaces, testing::IsSupersetOf({"ra0 up br-lan", "rai0 down -", "rai1 up br-lan"}));
}

TEST_F(Apply, MoreSsidsReloadTheModuleWhichMakesMoreInterfaces) {
  const Outcome outcome = apply(
      "init 0 oper 0 0 set wifimgr_lib_set_bssidNum 0 -1 3 "
      "set wifimgr_lib_set_enableSsid 0 3 1 oper 0 1 commit 0 1 oper 0 0 oper 0 1",
      dat_text(2, "1;1", kReload), kOther);
  EXPECT_THAT(outcome.steps,
              ElementsAreArray({"init 0", "oper 0", "wifimgr_lib_set_bssidNum 0", "wifimgr_lib_set_enableSsid 0",
                                "oper 2", "commit 0", "oper 0", "oper 0"}));
  Words calls;
  add_calls(&calls, "wds", {0, 1, 2, 3}, false);
  add_calls(&calls, "ra", {0, 1}, false);
  calls.push_back("rmmod mt7603eap.ko");
  calls.push_back("insmod /lib/modules/4.4.115/mt7603eap.ko");
  add_calls(&calls, "ra", {0, 1, 2}, true);
  EXPECT_EQ(calls, outcome.calls);
  EXPECT_THAT(outcome.interfaces, testing::IsSupersetOf({"ra0 up br-lan", "ra1 up br-lan", "ra2 up br-lan"}));
}

TEST_F(Apply, FewerSsidsReloadTheModuleWhichMakesFewerInterfaces) {
  const Outcome outcome =
      apply("init 1 set wifimgr_lib_set_bssidNum 1 -1 1 commit 1 1", kOther, dat_text(3, "1;1;1", kReload));
  Words calls;
  add_calls(&calls, "wdsi", {0, 1, 2, 3}, false);
  add_calls(&calls, "rai", {0, 1, 2}, false);
  calls.push_back("rmmod mt7662e_ap");
  calls.push_back("insmod /lib/modules/4.4.115/mt7662e_ap.ko");
  add_calls(&calls, "rai", {0}, true);
  EXPECT_EQ(calls, outcome.calls);
  EXPECT_THAT(outcome.interfaces, testing::Not(testing::Contains(HasSubstr("rai1"))));
}

TEST_F(Apply, EachChipsModuleIsReloadedWhenTheFlagAsksForIt) {
  struct {
    const char* what;
    const char* chips;
    const char* band;
    const char* unload;
    const char* load;
  } const kRows[] = {
      {"2.4G, 7603", "7603,7615", "0", "rmmod mt7603eap.ko", "insmod /lib/modules/4.4.115/mt7603eap.ko"},
      {"2.4G, 7615", "7615", "0", "rmmod mt7615_ap", "insmod /lib/modules/4.4.115/mt7615_ap.ko"},
      {"5G, 7612", "7612,7663", "1", "rmmod mt7662e_ap", "insmod /lib/modules/4.4.115/mt7662e_ap.ko"},
      {"5G, 7663", "7663,7615", "1", "rmmod mt7663_ap", "insmod /lib/modules/4.4.115/mt7663_ap.ko"},
      {"5G, 7615", "7615", "1", "rmmod mt7615_ap", "insmod /lib/modules/4.4.115/mt7615_ap.ko"},
  };
  const std::string dat = dat_text(1, "1", "ReloadFlag=1\nWdsEnable=0\n");
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.what);
    const std::string band = row.band;
    const Outcome outcome =
        apply("init " + band + " commit " + band + " 1 get ReloadFlag " + band + " -1", dat, dat, row.chips);
    Words calls;
    add_calls(&calls, band == "0" ? "wds" : "wdsi", {0, 1, 2, 3}, false);
    add_calls(&calls, band == "0" ? "ra" : "rai", {0}, false);
    calls.push_back(row.unload);
    calls.push_back(row.load);
    add_calls(&calls, band == "0" ? "ra" : "rai", {0}, true);
    EXPECT_EQ(calls, outcome.calls);
    EXPECT_THAT(outcome.steps, ElementsAreArray({"init 0", "commit 0", "ReloadFlag 0 0"}));
    EXPECT_THAT(outcome.interfaces, testing::Contains(band == "0" ? "ra0 up br-lan" : "rai0 up br-lan"));
  }
}

TEST_F(Apply, ChipsWithoutALoadableDriverReloadNothing) {
  const std::string dat = dat_text(1, "1", "ReloadFlag=1\nWdsEnable=0\n");
  const Outcome outcome = apply("init 0 commit 0 1 init 1 commit 1 1", dat, dat, "7915,7916,7905");
  Words calls;
  add_calls(&calls, "wds", {0, 1, 2, 3}, false);
  add_calls(&calls, "ra", {0}, false);
  add_calls(&calls, "ra", {0}, true);
  add_calls(&calls, "wdsi", {0, 1, 2, 3}, false);
  add_calls(&calls, "rai", {0}, false);
  add_calls(&calls, "rai", {0}, true);
  EXPECT_EQ(calls, outcome.calls);
  EXPECT_THAT(outcome.interfaces, testing::IsSupersetOf({"ra0 up br-lan", "rai0 up br-lan"}));
}

TEST_F(Apply, WithNoSsidUpBeforeTakesLinksDownAlone) {
  for (const std::string band : {"0", "1"}) {
    SCOPED_TRACE(band);
    const std::string bss = band == "0" ? "ra" : "rai";
    const std::string wds = band == "0" ? "wds" : "wdsi";
    const std::string dat = dat_text(2, "1;0", kReload);
    const Outcome outcome = apply("init " + band + " state " + band + " 0 commit " + band + " 1", dat, dat);
    EXPECT_THAT(outcome.steps, ElementsAreArray({"init 0", "state 0", "commit 0"}));
    Words calls;
    add_calls(&calls, wds, {0, 1, 2, 3}, false);
    add_calls(&calls, bss, {0}, true);
    EXPECT_EQ(calls, outcome.calls);
    EXPECT_THAT(outcome.interfaces, testing::IsSupersetOf({bss + "0 up br-lan", bss + "1 down -", wds + "0 down -"}));
  }
}

TEST_F(Apply, WdsOnBringsAllFourLinksIntoTheBridge) {
  for (const std::string band : {"0", "1"}) {
    SCOPED_TRACE(band);
    const std::string dat = dat_text(1, "1", "ReloadFlag=0\nWdsEnable=0\n");
    const Outcome outcome =
        apply("init " + band + " set wifimgr_lib_set_wdsenable " + band + " -1 1 commit " + band + " 1", dat, dat);
    const std::string prefix = band == "0" ? "wds" : "wdsi";
    const std::string bss = band == "0" ? "ra" : "rai";
    EXPECT_THAT(outcome.steps, ElementsAreArray({"init 0", "wifimgr_lib_set_wdsenable 0", "commit 0"}));
    Words calls;
    add_calls(&calls, prefix, {0, 1, 2, 3}, false);
    add_calls(&calls, bss, {0}, false);
    add_calls(&calls, bss, {0}, true);
    add_calls(&calls, prefix, {0, 1, 2, 3}, true);
    EXPECT_EQ(calls, outcome.calls);
    for (const int link : {0, 1, 2, 3}) {
      EXPECT_THAT(outcome.interfaces, testing::Contains(prefix + std::to_string(link) + " up br-lan"));
    }
    EXPECT_THAT(outcome.interfaces, testing::Contains((band == "0" ? "wdsi" : "wds") + std::string("0 down -")));
  }
}

TEST_F(Apply, RefusedCommitRunsNothingAndLeavesTheInterfaces) {
  const Outcome outcome = apply("init 0 commit 0 3", dat_text(2, "1;1", kReload), kOther);
  EXPECT_EQ("commit 1", outcome.steps.back());
  EXPECT_THAT(outcome.calls, testing::IsEmpty());
  EXPECT_THAT(outcome.interfaces, testing::IsSupersetOf({"ra0 up br-lan", "ra1 up br-lan"}));
}

}  // namespace
}  // namespace sim_test
