// MBO (multi-band operation) per SSID.
#include <gtest/gtest.h>

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
using store_setting::load_without_count;
using store_setting::not_read;
using store_setting::out_of_range;
using store_setting::read;
using store_setting::refused;
using store_setting::Setting;
using store_setting::succeeds;

const Setting kMbo = {"wifimgr_lib_set_MboSupport", wifimgr_lib_set_MboSupport, "wifimgr_lib_get_MboSupport",
                      wifimgr_lib_get_MboSupport};

constexpr char kMboRefusal[] = "The MboSupport value is invalid.";

TEST(Mbo, IsWrittenToField1OfTheSsidsOwnKey) {
  load("2", "3");
  for (const char* const value : {"0", "1"}) {
    expect_written(kMbo, 0, 1, "MboSupport1", value);
    expect_written(kMbo, 0, 2, "MboSupport2", value);
    expect_written(kMbo, 1, 1, "MboSupport1", value);
    expect_written(kMbo, 1, 3, "MboSupport3", value);
  }
}

TEST(Mbo, IsReadFromField1OfTheSsidsOwnKey) {
  load("2", "3");
  EXPECT_EQ("MboSupport1.1@0", read(kMbo, 0, 1));
  EXPECT_EQ("MboSupport2.1@0", read(kMbo, 0, 2));
  EXPECT_EQ("MboSupport2.1@1", read(kMbo, 1, 2));
  EXPECT_EQ("MboSupport3.1@1", read(kMbo, 1, 3));
}

TEST(Mbo, TakesTheSsidsOfItsBand) {
  load("2", "3");
  const auto refused_index = [](uint32_t band, int32_t ssid, const char* count) {
    SCOPED_TRACE(ssid);
    EXPECT_EQ(fails(kMbo.setter, out_of_range(count)), refused(kMbo, band, ssid, "1"));
    EXPECT_EQ(fails(kMbo.getter, out_of_range(count)), not_read(kMbo, static_cast<int>(band), ssid));
  };
  for (const int32_t ssid : kNeverAnSsid) {
    refused_index(0, ssid, "2");
    refused_index(1, ssid, "3");
  }
  refused_index(0, 3, "2");
  refused_index(1, 4, "3");
}

TEST(Mbo, AcceptsWhatCountsAs0Or1) {
  load();
  for (const char* const value : kZeroOrOne) {
    SCOPED_TRACE(value);
    expect_written(kMbo, 1, 2, "MboSupport2", value);
  }
}

TEST(Mbo, RefusesAnyOtherNumber) {
  load();
  std::vector<const char*> values = kAboveTwoOrNegative;
  values.push_back("2");
  for (const char* const value : values) {
    SCOPED_TRACE(value);
    EXPECT_EQ(fails(kMbo.setter, kMboRefusal), refused(kMbo, 1, 2, value));
  }
}

TEST(Mbo, ChecksTheIndexBeforeTheValueAndTheKey) {
  sandbox::load(1, "Default\nBssidNum=2\n");
  sandbox::load(0, "Default\nBssidNum=2\n");
  EXPECT_EQ(fails(kMbo.setter, out_of_range("2")), refused(kMbo, 1, 3, "2"));
  EXPECT_EQ(fails(kMbo.setter, kMboRefusal), refused(kMbo, 1, 2, "2"));
  EXPECT_EQ(fails(kMbo.setter), refused(kMbo, 1, 2, "1"));
  EXPECT_EQ(fails(kMbo.getter), not_read(kMbo, 1, 2));
}

TEST(Mbo, RefusesANullPointer) {
  load();
  EXPECT_EQ(fails(kMbo.setter), refused(kMbo, 0, 1, nullptr));
  EXPECT_EQ(fails(kMbo.getter), not_read(kMbo, 0, 1, true));
}

TEST(Mbo, RefusesAnUnknownBand) {
  load();
  for (const uint32_t band : kUnknownBands) {
    SCOPED_TRACE(band);
    EXPECT_EQ(fails(kMbo.setter), refused(kMbo, band, 1, "2"));
    EXPECT_EQ(fails(kMbo.getter), not_read(kMbo, static_cast<int>(band), 1));
  }
}

TEST(Mbo, RefusesWhenTheSsidCountCannotBeRead) {
  for (const int band : {0, 1}) load_without_count(band, "Default\nMboSupport1=0\n");
  EXPECT_EQ(fails(kMbo.setter), refused(kMbo, 0, 1, "2"));
  EXPECT_EQ(fails(kMbo.getter), not_read(kMbo, 0, 1));
}

TEST(Mbo, TracesEntryAndSuccess) {
  load();
  Buffer buffer;
  EXPECT_EQ(succeeds(kMbo.setter),
            settings::own_lines(kMbo.setter, seams::trace_of([] { (void)kMbo.set(0, 1, "1"); })));
  EXPECT_EQ(succeeds(kMbo.getter),
            settings::own_lines(kMbo.getter, seams::trace_of([&] { (void)kMbo.get(0, 1, buffer.bytes, 160); })));
}

TEST(Mbo, OutlivesASaveAndALoad) {
  for (const int band : {0, 1}) {
    sandbox::load(band, "Default\nBssidNum=2\nMboSupport1=0\nMboSupport2=0\n");
    EXPECT_EQ(0U, kMbo.set(static_cast<uint32_t>(band), 2, "1"));
    EXPECT_EQ(0, wifimgr_lib_save_dataFile(band));
    EXPECT_EQ("Default\nBssidNum=2\nMboSupport1=0\nMboSupport2=1\n", sandbox::read_file(sandbox::dat_path(band)));
    EXPECT_EQ(0, creat_shm_from_datafile(band));
    EXPECT_EQ("0\n", read(kMbo, band, 1));
    EXPECT_EQ("1\n", read(kMbo, band, 2));
  }
}

}  // namespace
