// A band's radio on and off, in br0.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply/command_list.h"
#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using commands::bss;
using commands::down_from;
using commands::joined;
using commands::kNoCount;
using commands::Lines;
using commands::up_into;
using commands::wds;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// What one switch runs; what it prints goes to `printed`.
Lines switched(uint32_t band, uint32_t oper, std::string* printed = nullptr) {
  seams::commands.clear();
  const std::string text = sandbox::stdout_of([=] { EXPECT_EQ(0, wifimgr_lib_wifi_onoff(band, oper)); });
  if (printed != nullptr) *printed = text;
  return seams::commands;
}

Lines bss_down(uint32_t band, int number) {
  const std::string name = bss(band) + std::to_string(number);
  return {"ifconfig " + name + " down", "brctl delif br0 " + name};
}

TEST(RadioOff, TakesEveryBssAndAllWdsLinksOutOfBr0) {
  dat::load(0, {{"EnableSSID", "1;0"}});
  std::string printed;
  EXPECT_THAT(switched(0, 0, &printed), ElementsAreArray({
                                            "ifconfig ra0 down",
                                            "brctl delif br0 ra0",
                                            "ifconfig ra1 down",
                                            "brctl delif br0 ra1",
                                            "ifconfig wds0 down",
                                            "brctl delif br0 wds0",
                                            "ifconfig wds1 down",
                                            "brctl delif br0 wds1",
                                            "ifconfig wds2 down",
                                            "brctl delif br0 wds2",
                                            "ifconfig wds3 down",
                                            "brctl delif br0 wds3",
                                        }));
  EXPECT_EQ("", printed);
  dat::load(1, {{"BssidNum", "1"}});
  EXPECT_THAT(switched(1, 0, &printed), ElementsAreArray({
                                            "ifconfig rai0 down",
                                            "brctl delif br0 rai0",
                                            "ifconfig wdsi0 down",
                                            "brctl delif br0 wdsi0",
                                            "ifconfig wdsi1 down",
                                            "brctl delif br0 wdsi1",
                                            "ifconfig wdsi2 down",
                                            "brctl delif br0 wdsi2",
                                            "ifconfig wdsi3 down",
                                            "brctl delif br0 wdsi3",
                                        }));
  EXPECT_EQ("", printed);
}

TEST(RadioOff, GoesByTheSsidCount) {
  for (const uint32_t band : {0U, 1U}) {
    for (const int count : {-1, 0, 1, 8, 11}) {
      dat::load(static_cast<int>(band), {});
      dat::put(static_cast<int>(band), -1, "BssidNum", std::to_string(count) + "\n");
      EXPECT_THAT(switched(band, 0),
                  ElementsAreArray(joined({down_from("br0", bss(band), count), down_from("br0", wds(band), 4)})));
    }
  }
}

TEST(RadioOff, UnreadableCountIsReportedAndCountsAsNone) {
  for (const uint32_t band : {0U, 1U}) {
    dat::load_text(static_cast<int>(band), sandbox::full_dat_without(static_cast<int>(band), "BssidNum"));
    std::string printed;
    EXPECT_THAT(switched(band, 0, &printed), ElementsAreArray(down_from("br0", wds(band), 4)));
    EXPECT_EQ(kNoCount, printed);
  }
}

TEST(RadioOn, BringsEnabledSsidsUpAndTakesDisabledOnesDown) {
  dat::load(0, {{"BssidNum", "3"}, {"EnableSSID", "0;1;0"}, {"WdsEnable", "0"}});
  std::string printed;
  EXPECT_THAT(switched(0, 1, &printed), ElementsAre("ifconfig ra0 down", "brctl delif br0 ra0", "ifconfig ra1 up",
                                                    "brctl addif br0 ra1", "ifconfig ra2 down", "brctl delif br0 ra2"));
  EXPECT_EQ("add ra1 to br0\n", printed);
  dat::load(1, {{"BssidNum", "2"}, {"EnableSSID", "1;0"}, {"WdsEnable", "1"}});
  EXPECT_THAT(switched(1, 1, &printed), ElementsAreArray({
                                            "ifconfig rai0 up",
                                            "brctl addif br0 rai0",
                                            "ifconfig rai1 down",
                                            "brctl delif br0 rai1",
                                            "ifconfig wdsi0 up",
                                            "brctl addif br0 wdsi0",
                                            "ifconfig wdsi1 up",
                                            "brctl addif br0 wdsi1",
                                            "ifconfig wdsi2 up",
                                            "brctl addif br0 wdsi2",
                                            "ifconfig wdsi3 up",
                                            "brctl addif br0 wdsi3",
                                        }));
  EXPECT_EQ("add rai0 to br0\naddif wdsi0 to br0\naddif wdsi1 to br0\naddif wdsi2 to br0\naddif wdsi3 to br0\n",
            printed);
}

TEST(RadioOn, OnlyOneIsEnabled) {
  for (const uint32_t band : {0U, 1U}) {
    for (const auto& [value, enabled] : std::initializer_list<std::pair<const char*, bool>>{{"1", true},
                                                                                            {"1\n", true},
                                                                                            {"01", true},
                                                                                            {"1x", true},
                                                                                            {"0", false},
                                                                                            {"2", false},
                                                                                            {"11", false},
                                                                                            {"-1", false},
                                                                                            {"on", false},
                                                                                            {"", false}}) {
      SCOPED_TRACE(testing::PrintToString(value) + " on band " + std::to_string(band));
      dat::load(static_cast<int>(band), {});
      dat::put(static_cast<int>(band), 2, "EnableSSID", value);
      EXPECT_THAT(switched(band, 1),
                  ElementsAreArray(joined(
                      {up_into("br0", bss(band), {0}), enabled ? up_into("br0", bss(band), {1}) : bss_down(band, 1)})));
    }
  }
}

TEST(RadioOn, UnreadableEnableSsidAndTheNinthAreTakenDown) {
  for (const uint32_t band : {0U, 1U}) {
    const int number = static_cast<int>(band);
    sandbox::load(number, sandbox::full_dat_without(number, "EnableSSID"));
    EXPECT_EQ(down_from("br0", bss(band), 2), switched(band, 1));
    dat::load(number, {{"BssidNum", "9"}, {"EnableSSID", "1;1;1;1;1;1;1;1"}});
    EXPECT_EQ(joined({up_into("br0", bss(band), {0, 1, 2, 3, 4, 5, 6, 7}), bss_down(band, 8)}), switched(band, 1));
  }
}

TEST(RadioOn, WdsThatIsNotOneIsLeftAlone) {
  for (const uint32_t band : {0U, 1U}) {
    const int number = static_cast<int>(band);
    for (const auto& [value, on] : std::initializer_list<std::pair<const char*, bool>>{
             {"1", true}, {"1\n", true}, {"01", true}, {"0", false}, {"2", false}, {"12", false}, {"", false}}) {
      SCOPED_TRACE(testing::PrintToString(value) + " on band " + std::to_string(band));
      dat::load(number, {});
      dat::put(number, -1, "WdsEnable", value);
      EXPECT_EQ(joined({up_into("br0", bss(band), {0, 1}), on ? up_into("br0", wds(band), {0, 1, 2, 3}) : Lines()}),
                switched(band, 1));
    }
    sandbox::load(number, sandbox::full_dat_without(number, "WdsEnable"));
    EXPECT_EQ(up_into("br0", bss(band), {0, 1}), switched(band, 1));
  }
}

TEST(RadioOn, UnreadableCountBringsWdsAlone) {
  for (const uint32_t band : {0U, 1U}) {
    const int number = static_cast<int>(band);
    dat::load_text(number, dat::with(sandbox::full_dat_without(number, "BssidNum"), "WdsEnable", "1"));
    std::string printed;
    EXPECT_EQ(up_into("br0", wds(band), {0, 1, 2, 3}), switched(band, 1, &printed));
    EXPECT_EQ(0U, printed.find(kNoCount));
  }
}

TEST(RadioSwitch, UnknownBandHasNoPrefixes) {
  for (const uint32_t band : {2U, 0xffffffffU}) {
    std::string printed;
    EXPECT_EQ(down_from("br0", "", 4), switched(band, 0, &printed));
    EXPECT_EQ(kNoCount, printed);
    EXPECT_THAT(switched(band, 1, &printed), IsEmpty());
    EXPECT_EQ(kNoCount, printed);
  }
}

TEST(RadioSwitch, OtherOperationsReadTheCountAndDoNothing) {
  for (const uint32_t oper : {2U, 0xffffffffU}) {
    dat::load(0, {});
    std::string printed;
    EXPECT_THAT(switched(0, oper, &printed), IsEmpty());
    EXPECT_EQ("", printed);
    dat::load_text(1, sandbox::full_dat_without(1, "BssidNum"));
    EXPECT_THAT(switched(1, oper, &printed), IsEmpty());
    EXPECT_EQ(kNoCount, printed);
  }
}

TEST(RadioSwitch, LooksAtNoCommandsStatusAndChangesNoStore) {
  for (const uint32_t band : {0U, 1U}) {
    dat::load(static_cast<int>(band), {{"WdsEnable", "1"}, {"ReloadFlag", "1"}});
    const std::string before = sandbox::segment_bytes(static_cast<int>(band));
    seams::on_command = [](const std::string&) { return -1; };
    EXPECT_EQ(12U, switched(band, 0).size());
    EXPECT_EQ(12U, switched(band, 1).size());
    EXPECT_EQ(before, sandbox::segment_bytes(static_cast<int>(band)));
  }
}

TEST(RadioSwitch, TracesEntryAndSuccess) {
  dat::load(0, {});
  const Lines lines = seams::trace_of([] { switched(0, 0); });
  EXPECT_EQ("[wifimgr_lib_wifi_onoff]:===Enter===\n", lines.front());
  EXPECT_EQ("[wifimgr_lib_wifi_onoff]:===Success Exit===\n", lines.back());
}

}  // namespace
