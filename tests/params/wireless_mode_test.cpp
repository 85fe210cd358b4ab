// The wireless mode: a fixed set for each band.
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
using settings::repeat;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kSetMode[] = "wifimgr_lib_set_wirelessMode";
constexpr char kMinusOne[] = "The ssid index here should be -1.";

struct Band {
  uint32_t wifi_type;
  std::set<int> modes;
  const char* refusal;
};

const Band kBands[] = {
    {0, {0, 1, 3, 4, 5, 6, 7, 8, 9, 10, 16}, "The WirelessMode value for 2.4G is invalid."},
    {1, {2, 3, 5, 8, 10, 11, 14, 15, 17}, "The WirelessMode value for 5G is invalid."},
};

TEST(WirelessMode, IsOneOfItsBand) {
  settings::load_distinct();
  Image image;
  for (const Band& band : kBands) {
    for (int mode = 0; mode < 300; ++mode) {
      SCOPED_TRACE(std::to_string(mode) + " of band " + std::to_string(band.wifi_type));
      const std::string value = std::to_string(mode);
      const bool known = band.modes.count(mode) > 0;
      const auto errors = seams::errors_of(
          [&] { EXPECT_EQ(known ? 0U : 1U, wifimgr_lib_set_wirelessMode(band.wifi_type, -1, value.c_str())); });
      if (known) {
        EXPECT_THAT(errors, IsEmpty());
        image.set(static_cast<int>(band.wifi_type), "WirelessMode", 1, value);
      } else {
        EXPECT_THAT(errors, ElementsAre(failed(kSetMode, band.refusal)));
      }
      ASSERT_EQ("", image.difference());
    }
  }
}

TEST(WirelessMode, ThatDoesNotFit32BitsIsRefused) {
  settings::load_distinct();
  const Image image;
  for (const Band& band : kBands) {
    for (const std::string& value :
         {std::string("2147483648"), std::string("4294967296"), std::string("4294967301"),
          std::string("18446744073709551616"), std::string("18446744073709551621"), repeat("9", 100)}) {
      SCOPED_TRACE(value);
      EXPECT_THAT(
          seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_wirelessMode(band.wifi_type, -1, value.c_str())); }),
          ElementsAre(failed(kSetMode, band.refusal)));
    }
  }
  EXPECT_EQ("", image.difference());
}

TEST(WirelessMode, MayHaveLeadingZeros) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_wirelessMode(0, -1, "009"));
  EXPECT_EQ("009", sandbox::field(0, "WirelessMode", 1));
}

TEST(WirelessMode, EmptyCountsAsZero) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_wirelessMode(0, -1, ""));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_wirelessMode(1, -1, "")); }),
              ElementsAre(failed(kSetMode, "The WirelessMode value for 5G is invalid.")));
}

TEST(WirelessMode, ThatIsNoNumberIsRefusedOnAnyBand) {
  settings::load_distinct();
  const Image image;
  for (const uint32_t band : {0U, 1U, 2U}) {
    for (const char* const value : {"1a", "-1", "+5", " 5", "5 ", "5\n", "x", "5;5"}) {
      SCOPED_TRACE(value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_wirelessMode(band, -1, value)); }),
                  ElementsAre(failed(kSetMode, "The WirelessMode value should be DEC num.")));
    }
  }
  EXPECT_EQ("", image.difference());
}

TEST(WirelessMode, RefusesAnyIndexButMinusOneBeforeTheValue) {
  settings::load_distinct();
  const Image image;
  for (const int32_t index : {0, 1, -2, INT_MAX, INT_MIN}) {
    for (const char* const value : {"5", "x", "99"}) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_wirelessMode(0, index, value)); }),
                  ElementsAre(failed(kSetMode, kMinusOne)));
    }
  }
  EXPECT_EQ("", image.difference());
}

TEST(WirelessMode, RefusesANullValueFirst) {
  settings::load_distinct();
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(1U, wifimgr_lib_set_wirelessMode(0, 0, nullptr)); }),
              ElementsAre(entered(kSetMode), failed(kSetMode)));
}

TEST(WirelessMode, RefusesAnUnknownBandInTheStore) {
  settings::load_distinct();
  for (const uint32_t band : {2U, 0xffffffffU}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_wirelessMode(band, -1, "5")); }),
                ElementsAre(failed("update_attr", "The wifi_type is wrong.")));
  }
}

TEST(WirelessMode, LooksAtTheValueBeforeTheStore) {
  settings::load_without("WirelessMode");
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_wirelessMode(0, -1, "2")); }),
              ElementsAre(failed(kSetMode, "The WirelessMode value for 2.4G is invalid.")));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_wirelessMode(0, -1, "1")); }),
              ElementsAre(failed("update_attr", "The attr_name do not exist.")));
}

TEST(WirelessMode, TracesItsEntryAndItsExit) {
  settings::load_distinct();
  EXPECT_THAT(own_lines(kSetMode, seams::trace_of([] {
                          (void)wifimgr_lib_set_wirelessMode(0, -1, "9");
                          (void)wifimgr_lib_set_wirelessMode(2, -1, "9");
                        })),
              ElementsAre(entered(kSetMode), succeeded(kSetMode), entered(kSetMode), failed(kSetMode)));
}

TEST(WirelessMode, ChangeDoesNotRevisitTheHtSettings) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_wirelessMode(0, -1, "9"));
  EXPECT_EQ(0U, wifimgr_lib_set_HT_BW(0, -1, "1"));
  Image image;
  EXPECT_EQ(0U, wifimgr_lib_set_wirelessMode(0, -1, "0"));
  image.set(0, "WirelessMode", 1, "0");
  EXPECT_EQ("", image.difference());
}

}  // namespace
