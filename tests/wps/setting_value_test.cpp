// The values that the WPS setters take.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/seams.h"
#include "wps/wps_setting.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

// Neither a number nor one behind a line end.
const Texts kNoNumbers = {"-1", "+1", " 1", "1 ", "\t1", "a", "1a", "a1", "0x1", "1.0", "1;1", "1\r\n", "$(1)", "`1`"};

// Above every range, also where 32 or 64 bits of it would be in one.
const Texts kHuge = {"2147483648", "4294967295",          "4294967296",           "4294967297",
                     "4294967304", "9223372036854775808", "18446744073709551616", "18446744073709551617"};

Texts numbers(int from, int to) {
  Texts texts;
  for (int number = from; number <= to; ++number) texts.push_back(std::to_string(number));
  return texts;
}

Texts joined(std::initializer_list<Texts> parts) {
  Texts all;
  for (const Texts& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

struct Row {
  wps::Setting setting;
  Texts taken;
  Texts refused;
};

std::vector<Row> rows() {
  const Texts zero = {"", "0", "00", std::string(159, '0')};
  const Texts any = {"1",
                     "9",
                     "00000000",
                     "12345670",
                     "12345671",
                     "123456789",
                     "2147483647",
                     "2147483648",
                     "4294967295",
                     "4294967296",
                     "9223372036854775808",
                     "18446744073709551616",
                     std::string(159, '9')};
  return {
      {wps::kStored[0], joined({zero, numbers(1, 7), {"007"}}), joined({numbers(8, 20), {"70", "255", "256"}, kHuge})},
      {wps::kStored[1], joined({numbers(1, 2), {"01"}}), joined({zero, numbers(3, 20), {"257", "258"}, kHuge})},
      {wps::kStored[2], joined({zero, {"1"}}), joined({numbers(2, 20), {"256", "257"}, kHuge})},
      {wps::kStored[3], joined({zero, numbers(1, 10)}), joined({numbers(11, 20), {"100", "256", "266"}, kHuge})},
      {wps::kStored[4], joined({zero, {"1"}, numbers(8, 63), {"008"}}),
       joined({numbers(2, 7), numbers(64, 80), {"256", "257", "264"}, kHuge})},
      {wps::kStored[5], joined({zero, {"1", "60", "2147483647", "0002147483647"}}),
       joined({kHuge, {std::string(159, '9')}})},
      {wps::kDirect[0], joined({numbers(1, 2), {"002"}}), joined({zero, numbers(3, 20), {"257", "258"}, kHuge})},
      {wps::kDirect[1], joined({zero, any}), {}},
      {wps::kDirect[2], joined({zero, {"1"}}), joined({numbers(2, 20), {"256", "257"}, kHuge})},
  };
}

bool is_stored(const wps::Setting& setting) {
  for (const wps::Setting& stored : wps::kStored) {
    if (stored.set == setting.set) return true;
  }
  return false;
}

TEST(WpsSetting, TakesItsValuesAndSendsThem) {
  wps::load();
  for (const Row& row : rows()) {
    for (const std::string& value : row.taken) {
      SCOPED_TRACE(std::string(row.setting.key) + "=" + value);
      for (const int band : {0, 1}) {
        seams::commands.clear();
        EXPECT_EQ(0u, row.setting.set(static_cast<uint32_t>(band), 2, value.c_str()));
        EXPECT_THAT(seams::commands, ElementsAre(wps::command(band, 2, row.setting.key, value)));
        if (is_stored(row.setting)) {
          EXPECT_EQ(value.substr(0, 149), sandbox::field(band, row.setting.key, 2));
        }
      }
    }
  }
}

TEST(WpsSetting, RefusesEveryOtherValueAndLeavesStoreAndDriverAlone) {
  wps::load();
  const Texts before = wps::both_segments();
  for (const Row& row : rows()) {
    for (const std::string& value : joined({row.refused, kNoNumbers})) {
      SCOPED_TRACE(std::string(row.setting.key) + "=" + value);
      EXPECT_THAT(seams::errors_of([&] {
                    EXPECT_EQ(1u, row.setting.set(0, 1, value.c_str()));
                    EXPECT_EQ(1u, row.setting.set(1, 1, value.c_str()));
                  }),
                  ElementsAre(wps::refusal(row.setting.function, "The input parameter is invalid."),
                              wps::refusal(row.setting.function, "The input parameter is invalid.")));
    }
  }
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_TRUE(before == wps::both_segments());
}

TEST(WpsSetting, LooksNoFurtherThanTheFirstLineEndForDigits) {
  wps::load();
  for (const wps::Setting& setting : wps::all_settings()) {
    SCOPED_TRACE(setting.function);
    const std::string value = std::string(setting.good) + "\nab";
    seams::commands.clear();
    EXPECT_EQ(0u, setting.set(0, 1, value.c_str()));
    EXPECT_THAT(seams::commands, ElementsAre(wps::command(0, 1, setting.key, std::string(setting.good) + "\\\nab")));
    if (is_stored(setting)) {
      EXPECT_EQ(value, sandbox::field(0, setting.key, 1));
    }
  }
}

// The digits end before the line end, the number begins behind it.
TEST(WpsSetting, JudgesTheNumberBehindALeadingLineEnd) {
  wps::load();
  for (const auto& [setting, taken, refused] : std::initializer_list<std::tuple<wps::Setting, Texts, Texts>>{
           {wps::kStored[0], {"\n", "\n0", "\n7"}, {"\n8", "\n-1"}},
           {wps::kStored[1], {"\n1", "\n2"}, {"\n", "\n0", "\n3", "\n-1"}},
           {wps::kStored[2], {"\n", "\n1"}, {"\n2", "\n-1"}},
           {wps::kStored[3], {"\n", "\n10"}, {"\n11", "\n-1"}},
           {wps::kStored[4], {"\n", "\n1", "\n8", "\n63"}, {"\n2", "\n7", "\n64", "\n-1"}},
           {wps::kStored[5], {"\n", "\n0", "\n60"}, {}},
           {wps::kDirect[0], {"\n1", "\n2"}, {"\n", "\n0", "\n3", "\n-1"}},
           {wps::kDirect[1], {"\n", "\n1", "\n-1"}, {}},
           {wps::kDirect[2], {"\n", "\n1"}, {"\n2", "\n-1"}},
       }) {
    for (const std::string& value : taken) {
      EXPECT_EQ(0u, setting.set(0, 1, value.c_str())) << setting.key << "=" << value;
    }
    const Texts before = wps::both_segments();
    seams::commands.clear();
    for (const std::string& value : refused) {
      EXPECT_EQ(1u, setting.set(0, 1, value.c_str())) << setting.key << "=" << value;
    }
    EXPECT_THAT(seams::commands, IsEmpty()) << setting.key;
    EXPECT_TRUE(before == wps::both_segments()) << setting.key;
  }
}

TEST(WpsSetting, TakesNoNegativeLockTimeBehindALeadingLineEnd) {
  wps::load();
  const Texts before = wps::both_segments();
  for (const char* value : {"\n-1", "\n-2147483648", "\n\n-1", "\n -1"}) {
    EXPECT_THAT(seams::errors_of([value] { EXPECT_EQ(1u, wifimgr_lib_set_wscSetupLockTime(0, 1, value)); }),
                ElementsAre(wps::refusal("wifimgr_lib_set_wscSetupLockTime", "The input parameter is invalid.")));
  }
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_TRUE(before == wps::both_segments());
}

TEST(WpsSetting, WithoutAValueIsRefused) {
  wps::load();
  const Texts before = wps::both_segments();
  for (const wps::Setting& setting : wps::all_settings()) {
    const std::string name = std::string("[") + setting.function + "]:===";
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1u, setting.set(0, 1, nullptr)); }),
                ElementsAre(name + "Enter===\n", name + "Fail Exit===\n"));
  }
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_TRUE(before == wps::both_segments());
}

}  // namespace
