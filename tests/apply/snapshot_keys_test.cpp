// Which settings the change detection watches, and which it does not.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <sstream>

#include "apply/dat_text.h"

namespace {

using Snapshot = wifimgr_band_snapshot;

constexpr int kBoth = 2;

// A watched number: its key, where the record keeps it, the answer to a change, the band that watches it.
struct Watched {
  const char* key;
  size_t offset;
  uint64_t change;
  int band;
};

constexpr Watched kWatched[] = {
    {"BssidNum", 16, 2, kBoth},
    {"WHNAT", 20, 2, kBoth},
    {"Channel", 24, 1, kBoth},
    {"CountryRegion", 28, 1, 0},
    {"CountryRegionABand", 32, 1, 1},
    {"BeaconPeriod", 36, 1, kBoth},
    {"DtimPeriod", 40, 1, kBoth},
    {"HT_TxStream", 44, 1, kBoth},
    {"HT_RxStream", 48, 1, kBoth},
    {"HT_BSSCoexistence", 52, 1, kBoth},
    {"WirelessMode", 56, 1, kBoth},
    {"HT_EXTCHA", 60, 1, kBoth},
    {"HT_BW", 64, 1, kBoth},
    {"HT_GI", 68, 1, kBoth},
    {"VHT_BW", 72, 1, 1},
    {"VHT_SGI", 76, 1, 1},
    {"TxPower", 80, 1, kBoth},
    {"MuOfdmaDlEnable", 84, 1, kBoth},
    {"MuOfdmaUlEnable", 88, 1, kBoth},
    {"MuMimoDlEnable", 92, 1, kBoth},
    {"MuMimoUlEnable", 96, 1, kBoth},
    {"TWTSupport", 100, 1, kBoth},
    {"SREnable", 104, 1, kBoth},
    {"SRMode", 108, 1, kBoth},
    {"SRSDEnable", 112, 1, kBoth},
    {"FragThreshold", 116, 1, kBoth},
    {"APSDCapable", 406, 1, kBoth},
    {"WscV2Support", 414, 1, kBoth},
    {"EnableSSID", 422, 1, kBoth},
};

// Keys of both bands, so that a band is seen to leave the other one's alone.
std::string dat_of(int band) {
  return sandbox::full_dat(band) + (band == 0 ? "CountryRegionABand=7\n" : "CountryRegion=5\n");
}

uint64_t take(int band) {
  return wifimgr_lib_wifi_config_oper(static_cast<uint32_t>(band), 0);
}
uint64_t compare(int band) {
  return wifimgr_lib_wifi_config_oper(static_cast<uint32_t>(band), 1);
}

int32_t number_at(const std::string& record, size_t offset) {
  int32_t number = 0;
  std::memcpy(&number, record.data() + offset, sizeof number);
  return number;
}

std::string record_of(int band) {
  return std::string(reinterpret_cast<const char*>(&store_global[band]), sizeof(Snapshot));
}

template <typename Run>
void for_every_watched_number(Run run) {
  for (const int band : {0, 1}) {
    for (const Watched& watched : kWatched) {
      if (watched.band != kBoth && watched.band != band) continue;
      SCOPED_TRACE(std::string(watched.key) + " of band " + std::to_string(band));
      run(band, watched);
    }
  }
}

TEST(SnapshotKeys, EveryWatchedNumberHasItsOwnField) {
  for (const int band : {0, 1}) sandbox::load(band, dat_of(band));
  for_every_watched_number([](int band, const Watched& watched) {
    const std::string old_value = sandbox::field(band, watched.key, 1);
    take(band);
    std::string expected = record_of(band);
    const int32_t number = 7;
    std::memcpy(&expected[watched.offset], &number, sizeof number);
    dat::put(band, -1, watched.key, "7");
    take(band);
    EXPECT_EQ(expected, record_of(band));
    dat::put(band, -1, watched.key, old_value);
  });
}

TEST(SnapshotKeys, ChangeOfEveryWatchedNumberIsDetected) {
  for (const int band : {0, 1}) sandbox::load(band, dat_of(band));
  for_every_watched_number([](int band, const Watched& watched) {
    const std::string old_value = sandbox::field(band, watched.key, 1);
    take(band);
    dat::put(band, -1, watched.key, "77");
    EXPECT_EQ(watched.change, compare(band));
    dat::put(band, -1, watched.key, old_value);
    EXPECT_EQ(0U, compare(band));
  });
}

TEST(SnapshotKeys, AnotherSpellingOfTheSameNumberIsNoChange) {
  for (const int band : {0, 1}) sandbox::load(band, dat_of(band));
  for_every_watched_number([](int band, const Watched& watched) {
    for (const char* spelling : {"2", "002", "+2", " 2", "2\n", "2x"}) {
      SCOPED_TRACE(spelling);
      dat::put(band, -1, watched.key, "2");
      take(band);
      dat::put(band, -1, watched.key, spelling);
      EXPECT_EQ(0U, compare(band));
    }
  });
}

TEST(SnapshotKeys, NegativeNumbersAndWordsCount) {
  for (const int band : {0, 1}) sandbox::load(band, dat_of(band));
  for_every_watched_number([](int band, const Watched& watched) {
    const std::string old_value = sandbox::field(band, watched.key, 1);
    // A band without SSIDs has neither entries nor a value to repeat: only its own count shows.
    dat::put(band, -1, watched.key, "-5");
    take(band);
    EXPECT_EQ(-5, number_at(record_of(band), watched.offset));
    dat::put(band, -1, watched.key, "none");
    EXPECT_EQ(watched.change, compare(band));
    take(band);
    EXPECT_EQ(0, number_at(record_of(band), watched.offset));
    dat::put(band, -1, watched.key, old_value);
  });
}

// Every key that the full text has besides the watched ones; those of WDS have tests of their own.
TEST(SnapshotKeys, ChangesOfAllOtherSettingsAreNotDetected) {
  for (const int band : {0, 1}) {
    std::set<std::string> watched_keys;
    for (const Watched& watched : kWatched) {
      if (watched.band == kBoth || watched.band == band) watched_keys.insert(watched.key);
    }
    const std::string text = dat_of(band);
    sandbox::load(band, text);
    take(band);
    int tried = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
      const std::string key = line.substr(0, line.find('='));
      if (key.size() == line.size() || watched_keys.count(key) != 0 || key == "WdsEnable") continue;
      SCOPED_TRACE(key + " of band " + std::to_string(band));
      dat::put(band, -1, key, "77");
      EXPECT_EQ(0U, compare(band));
      ++tried;
    }
    EXPECT_GT(tried, 100);
  }
}

TEST(SnapshotKeys, OnlyTheFirstSsidIsWatched) {
  for (const int band : {0, 1}) {
    sandbox::load(band, dat::with(dat_of(band), "BssidNum", "8"));
    take(band);
    const std::string before = record_of(band);
    for (const char* key : {"APSDCapable", "WscV2Support", "EnableSSID"}) {
      for (int ssid = 2; ssid <= 8; ++ssid) {
        SCOPED_TRACE(std::string(key) + " of SSID " + std::to_string(ssid));
        dat::put(band, ssid, key, "77");
        EXPECT_EQ(0U, compare(band));
      }
      take(band);
      EXPECT_EQ(before, record_of(band));
      dat::put(band, 1, key, "77");
      EXPECT_EQ(1U, compare(band));
      dat::put(band, 1, key, "1");
    }
  }
}

TEST(SnapshotKeys, RegionIsWatchedOnItsOwnBandAlone) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    sandbox::load(band, dat_of(band));
    take(band);
    dat::put(band, -1, band == 0 ? "CountryRegionABand" : "CountryRegion", "1");
    EXPECT_EQ(0U, compare(band));
    dat::put(band, -1, band == 0 ? "CountryRegion" : "CountryRegionABand", "1");
    EXPECT_EQ(1U, compare(band));
  }
}

TEST(SnapshotKeys, VhtIsWatchedOn5GAlone) {
  sandbox::load(0, dat_of(0));
  take(0);
  dat::put(0, -1, "VHT_BW", "3");
  dat::put(0, -1, "VHT_SGI", "0");
  EXPECT_EQ(0U, compare(0));
}

}  // namespace
