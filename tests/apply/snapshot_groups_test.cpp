// The groups of watched numbers one by one: what they do about values that cannot be read.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Snapshot = wifimgr_band_snapshot;
using Group = uint64_t (*)(wifimgr_band_snapshot*, uint32_t);

Snapshot filled() {
  Snapshot record;
  std::memset(&record, 0x11, sizeof record);
  return record;
}

constexpr int32_t kFilled = 0x11111111;

int32_t number_at(const Snapshot& record, size_t offset) {
  int32_t number = 0;
  std::memcpy(&number, reinterpret_cast<const char*>(&record) + offset, sizeof number);
  return number;
}

// The rows of the groups that skip what they cannot read.
struct Row {
  const char* key;
  size_t offset;
  Group store;
  Group compare;
};

constexpr Row kRows[] = {
    {"Channel", 24, commoncap_store, commoncap_compare},
    {"BeaconPeriod", 36, commoncap_store, commoncap_compare},
    {"DtimPeriod", 40, commoncap_store, commoncap_compare},
    {"HT_TxStream", 44, commoncap_store, commoncap_compare},
    {"HT_RxStream", 48, commoncap_store, commoncap_compare},
    {"WirelessMode", 56, commoncap_store, commoncap_compare},
    {"TxPower", 80, commoncap_store, commoncap_compare},
    {"FragThreshold", 116, commoncap_store, commoncap_compare},
    {"APSDCapable", 406, entrycap_store, entrycap_compare},
    {"WscV2Support", 414, entrycap_store, entrycap_compare},
    {"EnableSSID", 422, entrycap_store, entrycap_compare},
    {"HT_BSSCoexistence", 52, htcap_store, htcap_compare},
    {"HT_EXTCHA", 60, htcap_store, htcap_compare},
    {"HT_BW", 64, htcap_store, htcap_compare},
    {"HT_GI", 68, htcap_store, htcap_compare},
    {"MuOfdmaDlEnable", 84, hecap_store, hecap_compare},
    {"MuOfdmaUlEnable", 88, hecap_store, hecap_compare},
    {"MuMimoDlEnable", 92, hecap_store, hecap_compare},
    {"MuMimoUlEnable", 96, hecap_store, hecap_compare},
    {"TWTSupport", 100, hecap_store, hecap_compare},
    {"SREnable", 104, hecap_store, hecap_compare},
    {"SRMode", 108, hecap_store, hecap_compare},
    {"SRSDEnable", 112, hecap_store, hecap_compare},
    {"WHNAT", 20, systemreboot_store, systemreboot_compare},
};

TEST(SnapshotGroups, UnreadableNumberKeepsItsFieldAndTheOthersAreStored) {
  for (const uint32_t band : {0U, 1U}) {
    for (const Row& row : kRows) {
      SCOPED_TRACE(std::string(row.key) + " of band " + std::to_string(band));
      const int number = static_cast<int>(band);
      sandbox::load(number, sandbox::full_dat(number));
      Snapshot expected = filled();
      EXPECT_EQ(0U, row.store(&expected, band));
      EXPECT_NE(kFilled, number_at(expected, row.offset));
      std::memcpy(reinterpret_cast<char*>(&expected) + row.offset, &kFilled, sizeof kFilled);
      sandbox::load(number, sandbox::full_dat_without(number, row.key));
      Snapshot record = filled();
      EXPECT_EQ(0U, row.store(&record, band));
      EXPECT_EQ(0, std::memcmp(&expected, &record, sizeof record));
    }
  }
}

TEST(SnapshotGroups, UnreadableNumberDoesNotDiffer) {
  for (const uint32_t band : {0U, 1U}) {
    for (const Row& row : kRows) {
      SCOPED_TRACE(std::string(row.key) + " of band " + std::to_string(band));
      const int number = static_cast<int>(band);
      sandbox::load(number, sandbox::full_dat(number));
      Snapshot record{};
      row.store(&record, band);
      const int32_t other = number_at(record, row.offset) + 1;
      std::memcpy(reinterpret_cast<char*>(&record) + row.offset, &other, sizeof other);
      EXPECT_NE(0U, row.compare(&record, band));
      sandbox::load(number, sandbox::full_dat_without(number, row.key));
      EXPECT_EQ(0U, row.compare(&record, band));
    }
  }
}

TEST(SnapshotGroups, RegionThatCannotBeReadCountsAsZero) {
  for (const uint32_t band : {0U, 1U}) {
    SCOPED_TRACE(band);
    const int number = static_cast<int>(band);
    sandbox::load(number, sandbox::full_dat_without(number, band == 0 ? "CountryRegion" : "CountryRegionABand"));
    Snapshot record = filled();
    commoncap_store(&record, band);
    EXPECT_EQ(0, band == 0 ? record.country_region : record.country_region_a_band);
    EXPECT_EQ(kFilled, band == 0 ? record.country_region_a_band : record.country_region);
    EXPECT_EQ(0U, commoncap_compare(&record, band));
    (band == 0 ? record.country_region : record.country_region_a_band) = 1;
    EXPECT_EQ(1U, commoncap_compare(&record, band));
  }
}

TEST(SnapshotGroups, WithoutAnSsidCountWhnatIsNotStored) {
  dat::load_text(0, sandbox::full_dat_without(0, "BssidNum"));
  Snapshot record = filled();
  EXPECT_EQ(0U, systemreboot_store(&record, 0));
  const Snapshot untouched = filled();
  EXPECT_EQ(0, std::memcmp(&untouched, &record, sizeof record));
}

TEST(SnapshotGroups, WithoutAnSsidCountWhnatIsStillCompared) {
  dat::load_text(0, sandbox::full_dat_without(0, "BssidNum"));
  Snapshot record{};
  record.bss_count = 9;
  EXPECT_EQ(0U, systemreboot_compare(&record, 0));
  record.whnat = 1;
  EXPECT_EQ(2U, systemreboot_compare(&record, 0));
}

TEST(SnapshotGroups, SsidCountIsComparedWithoutWhnat) {
  sandbox::load(0, sandbox::full_dat_without(0, "WHNAT"));
  Snapshot record{};
  record.whnat = 5;
  record.bss_count = 2;
  EXPECT_EQ(0U, systemreboot_compare(&record, 0));
  record.bss_count = 3;
  EXPECT_EQ(2U, systemreboot_compare(&record, 0));
}

TEST(SnapshotGroups, WithoutAnSsidCountEntriesAreNotStored) {
  dat::load_text(1, sandbox::full_dat_without(1, "BssidNum"));
  Snapshot record = filled();
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(0U, entrycap_store(&record, 1)); }),
              testing::Not(testing::Contains(testing::HasSubstr("entrycap"))));
  const Snapshot untouched = filled();
  EXPECT_EQ(0, std::memcmp(&untouched, &record, sizeof record));
}

TEST(SnapshotGroups, WithoutAnSsidCountEntriesDifferAndTheTraceSaysSo) {
  dat::load_text(1, sandbox::full_dat_without(1, "BssidNum"));
  Snapshot record{};
  const auto trace = seams::trace_of([&] { EXPECT_EQ(1U, entrycap_compare(&record, 1)); });
  EXPECT_EQ("[entrycap_compare]:===Fail Exit===\n", trace.back());
  EXPECT_THAT(seams::errors_of([&] { entrycap_compare(&record, 1); }),
              ElementsAre("[read_attr]:===Fail Exit===The attr_name do not exist.\n"));
}

TEST(SnapshotGroups, WithoutSsidsNoEntryIsReadOrCompared) {
  dat::load(0, {{"BssidNum", "0"}});
  Snapshot record = filled();
  EXPECT_EQ(0U, entrycap_store(&record, 0));
  const Snapshot untouched = filled();
  EXPECT_EQ(0, std::memcmp(&untouched, &record, sizeof record));
  EXPECT_EQ(0U, entrycap_compare(&record, 0));
}

TEST(SnapshotGroups, TheOnlySsidIsStoredAndCompared) {
  dat::load(0, {{"BssidNum", "1"}, {"EnableSSID", "1"}});
  Snapshot record{};
  EXPECT_EQ(0U, entrycap_store(&record, 0));
  EXPECT_EQ(0U, entrycap_compare(&record, 0));
  dat::put(0, 1, "EnableSSID", "0");
  EXPECT_EQ(1U, entrycap_compare(&record, 0));
}

TEST(SnapshotGroups, WithoutAnSsidCountVhtIsNeitherStoredNorCompared) {
  dat::load_text(1, sandbox::full_dat_without(1, "BssidNum"));
  Snapshot record = filled();
  EXPECT_EQ(0U, vhtcap_store(&record, 1));
  const Snapshot untouched = filled();
  EXPECT_EQ(0, std::memcmp(&untouched, &record, sizeof record));
  EXPECT_EQ(0U, vhtcap_compare(&record, 1));
}

TEST(SnapshotGroups, WithoutSsidsVhtCountsAsZero) {
  dat::load(1, {{"BssidNum", "0"}, {"VHT_BW", "2;2"}, {"VHT_SGI", "1;1"}});
  Snapshot record = filled();
  EXPECT_EQ(0U, vhtcap_store(&record, 1));
  EXPECT_EQ(0, record.vht_bw);
  EXPECT_EQ(0, record.vht_sgi);
  EXPECT_EQ(0U, vhtcap_compare(&record, 1));
}

TEST(SnapshotGroups, VhtThatCannotBeReadCountsAsZero) {
  for (const char* key : {"VHT_BW", "VHT_SGI"}) {
    SCOPED_TRACE(key);
    const bool bandwidth = std::strcmp(key, "VHT_BW") == 0;
    sandbox::load(1, sandbox::full_dat_without(1, key));
    Snapshot record = filled();
    EXPECT_EQ(0U, vhtcap_store(&record, 1));
    EXPECT_EQ(bandwidth ? 0 : 1, record.vht_bw);
    EXPECT_EQ(bandwidth ? 1 : 0, record.vht_sgi);
    EXPECT_EQ(0U, vhtcap_compare(&record, 1));
    (bandwidth ? record.vht_bw : record.vht_sgi) = 1;
    EXPECT_EQ(1U, vhtcap_compare(&record, 1));
  }
}

TEST(SnapshotGroups, VhtOf2_4GIsNeitherStoredNorCompared) {
  dat::load(0, {{"VHT_BW", "2;2"}});
  Snapshot record = filled();
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(0U, vhtcap_store(&record, 0)); }), IsEmpty());
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(0U, vhtcap_compare(&record, 0)); }), IsEmpty());
  EXPECT_EQ(kFilled, record.vht_bw);
}

TEST(SnapshotGroups, VhtIsTheFirstNumberOfItsValue) {
  dat::load(1, {});
  dat::put(1, -1, "VHT_BW", "3;2;1");
  Snapshot record{};
  vhtcap_store(&record, 1);
  EXPECT_EQ(3, record.vht_bw);
  dat::put(1, -1, "VHT_BW", std::string(149, '0'));
  vhtcap_store(&record, 1);
  EXPECT_EQ(0, record.vht_bw);
}

TEST(SnapshotGroups, UnknownBandDiffersOnlyWhereACountIsNeeded) {
  dat::load(0, {});
  Snapshot record = filled();
  for (const uint32_t band : {2U, UINT32_MAX}) {
    SCOPED_TRACE(band);
    for (const Group store :
         {systemreboot_store, commoncap_store, entrycap_store, htcap_store, vhtcap_store, hecap_store}) {
      EXPECT_EQ(0U, store(&record, band));
    }
    const Snapshot untouched = filled();
    EXPECT_EQ(0, std::memcmp(&untouched, &record, sizeof record));
    for (const Group compare :
         {systemreboot_compare, commoncap_compare, htcap_compare, vhtcap_compare, hecap_compare}) {
      EXPECT_EQ(0U, compare(&record, band));
    }
    EXPECT_EQ(1U, entrycap_compare(&record, band));
  }
}

}  // namespace
