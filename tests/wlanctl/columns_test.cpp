// What the verbs print for a person: 80 columns, wrapped at words, where no single value is wider.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

size_t columns_of(const std::string& line) {
  return static_cast<size_t>(
      std::count_if(line.begin(), line.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) != 0x80; }));
}

// Whether a line has a word alone, be it behind a mark.
bool is_one_value(const std::string& line) {
  const size_t begin = std::min(line.find_first_not_of(" ->+"), line.size());
  return line.find(' ', begin) == std::string::npos;
}

// Values as long as they can be.
constexpr char kLong[] =
    "wlanctl() { command wlanctl \"$@\" --color always; }; a=02:aa:bb:cc:dd:01; list=\"$a;$a;$a;$a\"\n"
    "name='A name of thirty two characters!'\n";

const Words kSteps = {
    "wlanctl set 2.4g WdsList=\"$list\" SSID:1=\"$name\"",
    "wlanctl set 2.4g SSID:1=\"B${name#A}\"",
    "wlanctl show",
    "wlanctl diff",
    "wlanctl status",
    "wlanctl apply 2.4g --confirm 600",
    "wlanctl status",
    "wlanctl confirm",
    "wlanctl log",
    "wlanctl log show 1",
    "wlanctl undo --dry-run",
    "wlanctl undo",
    "wlanctl explain WdsList",
    "wlanctl keys",
    "wlanctl stations",
    "wlanctl neighbours",
    "wlanctl doctor --all",
    "wlanctl set 2.4g SSID:1=\"$name\" SSID:2=\"B${name#A}\"; wlanctl stations; wlanctl status; wlanctl wps status "
    "2.4g 1",
    "wlanctl ssid rename 2.4g 1 \"$name\"",
    "wlanctl ssid add --both 'C name of thirty two characters!' --security open --dry-run",
    "wlanctl ssid remove 2.4g \"$name\" --yes --dry-run",
    "wlanctl ssid disable 2.4g 2",
    "wlanctl wps status 2.4g 1",
    "wlanctl radio off 2.4g",
    "wlanctl radio on 2.4g",
    "simctl fail ifconfig exit=1 ra0 up; wlanctl set 2.4g Channel=3 SSID:2=\"$name\"; wlanctl apply 2.4g",
    "wlanctl status; wlanctl doctor; wlanctl log",
    "simctl fail none; wlanctl revert; wlanctl save",
    "printf 'Channel=181\\nAuthMode=foo\\nHideSSID=0;;1\\nEncrypType=AES;NONEE\\nWPAPSK1=short\\n' >bad.dat; wlanctl "
    "check bad.dat --band 2.4g; wlanctl check bad.dat",
};

TEST(Columns, AreEightyInWhatTheVerbsPrint) {
  Words steps;
  for (const std::string& step : kSteps) steps.push_back(kLong + step);
  const std::vector<Result> results = run_live(steps);
  ASSERT_EQ(kSteps.size(), results.size());
  for (size_t i = 0; i < results.size(); ++i) {
    EXPECT_NE("", results[i].out) << kSteps[i];
    for (const std::string& line : lines_of(results[i].out)) {
      std::string shown = line;
      for (size_t at = 0; (at = shown.find("\033[")) != std::string::npos;) {
        shown.erase(at, shown.find('m', at) + 1 - at);
      }
      EXPECT_TRUE(columns_of(shown) <= 80 || is_one_value(shown)) << kSteps[i] << ": " << shown;
    }
  }
}

// The last column of the table.
TEST(Columns, OfTheListOfSsidsAreMoreOnlyForANameOfTheOperators) {
  const Result result = run_live({std::string(kLong) + "wlanctl set 2.4g SSID:1=\"$name\" AuthMode:1=WPA2PSKWPA3PSK "
                                                       ">/dev/null; command wlanctl ssid list"})[0];
  EXPECT_THAT(result.out, HasSubstr("A name of thirty two characters!\n"));
  for (const std::string& line : lines_of(result.out)) {
    EXPECT_LE(columns_of(line.substr(0, line.find("A name of"))), 80u) << line;
  }
}

TEST(Columns, OfShowLeaveAListBelowItsFirstAddresses) {
  const Result result =
      run_live({std::string(kLong) + "wlanctl set 2.4g WdsList=\"$list\" >/dev/null; wlanctl show 2.4g"})[0];
  EXPECT_THAT(result.out, HasSubstr("\n  WdsList                   02:aa:bb:cc:dd:01;02:aa:bb:cc:dd:01;\n"
                                    "                            02:aa:bb:cc:dd:01;02:aa:bb:cc:dd:01\n"));
}

TEST(Columns, OfAChangeLeaveWhatWasBelow) {
  const Result result = run_live(
      {std::string(kLong) + "wlanctl set 2.4g SSID:1=\"$name\" >/dev/null; wlanctl set 2.4g SSID:1=\"B${name#A}\""})[0];
  EXPECT_EQ("2.4g SSID:1 = B name of thirty two characters!\n  (was A name of thirty two characters!)\n", result.out);
}

TEST(Columns, OfAFindingIndentWhatALineHasNoRoomFor) {
  const Result result = run_live({"echo EncrypType=NONEE >bad.dat; wlanctl check bad.dat --band 2.4g"})[0];
  EXPECT_THAT(result.out,
              HasSubstr("bad.dat:1: EncrypType: error: \"NONEE\" is refused: The EncrypType value should be\n"
                        "    chosed from NONE,WEP,TKIP,AES,TKIPAES\n"));
}

}  // namespace
}  // namespace wlanctl_test
