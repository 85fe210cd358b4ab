// wlanctl wps: sessions by push button and PIN.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// Command lines that a call of wlanctl made, from the journal.
std::string calls_of(const std::string& words) {
  return "n=$(wc -l </run/gateway-sim/journal); wlanctl wps " + words +
         " >/dev/null 2>complaints; echo $?; cat complaints >&2; tail -n +$((n + 1)) /run/gateway-sim/journal | cut "
         "-f2";
}

TEST(Wps, PushButtonOpensASession) {
  const Json document = json_of("wps pbc 2.4g 1", "simctl wps ra0 pin 12345670");
  EXPECT_EQ(Json::parse(R"({"band": "2.4g", "ssid": 1, "interface": "ra0", "mode": 7, "state": 2, "state_name": "open",
                            "peer": null, "pin": "12345670"})"),
            document["data"]);
  EXPECT_EQ("wps pbc", document["verb"]);
  EXPECT_EQ(0, document["exit_code"]);
}

TEST(Wps, PushButtonTellsTheDriverEverythingThatASessionNeeds) {
  EXPECT_THAT(
      lines_of(run(calls_of("pbc 5g 2")).out),
      ElementsAre("0", "/userfs/bin/iwpriv rai1 set WscConfMode=7", "/userfs/bin/iwpriv rai1 set WscConfStatus=2",
                  "/userfs/bin/iwpriv rai1 set WscMode=2", "/userfs/bin/iwpriv rai1 set WscGetConf=1"));
}

TEST(Wps, APinIsGivenToTheDriver) {
  EXPECT_THAT(lines_of(run(calls_of("pin 2.4g 1 12345670")).out),
              ElementsAre("0", "/userfs/bin/iwpriv ra0 set WscConfMode=7", "/userfs/bin/iwpriv ra0 set WscConfStatus=2",
                          "/userfs/bin/iwpriv ra0 set WscMode=1", "/userfs/bin/iwpriv ra0 set WscPinCode=12345670",
                          "/userfs/bin/iwpriv ra0 set WscGetConf=1"));
}

TEST(Wps, WithoutAPinTheDriverKeepsItsOwn) {
  EXPECT_THAT(lines_of(run(calls_of("pin 2.4g 1")).out),
              AllOf(testing::Contains(HasSubstr("WscMode=1")), Not(testing::Contains(HasSubstr("WscPinCode")))));
}

TEST(Wps, StopEndsTheSession) {
  const Json document = json_of("wps stop 2.4g 1", "wlanctl wps pbc 2.4g 1");
  EXPECT_EQ(0, document["exit_code"]);
  EXPECT_EQ("idle", document["data"]["state_name"]);
}

TEST(Wps, ADriverThatOnlySaysThatItDidIsNotBelieved) {
  const std::vector<Result> steps = run_steps({"simctl fail iwpriv exit=0; wlanctl wps pbc 2.4g 1",
                                               "simctl wps ra0 state 2; wlanctl wps stop 2.4g 1 --json",
                                               "simctl fail none; wlanctl wps stop 2.4g 1"});
  EXPECT_EQ(5, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("the driver was told to open the session, but WPS of 2.4g SSID 1 is idle"));
  const Json document = document_in(steps[1].out);
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_EQ(2, document["data"]["state"]);
  EXPECT_THAT(document["problems"].at(0)["message"].dump(), HasSubstr("told to end the session, but"));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
}

TEST(Wps, ADriversToolThatHangsIsEndedInTime) {
  const std::vector<Result> steps =
      run_steps({"simctl fail iwpriv hang; wlanctl wps pbc 2.4g 1 --command-timeout 1",
                 "simctl fail mtd hang; wlanctl calibration read 2.4g --command-timeout 1"});
  for (const Result& step : steps) EXPECT_EQ(5, step.status) << step.err;
  EXPECT_THAT(steps[0].err, HasSubstr("did not end in time"));
}

TEST(Wps, StatusShowsThePeerAndThePin) {
  const std::vector<Result> results = run_steps(
      {"simctl wps ra1 state 3 peer 02:AA:bb:cc:dd:01; simctl wps ra1 pin 1234; wlanctl wps status 2.4g 2 --json",
       "wlanctl wps status 2.4g 2"});
  const Json data = document_in(results[0].out)["data"];
  EXPECT_EQ(3, data["state"]);
  EXPECT_EQ("enrolling", data["state_name"]);
  EXPECT_EQ("02:aa:bb:cc:dd:01", data["peer"]);
  EXPECT_EQ("00001234", data["pin"]);
  EXPECT_EQ("2.4g SSID 2 (ra1): WPS enrolling with 02:aa:bb:cc:dd:01, mode 7, PIN 00001234\n", results[1].out);
}

TEST(Wps, EachStateHasItsName) {
  Words steps;
  for (int state = 0; state <= 6; ++state) {
    steps.push_back("simctl wps ra0 state " + std::to_string(state) + "; wlanctl wps status 2.4g 1 --json");
  }
  const std::vector<Result> results = run_steps(steps);
  const char* const names[] = {"off", "idle", "open", "enrolling", "done", "failed", "6"};
  for (size_t i = 0; i < std::size(names); ++i) {
    EXPECT_EQ(names[i], document_in(results[i].out)["data"]["state_name"]);
  }
}

TEST(Wps, WhatTheDriverDoesNotTellIsNull) {
  const std::vector<Result> results = run_steps(
      {"simctl fail wps-pin EIO; wlanctl wps status 2.4g 1 --json",
       "simctl fail none; simctl fail wps-state EIO; wlanctl wps status 2.4g 1 --json",
       "simctl fail none; simctl fail wps-peer EIO; simctl wps ra0 state 3; wlanctl wps status 2.4g 1 --json"});
  for (const Result& result : results) EXPECT_EQ(5, result.status);
  EXPECT_TRUE(document_in(results[0].out)["data"]["pin"].is_null());
  EXPECT_TRUE(document_in(results[1].out)["data"]["state"].is_null());
  EXPECT_EQ(3, document_in(results[2].out)["data"]["state"]);
  EXPECT_TRUE(document_in(results[2].out)["data"]["peer"].is_null());
}

TEST(Wps, APinWithAWrongCheckDigitIsRefusedUnlessForced) {
  const std::vector<Result> results =
      run_steps({calls_of("pin 2.4g 1 12345671"), calls_of("pin 2.4g 1 1234567"),
                 calls_of("pin 2.4g 1 12345671 --force"), calls_of("pin 2.4g 1 1234 --force")});
  for (size_t i = 0; i < 2; ++i) {
    EXPECT_THAT(lines_of(results[i].out), ElementsAre("1")) << "nothing ran";
    EXPECT_THAT(results[i].err, HasSubstr("that is no PIN"));
  }
  EXPECT_THAT(results[2].out, HasSubstr("WscPinCode=12345671"));
  EXPECT_THAT(results[3].out, HasSubstr("WscPinCode=1234\n"));
}

TEST(Wps, APinThatIsNoNumberIsRefusedEvenIfForced) {
  for (const char* const pin : {"'1;id'", "12x45670", "-5", "00000000", "4294967296", "99999999999999999999", "''"}) {
    SCOPED_TRACE(pin);
    const Result result = run(calls_of(std::string("pin --force 2.4g 1 -- ") + pin));
    EXPECT_THAT(lines_of(result.out), ElementsAre("1"));
  }
}

TEST(Wps, OffIsSaidWithHowToSwitchItOn) {
  const std::vector<Result> results =
      run_steps({"wlanctl set 2.4g WscConfMode:1=0", calls_of("pbc 2.4g 1"), "wlanctl wps pbc 2.4g 1 --json",
                 "wlanctl wps status 2.4g 1 --json", "wlanctl wps pbc 2.4g 2 --json"});
  EXPECT_THAT(lines_of(results[1].out), ElementsAre("1"));
  EXPECT_EQ("wlanctl: WPS is off for 2.4g SSID 1; switch it on: wlanctl set 2.4g WscConfMode:1=7\n", results[1].err);
  EXPECT_EQ(0, document_in(results[2].out)["problems"][0]["mode"]);
  EXPECT_EQ("off", document_in(results[3].out)["data"]["state_name"]);
  EXPECT_EQ(0, results[4].status) << "the other SSID's is on";
}

TEST(Wps, AModeThatTheServiceLeavesAloneIsRefused) {
  const Json document = json_of("wps pbc 2.4g 1", "wlanctl set 2.4g WscConfMode:1=4");
  EXPECT_EQ(1, document["exit_code"]);
  EXPECT_EQ(4, document["problems"][0]["mode"]);
}

TEST(Wps, ADriverThatRefusesIsAProblem) {
  const Json document = json_of("wps pbc 2.4g 1", "rm /userfs/bin/iwpriv");
  EXPECT_EQ(5, document["exit_code"]);
  EXPECT_THAT(document["problems"][0]["reason"].get<std::string>(), HasSubstr("iwpriv"));
}

TEST(Wps, ASlowDriverIsAskedOnceWhetherItDidIt) {
  const Json document = json_of("wps pbc 2.4g 1", "simctl fail wps-state slow=60 ra0");
  EXPECT_EQ(5, document["exit_code"]);
  ASSERT_EQ(1u, document["problems"].size());
  EXPECT_EQ("the state of its WPS", document["problems"][0]["question"]);
  EXPECT_TRUE(document["data"]["pin"].is_null());
}

TEST(Wps, LeavesStoreAndTemporaryFilesAlone) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; wlanctl dump --json --secrets >before; ls -A /tmp >names; wlanctl "
          "wps pin 2.4g 1 12345670 >/dev/null;"
          "wlanctl dump --json --secrets >after; cmp before after && ls -A /tmp | cmp - names");
  EXPECT_EQ(0, result.status) << result.out << result.err;
}

TEST(Wps, TheOtherBandIsNotTouched) {
  EXPECT_THAT(run(calls_of("pbc 5g 1")).out, Not(HasSubstr(" ra0 ")));
}

TEST(Wps, AnSsidThatIsNotThereIsRefused) {
  const std::vector<Result> results =
      run_steps({"wlanctl wps pbc 2.4g 3 --json", "wlanctl set 2.4g BssidNum=3; wlanctl wps pbc 2.4g 3 --json"});
  EXPECT_EQ(1, results[0].status);
  EXPECT_EQ(5, results[1].status);
  EXPECT_THAT(results[1].out, HasSubstr("wlanctl apply 2.4g"));
}

TEST(Wps, WaitsForAnotherWlanctl) {
  const Json document = json_of("wps pbc 2.4g 1 --wait 0",
                                "flock /var/run/wlanctl.lock sleep 60 & while flock -n /var/run/wlanctl.lock true; do "
                                "sleep 0.05; done");
  EXPECT_EQ(4, document["exit_code"]);
}

TEST(Wps, WrongWordsAreUsage) {
  for (const Result& result : run_steps({"wlanctl wps", "wlanctl wps pbc", "wlanctl wps pbc 2.4g",
                                         "wlanctl wps pbc 2.4g 9", "wlanctl wps nonsense 2.4g 1"})) {
    EXPECT_EQ(2, result.status);
    EXPECT_THAT(result.out, IsEmpty());
  }
}

}  // namespace
}  // namespace wlanctl_test
