// The HT settings that the stored wireless mode must allow.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <set>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using settings::entered;
using settings::failed;
using settings::Image;
using settings::own_lines;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kMinusOne[] = "The ssid index here should be -1.";

struct HtSetting {
  const char* name;
  wifimgr_setter_t set;
  const char* key;
  int32_t index;
  int field;
  std::set<int> modes;
  std::set<int> numbers;
  const char* mode_refusal;
  const char* refusal;
  int32_t wrong_index;
  const char* index_refusal;
};

const std::set<int> kWithRates = {5, 6, 7, 8, 9, 10, 11, 14, 15, 16, 17};
const HtSetting kHtSettings[] = {
    {"wifimgr_lib_set_HT_BW",
     wifimgr_lib_set_HT_BW,
     "HT_BW",
     -1,
     1,
     {2, 5, 6, 7, 8, 9, 10, 11, 14, 15, 16, 17},
     {0, 1},
     "The wirelessMode do not support to set the HT_BW value.",
     "The HT_BW value should be 0 or 1.",
     0,
     kMinusOne},
    {"wifimgr_lib_set_HT_GI",
     wifimgr_lib_set_HT_GI,
     "HT_GI",
     -1,
     1,
     kWithRates,
     {0, 1},
     "The wirelessMode do not support to set the HT_GI value.",
     "The HT_GI value is invalid.",
     0,
     kMinusOne},
    {"wifimgr_lib_set_HT_MCS",
     wifimgr_lib_set_HT_MCS,
     "HT_MCS",
     2,
     2,
     kWithRates,
     {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 32, 33},
     // This one names HT_BW.
     "The wirelessMode do not support to set the HT_BW value.",
     "The HT_MCS value is invalid.",
     3,
     "The ssid index should be from 1 to BssidNum:2."},
};

// Stores a wireless mode, allowed or not.
void store_mode(uint32_t band, const std::string& mode) {
  ASSERT_EQ(0, update_attr(static_cast<int>(band), -1, "WirelessMode", mode.c_str()));
}

// Runs `check` with each setting and band, the full dat text being loaded with a mode that allows all of them.
template <typename Check>
void for_each_setting(Check check) {
  settings::load_with("WirelessMode", "9");
  for (const HtSetting& setting : kHtSettings) {
    for (const uint32_t band : {0U, 1U}) {
      SCOPED_TRACE(std::string(setting.name) + " of band " + std::to_string(band));
      store_mode(band, "9");
      check(setting, band);
    }
  }
}

TEST(HtSetting, NeedsAModeThatAllowsIt) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    for (int mode = 0; mode < 100; ++mode) {
      SCOPED_TRACE(mode);
      store_mode(band, std::to_string(mode));
      Image image;
      const bool allowed = setting.modes.count(mode) > 0;
      const auto errors =
          seams::errors_of([&] { EXPECT_EQ(allowed ? 0U : 1U, setting.set(band, setting.index, "1")); });
      if (allowed) {
        EXPECT_THAT(errors, IsEmpty());
        image.set(static_cast<int>(band), setting.key, setting.field, "1");
      } else {
        EXPECT_THAT(errors, ElementsAre(failed(setting.name, setting.mode_refusal)));
      }
      ASSERT_EQ("", image.difference());
      ASSERT_EQ(0, update_attr(static_cast<int>(band), setting.index, setting.key, "old"));
    }
  });
}

TEST(HtSetting, JudgesTheLeadingNumberOfTheStoredMode) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    for (const char* const mode : {"9\n", "9x", " 9", "009", "9;14"}) {
      store_mode(band, mode);
      EXPECT_EQ(0U, setting.set(band, setting.index, "1")) << mode;
    }
    for (const char* const mode : {"", "\n", "x", "x9", "-9", "-23", "-1"}) {
      store_mode(band, mode);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, setting.index, "1")); }),
                  ElementsAre(failed(setting.name, setting.mode_refusal)))
          << mode;
    }
  });
}

TEST(HtSetting, TakesItsNumbersOnly) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    Image image;
    for (int number = 0; number < 100; ++number) {
      SCOPED_TRACE(number);
      const std::string value = std::to_string(number);
      const bool known = setting.numbers.count(number) > 0;
      const auto errors =
          seams::errors_of([&] { EXPECT_EQ(known ? 0U : 1U, setting.set(band, setting.index, value.c_str())); });
      if (known) {
        EXPECT_THAT(errors, IsEmpty());
        image.set(static_cast<int>(band), setting.key, setting.field, value);
      } else {
        EXPECT_THAT(errors, ElementsAre(failed(setting.name, setting.refusal)));
      }
      ASSERT_EQ("", image.difference());
    }
  });
}

TEST(HtSetting, RefusesWhatIsNoNumberOrDoesNotFit32Bits) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    const Image image;
    for (const char* const value : {"-1", "+1", " 1", "1 ", "1\n", "1a", "x", "0x1", "4294967296", "4294967297",
                                    "4294967328", "18446744073709551616", "18446744073709551617"}) {
      SCOPED_TRACE(value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, setting.index, value)); }),
                  ElementsAre(failed(setting.name, setting.refusal)));
    }
    EXPECT_EQ("", image.difference());
  });
}

TEST(HtSetting, TakesTheEmptyTextAndLeadingZeros) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    for (const char* const value : {"", "01"}) {
      EXPECT_EQ(0U, setting.set(band, setting.index, value));
      EXPECT_EQ(value, sandbox::field(static_cast<int>(band), setting.key, setting.field));
    }
  });
}

TEST(HtSetting, LooksAtTheModeBeforeIndexAndValue) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    store_mode(band, "0");
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, setting.wrong_index, "99")); }),
                ElementsAre(failed(setting.name, setting.mode_refusal)));
  });
}

TEST(HtSetting, LooksAtTheIndexBeforeTheValue) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    const Image image;
    for (const char* const value : {"1", "99"}) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, setting.wrong_index, value)); }),
                  ElementsAre(failed(setting.name, setting.index_refusal)));
    }
    EXPECT_EQ("", image.difference());
  });
}

TEST(HtSetting, RefusesEveryWrongIndex) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    for (const int32_t index : {0, 3, 9, -2, INT_MAX, INT_MIN}) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, index, "1")); }),
                  ElementsAre(failed(setting.name, setting.index_refusal)));
    }
  });
}

TEST(HtSetting, RefusesANullValueFirst) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    store_mode(band, "0");
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, setting.set(band, setting.wrong_index, nullptr)); }),
                ElementsAre(entered(setting.name), failed(setting.name)));
  });
}

TEST(HtSetting, CannotBeSetWithoutAWirelessMode) {
  settings::load_without("WirelessMode");
  const Image image;
  for (const HtSetting& setting : kHtSettings) {
    const auto lines = seams::trace_of([&] { EXPECT_EQ(1U, setting.set(0, setting.wrong_index, "99")); });
    EXPECT_THAT(lines, ElementsAre(entered(setting.name), entered("wifimgr_lib_get_wirelessMode"), entered("read_attr"),
                                   testing::_, testing::_, testing::_, testing::_, testing::_, testing::_,
                                   failed("read_attr", "The attr_name do not exist."),
                                   failed("wifimgr_lib_get_wirelessMode"), failed(setting.name)));
  }
  EXPECT_EQ("", image.difference());
}

TEST(HtSetting, RefusesAnUnknownBandAtTheMode) {
  settings::load_distinct();
  for (const HtSetting& setting : kHtSettings) {
    for (const uint32_t band : {2U, 0xffffffffU}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, setting.set(band, setting.index, "1")); }),
                  ElementsAre(entered(setting.name), entered("wifimgr_lib_get_wirelessMode"), entered("read_attr"),
                              failed("read_attr", "The wifi_type is wrong."), failed("wifimgr_lib_get_wirelessMode"),
                              failed(setting.name)));
    }
  }
}

TEST(HtSetting, LooksAtTheValueBeforeTheStore) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\nWirelessMode=9\n");
  for (const HtSetting& setting : kHtSettings) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(0, setting.index, "99")); }),
                ElementsAre(failed(setting.name, setting.refusal)));
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(0, setting.index, "1")); }),
                ElementsAre(failed("update_attr", "The attr_name do not exist.")));
  }
}

TEST(HtSetting, TracesItsEntryAndItsSuccess) {
  for_each_setting([](const HtSetting& setting, uint32_t band) {
    EXPECT_THAT(own_lines(setting.name, seams::trace_of([&] { (void)setting.set(band, setting.index, "1"); })),
                ElementsAre(entered(setting.name), succeeded(setting.name)));
  });
}

TEST(HtSetting, RatesNeedAnSsidCount) {
  for (const int band : {0, 1}) {
    sandbox::write_file(sandbox::dat_path(band), "Default\nWirelessMode=9\nHT_MCS=1\n");
    ASSERT_EQ(0, creat_shm_from_datafile(band));
  }
  EXPECT_THAT(
      own_lines("wifimgr_lib_set_HT_MCS", seams::trace_of([] { EXPECT_EQ(1U, wifimgr_lib_set_HT_MCS(0, 0, "99")); })),
      ElementsAre(entered("wifimgr_lib_set_HT_MCS"), failed("wifimgr_lib_set_HT_MCS")));
}

}  // namespace
