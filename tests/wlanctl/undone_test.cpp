// What others have undone since an apply, and what waits for a boot: whoever looks is told, though nothing is to be applied.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kKnown = "wlanctl apply 2.4g --again >/dev/null 2>&1;";
const std::string kMoved = kKnown + "brctl delif br-lan ra1; brctl addif br0 ra1;";
const std::string kBack = "brctl delif br0 ra1 takes it out; wlanctl apply 2.4g --again puts it there\n";

// What it notes, each on one line, but for the list that a save has cut.
std::string notes_of(const std::string& call) {
  return call +
         " 2>&1 >/dev/null | tr -s '\\n ' ' ' | sed -e 's/ *wlanctl: note: /\\n- /g' -e 's/ $//' | grep '^- ' | grep "
         "-v SkipList;";
}

class MovedInterface : public testing::TestWithParam<const char*> {};

TEST_P(MovedInterface, IsTold) {
  const std::string verb = GetParam();
  const Result result = run_story(kMoved + "echo == told;" + notes_of(verb) + "echo == code;" + verb +
                                  ">/dev/null 2>&1; echo $?; brctl delif br0 ra1; brctl addif br-lan ra1; echo == "
                                  "mended;" +
                                  notes_of(verb));
  EXPECT_THAT(behind(result.out, "told"),
              HasSubstr("2.4g: ra1 is in br0 instead of br-lan, where a restart puts it; brctl delif br0 ra1 takes "
                        "it out; wlanctl apply 2.4g --again puts it there"))
      << result.err;
  EXPECT_EQ("0\n", behind(result.out, "code"));
  EXPECT_THAT(behind(result.out, "mended"), Not(HasSubstr("ra1")));
}

INSTANTIATE_TEST_SUITE_P(Verbs, MovedInterface,
                         testing::Values("wlanctl diff 2.4g", "wlanctl apply 2.4g", "wlanctl status 2.4g",
                                         "{ wlanctl set 2.4g TxPower=50; wlanctl diff 2.4g; }"));

TEST(MovedInterface, IsToldByAnApplyWithoutARestart) {
  const Result result =
      run_story(kMoved + "wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g 2>&1 | tr -s '\\n ' ' '");
  EXPECT_THAT(result.out, HasSubstr("applied without a restart"));
  EXPECT_THAT(result.out, HasSubstr("2.4g: ra1 is in br0 instead of br-lan, where a restart puts it"));
}

TEST(MovedInterface, IsNotConfirmed) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; brctl delif br-lan "
      "ra0; brctl delif br-lan ra1; brctl addif br0 ra0; brctl addif br0 ra1; wlanctl confirm 2.4g; echo $?; wlanctl "
      "confirm 2.4g --force");
  EXPECT_EQ("6\n2.4g: confirmed; the settings stay\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("2.4g: not in force: ra0 is in br0 instead of br-lan"));
  EXPECT_THAT(result.err, HasSubstr("2.4g: not in force: ra1 is in br0 instead of br-lan"));
}

TEST(MovedInterface, IsToldWhereTheSwitchOfTheRadioHasPutIt) {
  const Result result = run_story(kKnown + "brctl delif br-lan ra1; wlanctl radio on 2.4g >/dev/null 2>&1;" +
                                  notes_of("wlanctl diff 2.4g"));
  EXPECT_THAT(result.out, HasSubstr("ra1 is in br0 instead of br-lan, where a restart puts it; " + kBack));
}

TEST(MovedInterface, OfALinkIsToldToo) {
  const Result result = run_story(
      "wlanctl set 2.4g WdsEnable=1 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; brctl delif br-lan wds2; "
      "brctl addif br0 wds2;" +
      notes_of("wlanctl status 2.4g"));
  EXPECT_THAT(result.out, HasSubstr("2.4g: wds2 is in br0 instead of br-lan, where a restart puts it"));
}

// A restart of the other band alone says nothing of this one.
TEST(MovedInterface, IsToldWithoutARestartThatIsKnownWhereItsSiblingsAreElsewhere) {
  const Result result = run_story(
      "wlanctl apply 5g --again >/dev/null 2>&1; brctl delif br-lan ra0; brctl addif br0 "
      "ra0; echo == one;" +
      notes_of("wlanctl diff 2.4g") + "brctl delif br-lan ra1; brctl addif br0 ra1; echo == all;" +
      notes_of("wlanctl diff 2.4g"));
  EXPECT_THAT(behind(result.out, "one"), HasSubstr("ra0 is in br0 instead of br-lan"));
  EXPECT_THAT(behind(result.out, "all"), Not(HasSubstr("br0")));
}

TEST(MovedInterface, IsNotKnownAfterABootOrFromADamagedFile) {
  const Result result =
      run_story(kMoved + "brctl delif br-lan ra0; brctl addif br0 ra0; echo == whole;" + notes_of("wlanctl diff 2.4g") +
                "truncate -s -1 /run/wlanctl-bridges-2.4g; echo == damaged;" + notes_of("wlanctl diff 2.4g") + kKnown +
                "simctl power-cut >/dev/null; for i in ra0 ra1; do brctl delif br-lan $i; brctl addif br0 $i; done; "
                "echo == boot;" +
                notes_of("wlanctl diff 2.4g"));
  EXPECT_THAT(behind(result.out, "whole"), HasSubstr("ra0 is in br0"));
  EXPECT_THAT(behind(result.out, "damaged"), Not(HasSubstr("br0")));
  EXPECT_THAT(behind(result.out, "boot"), Not(HasSubstr("br0")));
}

TEST(Undone, IsToldByStatusToo) {
  const Result result =
      run_story(kKnown + "brctl delif br-lan ra1; echo == bridge;" + notes_of("wlanctl status 2.4g") +
                "brctl addif br-lan ra1; ifconfig ra1 down; echo == down;" + notes_of("wlanctl status 2.4g") +
                "ifconfig ra1 up; simctl channel 2.4g 3 >/dev/null; echo == channel;" +
                notes_of("wlanctl status 2.4g") + "echo == json; wlanctl status 2.4g --json");
  EXPECT_THAT(behind(result.out, "bridge"),
              HasSubstr("2.4g: ra1 is in no bridge instead of br-lan, where a restart puts it; wlanctl apply 2.4g "
                        "--again puts it there\n"));
  EXPECT_THAT(behind(result.out, "down"), HasSubstr("2.4g: ra1 is down, which the settings want otherwise; wlanctl "
                                                    "radio on 2.4g or wlanctl apply 2.4g --again brings it back"));
  EXPECT_THAT(behind(result.out, "channel"),
              HasSubstr("2.4g: the driver of 2.4g is on channel 3 instead of 6, which the settings want otherwise; "
                        "wlanctl apply 2.4g --again restarts the radio"));
  EXPECT_THAT(document_in(behind(result.out, "json"))["notes"].dump(), HasSubstr("on channel 3 instead of 6"));
}

// Links are wanted as SSIDs are.
TEST(Undone, OfALinkKeepsAnApplyFromItsConfirmationAndIsNoted) {
  const auto steps =
      run_steps({"wlanctl set 2.4g WdsEnable=1; wlanctl apply 2.4g --confirm 600; ifconfig wds1 down; "
                 "wlanctl confirm 2.4g",
                 "wlanctl confirm 2.4g --force", "wlanctl status 2.4g", "wlanctl apply 2.4g",
                 "wlanctl apply 2.4g --again; wlanctl diff 2.4g"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("2.4g: not in force: wds1 is down"));
  for (const size_t i : {2u, 3u}) {
    EXPECT_THAT(steps[i].err, HasSubstr("2.4g: wds1 is down, which the settings want otherwise")) << i;
  }
  EXPECT_THAT(steps[4].err, Not(HasSubstr("wds1 is down")));
}

TEST(Undone, OfALinkThatIsToBeDownIsNoted) {
  const auto steps = run_steps({kKnown + "ifconfig wds0 up", "wlanctl diff 2.4g"});
  EXPECT_THAT(steps[1].err, HasSubstr("2.4g: wds0 is still up, which the settings want otherwise"));
}

TEST(Undone, IsToldBesideWhatIsNotInForce) {
  const auto steps =
      run_steps({kKnown + "simctl fail ifconfig exit=1 ra1 up 1; wlanctl apply 2.4g --again; ifconfig ra0 "
                          "down",
                 "wlanctl status 2.4g", "wlanctl diff 2.4g"});
  for (const size_t i : {1u, 2u}) {
    EXPECT_EQ(6, steps[i].status) << i;
    EXPECT_THAT(steps[i].err, HasSubstr("2.4g: not in force: ra1 is down")) << i;
    EXPECT_THAT(steps[i].err, Not(HasSubstr("note: 2.4g: ra1 is down"))) << i;
    EXPECT_THAT(steps[i].err, HasSubstr("2.4g: ra0 is down, which the settings want otherwise")) << i;
  }
}

// It reads its channel when it starts.
TEST(Undone, IsNoChannelOfABandThatHasNothingOnTheAir) {
  const auto steps =
      run_steps({"wlanctl set 5g EnableSSID:1=0 EnableSSID:2=0 Channel=40; wlanctl apply 5g --confirm 600",
                 "wlanctl status 5g", "wlanctl confirm 5g"});
  for (const Result& step : steps) {
    EXPECT_EQ(0, step.status) << step.err;
    EXPECT_THAT(step.err, Not(HasSubstr("channel 36")));
  }
}

TEST(Undone, OfADatFileThatIsGoneIsToldByStatus) {
  const auto steps = run_steps({kKnown + "rm " + std::string(kDat), "wlanctl status 2.4g"});
  EXPECT_THAT(steps[1].err, HasSubstr(std::string(kDat) + ": No such file"));
}

// What somebody has set and not applied yet is nobody's loss.
TEST(Undone, IsJudgedByWhatIsInForce) {
  const Result result =
      run_story(kKnown + "wlanctl set 2.4g EnableSSID:2=0 Channel=11 >/dev/null;" + notes_of("wlanctl status 2.4g"));
  EXPECT_EQ("", result.out);
}

// Of a file without its count everything would seem to be up by mistake.
TEST(Undone, SaysNothingOfAFileThatIsReadAsLittleElse) {
  const Result result = run_story("sed -i /^BssidNum/d " + std::string(kDat) + ";" + notes_of("wlanctl status 2.4g"));
  EXPECT_THAT(result.out, Not(HasSubstr("still up")));
}

// A switch of the radio does not take it down.
TEST(Undone, OfAnInterfaceThatIsToBeDownIsToldWithWhatTakesItDown) {
  const Result result = run_story(
      "wlanctl set 2.4g EnableSSID:2=0 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; "
      "ifconfig ra1 up; echo == told;" +
      notes_of("wlanctl diff 2.4g") + "wlanctl apply 2.4g --again >/dev/null 2>&1; echo == then;" +
      notes_of("wlanctl diff 2.4g"));
  EXPECT_EQ(
      "- 2.4g: ra1 is still up, which the settings want otherwise; wlanctl apply 2.4g --again takes it "
      "down\n",
      behind(result.out, "told"));
  EXPECT_EQ("", behind(result.out, "then"));
}

TEST(AwaitedInterface, IsToldByWhoeverLooksUntilTheBoot) {
  const std::string looks = "for verb in apply status diff; do echo == $verb; wlanctl $verb 2.4g --json; done;";
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 EnableSSID:3=1 >/dev/null 2>&1; wlanctl apply 2.4g >/dev/null 2>&1; echo == log; "
      "wlanctl log --json;" +
      looks + "reboot >/dev/null; sync; echo == booted; wlanctl status 2.4g --json");
  for (const char* const verb : {"apply", "status", "diff"}) {
    const Json document = document_in(behind(result.out, verb));
    EXPECT_EQ(0, document["exit_code"]) << verb;
    EXPECT_THAT(document["notes"].dump(),
                HasSubstr("2.4g: not on the air before a reboot, as the driver has made no interface: ra2"))
        << verb;
  }
  const Json entry = document_in(behind(result.out, "log"))["data"]["entries"][0];
  EXPECT_EQ(false, entry["in_force"]);
  EXPECT_EQ(0, entry["exit_code"]);
  EXPECT_THAT(document_in(behind(result.out, "booted"))["notes"].dump(), Not(HasSubstr("not on the air")));
}

TEST(Undone, IsNotedByAnApplyAndADiff) {
  const Result result = run_story(
      "wlanctl apply 2.4g >/dev/null 2>&1; echo == well; wlanctl apply 2.4g 2>&1; ifconfig ra0 down; for verb in apply "
      "diff; do echo == $verb; wlanctl $verb 2.4g 2>&1 | tr -s '\\n ' ' '; done; echo == again; wlanctl apply 2.4g "
      "--again "
      ">/dev/null 2>&1; wlanctl diff 2.4g 2>&1");
  EXPECT_THAT(behind(result.out, "well"), Not(HasSubstr("ra0")));
  for (const char* const verb : {"apply", "diff"}) {
    EXPECT_THAT(
        behind(result.out, verb),
        HasSubstr("2.4g: ra0 is down, which the settings want otherwise; wlanctl radio on 2.4g or wlanctl apply "
                  "2.4g --again brings it back"))
        << verb;
  }
  EXPECT_THAT(behind(result.out, "again"), Not(HasSubstr("ra0")));
}

TEST(MovedInterface, ByTheSwitchOfTheRadioIsToldWithTheWayBack) {
  const auto steps =
      run_steps({"brctl delif br-lan ra1; wlanctl radio on 2.4g",
                 "brctl delif br0 ra1; wlanctl apply 2.4g --again >/dev/null; brctl show | grep -A 9 br-lan"});
  EXPECT_THAT(steps[0].err, HasSubstr("ra1 was in no bridge, and is in br0 now; brctl delif br0 ra1, and wlanctl apply "
                                      "2.4g --again puts it into that of an apply"));
  EXPECT_THAT(steps[1].out, HasSubstr("ra1"));
}

TEST(AwaitedInterface, OfAnSsidThatIsOffIsNotSaidToBeThere) {
  const auto steps = run_steps({"wlanctl set 2.4g BssidNum=3 EnableSSID:3=0; wlanctl apply 2.4g"});
  EXPECT_THAT(steps[0].err, HasSubstr("a reboot is recommended"));
  EXPECT_THAT(steps[0].err, Not(HasSubstr("though every SSID has its interface")));
}

TEST(AwaitedInterface, IsToldByItsConfirmation) {
  const auto steps = run_steps(
      {"wlanctl ssid add 2.4g Third --security open; wlanctl apply 2.4g --confirm 600", "wlanctl confirm 2.4g"});
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[1].err, HasSubstr("not on the air before a reboot, as the driver has made no interface: ra2"));
}

TEST(AwaitedInterface, KeepsNoLaterApplyFromItsConfirmation) {
  const auto steps = run_steps({"wlanctl set 2.4g BssidNum=3 EnableSSID:3=1 >/dev/null 2>&1; wlanctl apply 2.4g",
                                "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g --confirm 600; code=$?; "
                                "wlanctl confirm; exit $code"});
  for (const Result& step : steps) {
    EXPECT_EQ(0, step.status) << step.err;
    EXPECT_THAT(step.err, HasSubstr("reboot, as the driver has made no interface: ra2"));
  }
  EXPECT_THAT(steps[1].out, HasSubstr("2.4g: confirmed; the settings stay"));
}

TEST(Undone, OfBridgeAndChannelIsLookedUpBeforeAConfirmation) {
  const std::pair<std::string, std::string> troubles[] = {{"brctl delif br-lan ra1", "ra1 is in no bridge"},
                                                          {"simctl channel 2.4g 3", "on channel 3 instead of 11"}};
  for (const auto& [trouble, words] : troubles) {
    const auto steps =
        run_steps({"wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; " +
                       trouble + "; wlanctl confirm 2.4g",
                   "wlanctl confirm 2.4g --force", "wlanctl apply 2.4g"});
    EXPECT_EQ(6, steps[0].status);
    EXPECT_THAT(steps[0].err, HasSubstr(words));
    EXPECT_EQ(0, steps[1].status);
    EXPECT_THAT(steps[2].err, HasSubstr(words)) << "nothing differs, but it is not so any more";
  }
}

}  // namespace
}  // namespace wlanctl_test
