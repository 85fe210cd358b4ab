// The dat file as the driver in the kernel reads it.
#include <gtest/gtest.h>

#include "kept_texts.h"

namespace box_test {
namespace {

std::string value(const char* dat, const char* key) {
  size_t length = 99;
  const char* const text = dat_value(dat, key, &length);
  return text == nullptr ? "none, " + std::to_string(length) : std::string(text, length);
}

std::string field(const char* key, int number) {
  size_t length = 99;
  const char* const text = dat_field(kDat, key, number, &length);
  return text == nullptr ? "none, " + std::to_string(length) : std::string(text, length);
}

TEST(DatValue, IsTheFirstLinesWithoutItsLineEnd) {
  EXPECT_EQ("11", value(kDat, "Channel"));
  EXPECT_EQ("02:aa:bb:cc:dd:01;02:aa:bb:cc:dd:02", value(kDat, "AccessControlList1"));
}

TEST(DatValue, NeedsTheWholeKey) {
  EXPECT_EQ("none, 0", value(kDat, "SSID"));
  EXPECT_EQ("none, 0", value(kDat, "nChannel"));
  EXPECT_EQ("none, 0", value("", "Channel"));
  EXPECT_EQ("", value("Channel=", "Channel"));
}

TEST(DatField, CountsFieldsThatAreNotEmpty) {
  EXPECT_EQ("1", field("EnableSSID", 1));
  EXPECT_EQ("0", field("EnableSSID", 2));
  EXPECT_EQ("none, 0", field("EnableSSID", 3));
  EXPECT_EQ("WPA2PSK", field("AuthMode", 2));
}

TEST(DatSsidCount, IsOneToEight) {
  EXPECT_EQ(2, dat_ssid_count(kDat));
  for (const char* dat : {"", "BssidNum=", "BssidNum=0\n", "BssidNum=9\n", "BssidNum=x\n", "BssidNum=1\n"}) {
    EXPECT_EQ(1, dat_ssid_count(dat)) << dat;
  }
  EXPECT_EQ(8, dat_ssid_count("BssidNum=8\n"));
}

TEST(DatNumber, EndsWithItsField) {
  EXPECT_EQ(7, dat_number(kDat, "WscConfMode", 2));
  EXPECT_EQ(123456789012345, dat_number("A=1234567890123456789", "A", 1));
}

}  // namespace
}  // namespace box_test
