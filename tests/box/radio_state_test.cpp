// The kernel's driver under its own commands.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

#include "kept_texts.h"

namespace box_test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char kStations[] =
    "ra0 02:5a:10:24:00:11 8 1 8 -48 144 7300000000000000 01 0\n"
    "ra1 02:5a:10:24:00:12 9 1 9 -67 72 0000000000000000 00 0\n";

std::string list(const std::string& name) {
  return texts()[{DRIVER_LISTS, name}];
}

int set(const char* argument, const char* interface = "ra0") {
  return set_private(0, interface, 2, argument);
}

class RadioState : public testing::Test {
 protected:
  void SetUp() override {
    start_two();
    texts()[{DRIVER_LISTS, "stations-ra"}] = kStations;
  }
};

TEST_F(RadioState, StartsFromTheDatFile) {
  EXPECT_EQ("a;b\\c", setting("ra0", "SSID"));
  EXPECT_EQ("second", setting("ra1", "SSID"));
  EXPECT_EQ("0", setting("ra0", "WpsState"));
  EXPECT_EQ("1", setting("ra1", "WpsState"));
  EXPECT_EQ("(none)", setting("ra2", "SSID"));
  EXPECT_THAT(list("neighbours-ra"), HasSubstr("Corner%20Bakery"));
}

TEST_F(RadioState, ChannelIsTheWholeRadios) {
  EXPECT_EQ(0, set("Channel=4", "ra1"));
  EXPECT_EQ("4", setting("ra0", "Channel"));
  EXPECT_EQ(0, set("Channel=0"));
  EXPECT_EQ("6", setting("ra1", "Channel"));
  for (const char* wrong :
       {"Channel=", "Channel=x", "Channel=-1", "Channel=197", "Channel=9999999999999999", "Channel"}) {
    EXPECT_EQ(EINVAL, set(wrong)) << wrong;
  }
  EXPECT_EQ("6", setting("ra0", "Channel"));
}

TEST_F(RadioState, OtherKeysAreTheirInterfacesOwn) {
  EXPECT_EQ(0, set("HideSSID=1", "ra1"));
  EXPECT_EQ("(none)", setting("ra0", "HideSSID"));
  EXPECT_EQ(0, set("Flag"));
  EXPECT_EQ("", setting("ra0", "Flag"));
}

TEST_F(RadioState, RefusesWhatIsNoKey) {
  for (const std::string& wrong :
       {std::string(), std::string("=1"), std::string("a\nb=1"), std::string(64, 'k') + "=1"}) {
    EXPECT_EQ(EINVAL, set(wrong.c_str())) << wrong;
  }
}

TEST_F(RadioState, StationsLeaveWhenTheirNetworkChanges) {
  EXPECT_EQ(0, set("SSID=a;b\\c"));
  EXPECT_EQ(kStations, list("stations-ra"));
  EXPECT_EQ(0, set("SSID=other"));
  EXPECT_THAT(list("stations-ra"), StartsWith("ra1 "));
  EXPECT_EQ(0, set("HideSSID=1", "ra1"));
  EXPECT_THAT(list("stations-ra"), StartsWith("ra1 "));
  EXPECT_EQ(0, stations_leave(0, "ra1"));
  EXPECT_EQ("", list("stations-ra"));
}

TEST_F(RadioState, ReadsTheDatFileAnew) {
  set("SSID=other");
  set("Noise=-50");
  EXPECT_EQ(0, read_dat_anew(0, "SSID1=fresh\nChannel=1\n", 2));
  EXPECT_EQ("fresh", setting("ra0", "SSID"));
  EXPECT_EQ("(none)", setting("ra1", "SSID"));
  EXPECT_EQ("-50", setting("ra0", "Noise"));
}

TEST_F(RadioState, WpsOpensAndEndsASession) {
  EXPECT_EQ(0, set("WscGetConf=1"));
  EXPECT_EQ("0", setting("ra0", "WpsState")) << "WPS is off there";
  EXPECT_EQ(0, set("WscGetConf=1", "ra1"));
  EXPECT_EQ("2", setting("ra1", "WpsState"));
  EXPECT_EQ("1", setting("ra1", "WpsStatus"));
  EXPECT_EQ(0, set("WscStop", "ra1"));
  EXPECT_EQ("1", setting("ra1", "WpsState"));
  EXPECT_EQ("0", setting("ra1", "WpsStatus"));
  EXPECT_EQ("(none)", setting("ra1", "WpsPeer"));
}

TEST_F(RadioState, WpsEndsWithoutAPeer) {
  store_state(DRIVER_SETTINGS, "ra1",
              taken(settings_with(texts()[{DRIVER_SETTINGS, "ra1"}].c_str(), "WpsPeer", "02:aa:bb:cc:dd:01")).c_str());
  EXPECT_EQ(0, set("WscOOB=1", "ra1"));
  EXPECT_EQ("00:00:00:00:00:00", setting("ra1", "WpsPeer"));
  EXPECT_EQ("00:00:00:00:00:00", setting("ra0", "WpsStation"));
  EXPECT_EQ("1", setting("ra1", "WscConfStatus"));
}

TEST_F(RadioState, WpsModeSwitchesOnAndOff) {
  EXPECT_EQ(0, set("WscConfMode=7"));
  EXPECT_EQ("1", setting("ra0", "WpsState"));
  EXPECT_EQ(0, set("WscConfMode=0"));
  EXPECT_EQ("0", setting("ra0", "WpsState"));
}

TEST_F(RadioState, WpsPinIsANumber) {
  EXPECT_EQ(0, set("WscPinCode=4294967295"));
  EXPECT_EQ("4294967295", setting("ra0", "WpsPin"));
  for (const char* wrong : {"WscPinCode=", "WscPinCode=4294967296", "WscPinCode=1x", "WscPinCode=00000000001"}) {
    EXPECT_EQ(EINVAL, set(wrong)) << wrong;
  }
  EXPECT_EQ(0, set("WscGenPinCode=0"));
  EXPECT_EQ("4294967295", setting("ra0", "WpsPin"));
  EXPECT_EQ(0, set("WscGenPinCode=1"));
  EXPECT_EQ("12345670", setting("ra0", "WpsPin"));
}

TEST_F(RadioState, SurveyIsATable) {
  texts()[{DRIVER_LISTS, "neighbours-ra"}] =
      "02:6e:40:24:00:01 1 -71 WPA2PSK/AES 1 0 a%0ab\nnonsense\n02:6e:40:24:00:02 11 -64 OPEN/NONE 0 0 %\n";
  EXPECT_EQ(
      "\nTotal 2\n"
      "Ch  SSID                             BSSID              Security                Signal  WPS \n"
      "1   a.b                              02:6e:40:24:00:01  WPA2PSK/AES             -71     YES \n"
      "11                                   02:6e:40:24:00:02  OPEN/NONE               -64     NO  \n",
      taken(site_survey(0)));
}

TEST_F(RadioState, PartialScanHearsTheNeighboursNow) {
  texts()[{DRIVER_LISTS, "neighbours-ra"}] = "02:6e:40:24:00:01 1 -71 OPEN 1 0 a\n";
  EXPECT_EQ(0, set("PartialScan=0"));
  EXPECT_THAT(list("neighbours-ra"), EndsWith(" 0 a\n"));
  EXPECT_EQ(0, set("PartialScan=1"));
  EXPECT_THAT(list("neighbours-ra"), Not(EndsWith(" 0 a\n")));
}

}  // namespace
}  // namespace box_test
