#include "platform/store_setting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace store_setting {
namespace {

constexpr const char* kKeys[] = {"DfsDedicatedZeroWait", "DfsZeroWaitDefault", "MapMode",    "MboSupport1",
                                 "MboSupport2",          "MboSupport3",        "MboSupport4"};

}  // namespace

const std::vector<const char*> kZeroOrOne = {"0",  "1",   "",    "x",    "01",  "+1",  "-0",
                                             " 1", "\t0", "1\n", "1abc", "0x2", "0.9", "1;2"};
const std::vector<const char*> kAboveTwoOrNegative = {"3",
                                                      "-1",
                                                      "10",
                                                      "3x",
                                                      " 3",
                                                      "2147483648",
                                                      "4294967296",
                                                      "4294967297",
                                                      "18446744073709551616",
                                                      "18446744073709551617",
                                                      "-4294967295",
                                                      "-18446744073709551615"};

const std::vector<int32_t> kNeverAnSsid = {0, -1, 9, INT_MAX, INT_MIN};
const std::vector<uint32_t> kUnknownBands = {2, 256, 0x7fffffffU, 0xffffffffU};

void load_band(int band, const std::string& ssid_count) {
  std::string text = "Default\nBssidNum=" + ssid_count + "\n";
  for (const std::string key : kKeys) {
    text += key + "=";
    for (int field = 1; field <= WIFIMGR_FIELDS; ++field) {
      if (field > 1) text += ";";
      text += key + "." + std::to_string(field) + "@" + std::to_string(band);
    }
    text += "\n";
  }
  sandbox::load(band, text);
}

void load(const std::string& count_of_2_4g, const std::string& count_of_5g) {
  load_band(0, count_of_2_4g);
  load_band(1, count_of_5g);
}

void load_without_count(int band, const std::string& text) {
  sandbox::write_file(sandbox::dat_path(band), text);
  ASSERT_EQ(0, creat_shm_from_datafile(band));
}

void expect_written(const Setting& setting, uint32_t band, int32_t index, const std::string& key,
                    const std::string& value) {
  settings::Image image;
  image.set(static_cast<int>(band), key, 1, value);
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, setting.set(band, index, value.c_str())); }), testing::IsEmpty());
  EXPECT_EQ("", image.difference());
}

std::vector<std::string> refused(const Setting& setting, uint32_t band, int32_t index, const char* value) {
  const settings::Image image;
  const auto lines = seams::trace_of([&] { EXPECT_EQ(1U, setting.set(band, index, value)); });
  EXPECT_EQ("", image.difference());
  return settings::own_lines(setting.setter, lines);
}

std::string read(const Setting& setting, int band, int index) {
  settings::Buffer buffer;
  EXPECT_EQ(0, setting.get(band, index, buffer.bytes, sizeof buffer.bytes));
  return buffer.text();
}

std::vector<std::string> not_read(const Setting& setting, int band, int index, bool into_null) {
  settings::Buffer buffer;
  char* const into = into_null ? nullptr : buffer.bytes;
  const auto lines = seams::trace_of([&] { EXPECT_EQ(1, setting.get(band, index, into, sizeof buffer.bytes)); });
  EXPECT_TRUE(buffer.is_untouched());
  return settings::own_lines(setting.getter, lines);
}

std::vector<std::string> succeeds(const std::string& function) {
  return {settings::entered(function), settings::succeeded(function)};
}

std::vector<std::string> fails(const std::string& function, const std::string& why) {
  return {settings::entered(function), settings::failed(function, why)};
}

std::string out_of_range(const char* count) {
  return std::string("The ssid index should be from 1 to BssidNum:") + count + ".";
}

}  // namespace store_setting
