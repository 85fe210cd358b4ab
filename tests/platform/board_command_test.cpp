// Command lines for the board's files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "platform/board.h"
#include "platform/caller_buffer.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using board::Buffer;
using testing::ElementsAre;
using testing::IsEmpty;

std::string led_line(const std::string& text) {
  seams::commands.clear();
  EXPECT_EQ(0, wifimgr_lib_set_LED_WLAN(text.c_str()));
  return seams::commands.size() == 1 ? seams::commands[0] : std::to_string(seams::commands.size()) + " commands";
}

TEST(WlanLed, IsSetThroughTheShell) {
  EXPECT_EQ("echo 1 > /proc/zq2810/led_wlan", led_line("1"));
  EXPECT_EQ("echo  > /proc/zq2810/led_wlan", led_line(""));
  EXPECT_EQ("echo on 5 > /proc/zq2810/led_wlan", led_line("on 5"));
  EXPECT_EQ("echo %s%n%d > /proc/zq2810/led_wlan", led_line("%s%n%d"));
  EXPECT_EQ("echo $(x) 'y' > /proc/zq2810/led_wlan", led_line("$(x) 'y'"));
}

TEST(WlanLed, KeepsTheTextWhenTheLineIsRun) {
  board::use_own_proc();
  seams::on_command = board::run;
  EXPECT_EQ(0, wifimgr_lib_set_LED_WLAN("blink 3"));
  EXPECT_THAT(board::all_files(), ElementsAre("led_wlan=blink 3\n"));
}

TEST(WlanLed, CutsTheWholeLineTo63Characters) {
  const struct {
    const char* text;
    const char* line;
  } rows[] = {
      {"123456789012345678901234567890", "echo 123456789012345678901234567890 > /proc/zq2810/led_wlan"},
      {"1234567890123456789012345678901", "echo 1234567890123456789012345678901 > /proc/zq2810/led_wlan"},
      {"12345678901234567890123456789012", "echo 12345678901234567890123456789012 > /proc/zq2810/led_wlan"},
      {"123456789012345678901234567890123", "echo 123456789012345678901234567890123 > /proc/zq2810/led_wlan"},
      {"1234567890123456789012345678901234", "echo 1234567890123456789012345678901234 > /proc/zq2810/led_wlan"},
      {"12345678901234567890123456789012345", "echo 12345678901234567890123456789012345 > /proc/zq2810/led_wla"},
      {"123456789012345678901234567890123456", "echo 123456789012345678901234567890123456 > /proc/zq2810/led_wl"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.line, led_line(row.text));
  EXPECT_EQ("echo " + std::string(55, 't') + " > ", led_line(std::string(55, 't')));
  EXPECT_EQ("echo " + std::string(57, 't') + " ", led_line(std::string(57, 't')));
  EXPECT_EQ("echo " + std::string(58, 't'), led_line(std::string(58, 't')));
  EXPECT_EQ("echo " + std::string(58, 't'), led_line(std::string(59, 't')));
  EXPECT_EQ("echo " + std::string(58, 't'), led_line(std::string(200, 't')));
}

TEST(WlanLed, RunsNothingForANullText) {
  EXPECT_EQ(0, wifimgr_lib_set_LED_WLAN(nullptr));
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(WlanLed, DoesNotLookAtTheShellsResult) {
  for (const int result : {-1, 1, 256, 32512}) {
    seams::on_command = [result](const std::string&) { return result; };
    EXPECT_EQ(0, wifimgr_lib_set_LED_WLAN("1"));
  }
}

TEST(WlanLed, TracesEntryAndSuccess) {
  for (const char* const text : {"1", static_cast<const char*>(nullptr)}) {
    EXPECT_THAT(
        seams::trace_of([&] { EXPECT_EQ(0, wifimgr_lib_set_LED_WLAN(text)); }),
        ElementsAre("[wifimgr_lib_set_LED_WLAN]:===Enter===\n", "[wifimgr_lib_set_LED_WLAN]:===Success Exit===\n"));
  }
}

// The text as the buffer holds it, up to its NUL; all that is behind must be untouched.
std::string share_line(int a, int b, const std::string& text1, const std::string& text2) {
  Buffer buffer;
  EXPECT_EQ(0, wifimgr_lib_get_WLANSHARE_CMD(buffer.bytes, a, b, text1.c_str(), text2.c_str()));
  const std::string line = buffer.bytes;
  EXPECT_EQ(Buffer::with(line + std::string(1, '\0')), buffer.all());
  return line;
}

TEST(WlanShare, IsALineForTheCaller) {
  EXPECT_EQ("echo 1 2 a b > /proc/zq2810/wlanshare", share_line(1, 2, "a", "b"));
  EXPECT_EQ("echo 0 -1   > /proc/zq2810/wlanshare", share_line(0, -1, "", ""));
  EXPECT_EQ("echo 2 1 %s %n > /proc/zq2810/wlanshare", share_line(2, 1, "%s", "%n"));
  EXPECT_EQ("echo -2147483648 2147483647 x y > /proc/zq2810/wlanshare", share_line(INT_MIN, INT_MAX, "x", "y"));
}

TEST(WlanShare, IsCutTo63Characters) {
  EXPECT_EQ("echo 1 2 34567890123456789012345678 bb > /proc/zq2810/wlanshare",
            share_line(1, 2, "34567890123456789012345678", "bb"));
  EXPECT_EQ("echo 1 2 345678901234567890123456789 bb > /proc/zq2810/wlanshar",
            share_line(1, 2, "345678901234567890123456789", "bb"));
  EXPECT_EQ("echo 1 2 34567890123456789012345678 bbb > /proc/zq2810/wlanshar",
            share_line(1, 2, "34567890123456789012345678", "bbb"));
  EXPECT_EQ("echo 10 2 34567890123456789012345678 bb > /proc/zq2810/wlanshar",
            share_line(10, 2, "34567890123456789012345678", "bb"));
  EXPECT_EQ("echo 1 2 " + std::string(54, 't'), share_line(1, 2, std::string(54, 't'), "b"));
  EXPECT_EQ("echo 1 2 " + std::string(54, 't'), share_line(1, 2, std::string(200, 't'), "b"));
  EXPECT_EQ("echo 1 2 a " + std::string(52, 't'), share_line(1, 2, "a", std::string(200, 't')));
}

TEST(WlanShare, RunsNothing) {
  board::use_own_proc();
  (void)share_line(1, 2, "a", "b");
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_THAT(board::all_files(), IsEmpty());
}

TEST(WlanShare, WritesNothingForANullPointer) {
  Buffer buffer;
  EXPECT_EQ(0, wifimgr_lib_get_WLANSHARE_CMD(nullptr, 1, 2, "a", "b"));
  EXPECT_EQ(0, wifimgr_lib_get_WLANSHARE_CMD(buffer.bytes, 1, 2, nullptr, "b"));
  EXPECT_EQ(0, wifimgr_lib_get_WLANSHARE_CMD(buffer.bytes, 1, 2, "a", nullptr));
  EXPECT_TRUE(buffer.is_untouched());
}

TEST(WlanShare, TracesEntryAndSuccess) {
  EXPECT_THAT(seams::trace_of([] { (void)share_line(1, 2, "a", "b"); }),
              ElementsAre("[wifimgr_lib_get_WLANSHARE_CMD]:===Enter===\n",
                          "[wifimgr_lib_get_WLANSHARE_CMD]:===Success Exit===\n"));
}

}  // namespace
