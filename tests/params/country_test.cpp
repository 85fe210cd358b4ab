// The regulatory region: a key of its own for each band, served on that band only.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <set>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using settings::Buffer;
using settings::entered;
using settings::failed;
using settings::Image;
using settings::own_lines;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

struct Region {
  int band;
  const char* key;
  const char* getter;
  int (*get)(int wifi_type, int index, char* buf, unsigned len);
  const char* band_refusal;
  const char* setter;
  wifimgr_setter_t set;
  std::set<int> numbers;
};

const Region kRegions[] = {
    {0,
     "CountryRegion",
     "wifimgr_lib_get_countryRegion",
     wifimgr_lib_get_countryRegion,
     "The wifi type should be 0.",
     "wifimgr_lib_set_countryRegion",
     wifimgr_lib_set_countryRegion,
     {0, 1, 2, 3, 4, 5, 6, 7, 31, 32, 33}},
    {1,
     "CountryRegionABand",
     "wifimgr_lib_get_countryRegionABand",
     wifimgr_lib_get_countryRegionABand,
     "The wifi type should be 1.",
     "wifimgr_lib_set_countryRegionABand",
     wifimgr_lib_set_countryRegionABand,
     {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}},
};

constexpr char kInvalid[] = "The input parameter is invalid.";

uint32_t band_of(const Region& region) {
  return static_cast<uint32_t>(region.band);
}

template <typename Check>
void for_each_region(Check check) {
  for (const Region& region : kRegions) {
    SCOPED_TRACE(region.key);
    check(region);
  }
}

TEST(CountryRegion, GetterReadsField1OfItsKey) {
  settings::load_distinct();
  for_each_region([](const Region& region) {
    const std::string stored = sandbox::field(region.band, region.key, 1);
    ASSERT_NE("", stored);
    Buffer buffer;
    EXPECT_EQ(0, region.get(region.band, -1, buffer.bytes, WIFIMGR_FIELD_SIZE + 1));
    EXPECT_EQ(stored, buffer.text());
    EXPECT_EQ("ZZZZZZZZZZ", buffer.rest(WIFIMGR_FIELD_SIZE));
  });
}

TEST(CountryRegion, GetterTracesItsEntryAndItsSuccess) {
  settings::load_distinct();
  for_each_region([](const Region& region) {
    Buffer buffer;
    EXPECT_THAT(own_lines(region.getter, seams::trace_of([&] {
                            EXPECT_EQ(0, region.get(region.band, -1, buffer.bytes, sizeof buffer.bytes));
                          })),
                ElementsAre(entered(region.getter), succeeded(region.getter)));
  });
}

TEST(CountryRegion, GetterRefusesTheOtherBandAndUnknownOnes) {
  // Both bands have both keys, so nothing but the band can be the reason.
  sandbox::load(0, "Default\nBssidNum=1\nCountryRegion=1\nCountryRegionABand=2\n");
  sandbox::load(1, "Default\nBssidNum=1\nCountryRegion=3\nCountryRegionABand=4\n");
  for_each_region([](const Region& region) {
    for (const int band : {1 - region.band, 2, -1, INT_MAX, INT_MIN}) {
      Buffer buffer;
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, region.get(band, -1, buffer.bytes, sizeof buffer.bytes)); }),
                  ElementsAre(entered(region.getter), failed(region.getter, region.band_refusal)));
      EXPECT_TRUE(buffer.is_untouched());
    }
  });
}

TEST(CountryRegion, GetterRefusesAnyIndexButMinusOneBeforeTheBand) {
  settings::load_distinct();
  for_each_region([](const Region& region) {
    for (const int band : {region.band, 1 - region.band, 2}) {
      for (const int index : {0, 1, -2, INT_MAX, INT_MIN}) {
        Buffer buffer;
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, region.get(band, index, buffer.bytes, sizeof buffer.bytes)); }),
                    ElementsAre(failed(region.getter, "The index should be -1.")));
        EXPECT_TRUE(buffer.is_untouched());
      }
    }
  });
}

TEST(CountryRegion, GetterRefusesANullBufferFirst) {
  settings::load_distinct();
  for_each_region([](const Region& region) {
    for (const int band : {region.band, 1 - region.band}) {
      for (const int index : {-1, 0}) {
        EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, region.get(band, index, nullptr, WIFIMGR_VALUE_SIZE)); }),
                    ElementsAre(entered(region.getter), failed(region.getter)));
      }
    }
  });
}

TEST(CountryRegion, GetterLeavesBufferSizeAndKeyToTheStore) {
  sandbox::load(0, sandbox::full_dat_without(0, "CountryRegion"));
  sandbox::load(1, sandbox::full_dat(1));
  Buffer buffer;
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_countryRegion(0, -1, buffer.bytes, 160)); }),
              ElementsAre(failed("read_attr", "The attr_name do not exist.")));
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_countryRegionABand(1, -1, buffer.bytes, 150)); }),
              ElementsAre(failed("read_attr", "The size of buffer is too small!")));
  EXPECT_TRUE(buffer.is_untouched());
}

TEST(CountryRegion, SetterTakesTheNumbersOfItsBandOnly) {
  settings::load_distinct();
  Image image;
  for_each_region([&](const Region& region) {
    for (int number = 0; number < 300; ++number) {
      SCOPED_TRACE(number);
      const std::string value = std::to_string(number);
      const bool known = region.numbers.count(number) > 0;
      const auto errors =
          seams::errors_of([&] { EXPECT_EQ(known ? 0U : 1U, region.set(band_of(region), -1, value.c_str())); });
      if (known) {
        EXPECT_THAT(errors, IsEmpty());
        image.set(region.band, region.key, 1, value);
      } else {
        EXPECT_THAT(errors, ElementsAre(failed(region.setter, kInvalid)));
      }
      ASSERT_EQ("", image.difference());
    }
  });
}

TEST(CountryRegion, SetterTakesTheEmptyTextAndLeadingZeros) {
  settings::load_distinct();
  for_each_region([](const Region& region) {
    for (const char* const value : {"", "05", "000000000000000000000000000007"}) {
      EXPECT_EQ(0U, region.set(band_of(region), -1, value));
      EXPECT_EQ(value, sandbox::field(region.band, region.key, 1));
    }
  });
}

TEST(CountryRegion, SetterRefusesWhatIsNoNumberOrDoesNotFit32Bits) {
  settings::load_distinct();
  const Image image;
  for_each_region([](const Region& region) {
    for (const char* const value : {"-1", "+1", " 1", "1 ", "1\n", "1a", "x", "2147483648", "4294967296", "4294967327",
                                    "18446744073709551616", "18446744073709551647"}) {
      SCOPED_TRACE(value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, region.set(band_of(region), -1, value)); }),
                  ElementsAre(failed(region.setter, kInvalid)));
    }
  });
  EXPECT_EQ("", image.difference());
}

TEST(CountryRegion, SetterRefusesTheOtherBandAndUnknownOnes) {
  sandbox::load(0, "Default\nBssidNum=1\nCountryRegion=1\nCountryRegionABand=2\n");
  sandbox::load(1, "Default\nBssidNum=1\nCountryRegion=3\nCountryRegionABand=4\n");
  const Image image;
  for_each_region([](const Region& region) {
    for (const uint32_t band : {1U - band_of(region), 2U, 0xffffffffU, 0x80000000U}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, region.set(band, -1, "5")); }),
                  ElementsAre(entered(region.setter), failed(region.setter, kInvalid)));
    }
  });
  EXPECT_EQ("", image.difference());
}

TEST(CountryRegion, SetterLooksAtTheBandBeforeTheIndex) {
  settings::load_distinct();
  for_each_region([](const Region& region) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, region.set(1U - band_of(region), 0, "5")); }),
                ElementsAre(failed(region.setter, kInvalid)));
  });
}

TEST(CountryRegion, SetterRefusesAnyIndexButMinusOneBeforeTheValue) {
  settings::load_distinct();
  const Image image;
  for_each_region([](const Region& region) {
    for (const int32_t index : {0, 1, -2, INT_MAX, INT_MIN}) {
      for (const char* const value : {"5", "x"}) {
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, region.set(band_of(region), index, value)); }),
                    ElementsAre(failed(region.setter, "The ssid index here should be -1.")));
      }
    }
  });
  EXPECT_EQ("", image.difference());
}

TEST(CountryRegion, SetterRefusesANullValueFirst) {
  settings::load_distinct();
  for_each_region([](const Region& region) {
    for (const uint32_t band : {0U, 1U, 2U}) {
      for (const int32_t index : {-1, 0}) {
        EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, region.set(band, index, nullptr)); }),
                    ElementsAre(entered(region.setter), failed(region.setter)));
      }
    }
  });
}

TEST(CountryRegion, SetterTracesItsEntryAndItsSuccess) {
  settings::load_distinct();
  for_each_region([](const Region& region) {
    EXPECT_THAT(own_lines(region.setter, seams::trace_of([&] { EXPECT_EQ(0U, region.set(band_of(region), -1, "5")); })),
                ElementsAre(entered(region.setter), succeeded(region.setter)));
  });
}

TEST(CountryRegion, SetterAddsNoMissingKey) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=1\n");
  const Image image;
  for_each_region([](const Region& region) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, region.set(band_of(region), -1, "5")); }),
                ElementsAre(failed("update_attr", "The attr_name do not exist.")));
    EXPECT_THAT(own_lines(region.setter, seams::trace_of([&] { (void)region.set(band_of(region), -1, "5"); })),
                ElementsAre(entered(region.setter), failed(region.setter)));
  });
  EXPECT_EQ("", image.difference());
}

}  // namespace
