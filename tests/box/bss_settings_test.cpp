// What the driver in the kernel knows of a BSS.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "kept_texts.h"
#include "sim/records/dat_file.h"
#include "sim/state/driver_defaults.h"
#include "sim/state/driver_state.h"

namespace box_test {
namespace {

std::string with(const std::string& settings, const char* key, const char* value) {
  return taken(settings_with(settings.c_str(), key, value));
}

TEST(SettingsWith, KeepsKeysInOrder) {
  EXPECT_EQ("B=1\n", with("", "B", "1"));
  EXPECT_EQ("A=0\nB=1\n", with("B=1\n", "A", "0"));
  EXPECT_EQ("B=1\nC=2\n", with("B=1\n", "C", "2"));
  EXPECT_EQ("B=1\nBB=2\nC=3\n", with("B=1\nC=3\n", "BB", "2"));
}

TEST(SettingsWith, ReplacesAValue) {
  EXPECT_EQ("A=1\nB=x\nC=3\n", with("A=1\nB=2\nC=3\n", "B", "x"));
  EXPECT_EQ("A=\n", with("A=1\n", "A", ""));
}

TEST(PlainSetting, ComesBackAsItWas) {
  for (const char* value : {"", "plain", "a\\b", "two\nlines", "\\n", "\\", "a=b"}) {
    EXPECT_EQ(value, taken(plain_setting(with("Z=1\n", "Key", value).c_str(), "Key")));
  }
  EXPECT_EQ("(none)", taken(plain_setting("A=1\n", "B")));
}

TEST(PlainSettings, AreOneLineEach) {
  Text text = {};
  add_plain_settings(&text, "A=1\\nx\nB=\\\\\n");
  EXPECT_EQ("A=1\nx\nB=\\\n", taken(finish_text(&text)));
}

// A long value makes the text grow more than once.
TEST(SettingsWith, TakesLongValues) {
  const std::string value(5000, 'x');
  EXPECT_EQ("A=" + value + "\n", with("", "A", value.c_str()));
}

TEST(Pin, HasACheckDigit) {
  char pin[9];
  format_pin(1234567, pin);
  EXPECT_STREQ("12345670", pin);
  format_pin(10000000, pin);
  EXPECT_STREQ("00000000", pin);
}

TEST(ChannelFor, IsTheRadiosOwnForZero) {
  EXPECT_EQ(6, channel_for(false, 0));
  EXPECT_EQ(36, channel_for(true, 0));
  EXPECT_EQ(11, channel_for(true, 11));
}

TEST(SettingsFromDat, KeepWhatTheRadioReports) {
  const std::string first = taken(settings_from_dat(kDat, false, 1, nullptr));
  const std::string louder = with(with(first, "Noise", "-50"), "Channel", "3");
  const std::string again = taken(settings_from_dat(kDat, false, 1, louder.c_str()));
  EXPECT_EQ("-50", taken(plain_setting(again.c_str(), "Noise")));
  EXPECT_EQ("11", taken(plain_setting(again.c_str(), "Channel")));
}

// The simulated gateway reads dat files with code of its own: what both make of one is the same text.
std::string simulated(const std::string& path, gateway::Band band, int ssid) {
  const gateway::DatFile dat(path);
  gateway::DriverSettings settings = gateway::settings_from_dat(dat, band, ssid);
  gateway::add_default_readings(&settings, band, ssid - 1);
  std::string text;
  for (const auto& [key, value] : settings) {
    text += key + "=";
    for (const char c : value) text += c == '\\' ? std::string("\\\\") : std::string(1, c);
    text += "\n";
  }
  return text;
}

TEST(SettingsFromDat, AreTheSimulatedGateways) {
  const std::string path = testing::TempDir() + "/box-dat-" + std::to_string(getpid());
  std::ofstream(path) << kDat;
  for (const bool is_5g : {false, true}) {
    for (int ssid = 1; ssid <= kDatMostSsids; ++ssid) {
      EXPECT_EQ(simulated(path, is_5g ? gateway::Band::k5G : gateway::Band::k2_4G, ssid),
                taken(settings_from_dat(kDat, is_5g, ssid, nullptr)))
          << is_5g << ssid;
    }
  }
  unlink(path.c_str());
}

}  // namespace
}  // namespace box_test
