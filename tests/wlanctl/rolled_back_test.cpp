// A roll back that driver or kernel did not take says so, whoever did it, until it is mended.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kWaiting =
    "wlanctl set 2.4g SSID:1=Kitchen >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1;";
const std::string kBroken = "simctl fail iwpriv exit=1 >/dev/null;";
const std::string kAfter =
    "echo == log; wlanctl log --json; echo == status; wlanctl status 2.4g 2>&1 | grep -A 1 -e settings: -e note -e "
    "'did not take';"
    "echo == diff; wlanctl diff 2.4g --in-force 2>/dev/null;"
    "simctl fail none >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; echo == mended; wlanctl status 2.4g 2>&1 |"
    "grep -e settings: -e note -e 'did not take';";

const std::string kLog = "L=/run/gateway-sim/syslog; until grep -q 'not confirmed' $L; do sleep 0.02; done; cat $L";

void expect_told(const Result& result) {
  const Json entry = document_in(behind(result.out, "log"))["data"]["entries"][0];
  EXPECT_EQ("rollback", entry["operation"]) << result.err;
  EXPECT_EQ("done", entry["state"]);
  EXPECT_EQ(false, entry["in_force"]);
  EXPECT_EQ(6, entry["exit_code"]);
  EXPECT_THAT(behind(result.out, "status"), HasSubstr("; not all that was\n            applied is in force\n"));
  EXPECT_THAT(behind(result.out, "status"), HasSubstr("the driver did not take all of what was last applied to 2.4g"));
  EXPECT_EQ("2.4g: the store is as what was last applied\n", behind(result.out, "diff"));
  EXPECT_THAT(behind(result.out, "mended"),
              testing::StartsWith("  settings: store, dat file and what is in force agree\n"));
  EXPECT_THAT(behind(result.out, "mended"), Not(HasSubstr("did not take")));
}

TEST(RolledBack, ByAGuardianWhoseDriverDoesNotTakeItIsNotInForce) {
  const Result result =
      run_story(kWaiting + kBroken + "overdue 2.4g; gone 2.4g; no_guardian;" + kAfter + "echo == syslog; " + kLog);
  expect_told(result);
  EXPECT_THAT(behind(result.out, "syslog"), HasSubstr("2.4g: not confirmed, rolled back, but not in force"));
}

TEST(RolledBack, ByAGuardianWhoseInterfaceDoesNotComeUpIsNotInForce) {
  const Result result =
      run_story(kWaiting +
                "simctl fail ifconfig exit=1 ra0 up >/dev/null; overdue 2.4g; gone 2.4g; no_guardian; echo == log;"
                "wlanctl log --json; echo == status; wlanctl status 2.4g >/dev/null;"
                "echo $?; echo == syslog; " +
                kLog);
  const Json entry = document_in(behind(result.out, "log"))["data"]["entries"][0];
  EXPECT_EQ(false, entry["in_force"]);
  EXPECT_EQ("6\n", behind(result.out, "status"));
  EXPECT_THAT(behind(result.out, "syslog"), HasSubstr("2.4g: not confirmed, rolled back, but not in force"));
}

TEST(RolledBack, ByTheVerbIsNotInForceEither) {
  const Result result = run_story(kWaiting + kBroken + "wlanctl rollback; code=$?; echo == code; echo $code;" + kAfter);
  EXPECT_THAT(result.out, HasSubstr("2.4g: rolled back, but not in force\n"));
  EXPECT_EQ("6\n", behind(result.out, "code"));
  expect_told(result);
}

TEST(RolledBack, ByTheNextVerbIsNotInForceEither) {
  const Result result = run_story(kWaiting + "kill -9 $(guardian); no_guardian; overdue 2.4g;" + kBroken +
                                  "wlanctl set 2.4g HideSSID:1=0 >/dev/null;" + kAfter);
  EXPECT_THAT(result.err, HasSubstr("it is rolled back now, but not in force"));
  expect_told(result);
}

TEST(RolledBack, AtOnceIsNotInForceEither) {
  const Result result = run_story(
      "wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; simctl fail ifconfig exit=1 ra0 up 1 >/dev/null;" +
      kBroken + "wlanctl apply 2.4g --confirm 600 >/dev/null;" + kAfter);
  EXPECT_THAT(result.err, HasSubstr("its settings before are back, but not in force either"));
  expect_told(result);
}

// As status tells it of the same apply.
TEST(RolledBack, NoMoreThanAnApplyThatTheDriverDidNotTakeIsInForce) {
  const auto steps = run_steps({"wlanctl set 2.4g SSID:1=Kitchen >/dev/null;" + kBroken + "wlanctl apply 2.4g",
                                "wlanctl log --json", "wlanctl status 2.4g --json"});
  EXPECT_EQ(5, steps[0].status);
  EXPECT_EQ(false, document_in(steps[1].out)["data"]["entries"][0]["in_force"]);
  EXPECT_EQ(false, document_in(steps[2].out)["data"]["bands"][0]["settings"]["agree"]);
}

TEST(RolledBack, AllOfItIsInForce) {
  const Result result = run_story(kWaiting +
                                  "wlanctl rollback; code=$?; echo == code; echo $code; wlanctl status 2.4g 2>&1 |"
                                  "grep -e settings: -e note -e 'did not take'");
  EXPECT_EQ("0\n  settings: store, dat file and what is in force agree\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, Not(HasSubstr("did not take")));
}

// As an apply says of an SSID that has no interface before a reboot.
const std::string kGone = "ip link set ra1 down; ip link set ra1 name gone;";
constexpr char kNote[] = "2.4g: not on the air before a reboot, as the driver has made no interface: ra1";

void expect_off_air(const std::string& log, int exit_code) {
  const Json entry = document_in(log)["data"]["entries"][0];
  EXPECT_EQ("rollback", entry["operation"]);
  EXPECT_EQ("done", entry["state"]);
  EXPECT_EQ(false, entry["in_force"]);
  EXPECT_EQ(exit_code, entry["exit_code"]);
}

TEST(RolledBackWithoutInterface, ByTheVerbSaysThatItIsNotOnTheAir) {
  const std::string fewer =
      "wlanctl set 2.4g BssidNum=1 >/dev/null; wlanctl apply 2.4g --confirm 600 --force >/dev/null 2>&1; simctl "
      "power-cut >/dev/null;";
  for (const std::string& before : {fewer, kWaiting + kGone}) {
    const Result result =
        run_story(before + "wlanctl rollback 2.4g; code=$?; echo == code; echo $code; echo == log; wlanctl log --json");
    EXPECT_THAT(result.out, testing::StartsWith("2.4g: rolled back, but not on the air: ra1\n"));
    EXPECT_THAT(result.err, HasSubstr(kNote));
    EXPECT_EQ("0\n", behind(result.out, "code")) << "as of an apply";
    expect_off_air(behind(result.out, "log"), 0);
    const Json document = document_in(run_story(before + "wlanctl rollback 2.4g --json").out);
    EXPECT_EQ(Json::parse(R"({"bands":["2.4g"],"not_on_air":["ra1"]})"), document["data"]);
    EXPECT_THAT(document["notes"].dump(), HasSubstr(kNote));
  }
}

TEST(RolledBackWithoutInterface, ByAGuardianSaysThatItIsNotOnTheAir) {
  const Result result = run_story(kWaiting + kGone +
                                  "overdue 2.4g; gone 2.4g; no_guardian; echo == log; wlanctl log --json; echo == "
                                  "syslog; " +
                                  kLog);
  expect_off_air(behind(result.out, "log"), 0);
  EXPECT_THAT(behind(result.out, "syslog"),
              HasSubstr("2.4g: not confirmed, rolled back, but not all of it is on the air"));
  EXPECT_THAT(behind(result.out, "syslog"), HasSubstr(kNote));
}

TEST(RolledBackWithoutInterface, ByTheNextVerbSaysThatItIsNotOnTheAir) {
  const Result result = run_story(kWaiting + "kill -9 $(guardian); no_guardian; overdue 2.4g;" + kGone +
                                  "wlanctl set 2.4g HideSSID:1=0 >/dev/null; echo == log; wlanctl log --json");
  EXPECT_THAT(result.err, HasSubstr("it is rolled back now, but not all of it is on the air"));
  EXPECT_THAT(result.err, HasSubstr(kNote));
  expect_off_air(behind(result.out, "log"), 0);
}

TEST(RolledBackWithoutInterface, AtOnceSaysThatItIsNotOnTheAir) {
  const std::string interrupted =
      "printf '#!/bin/sh\nrm /front/armed 2>/dev/null && kill -INT $(cat pid)\nexec /real/ifconfig \"$@\"\n' | "
      "stand_in ifconfig; touch /front/armed;";
  for (const std::string& cause : {std::string("simctl fail ifconfig exit=1 ra0 up 1 >/dev/null;"), interrupted}) {
    const Result result =
        run_story(kGone + "wlanctl set 2.4g Channel=1 >/dev/null;" + cause +
                  "with_pid pid wlanctl apply 2.4g --confirm 600 >/dev/null; echo == log; wlanctl log --json");
    EXPECT_THAT(result.err, HasSubstr("its settings before are back, but not all of it is on the air")) << cause;
    const size_t note = result.err.find(kNote);
    ASSERT_NE(std::string::npos, note) << result.err;
    EXPECT_EQ(std::string::npos, result.err.find(kNote, note + 1)) << "once" << cause;
    expect_off_air(behind(result.out, "log"), 0);
  }
}

// Each command gets its time, and there are only so many.
TEST(RolledBack, WithEveryCommandHangingEndsAndIsTold) {
  const Result result = run_story(kWaiting +
                                  "for tool in ifconfig brctl iwpriv; do simctl fail $tool hang >/dev/null; done; "
                                  "count=$(commands | wc -l); wlanctl "
                                  "rollback 2.4g --command-timeout 1; code=$?; echo == code; echo $code; [ "
                                  "$(($(commands | wc -l) - count)) -lt 40 ] "
                                  "&& echo few; wlanctl get 2.4g SSID:1; wlanctl confirm 2.4g; echo $?");
  EXPECT_THAT(result.out, HasSubstr("2.4g: rolled back, but not in force\n"));
  EXPECT_EQ("6\nfew\nGateway-Home\n1\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("\"ifconfig ra0 down\" did not end in time, and was ended"));
}

}  // namespace
}  // namespace wlanctl_test
