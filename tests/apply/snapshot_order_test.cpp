// Which getters the change detection asks, in which order, as the trace shows it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;
using Names = std::vector<std::string>;

// The getters that `run` enters, without "wifimgr_lib_get_". A getter for one SSID enters "bssidnum" itself.
Names getters_of(const std::function<void()>& run) {
  static constexpr char kStart[] = "[wifimgr_lib_get_";
  static constexpr char kEnd[] = "]:===Enter===\n";
  Names names;
  for (const std::string& line : seams::trace_of(run)) {
    if (line.rfind(kStart, 0) != 0 || line.size() < sizeof kStart + sizeof kEnd) continue;
    const size_t end = line.size() - (sizeof kEnd - 1);
    if (line.substr(end) == kEnd) names.push_back(line.substr(sizeof kStart - 1, end - (sizeof kStart - 1)));
  }
  return names;
}

Names joined(std::initializer_list<Names> parts) {
  Names all;
  for (const Names& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

const Names kSystemReboot = {"bssidnum", "WHNAT"};
const Names kCommon = {"channel",     "beaconPeriod", "dtimPeriod", "HT_TxStream",
                       "HT_RxStream", "wirelessMode", "txPower",    "fragThreshold"};
const Names kEntry = {"bssidnum", "apsdCapable", "bssidnum", "wscV2Support", "bssidnum", "enableSsid", "bssidnum"};
const Names kHt = {"HT_BSSCoexistence", "HT_EXTCHA", "HT_BW", "HT_GI"};
const Names kVht = {"bssidnum", "VHT_BW", "VHT_SGI"};
const Names kHe = {"MuOfdmaDlEnable", "MuOfdmaUlEnable", "MuMimoDlEnable", "MuMimoUlEnable",
                   "TWTSupport",      "SREnable",        "SRMode",         "SRSDEnable"};
const Names kWds = {"wdsenable", "wdsencryptype", "wdskey", "wdslist"};
const Names kWdsAuth = {"authMode", "bssidnum"};
const Names kWdsKeys = {"keyStr", "bssidnum", "keyStr", "bssidnum", "keyStr", "bssidnum", "keyStr", "bssidnum"};

uint64_t take(uint32_t band) {
  return wifimgr_lib_wifi_config_oper(band, 0);
}
uint64_t compare(uint32_t band) {
  return wifimgr_lib_wifi_config_oper(band, 1);
}

TEST(SnapshotOrder, Taking2_4GReadsTheGroupsInOrder) {
  dat::load(0, {});
  EXPECT_THAT(getters_of([] { take(0); }),
              ElementsAreArray(joined({kSystemReboot, kCommon, {"countryRegion"}, kEntry, kHt, kHe, kWds})));
}

TEST(SnapshotOrder, Taking5GReadsTheGroupsInOrder) {
  dat::load(1, {});
  EXPECT_THAT(getters_of([] { take(1); }),
              ElementsAreArray(joined({kSystemReboot, kCommon, {"countryRegionABand"}, kEntry, kHt, kVht, kHe, kWds})));
}

TEST(SnapshotOrder, TakingWithWdsOnAsksForTheSecurityOfTheFirstSsid) {
  dat::load(0, {{"WdsEnable", "1"}});
  EXPECT_THAT(getters_of([] { take(0); }),
              ElementsAreArray(joined({kSystemReboot, kCommon, {"countryRegion"}, kEntry, kHt, kHe, kWds, kWdsAuth})));
}

TEST(SnapshotOrder, TakingWithWdsOnAndWepReadsTheFourKeys) {
  dat::load(0, {{"WdsEnable", "1"}, {"AuthMode", "WEPAUTO;OPEN"}});
  EXPECT_THAT(getters_of([] { take(0); }),
              ElementsAreArray(
                  joined({kSystemReboot, kCommon, {"countryRegion"}, kEntry, kHt, kHe, kWds, kWdsAuth, kWdsKeys})));
}

TEST(SnapshotOrder, ComparingWithoutADifferenceReadsEverything) {
  for (const uint32_t band : {0U, 1U}) {
    SCOPED_TRACE(band);
    dat::load(static_cast<int>(band), {{"WdsEnable", "1"}, {"AuthMode", "WEPAUTO;OPEN"}});
    take(band);
    EXPECT_THAT(getters_of([band] { EXPECT_EQ(0U, compare(band)); }),
                ElementsAreArray(joined({kSystemReboot,
                                         kCommon,
                                         {band == 0 ? "countryRegion" : "countryRegionABand"},
                                         kEntry,
                                         kHt,
                                         band == 0 ? Names() : kVht,
                                         kHe,
                                         kWds,
                                         kWdsAuth,
                                         kWdsKeys})));
  }
}

TEST(SnapshotOrder, ComparingWithWdsOffReadsNothingElseOfIt) {
  dat::load(0, {});
  take(0);
  EXPECT_THAT(getters_of([] { compare(0); }),
              ElementsAreArray(joined({kSystemReboot, kCommon, {"countryRegion"}, kEntry, kHt, kHe, {"wdsenable"}})));
}

// Everything that comes before the changed key is asked, nothing behind it.
TEST(SnapshotOrder, ComparingEndsAtTheFirstDifference) {
  const Names all =
      joined({kSystemReboot, kCommon, {"countryRegionABand"}, kEntry, kHt, kVht, kHe, kWds, kWdsAuth, kWdsKeys});
  struct Change {
    const char* key;
    size_t getters;
  };
  for (const Change& change : std::initializer_list<Change>{{"BssidNum", 1},
                                                            {"WHNAT", 2},
                                                            {"Channel", 3},
                                                            {"BeaconPeriod", 4},
                                                            {"DtimPeriod", 5},
                                                            {"HT_TxStream", 6},
                                                            {"HT_RxStream", 7},
                                                            {"WirelessMode", 8},
                                                            {"TxPower", 9},
                                                            {"FragThreshold", 10},
                                                            {"CountryRegionABand", 11},
                                                            {"APSDCapable", 14},
                                                            {"WscV2Support", 16},
                                                            {"EnableSSID", 18},
                                                            {"HT_BSSCoexistence", 19},
                                                            {"HT_EXTCHA", 20},
                                                            {"HT_BW", 21},
                                                            {"HT_GI", 22},
                                                            {"VHT_BW", 24},
                                                            {"VHT_SGI", 25},
                                                            {"MuOfdmaDlEnable", 26},
                                                            {"MuOfdmaUlEnable", 27},
                                                            {"MuMimoDlEnable", 28},
                                                            {"MuMimoUlEnable", 29},
                                                            {"TWTSupport", 30},
                                                            {"SREnable", 31},
                                                            {"SRMode", 32},
                                                            {"SRSDEnable", 33},
                                                            {"WdsEnable", 34},
                                                            {"WdsEncrypType", 35},
                                                            {"Wds0Key", 36},
                                                            {"WdsList", 37},
                                                            {"Key1Str1", 41},
                                                            {"Key2Str1", 43},
                                                            {"Key3Str1", 45},
                                                            {"Key4Str1", 47}}) {
    SCOPED_TRACE(change.key);
    dat::load(1, {{"WdsEnable", "1"}, {"AuthMode", "WEPAUTO;OPEN"}});
    take(1);
    dat::put(1, -1, change.key, "9");
    EXPECT_THAT(getters_of([] { EXPECT_NE(0U, compare(1)); }),
                ElementsAreArray(Names(all.begin(), all.begin() + static_cast<long>(change.getters))));
  }
}

TEST(SnapshotOrder, TheDetectionItselfTracesNothing) {
  dat::load(1, {{"WdsEnable", "1"}, {"AuthMode", "WEPAUTO;OPEN"}});
  const auto trace = seams::trace_of([] {
    take(1);
    compare(1);
    dat::put(1, -1, "Channel", "9");
    compare(1);
  });
  for (const char* function : {"wifi_config_oper", "systemreboot", "commoncap", "entrycap", "htcap", "hecap",
                               "wds_store", "wds_compare", "chipspecial"}) {
    EXPECT_THAT(trace, testing::Each(testing::Not(HasSubstr(function))));
  }
}

TEST(SnapshotOrder, UnreadableSsidCountEndsItsGroupAtOnce) {
  dat::load_text(1, sandbox::full_dat_without(1, "BssidNum"));
  wifimgr_band_snapshot record{};
  EXPECT_THAT(getters_of([&] { systemreboot_store(&record, 1); }), ElementsAreArray({"bssidnum"}));
  EXPECT_THAT(getters_of([&] { systemreboot_compare(&record, 1); }), ElementsAreArray({"bssidnum", "WHNAT"}));
  for (const auto group : {entrycap_store, entrycap_compare, vhtcap_store, vhtcap_compare}) {
    EXPECT_THAT(getters_of([&] { group(&record, 1); }), ElementsAreArray({"bssidnum"}));
  }
}

TEST(SnapshotOrder, RegionIsReadWithTheBandsOwnGetter) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {});
    wifimgr_band_snapshot record{};
    const char* const own = band == 0 ? "countryRegion" : "countryRegionABand";
    const auto names = getters_of([&] { commoncap_store(&record, static_cast<uint32_t>(band)); });
    EXPECT_EQ(own, names.back());
    EXPECT_EQ(9U, names.size());
  }
}

}  // namespace
