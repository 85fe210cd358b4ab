// The multi-AP mode of the gateway.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "params/setting_checks.h"
#include "platform/store_setting.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using settings::Buffer;
using store_setting::expect_written;
using store_setting::fails;
using store_setting::kAboveTwoOrNegative;
using store_setting::kNeverAnSsid;
using store_setting::kUnknownBands;
using store_setting::kZeroOrOne;
using store_setting::load;
using store_setting::load_band;
using store_setting::load_without_count;
using store_setting::not_read;
using store_setting::out_of_range;
using store_setting::read;
using store_setting::refused;
using store_setting::Setting;
using store_setting::succeeds;

const Setting kMapMode = {"wifimgr_lib_set_MapMode", wifimgr_lib_set_MapMode, "wifimgr_lib_get_MapMode",
                          wifimgr_lib_get_MapMode};

constexpr char kModeRefusal[] = "The MapMode value is invalid.";
constexpr char kModeIndex[] = "The index should be -1.";

TEST(MapMode, IsWrittenToField1InTheBandGiven) {
  load();
  for (const char* const value : {"0", "1", "2"}) {
    expect_written(kMapMode, 0, -1, "MapMode", value);
    expect_written(kMapMode, 1, -1, "MapMode", value);
  }
}

TEST(MapMode, IsReadFrom2_4GWhateverTheBandAndTheSsid) {
  load("2", "3");
  EXPECT_EQ("MapMode.1@0", read(kMapMode, 0, 1));
  EXPECT_EQ("MapMode.1@0", read(kMapMode, 0, 2));
  EXPECT_EQ("MapMode.1@0", read(kMapMode, 1, 1));
  EXPECT_EQ("MapMode.1@0", read(kMapMode, 1, 3));
}

TEST(MapMode, SetOn5GDoesNotReachItsOwnGetter) {
  load();
  EXPECT_EQ(0U, wifimgr_lib_set_MapMode(1, -1, "2"));
  EXPECT_EQ("MapMode.1@0", read(kMapMode, 1, 1));
  EXPECT_EQ(0U, wifimgr_lib_set_MapMode(0, -1, "1"));
  EXPECT_EQ("1", read(kMapMode, 1, 1));
}

TEST(MapMode, IsReadByTheSsidsOfTheBandGiven) {
  load("2", "3");
  const auto refused_index = [](int band, int ssid, const char* count) {
    SCOPED_TRACE(ssid);
    EXPECT_EQ(fails(kMapMode.getter, out_of_range(count)), not_read(kMapMode, band, ssid));
  };
  for (const int ssid : kNeverAnSsid) {
    refused_index(0, ssid, "2");
    refused_index(1, ssid, "3");
  }
  refused_index(0, 3, "2");
  refused_index(1, 4, "3");
}

TEST(MapMode, AcceptsWhatCountsAs0To2) {
  load();
  std::vector<const char*> values = kZeroOrOne;
  values.insert(values.end(), {"2", "02", "+2", " 2", "2x"});
  for (const char* const value : values) {
    SCOPED_TRACE(value);
    expect_written(kMapMode, 1, -1, "MapMode", value);
  }
}

TEST(MapMode, RefusesAnyOtherNumber) {
  load();
  for (const char* const value : kAboveTwoOrNegative) {
    SCOPED_TRACE(value);
    EXPECT_EQ(fails(kMapMode.setter, kModeRefusal), refused(kMapMode, 0, -1, value));
  }
}

TEST(MapMode, IsSetForTheWholeBandOnly) {
  load();
  for (const int32_t index : {0, 1, 2, 8, -2, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(index);
    EXPECT_EQ(fails(kMapMode.setter, kModeIndex), refused(kMapMode, 0, index, "1"));
  }
}

TEST(MapMode, ChecksNullThenIndexThenValueThenBand) {
  load();
  EXPECT_EQ(fails(kMapMode.setter), refused(kMapMode, 2, 1, nullptr));
  EXPECT_EQ(fails(kMapMode.setter, kModeIndex), refused(kMapMode, 2, 1, "3"));
  EXPECT_EQ(fails(kMapMode.setter, kModeRefusal), refused(kMapMode, 2, -1, "3"));
  for (const uint32_t band : kUnknownBands) {
    EXPECT_EQ(fails(kMapMode.setter), refused(kMapMode, band, -1, "1"));
  }
}

TEST(MapMode, IsNotReadToANullPointerOrForAnUnknownBand) {
  load();
  EXPECT_EQ(fails(kMapMode.getter), not_read(kMapMode, 0, 1, true));
  for (const uint32_t band : kUnknownBands) {
    EXPECT_EQ(fails(kMapMode.getter), not_read(kMapMode, static_cast<int>(band), 1));
  }
}

TEST(MapMode, IsNotReadWhenTheSsidCountCannotBeRead) {
  sandbox::load(0, "Default\nBssidNum=2\nMapMode=1\n");
  load_without_count(1, "Default\nMapMode=1\n");
  EXPECT_EQ(fails(kMapMode.getter), not_read(kMapMode, 1, 1));
}

TEST(MapMode, IsNotReadWithoutTheStoreOf2_4G) {
  load_band(1, "3");
  EXPECT_EQ(fails(kMapMode.getter), not_read(kMapMode, 1, 1));
}

TEST(MapMode, NeedsItsKey) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\n");
  EXPECT_EQ(fails(kMapMode.setter), refused(kMapMode, 1, -1, "1"));
  EXPECT_EQ(fails(kMapMode.getter), not_read(kMapMode, 1, 1));
}

TEST(MapMode, TracesEntryAndSuccess) {
  load();
  Buffer buffer;
  EXPECT_EQ(succeeds(kMapMode.setter),
            settings::own_lines(kMapMode.setter, seams::trace_of([] { (void)kMapMode.set(0, -1, "1"); })));
  EXPECT_EQ(
      succeeds(kMapMode.getter),
      settings::own_lines(kMapMode.getter, seams::trace_of([&] { (void)kMapMode.get(0, 1, buffer.bytes, 160); })));
}

TEST(MapMode, OutlivesASaveAndALoad) {
  for (const int band : {0, 1}) {
    sandbox::load(band, "Default\nBssidNum=2\nMapMode=0\n");
    EXPECT_EQ(0U, kMapMode.set(static_cast<uint32_t>(band), -1, "2"));
    EXPECT_EQ(0, wifimgr_lib_save_dataFile(band));
    EXPECT_EQ("Default\nBssidNum=2\nMapMode=2\n", sandbox::read_file(sandbox::dat_path(band)));
    EXPECT_EQ(0, creat_shm_from_datafile(band));
    EXPECT_EQ("2\n", read(kMapMode, band, 2));
  }
}

}  // namespace
