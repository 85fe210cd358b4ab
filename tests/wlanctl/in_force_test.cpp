// After an apply, a roll back and a switch of the radio the kernel is asked: what does not hold is told, with the command
// that failed, until it is mended.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

const std::string kChange = "wlanctl set 2.4g Channel=1 >/dev/null;";

struct Fault {
  const char* name;
  const char* before;
  const char* told;
};

class InForce : public testing::TestWithParam<Fault> {};

TEST_P(InForce, WhatFailedIsTold) {
  const Result result =
      run_story(kChange + GetParam().before + ";wlanctl apply 2.4g; code=$?; echo == code; echo $code");
  EXPECT_EQ("6\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr(GetParam().told));
  EXPECT_THAT(result.out, HasSubstr("2.4g: applied, but not in force\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Faults, InForce,
    testing::Values(
        Fault{"Link", "simctl fail ifconfig exit=3 'print=no luck' ra0 up >/dev/null",
              "ra0 is down: \"ifconfig ra0 up\" ended with status 3 and printed \"no luck\""},
        Fault{"Killed", "simctl fail ifconfig signal=KILL ra0 up >/dev/null",
              "ra0 is down: \"ifconfig ra0 up\" was ended by a signal (Killed)"},
        Fault{"Bridge", "simctl fail brctl exit=1 addif ra1 >/dev/null",
              "ra1 is in no bridge instead of br-lan: \"brctl addif br-lan ra1\" ended with status 1"},
        Fault{"OtherBridge", "brctl delif br-lan ra0; brctl addif br0 ra0",
              "ra0 is in br0 instead of br-lan: \"brctl addif br-lan ra0\" ended with status 1"},
        Fault{"StillUp", "wlanctl set 2.4g EnableSSID:2=0 >/dev/null; simctl fail ifconfig exit=1 ra1 down >/dev/null",
              "ra1 is still up: \"ifconfig ra1 down\" ended with status 1"},
        Fault{"Driver", "simctl fail channel EIO ra0 >/dev/null", "the driver of 2.4g does not tell its channel"}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(InForce, WhatIsNotSoIsWhatAnApplyWouldBeRunFor) {
  const Result result =
      run_story(kChange +
                "simctl fail ifconfig exit=1 ra0 up 1 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1;"
                "echo == diff; wlanctl diff 2.4g 2>/dev/null; echo == json; wlanctl diff 2.4g --json;"
                "echo == dry; wlanctl apply 2.4g --dry-run --json; echo == apply; wlanctl apply 2.4g --json;"
                "echo == then; wlanctl diff 2.4g; wlanctl apply 2.4g --again --dry-run --json >again.json;"
                "echo == again; cat again.json");
  EXPECT_EQ("2.4g: the store is as the dat file; an apply would mean: radio\n", behind(result.out, "diff"));
  EXPECT_EQ("radio", document_in(behind(result.out, "json"))["data"]["bands"].at(0)["apply"]);
  for (const char* const run : {"dry", "again"}) {
    const Json dry = document_in(behind(result.out, run))["data"]["bands"].at(0);
    EXPECT_EQ("radio", dry["apply"]) << run;
    EXPECT_EQ("commit", dry["action"]) << run;
    EXPECT_THAT(dry["commands"].dump(), HasSubstr("ifconfig ra0 up")) << run;
  }
  const Json applied = document_in(behind(result.out, "apply"))["data"]["bands"].at(0);
  EXPECT_EQ("radio", applied["apply"]);
  EXPECT_EQ("committed", applied["action"]);
  EXPECT_EQ("2.4g: the store is as the dat file; an apply would mean: nothing\n", behind(result.out, "then"));
}

TEST(InForce, TheBridgeToTakeAnInterfaceOutOfIsNamed) {
  const Result result = run_story(kChange +
                                  "brctl delif br-lan ra0; brctl addif br0 ra0; wlanctl apply 2.4g 2>wrong; cat wrong; "
                                  "brctl delif br0 ra0; echo == then; wlanctl apply 2.4g >/dev/null; echo $?");
  EXPECT_THAT(result.out, HasSubstr("brctl delif br0 ra0 takes it out; when that is mended, wlanctl apply 2.4g"));
  EXPECT_EQ("0\n", behind(result.out, "then"));
}

TEST(InForceModule, ThatIsMissingIsTold) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 >/dev/null; rm /lib/modules/4.4.115/mt7603eap.ko; wlanctl apply 2.4g; code=$?;"
      "echo == code; echo $code",
      {"--chips", "7603,7612"});
  EXPECT_EQ("6\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("the driver's module mt7603eap is not loaded"));
  EXPECT_THAT(result.err, HasSubstr("ra0 is absent: \"insmod /lib/modules/4.4.115/mt7603eap.ko\" ended with status 1"));
}

TEST(InForceModule, ThatIsNotLoadedIsBlamedOnItsLoadingNotOnItsRemoval) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 >/dev/null; simctl fail insmod exit=1 >/dev/null;"
      "wlanctl apply 2.4g --confirm 60 >/dev/null; echo == after; wlanctl status 2.4g 2>&1 >/dev/null",
      {"--chips", "7603,7612"});
  EXPECT_THAT(result.err, HasSubstr("its settings before are back, but not in force either"));
  EXPECT_THAT(behind(result.out, "after"), HasSubstr("ra0 is absent: \"insmod"));
  EXPECT_THAT(behind(result.out, "after"), Not(HasSubstr("rmmod")));
}

TEST(InForceModule, ThatIsMissingIsToldWithWhatLoadsItUntilItIsThere) {
  const auto steps =
      run_steps({"wlanctl set 2.4g BssidNum=3 >/dev/null; mv /lib/modules/4.4.115/mt7603eap.ko away; "
                 "wlanctl apply 2.4g",
                 "mv away /lib/modules/4.4.115/mt7603eap.ko; wlanctl apply 2.4g --again", "wlanctl diff 2.4g"},
                {"--chips", "7603,7612"});
  for (const size_t i : {1u, 2u}) {
    EXPECT_EQ(6, steps[i].status);
    EXPECT_THAT(steps[i].err, HasSubstr("load the driver with insmod, or reboot; when that is mended"));
  }
}

TEST(InForceModule, ThatTakesTheOtherBandWithItIsTold) {
  const Result result = run_story("wlanctl set 2.4g BssidNum=3 >/dev/null; wlanctl apply 2.4g; echo == code; echo $?",
                                  {"--chips", "7615"});
  EXPECT_THAT(result.err, HasSubstr("rai0 is down"));
}

TEST(InForceState, IsToldUntilItIsMended) {
  const Result result = run_story(
      kChange +
      "simctl fail ifconfig exit=3 ra0 up >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; simctl reset >/dev/null;"
      "for verb in diff status; do echo == $verb; wlanctl $verb 2>&1 | grep 'ra0 is down: .ifconfig ra0 up.' | wc -l;"
      "wlanctl $verb >/dev/null 2>&1; echo $?; wlanctl $verb --json >/dev/null; done;"
      "ifconfig ra0 up; brctl addif br-lan ra0; echo == mended; wlanctl diff 2>&1 | grep 'not in force'; wlanctl diff "
      ">/dev/null 2>&1; echo $?; wlanctl status >/dev/null; echo $?");
  EXPECT_EQ("1\n6\n", behind(result.out, "diff"));
  EXPECT_EQ("1\n6\n", behind(result.out, "status"));
  EXPECT_EQ("0\n0\n", behind(result.out, "mended"));
}

TEST(InForceState, IsBroughtAboutByAnotherApply) {
  const Result result = run_story(kChange +
                                  "simctl fail ifconfig exit=3 ra0 up 1 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1;"
                                  "echo == again; wlanctl apply 2.4g; echo $?; echo == then; wlanctl apply 2.4g");
  EXPECT_EQ("2.4g: applied; dat file written, interfaces restarted,\n  driver told of 2 SSIDs\n0\n",
            behind(result.out, "again"));
  EXPECT_THAT(behind(result.out, "then"), HasSubstr("nothing to apply"));
}

TEST(InForceState, IsNoSuccessOfASaveEither) {
  const Result result = run_story(
      "ifconfig ra0 down; wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g; code=$?; echo == code;"
      "echo $code");
  EXPECT_EQ("6\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("2.4g: not in force: ra0 is down"));
}

TEST(ApplyAgain, RunsTheWholeApplyThoughNothingDiffers) {
  const Result result = run_story(
      "ifconfig ra0 down; echo == apply; wlanctl apply 2.4g --again; echo == up; ifconfig ra0 | grep -c UP;"
      "echo == driver; commands | grep -c 'ra1 set SSID'");
  EXPECT_THAT(behind(result.out, "apply"), HasSubstr("applied; dat file written, interfaces restarted"));
  EXPECT_EQ("1\n", behind(result.out, "up"));
  EXPECT_NE("0\n", behind(result.out, "driver"));
}

TEST(ConfirmedApply, ThatIsNotInForceIsRolledBackAtOnce) {
  const Result result =
      run_story("wlanctl show >/dev/null 2>&1; cp " + std::string(kDat) + " file;" + kChange +
                "simctl fail ifconfig exit=3 ra0 up 1 >/dev/null; wlanctl apply 2.4g --confirm 600; code=$?;"
                "echo == code; echo $code; ls /run | grep pending; no_guardian; echo == back; wlanctl get 2.4g Channel;"
                "cmp " +
                kDat + " file && echo file; ifconfig ra0 | grep -c UP; echo == diff; wlanctl diff 2.4g; echo $?");
  EXPECT_EQ("6\n", behind(result.out, "code"));
  EXPECT_THAT(result.out, HasSubstr("2.4g: rolled back\n"));
  EXPECT_THAT(result.err, HasSubstr("ra0 is down: \"ifconfig ra0 up\" ended with status 3"));
  EXPECT_THAT(result.err, HasSubstr("the apply of 2.4g was not in force; its settings before are back"));
  EXPECT_EQ("6\nfile\n1\n", behind(result.out, "back"));
  EXPECT_EQ("2.4g: the store is as the dat file; an apply would mean: nothing\n0\n", behind(result.out, "diff"));
}

TEST(ConfirmedApply, SaysWhenItsRollBackIsNotInForceEither) {
  const Result result = run_story(kChange +
                                  "simctl fail ifconfig exit=3 ra0 up >/dev/null; wlanctl apply 2.4g --confirm 600 "
                                  ">/dev/null; wlanctl diff >/dev/null; echo $?");
  EXPECT_THAT(result.err, HasSubstr("its settings before are back, but not in force either"));
  EXPECT_EQ("6\n", result.out);
}

TEST(ConfirmedApply, WaitsAllTheSameToBeKept) {
  const Result result = run_story(
      kChange +
      "simctl fail ifconfig exit=3 ra0 up 1 >/dev/null; wlanctl apply 2.4g --confirm 600 --keep >/dev/null; echo $?;"
      "ls /run | grep pending; echo == confirm; wlanctl confirm 2.4g; echo $?; echo == forced; wlanctl confirm 2.4g "
      "--force; echo $?");
  EXPECT_THAT(result.out, testing::StartsWith("6\nwlanctl-pending-2.4g\n"));
  EXPECT_EQ("6\n", behind(result.out, "confirm"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\n", behind(result.out, "forced"));
}

TEST(Confirmation, IsRefusedWhenARadioIsDown) {
  const Result result = run_story(kChange +
                                  "wlanctl apply 2.4g --confirm 600 >/dev/null; ifconfig ra0 down; wlanctl confirm; "
                                  "echo $?; ifconfig ra0 up; wlanctl confirm; echo $?");
  EXPECT_EQ("6\n2.4g: confirmed; the settings stay\n0\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("2.4g: not in force: ra0 is down"));
}

TEST(RadioSwitchInForce, LeavesSsidsAndLinksInTheBridgeThatTheyAreIn) {
  const Result result = run_story(
      "wlanctl set 2.4g WdsEnable=1 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; wlanctl radio off 2.4g >/dev/null;"
      "brctl delif br-lan ra1; wlanctl radio on 2.4g >/dev/null; echo $?; for i in ra0 ra1 wds3; do basename "
      "$(readlink "
      "/sys/class/net/$i/master); done");
  EXPECT_EQ("0\nbr-lan\nbr0\nbr-lan\n", result.out) << result.err;
}

TEST(RadioSwitchInForce, NamesTheCommandThatFailed) {
  const Result result = run_story(
      "wlanctl radio off 2.4g >/dev/null; simctl fail ifconfig exit=4 ra1 up >/dev/null; wlanctl radio on 2.4g; echo "
      "$?; echo == diff; wlanctl diff >/dev/null; echo $?");
  EXPECT_THAT(result.out, HasSubstr("2.4g: radio on, but not in force\n"));
  EXPECT_THAT(result.err, HasSubstr("ra1 is down: \"ifconfig ra1 up\" ended with status 4"));
  EXPECT_EQ("6\n", behind(result.out, "diff"));
}

TEST(InForceState, IsNotMendedByARadioThatIsSwitchedOn) {
  const auto steps =
      run_steps({"wlanctl set 2.4g Channel=11 >/dev/null; simctl fail ifconfig exit=0 ra0 down "
                 ">/dev/null; simctl fail ifconfig exit=0 ra1 down; wlanctl apply 2.4g",
                 "simctl fail none; wlanctl radio on 2.4g", "wlanctl status 2.4g",
                 "wlanctl radio off 2.4g >/dev/null && wlanctl radio on 2.4g", "wlanctl status 2.4g"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_EQ(6, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("is on channel 6 instead of 11; when that is mended, wlanctl apply 2.4g"));
  EXPECT_EQ(6, steps[2].status);
  EXPECT_EQ(0, steps[3].status) << "the driver reads its file when the first interface comes up" << steps[3].err;
  EXPECT_EQ(0, steps[4].status) << steps[4].err;
}

TEST(InForceState, OfARadioThatIsOffIsThatNothingOfItIsOnTheAir) {
  const auto steps = run_steps({"wlanctl set 2.4g BssidNum=1 >/dev/null; wlanctl radio off 2.4g", "ifconfig ra1"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("ra1 is still up; ifconfig ra1 down takes it down"));
  EXPECT_THAT(steps[1].out, HasSubstr("UP"));
}

TEST(InForceState, OfARadioIsNotSwitchedWhereNobodyKnowsHowManySsidsThereAre) {
  for (const char* const position : {"on", "off"}) {
    const auto steps = run_steps({std::string("sed -i /^BssidNum/d ") + kDat,
                                  std::string("wlanctl radio ") + position + " 2.4g", "ifconfig ra0"});
    EXPECT_EQ(1, steps[1].status);
    EXPECT_THAT(steps[1].err, HasSubstr("the store of 2.4g has no BssidNum, which says how many SSIDs there are"));
    EXPECT_THAT(steps[2].out, HasSubstr("UP"));
  }
}

TEST(InForceState, OfARadioThatIsOnWithoutAnSsidIsTold) {
  const auto steps = run_steps({"wlanctl set 5g EnableSSID:1=0 EnableSSID:2=0 >/dev/null; wlanctl radio on 5g"});
  EXPECT_THAT(steps[0].err, HasSubstr("5g: nothing is on the air, as no SSID is switched on; wlanctl ssid enable"));
}

// Nobody knows what was applied, but the driver can be asked.
TEST(InForceState, OfAFileThatSomebodyEditedIsAskedOfTheDriver) {
  const auto steps = run_steps({std::string("sed -i s/^Channel=.*/Channel=9/ ") + kDat, "wlanctl diff 2.4g",
                                "wlanctl apply 2.4g", "wlanctl status 2.4g", "wlanctl apply 5g"});
  EXPECT_EQ(6, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("the driver of 2.4g is on channel 6 instead of 9"));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_THAT(steps[2].out, HasSubstr("interfaces restarted"));
  EXPECT_THAT(steps[3].out, HasSubstr("channel 9"));
  EXPECT_EQ("5g: nothing to apply; the store is as the dat file, which counts as in force\n", steps[4].out);
}

TEST(InForceState, ThatCannotBeReadIsLookedUpInTheSystem) {
  const auto steps =
      run_steps({"wlanctl set 2.4g Channel=11 >/dev/null; simctl fail brctl exit=1 addif ra1; wlanctl apply 2.4g",
                 "simctl fail none; truncate -s -3 /run/wlanctl-lacking-2.4g; wlanctl status 2.4g"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_EQ(6, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("ra1 is in no bridge instead of br-lan"));
}

// No command tells the driver these, and it reads its file when the radio starts.
TEST(InForceState, OfWhatIsSavedWithoutARestartIsToldThatTheDriverReadsItLater) {
  const auto steps =
      run_steps({"wlanctl apply 2.4g --again >/dev/null 2>&1; wlanctl set 2.4g RTSThreshold=1000 HideSSID:1=1 "
                 "NoForwarding:2=1 'AccessControlList:1=02:00:00:00:01:00' >/dev/null; wlanctl apply 2.4g",
                 "wlanctl set 2.4g HideSSID:1=0 SSID:2=Other >/dev/null; wlanctl apply 2.4g",
                 "wlanctl set 2.4g RTSThreshold=2000 >/dev/null; wlanctl apply 2.4g --again"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("2.4g: saved, and read by the driver when the radio next starts: NoForwarding:2, "
                                      "RTSThreshold; wlanctl apply 2.4g --again restarts it"));
  for (const size_t i : {1u, 2u}) EXPECT_THAT(steps[i].err, Not(HasSubstr("next starts"))) << i;
}

TEST(InForceState, ThatTheDriverWasNotToldIsNotConfirmed) {
  const auto steps =
      run_steps({"wlanctl set 2.4g HideSSID:1=1 >/dev/null; simctl fail iwpriv exit=1; wlanctl apply 2.4g "
                 "--confirm 600 >/dev/null 2>&1; wlanctl confirm 2.4g",
                 "wlanctl confirm 2.4g --force; simctl fail none"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("the driver did not take all of what was applied to 2.4g; --force keeps it"));
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
}

TEST(InForceState, ThatTheDriverWasNotToldIsAsStatusSaysNotInForce) {
  const auto steps =
      run_steps({"wlanctl set 2.4g HideSSID:1=1 >/dev/null; simctl fail iwpriv exit=1; "
                 "wlanctl apply 2.4g >/dev/null 2>&1; simctl fail none; wlanctl status 2.4g",
                 "wlanctl status 2.4g --json", "wlanctl apply 2.4g >/dev/null; wlanctl status 2.4g"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("the driver did not take all of what was last applied to 2.4g"));
  EXPECT_EQ(6, document_in(steps[1].out)["exit_code"]);
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
}

TEST(InForceState, IsNoAgreementOfTheThreeStates) {
  const auto steps =
      run_steps({"wlanctl set 2.4g Channel=11 >/dev/null; simctl fail ifconfig exit=3 ra0 up >/dev/null; "
                 "wlanctl apply 2.4g >/dev/null 2>&1; wlanctl status 2.4g | grep -A 1 settings:",
                 "wlanctl diff 2.4g --in-force", "wlanctl status 2.4g --json"});
  EXPECT_THAT(steps[0].out, HasSubstr("; not all that was\n            applied is in force\n"));
  EXPECT_THAT(steps[0].out, Not(HasSubstr("agree")));
  EXPECT_EQ(6, steps[1].status);
  EXPECT_THAT(steps[1].out, HasSubstr("the store is as what was last applied\n"));
  EXPECT_THAT(steps[1].err, HasSubstr("2.4g: not in force: ra0 is down"));
  EXPECT_EQ(false, document_in(steps[2].out)["data"]["bands"][0]["settings"]["agree"]);
}

// An interface that was never down is up, too.
TEST(InForce, ARestartThatDidNotHappenIsTold) {
  for (const char* const fault : {"exit=1", "exit=1 down", "signal=9"}) {
    const auto steps =
        run_steps({std::string("wlanctl set 2.4g TxPower=50 Channel=11 >/dev/null; simctl fail ifconfig ") + fault +
                       "; wlanctl apply 2.4g",
                   "simctl fail none; wlanctl status 2.4g >/dev/null", "wlanctl apply 2.4g",
                   "wlanctl status 2.4g | grep -o 'channel 11'"});
    EXPECT_EQ(6, steps[0].status) << fault;
    EXPECT_THAT(steps[0].err, HasSubstr("ra0 was not restarted")) << fault;
    EXPECT_EQ(6, steps[1].status) << fault;
    EXPECT_EQ(0, steps[2].status) << fault << steps[2].err;
    EXPECT_EQ("channel 11\n", steps[3].out) << fault;
  }
}

// The kernel tells each change of an interface.
TEST(InForce, ARestartThatACommandOnlyPretendsIsTold) {
  for (const std::string verb : {"apply 2.4g", "apply 2.4g --confirm 600 --keep"}) {
    const auto steps =
        run_steps({"wlanctl apply 2.4g --again; wlanctl set 2.4g HT_BW=0; simctl fail ifconfig exit=0 ra1 "
                   "down 1",
                   "wlanctl " + verb, "wlanctl status 2.4g"});
    for (const size_t i : {1u, 2u}) {
      EXPECT_EQ(6, steps[i].status) << verb;
      EXPECT_THAT(steps[i].err, HasSubstr("2.4g: not in force: ra1 was not restarted")) << verb;
    }
  }
}

TEST(InForce, AChannelThatTheDriverIsNotOnIsTold) {
  const auto steps =
      run_steps({"wlanctl set 2.4g Channel=11 >/dev/null; simctl fail ifconfig exit=0; wlanctl apply 2.4g",
                 "wlanctl diff 2.4g", "simctl fail none; wlanctl apply 2.4g"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("the driver of 2.4g is on channel 6 instead of 11"));
  EXPECT_THAT(steps[1].err, HasSubstr("the driver of 2.4g is on channel 6 instead of 11"));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
}

TEST(InForce, ARollBackThatDidNotReachTheDriverIsTold) {
  const auto steps =
      run_steps({"wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1",
                 "simctl fail ifconfig exit=1; wlanctl rollback 2.4g", "simctl fail none; wlanctl apply 2.4g",
                 "wlanctl status 2.4g | grep -o 'channel 6'"});
  EXPECT_EQ(6, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("not restarted"));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("channel 6\n", steps[3].out);
}

TEST(InForce, AScriptThatFailsAtAReloadIsToldAndRunAgain) {
  const auto steps = run_steps({"wlanctl set 2.4g BssidNum=3 >/dev/null; simctl fail iwpriv exit=1; wlanctl apply 2.4g",
                                "simctl fail none; wlanctl apply 2.4g"},
                               {"--chips", "7603,7612"});
  EXPECT_EQ(5, steps[0].status) << steps[0].err;
  EXPECT_THAT(steps[0].err, HasSubstr("the driver's script of SSID 1 of 2.4g failed"));
  EXPECT_THAT(steps[1].out, HasSubstr("driver told of 3 SSIDs"));
}

// A driver that takes 8 s for each answer is asked for 3 s, and what it did not tell counts neither way.
TEST(SlowDriver, IsNotWaitedForAndNothingOfItIsTakenForInForce) {
  const Result result = run_story(
      "wlanctl apply 2.4g --again >/dev/null 2>&1; simctl fail channel slow=60 ra0 >/dev/null;"
      "for verb in 'apply 2.4g --again' 'radio on 2.4g'; do echo == ${verb%% *}; wlanctl $verb; echo $?; done;"
      "echo == json; wlanctl apply 2.4g --again --json; echo == log; wlanctl log --json; echo == mended; simctl fail "
      "none >/dev/null; wlanctl apply 2.4g; echo $?");
  const std::string unknown =
      "2.4g: not known whether it is in force: the driver of 2.4g did not tell its channel within 3 s";
  EXPECT_THAT(result.err, HasSubstr(unknown));
  EXPECT_EQ("2.4g: applied; not known whether it is in force\n6\n", behind(result.out, "apply"));
  EXPECT_THAT(behind(result.out, "radio"), HasSubstr("2.4g: radio on, but not known whether in force\n"));
  EXPECT_THAT(behind(result.out, "radio"), testing::EndsWith("6\n"));
  const Json document = document_in(behind(result.out, "json"));
  EXPECT_THAT(document["problems"].dump(), HasSubstr(unknown));
  EXPECT_THAT(document["data"]["bands"][0]["not_in_force"].dump(), HasSubstr("did not tell its channel within 3 s"));
  EXPECT_EQ(false, document_in(behind(result.out, "log"))["data"]["entries"][0]["in_force"]);
  EXPECT_THAT(behind(result.out, "mended"), testing::EndsWith("0\n"));
}

TEST(SlowDriver, LeavesAnApplyToItsConfirmation) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; simctl fail channel slow=60 ra0 >/dev/null; wlanctl apply 2.4g --confirm "
      "600 >/dev/null 2>&1; echo $?; wlanctl get 2.4g Channel; wlanctl confirm 2.4g; echo $?; wlanctl rollback 2.4g; "
      "echo $?; wlanctl get 2.4g Channel");
  EXPECT_EQ("6\n1\n6\n2.4g: rolled back, but not in force\n6\n6\n", result.out);
}

}  // namespace
}  // namespace wlanctl_test
