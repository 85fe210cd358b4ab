// Taking a band's interfaces out of br0 and back into it, and the drivers that are reloaded by name.
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

// What one call runs; what it prints goes to `printed`.
Lines run_of(uint32_t band, uint32_t oper, std::string* printed = nullptr) {
  seams::commands.clear();
  const std::string text = sandbox::stdout_of([=] { doWifiDownUp(band, oper); });
  if (printed != nullptr) *printed = text;
  return seams::commands;
}

TEST(WifiDown, TakesEveryBssAndAllWdsLinksOutOfBr0) {
  dat::load(0, {});
  std::string printed;
  EXPECT_THAT(run_of(0, 0, &printed), ElementsAreArray({
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
  dat::load(1, {});
  EXPECT_THAT(run_of(1, 0, &printed), ElementsAreArray({
                                          "ifconfig rai0 down",
                                          "brctl delif br0 rai0",
                                          "ifconfig rai1 down",
                                          "brctl delif br0 rai1",
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

TEST(WifiDown, GoesByTheSsidCountAndByNothingElse) {
  for (const uint32_t band : {0U, 1U}) {
    for (const int count : {-1, 0, 1, 8, 11}) {
      dat::load(static_cast<int>(band), {{"EnableSSID", "0;0"}, {"WdsEnable", "0"}});
      dat::put(static_cast<int>(band), -1, "BssidNum", std::to_string(count) + "x");
      EXPECT_THAT(run_of(band, 0),
                  ElementsAreArray(joined({down_from("br0", bss(band), count), down_from("br0", wds(band), 4)})));
    }
  }
}

TEST(WifiDown, UnreadableCountIsReportedAndCountsAsNone) {
  for (const uint32_t band : {0U, 1U}) {
    dat::load_text(static_cast<int>(band), sandbox::full_dat_without(static_cast<int>(band), "BssidNum"));
    std::string printed;
    EXPECT_THAT(run_of(band, 0, &printed), ElementsAreArray(down_from("br0", wds(band), 4)));
    EXPECT_EQ(kNoCount, printed);
  }
}

TEST(WifiDown, UnknownBandHasNoPrefixes) {
  for (const uint32_t band : {2U, 0xffffffffU}) {
    std::string printed;
    EXPECT_THAT(run_of(band, 0, &printed), ElementsAreArray(down_from("br0", "", 4)));
    EXPECT_EQ(kNoCount, printed);
    EXPECT_THAT(run_of(band, 1, &printed), IsEmpty());
    EXPECT_EQ(kNoCount, printed);
  }
}

TEST(WifiDownUp, OtherOperationsReadTheCountAndDoNothing) {
  for (const uint32_t oper : {2U, 0xffffffffU}) {
    dat::load(0, {});
    std::string printed;
    EXPECT_THAT(run_of(0, oper, &printed), IsEmpty());
    EXPECT_EQ("", printed);
    dat::load_text(1, sandbox::full_dat_without(1, "BssidNum"));
    EXPECT_THAT(run_of(1, oper, &printed), IsEmpty());
    EXPECT_EQ(kNoCount, printed);
  }
}

TEST(WifiUp, BringsEnabledSsidsAndWdsIntoBr0) {
  dat::load(0, {{"BssidNum", "3"}, {"EnableSSID", "1;0;1"}, {"WdsEnable", "1"}});
  std::string printed;
  EXPECT_THAT(run_of(0, 1, &printed), ElementsAreArray({
                                          "ifconfig ra0 up",
                                          "brctl addif br0 ra0",
                                          "ifconfig ra2 up",
                                          "brctl addif br0 ra2",
                                          "ifconfig wds0 up",
                                          "brctl addif br0 wds0",
                                          "ifconfig wds1 up",
                                          "brctl addif br0 wds1",
                                          "ifconfig wds2 up",
                                          "brctl addif br0 wds2",
                                          "ifconfig wds3 up",
                                          "brctl addif br0 wds3",
                                      }));
  EXPECT_EQ(
      "add ra0 to br0\nadd ra2 to br0\naddif wds0 to br0\naddif wds1 to br0\naddif wds2 to br0\naddif wds3 to br0\n",
      printed);
  dat::load(1, {{"BssidNum", "2"}, {"EnableSSID", "0;1"}, {"WdsEnable", "1"}});
  EXPECT_THAT(run_of(1, 1, &printed), ElementsAreArray({
                                          "ifconfig rai1 up",
                                          "brctl addif br0 rai1",
                                          "ifconfig wdsi0 up",
                                          "brctl addif br0 wdsi0",
                                          "ifconfig wdsi1 up",
                                          "brctl addif br0 wdsi1",
                                          "ifconfig wdsi2 up",
                                          "brctl addif br0 wdsi2",
                                          "ifconfig wdsi3 up",
                                          "brctl addif br0 wdsi3",
                                      }));
  EXPECT_EQ("add rai1 to br0\naddif wdsi0 to br0\naddif wdsi1 to br0\naddif wdsi2 to br0\naddif wdsi3 to br0\n",
            printed);
}

TEST(WifiUp, EveryNumberButZeroIsEnabled) {
  for (const uint32_t band : {0U, 1U}) {
    for (const auto& [value, enabled] : std::initializer_list<std::pair<const char*, bool>>{{"1", true},
                                                                                            {"1\n", true},
                                                                                            {"2", true},
                                                                                            {"-1", true},
                                                                                            {"1x", true},
                                                                                            {"0", false},
                                                                                            {"0\n", false},
                                                                                            {"on", false},
                                                                                            {"", false},
                                                                                            {"00", false}}) {
      SCOPED_TRACE(testing::PrintToString(value) + " on band " + std::to_string(band));
      dat::load(static_cast<int>(band), {{"EnableSSID", "0;0"}});
      dat::put(static_cast<int>(band), 2, "EnableSSID", value);
      const Lines first = band == 0 ? Lines{"ifconfig ra0 up", "ifconfig ra0 down"} : Lines();
      std::string printed;
      EXPECT_THAT(run_of(band, 1, &printed),
                  ElementsAreArray(joined({first, enabled ? up_into("br0", bss(band), {1}) : Lines()})));
      EXPECT_EQ(enabled ? "add " + bss(band) + "1 to br0\n" : std::string(), printed);
    }
  }
}

TEST(WifiUp, UnreadableEnableSsidAndTheNinthCountAsDisabled) {
  for (const uint32_t band : {0U, 1U}) {
    const int number = static_cast<int>(band);
    const Lines first = band == 0 ? Lines{"ifconfig ra0 up", "ifconfig ra0 down"} : Lines();
    sandbox::load(number, sandbox::full_dat_without(number, "EnableSSID"));
    EXPECT_EQ(first, run_of(band, 1));
    dat::load(number, {{"BssidNum", "10"}, {"EnableSSID", "1;1;1;1;1;1;1;1"}});
    EXPECT_THAT(run_of(band, 1), ElementsAreArray(up_into("br0", bss(band), {0, 1, 2, 3, 4, 5, 6, 7})));
  }
}

TEST(WifiUp, DisabledFirstSsidOf2_4GIsInitialisedAndLeftDown) {
  dat::load(0, {{"BssidNum", "1"}, {"EnableSSID", "0"}, {"WdsEnable", "0"}});
  std::string printed;
  EXPECT_THAT(run_of(0, 1, &printed), ElementsAre("ifconfig ra0 up", "ifconfig ra0 down"));
  EXPECT_EQ("", printed);
  dat::load(0, {{"BssidNum", "2"}, {"EnableSSID", "0;1"}});
  EXPECT_THAT(run_of(0, 1),
              ElementsAre("ifconfig ra0 up", "ifconfig ra0 down", "ifconfig ra1 up", "brctl addif br0 ra1"));
  dat::load(0, {{"BssidNum", "3"}, {"EnableSSID", "1;0;0"}});
  EXPECT_THAT(run_of(0, 1), ElementsAre("ifconfig ra0 up", "brctl addif br0 ra0"));
}

TEST(WifiUp, WdsIsStillExaminedAfterADisabledOnlySsid) {
  dat::load(0, {{"BssidNum", "1"}, {"EnableSSID", "0"}, {"WdsEnable", "1"}});
  EXPECT_THAT(
      run_of(0, 1),
      ElementsAreArray(joined({{"ifconfig ra0 up", "ifconfig ra0 down"}, up_into("br0", "wds", {0, 1, 2, 3})})));
}

TEST(WifiUp, WdsComesUpForOneAlone) {
  for (const uint32_t band : {0U, 1U}) {
    for (const auto& [value, on] : std::initializer_list<std::pair<const char*, bool>>{{"1", true},
                                                                                       {"1\n", true},
                                                                                       {"01", true},
                                                                                       {"1x", true},
                                                                                       {"0", false},
                                                                                       {"2", false},
                                                                                       {"12", false},
                                                                                       {"-1", false},
                                                                                       {"", false}}) {
      SCOPED_TRACE(testing::PrintToString(value) + " on band " + std::to_string(band));
      dat::load(static_cast<int>(band), {});
      dat::put(static_cast<int>(band), -1, "WdsEnable", value);
      EXPECT_THAT(run_of(band, 1), ElementsAreArray(joined({up_into("br0", bss(band), {0, 1}),
                                                            on ? up_into("br0", wds(band), {0, 1, 2, 3}) : Lines()})));
    }
    sandbox::load(static_cast<int>(band), sandbox::full_dat_without(static_cast<int>(band), "WdsEnable"));
    EXPECT_THAT(run_of(band, 1), ElementsAreArray(up_into("br0", bss(band), {0, 1})));
  }
}

TEST(WifiUp, UnreadableCountBringsWdsAlone) {
  for (const uint32_t band : {0U, 1U}) {
    const int number = static_cast<int>(band);
    dat::load_text(number, dat::with(sandbox::full_dat_without(number, "BssidNum"), "WdsEnable", "1"));
    std::string printed;
    EXPECT_THAT(run_of(band, 1, &printed), ElementsAreArray(up_into("br0", wds(band), {0, 1, 2, 3})));
    EXPECT_EQ(0U, printed.find(kNoCount));
  }
}

TEST(WifiDownUp, ChangesNoStore) {
  for (const uint32_t band : {0U, 1U}) {
    dat::load(static_cast<int>(band), {{"ReloadFlag", "1"}});
    const std::string before = sandbox::segment_bytes(static_cast<int>(band));
    run_of(band, 0);
    run_of(band, 1);
    EXPECT_EQ(before, sandbox::segment_bytes(static_cast<int>(band)));
  }
}

Lines executed(uint32_t band, uint32_t oper) {
  seams::commands.clear();
  sandbox::stdout_of([=] { EXPECT_EQ(0U, wifimgr_lib_wifi_execute(band, oper)); });
  return seams::commands;
}

TEST(WifiExecute, EveryOperationButZeroIsDownThenUp) {
  for (const uint32_t band : {0U, 1U}) {
    dat::load(static_cast<int>(band), {{"WdsEnable", "1"}});
    const Lines down = run_of(band, 0);
    const Lines down_up = joined({down, run_of(band, 1)});
    ASSERT_EQ(24U, down_up.size());
    EXPECT_EQ(down, executed(band, 0));
    for (const uint32_t oper : {1U, 2U, 0xffffffffU}) EXPECT_EQ(down_up, executed(band, oper)) << oper;
  }
  EXPECT_THAT(executed(2, 1), ElementsAreArray(down_from("br0", "", 4)));
}

TEST(WifiExecute, TracesEntryAndSuccess) {
  dat::load(0, {});
  const Lines lines = seams::trace_of([] { executed(0, 1); });
  EXPECT_EQ("[wifimgr_lib_wifi_execute]:===Enter===\n", lines.front());
  EXPECT_EQ("[wifimgr_lib_wifi_execute]:===Success Exit===\n", lines.back());
}

TEST(ReloadDriver, GivesTheStatusOfTheSecondCommand) {
  for (const int status : {0, -1, 256, 127 << 8}) {
    seams::commands.clear();
    seams::on_command = [status](const std::string& line) {
      return line == "insmod /lib/modules/mt7915_ap.ko" ? status : 4242;
    };
    EXPECT_EQ(status, reload_WlanAC_Driver());
    EXPECT_THAT(seams::commands, ElementsAre("rmmod mt7915_ap", "insmod /lib/modules/mt7915_ap.ko"));
  }
}

TEST(ReloadDriver, OtherModuleIsReloadedWhateverTheCommandsAnswer) {
  seams::on_command = [](const std::string&) { return 256; };
  const std::vector<std::string> trace = seams::trace_of([] { EXPECT_EQ(0U, wifimgr_lib_insmod_ko()); });
  EXPECT_THAT(trace, testing::ElementsAre("[wifimgr_lib_insmod_ko]:===Enter===\n",
                                          "[wifimgr_lib_insmod_ko]:===Success Exit===\n"));
  EXPECT_THAT(seams::commands, ElementsAre("rmmod rt3390ap", "insmod /lib/modules/rt3390ap.ko"));
}

}  // namespace
