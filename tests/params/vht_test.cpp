// VHT bandwidth and guard interval: one value, spread over the band's SSIDs into field 1.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

// The value of the last change, which the store cuts to 149 characters.
std::string& last_value() {
  static std::string value;
  return value;
}

int last_index = 0;

}  // namespace

// Stands in for the library's own, which it calls.
extern "C" int update_attr(int wifi_type, int index, const char* name, const char* value) {
  using Update = int (*)(int, int, const char*, const char*);
  static const auto library = reinterpret_cast<Update>(dlsym(RTLD_NEXT, "update_attr"));
  last_value() = value;
  last_index = index;
  return library(wifi_type, index, name, value);
}

namespace {

using settings::entered;
using settings::failed;
using settings::Image;
using settings::own_lines;
using settings::repeat;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

struct Setting {
  const char* name;
  wifimgr_setter_t set;
  const char* key;
  int highest;
  const char* refusal;
};

const Setting kSettings[] = {
    {"wifimgr_lib_set_VHT_BW", wifimgr_lib_set_VHT_BW, "VHT_BW", 3, "The VHT_BW value should be from 0 to 3."},
    {"wifimgr_lib_set_VHT_SGI", wifimgr_lib_set_VHT_SGI, "VHT_SGI", 1, "The VHT_SGI value should be between 0 to 1."},
};

template <typename Check>
void for_each_setting(Check check) {
  for (const Setting& setting : kSettings) {
    for (const uint32_t band : {0U, 1U}) {
      SCOPED_TRACE(std::string(setting.name) + " of band " + std::to_string(band));
      check(setting, band);
    }
  }
}

std::string list_of(const std::string& value, int count) {
  return count > 0 ? value + repeat(";" + value, count - 1) : "";
}

// A number in range that is `length` characters long.
std::string one_of_length(int length) {
  return repeat("0", length - 1) + "1";
}

void set_count(int count) {
  for (const uint32_t band : {0U, 1U}) ASSERT_EQ(0U, wifimgr_lib_set_bssidNum(band, -1, std::to_string(count).c_str()));
}

TEST(VhtSetting, IsRepeatedForEverySsidInField1AndLeavesTheOtherFields) {
  settings::load_distinct();
  for (int count = 1; count <= 8; ++count) {
    set_count(count);
    Image image;
    for_each_setting([&](const Setting& setting, uint32_t band) {
      for (int number = 0; number <= setting.highest; ++number) {
        const std::string value = std::to_string(number);
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, setting.set(band, -1, value.c_str())); }), IsEmpty());
        EXPECT_EQ(-1, last_index);
        image.set(static_cast<int>(band), setting.key, 1, list_of(value, count));
        ASSERT_EQ("", image.difference());
      }
    });
  }
}

TEST(VhtSetting, RepeatsTheTextAsItIs) {
  settings::load_with("BssidNum", "3");
  for_each_setting([](const Setting& setting, uint32_t band) {
    EXPECT_EQ(0U, setting.set(band, -1, "001"));
    EXPECT_EQ("001;001;001", last_value());
    EXPECT_EQ(0U, setting.set(band, -1, ""));
    EXPECT_EQ(";;", last_value());
  });
}

TEST(VhtSetting, IsEmptyWithoutSsids) {
  settings::load_distinct();
  for_each_setting([](const Setting& setting, uint32_t band) {
    for (const char* const count : {"0", "-1", "x", ""}) {
      SCOPED_TRACE(count);
      EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(band, -1, count));
      Image image;
      EXPECT_EQ(0U, setting.set(band, -1, "1"));
      image.set(static_cast<int>(band), setting.key, 1, "");
      EXPECT_EQ("", image.difference());
      EXPECT_EQ(0U, setting.set(band, -1, "0"));
    }
  });
}

TEST(VhtSetting, RefusesOtherValues) {
  settings::load_distinct();
  const Image image;
  for_each_setting([&](const Setting& setting, uint32_t band) {
    for (const std::string& value : settings::number(0, setting.highest).refused) {
      SCOPED_TRACE(value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, -1, value.c_str())); }),
                  ElementsAre(failed(setting.name, setting.refusal)));
    }
    ASSERT_EQ("", image.difference());
  });
}

TEST(VhtSetting, RefusesAnyIndexButMinusOneBeforeTheValue) {
  settings::load_distinct();
  const Image image;
  for_each_setting([&](const Setting& setting, uint32_t band) {
    for (const int32_t index : {0, 1, -2, INT_MAX, INT_MIN}) {
      for (const char* const value : {"1", "x"}) {
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, index, value)); }),
                    ElementsAre(failed(setting.name, "The ssid index here should be -1.")));
      }
    }
  });
  EXPECT_EQ("", image.difference());
}

TEST(VhtSetting, RefusesANullValueFirst) {
  settings::load_distinct();
  for_each_setting([](const Setting& setting, uint32_t band) {
    for (const int32_t index : {-1, 0}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, setting.set(band, index, nullptr)); }),
                  ElementsAre(entered(setting.name), failed(setting.name)));
    }
  });
}

TEST(VhtSetting, LooksAtTheValueBeforeTheSsidCount) {
  settings::load_without("BssidNum");
  const Image image;
  for_each_setting([](const Setting& setting, uint32_t band) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, -1, "4")); }),
                ElementsAre(failed(setting.name, setting.refusal)));
    EXPECT_THAT(own_lines(setting.name, seams::trace_of([&] { EXPECT_EQ(1U, setting.set(band, -1, "1")); })),
                ElementsAre(entered(setting.name), failed(setting.name)));
  });
  EXPECT_EQ("", image.difference());
}

TEST(VhtSetting, RefusesAnUnknownBandAtTheSsidCount) {
  settings::load_distinct();
  for (const Setting& setting : kSettings) {
    for (const uint32_t band : {2U, 0xffffffffU}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, setting.set(band, -1, "1")); }),
                  ElementsAre(entered(setting.name), entered("wifimgr_lib_get_bssidnum"), entered("read_attr"),
                              failed("read_attr", "The wifi_type is wrong."), failed("wifimgr_lib_get_bssidnum"),
                              failed(setting.name)));
    }
  }
}

TEST(VhtSetting, AddsNoMissingKey) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\n");
  const Image image;
  for_each_setting([](const Setting& setting, uint32_t band) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, -1, "1")); }),
                ElementsAre(failed("update_attr", "The attr_name do not exist.")));
    EXPECT_THAT(own_lines(setting.name, seams::trace_of([&] { (void)setting.set(band, -1, "1"); })),
                ElementsAre(entered(setting.name), failed(setting.name)));
  });
  EXPECT_EQ("", image.difference());
}

TEST(VhtSetting, TracesItsEntryAndItsSuccess) {
  settings::load_distinct();
  for_each_setting([](const Setting& setting, uint32_t band) {
    EXPECT_THAT(own_lines(setting.name, seams::trace_of([&] { (void)setting.set(band, -1, "1"); })),
                ElementsAre(entered(setting.name), succeeded(setting.name)));
  });
}

TEST(VhtBandwidth, StopsBeforeACopyThatWouldReach159Characters) {
  settings::load_with("BssidNum", "100");
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_BW(0, -1, "2"));
  EXPECT_EQ(list_of("2", 79), last_value());
}

TEST(VhtBandwidth, TakesASecondCopyOf78CharactersButNotOf79) {
  settings::load_with("BssidNum", "2");
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_BW(0, -1, one_of_length(78).c_str()));
  EXPECT_EQ(list_of(one_of_length(78), 2), last_value());
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_BW(0, -1, one_of_length(79).c_str()));
  EXPECT_EQ(one_of_length(79), last_value());
}

TEST(VhtBandwidth, TakesAFirstCopyOf158CharactersButNotOf159) {
  settings::load_with("BssidNum", "2");
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_BW(0, -1, one_of_length(158).c_str()));
  EXPECT_EQ(one_of_length(158), last_value());
  for (const int length : {159, 160, 1000}) {
    EXPECT_EQ(0U, wifimgr_lib_set_VHT_BW(0, -1, one_of_length(length).c_str()));
    EXPECT_EQ("", last_value());
  }
}

TEST(VhtBandwidth, IsStoredCutToAFieldsWidth) {
  settings::load_with("BssidNum", "100");
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_BW(0, -1, "2"));
  EXPECT_EQ(list_of("2", 75), sandbox::field(0, "VHT_BW", 1));
}

TEST(VhtGuardInterval, IsCutAt159Characters) {
  settings::load_with("BssidNum", "100");
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_SGI(0, -1, "1"));
  EXPECT_EQ(list_of("1", 80), last_value());
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_SGI(0, -1, "01"));
  EXPECT_EQ(list_of("01", 53) + ";", last_value());
}

// 158 characters are the most; a third copy that ends there fits, one that ends behind it does not.
TEST(VhtBandwidth, TakesACopyThatJustFits) {
  settings::load_with("BssidNum", "3");
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_BW(0, -1, one_of_length(52).c_str()));
  EXPECT_EQ(list_of(one_of_length(52), 3), last_value());
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_BW(0, -1, one_of_length(53).c_str()));
  EXPECT_EQ(list_of(one_of_length(53), 2), last_value());
}

TEST(VhtGuardInterval, KeepsTheFrontOfACopyThatDoesNotFit) {
  settings::load_with("BssidNum", "2");
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_SGI(0, -1, one_of_length(80).c_str()));
  EXPECT_EQ(one_of_length(80) + ";" + repeat("0", 78), last_value());
  for (const int length : {159, 160, 1000}) {
    EXPECT_EQ(0U, wifimgr_lib_set_VHT_SGI(0, -1, one_of_length(length).c_str()));
    EXPECT_EQ(one_of_length(length).substr(0, 159), last_value());
  }
}

TEST(VhtGuardInterval, MayEndInASeparatorThatJustFits) {
  settings::load_with("BssidNum", "2");
  EXPECT_EQ(0U, wifimgr_lib_set_VHT_SGI(0, -1, one_of_length(158).c_str()));
  EXPECT_EQ(one_of_length(158) + ";", last_value());
}

}  // namespace
