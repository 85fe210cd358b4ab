// What a shell makes of the WPS setters' command lines.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdio>

#include "support/seams.h"
#include "wps/wps_setting.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kTool[] = "/userfs/bin/iwpriv";

// Gives the recorded lines to a shell, with a tool that writes down its arguments, one to a line.
std::string arguments_seen_by_the_tool() {
  sandbox::write_file("/tmp/tool", "#!/bin/sh\nfor word; do printf '<%s>' \"$word\"; done >> /tmp/arguments\n");
  EXPECT_EQ(0, chmod("/tmp/tool", 0700));
  std::remove("/tmp/arguments");
  for (const std::string& line : seams::commands) {
    EXPECT_EQ(0u, line.find(kTool));
    std::FILE* const shell = popen(("/tmp/tool" + line.substr(sizeof kTool - 1)).c_str(), "r");
    EXPECT_NE(nullptr, shell);
    pclose(shell);
  }
  return sandbox::read_file("/tmp/arguments");
}

class WpsSettingShell : public testing::Test {
 protected:
  void SetUp() override { wps::load(); }
};

TEST_F(WpsSettingShell, GetsTheNumberAsOneWord) {
  EXPECT_EQ(0u, wifimgr_lib_set_wscConfMode(0, 1, "7"));
  EXPECT_EQ("<ra0><set><WscConfMode=7>", arguments_seen_by_the_tool());
}

TEST_F(WpsSettingShell, RunsNothingOfWhatStandsBehindALineEnd) {
  for (const char* tail :
       {"; touch /tmp/ran", "| touch /tmp/ran", "& touch /tmp/ran", "&& touch /tmp/ran", "$(touch /tmp/ran)",
        "`touch /tmp/ran`", "> /tmp/ran", "\ntouch /tmp/ran", "\n\ntouch /tmp/ran", "\" ; touch /tmp/ran ; \"",
        "' ; touch /tmp/ran ; '", "\\\n; touch /tmp/ran", "# x\ntouch /tmp/ran", "\rtouch /tmp/ran", "*", "~", "!!"}) {
    for (const wps::Setting& setting : wps::all_settings()) {
      SCOPED_TRACE(std::string(setting.key) + " with " + tail);
      seams::commands.clear();
      EXPECT_EQ(0u, setting.set(0, 1, (std::string(setting.good) + "\n" + tail).c_str()));
      ASSERT_EQ(1u, seams::commands.size());
      std::string word = tail;
      for (size_t at; (at = word.find('\n')) != std::string::npos;) word.erase(at, 1);
      EXPECT_EQ("<ra0><set><" + std::string(setting.key) + "=" + setting.good + word + ">",
                arguments_seen_by_the_tool());
      EXPECT_FALSE(sandbox::exists("/tmp/ran"));
    }
  }
}

TEST_F(WpsSettingShell, GetsABackslashBeforeEveryCharacterOfItsOwn) {
  EXPECT_EQ(0u, wifimgr_lib_set_wscPinCode(1, 2, "1\n; reboot"));
  EXPECT_THAT(seams::commands, ElementsAre("/userfs/bin/iwpriv rai1 set WscPinCode=1\\\n\\;\\ reboot"));
}

TEST_F(WpsSettingShell, GetsUpTo159CharactersOfValue) {
  const std::string longest = std::string(158, '0') + "1";
  EXPECT_EQ(0u, wifimgr_lib_set_wscPinCode(0, 1, longest.c_str()));
  EXPECT_EQ(0u, wifimgr_lib_set_wscSetupLockTime(0, 1, longest.c_str()));
  EXPECT_THAT(seams::commands,
              ElementsAre(wps::command(0, 1, "WscPinCode", longest), wps::command(0, 1, "WscSetupLockTime", longest)));
}

TEST_F(WpsSettingShell, GetsNothingOfALongerValue) {
  for (const size_t length : {160U, 161U, 1000U, 100000U}) {
    const std::string value = std::string(length - 1, '0') + "1";
    for (const int band : {0, 1}) {
      EXPECT_EQ(1u, wifimgr_lib_set_wscPinCode(static_cast<uint32_t>(band), 1, value.c_str()));
      const auto trace = seams::trace_of(
          [&] { EXPECT_EQ(1u, wifimgr_lib_set_wscSetupLockTime(static_cast<uint32_t>(band), 1, value.c_str())); });
      EXPECT_EQ("[wifimgr_lib_set_wscSetupLockTime]:===Fail Exit===\n", trace.back());
      EXPECT_EQ(std::string(149, '0'), sandbox::field(band, "WscSetupLockTime", 1));
    }
  }
  EXPECT_THAT(seams::commands, IsEmpty());
}

// 78 characters that need a backslash and three that need none are 159; one more is too many.
TEST_F(WpsSettingShell, CountsTheBackslashesToo) {
  const std::string fits = "1\n" + std::string(77, ';') + "ab";
  EXPECT_EQ(0u, wifimgr_lib_set_wscPinCode(0, 1, fits.c_str()));
  EXPECT_EQ(1u, seams::commands.size());
  EXPECT_EQ(1u, wifimgr_lib_set_wscPinCode(0, 1, (fits + "c").c_str()));
  EXPECT_EQ(1u, seams::commands.size());
}

TEST_F(WpsSettingShell, IsGivenTheWholeValueThoughTheStoreCutsIt) {
  const std::string value(150, '0');
  EXPECT_EQ(0u, wifimgr_lib_set_wscConfMode(0, 1, value.c_str()));
  EXPECT_THAT(seams::commands, ElementsAre(wps::command(0, 1, "WscConfMode", value)));
  EXPECT_EQ(std::string(149, '0'), sandbox::field(0, "WscConfMode", 1));
}

}  // namespace
