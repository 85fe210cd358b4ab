// wlanctl radio, led and button.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::Not;

constexpr char kLed[] = "cat /proc/zq2810/led_wlan";

TEST(RadioSwitch, OffTakesTheBandDownAndLeavesTheOtherUp) {
  const std::vector<Result> results =
      run_steps({"wlanctl radio off 5g --json", "wlanctl status --json", "wlanctl radio off 2.4g"});
  const Json document = document_in(results[0].out);
  EXPECT_EQ("radio off", document["verb"]);
  EXPECT_EQ(0, document["exit_code"]);
  EXPECT_EQ(Json::parse(R"({"band": "5g", "radio": "off", "ssids": [
                            {"ssid": 1, "interface": "rai0", "state": "down"},
                            {"ssid": 2, "interface": "rai1", "state": "down"}]})"),
            document["data"]);
  const Json bands = document_in(results[1].out)["data"]["bands"];
  EXPECT_EQ("up", bands[0]["ssids"][0]["state"]);
  EXPECT_EQ("down", bands[1]["ssids"][0]["state"]);
  EXPECT_EQ("2.4g: radio off\n  ra0  down  Gateway-Home\n  ra1  down  Gateway-Guest\n", results[2].out);
}

TEST(RadioSwitch, OnBringsTheEnabledSsidsUp) {
  const Json document = json_of("radio on 2.4g", "wlanctl set 2.4g EnableSSID:2=0; wlanctl radio off 2.4g");
  EXPECT_EQ(0, document["exit_code"]);
  EXPECT_EQ("on", document["data"]["radio"]);
  EXPECT_EQ("up", document["data"]["ssids"][0]["state"]);
  EXPECT_EQ("down", document["data"]["ssids"][1]["state"]);
}

TEST(RadioSwitch, LeavesTheSettingsAlone) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; wlanctl dump --json --secrets >before; wlanctl radio off 5g "
          ">/dev/null; wlanctl radio on 5g >/dev/null;"
          "wlanctl dump --json --secrets | cmp - before");
  EXPECT_EQ(0, result.status) << result.out << result.err;
}

TEST(RadioSwitch, WhatTheLibraryAndItsToolsPrintIsNoOutput) {
  const std::vector<Result> results = run_steps({"wlanctl radio off 5g --json", "wlanctl radio on 5g --json"});
  for (const Result& result : results) {
    EXPECT_EQ(0, document_in(result.out)["exit_code"]);
    EXPECT_EQ("", result.err);
  }
}

TEST(RadioSwitch, AnInterfaceThatDoesNotFollowIsAProblem) {
  const Json document =
      json_of("radio off 5g", "for folder in $(echo $PATH | tr : ' ') /userfs/bin; do rm -f $folder/ifconfig; done");
  ASSERT_EQ(6, document["exit_code"]);
  EXPECT_EQ("rai0", document["problems"][0]["interface"]);
  EXPECT_EQ("up", document["data"]["ssids"][0]["state"]);
}

TEST(RadioSwitch, ABandWithoutDriverIsAProblem) {
  const Json document = json_of("radio on 5g", "rmmod mt7662e_ap", {"--chips", "7603,7612"});
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_EQ(1u, document["problems"].size());
}

TEST(RadioSwitch, WrongWordsAreUsage) {
  const std::vector<Result> results =
      run_steps({"wlanctl radio", "wlanctl radio on", "wlanctl radio on 6g", "wlanctl radio maybe 5g"});
  for (const Result& result : results) EXPECT_EQ(2, result.status);
}

TEST(RadioSwitch, WaitsForAnotherWlanctl) {
  const Json document = json_of("radio off 5g --wait 0",
                                "flock /var/run/wlanctl.lock sleep 60 & while flock -n /var/run/wlanctl.lock true; do "
                                "sleep 0.05; done");
  EXPECT_EQ(4, document["exit_code"]);
}

TEST(Led, ShowsTheText) {
  const std::vector<Result> results =
      run_steps({"wlanctl led '1 on-and_Off' --json", kLed, "wlanctl led abcdefghijklmnopqrstuvwxyz012345", kLed});
  EXPECT_EQ("1 on-and_Off", document_in(results[0].out)["data"]["text"]);
  EXPECT_EQ("1 on-and_Off\n", results[1].out);
  EXPECT_EQ("WLAN LED: abcdefghijklmnopqrstuvwxyz012345\n", results[2].out);
  EXPECT_EQ("abcdefghijklmnopqrstuvwxyz012345\n", results[3].out);
}

TEST(Led, ATextThatAShellOrTheBoardWouldTakeApartIsRefused) {
  Words steps;
  for (const char* const text :
       {"'$(touch hit)'", "'`touch hit`'", "'a;touch hit'", "'a|b'", "'a>b'", "\"a'b\"", "'a\"b'", "'a\nb'", "'*'",
        "''", "' a'", "'a '", "'a  b'", "-- '-n'", "-- '-e x'", "abcdefghijklmnopqrstuvwxyz0123456"}) {
    steps.push_back(std::string("wlanctl led --json ") + text + "; status=$?; " + kLed +
                    " >&2; [ ! -e hit ] && exit $status");
  }
  for (const Result& result : run_steps(steps)) {
    EXPECT_EQ(1, result.status);
    EXPECT_EQ("1\n", result.err) << "as it was";
    EXPECT_EQ(1u, document_in(result.out)["problems"].size());
  }
}

TEST(Led, ABoardWithoutLedDoesNotAnswer) {
  const Json document = json_of("led 1", "rm /proc/zq2810/led_wlan; mkdir /proc/zq2810/led_wlan");
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_THAT(document["problems"][0]["reason"].get<std::string>(), HasSubstr("led_wlan"));
}

TEST(Button, APressIsSeenOnce) {
  const std::vector<Result> results = run_steps({"simctl press wps; wlanctl button wps --json",
                                                 "wlanctl button wps --json", "simctl press wps; wlanctl button wps"});
  EXPECT_EQ(Json::parse(R"({"buttons": [{"button": "wps", "pressed": true, "text": "1"}]})"),
            document_in(results[0].out)["data"]);
  EXPECT_EQ(Json::parse(R"({"buttons": [{"button": "wps", "pressed": false, "text": ""}]})"),
            document_in(results[1].out)["data"]);
  EXPECT_EQ("wps  pressed (1), and used up by this look\n", results[2].out);
}

TEST(Button, LookingAtOneLeavesTheOthersPressed) {
  const std::vector<Result> results =
      run_steps({"simctl press wps; simctl press wlan11ac 2; wlanctl button wps", "wlanctl button wlan11ac --json"});
  EXPECT_EQ("2", document_in(results[1].out)["data"]["buttons"][0]["text"]);
}

TEST(Button, AllAreShownWithoutAName) {
  const Json buttons =
      json_of("button", "simctl press wlan; simctl press wps5g; simctl press wlan-wps")["data"]["buttons"];
  std::string seen;
  for (const Json& button : buttons) {
    seen += button["button"].get<std::string>() + (button["pressed"] == true ? "+ " : "- ");
  }
  EXPECT_EQ("wlan+ wps- wps5g+ wlan11ac- wlan-wps+ ", seen);
}

TEST(Button, OneThatTheBoardDoesNotTellIsNull) {
  const Json document = json_of("button", "rm /proc/zq2810/wps_button; simctl press wlan");
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_EQ(1u, document["problems"].size());
  EXPECT_EQ("wps", document["problems"][0]["button"]);
  EXPECT_EQ(true, document["data"]["buttons"][0]["pressed"]);
  EXPECT_TRUE(document["data"]["buttons"][1]["pressed"].is_null());
}

TEST(Button, AnUnknownNameIsUsageAndNamesTheKnown) {
  const Result result = run("wlanctl button reset");
  EXPECT_EQ(2, result.status);
  EXPECT_THAT(result.err, HasSubstr("wlan, wps, wps5g, wlan11ac, wlan-wps"));
}

}  // namespace
}  // namespace wlanctl_test
