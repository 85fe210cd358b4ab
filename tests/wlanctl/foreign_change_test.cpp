// What another process changes in store or dat file is never taken for in force.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kKnown = "wlanctl apply 2.4g >/dev/null 2>&1;";
// At the first command of an apply the dat file is written already.
const std::string kSetAtCommand =
    "printf '#!/bin/sh\\nrm /front/armed 2>/dev/null && library_probe attach put TxPower 0 -1 25 put Channel 0 -1 3 "
    ">/dev/null\\nexec /real/ifconfig \"$@\"\\n' | stand_in ifconfig; touch /front/armed;";
const std::string kChanged = "Channel, TxPower";

TEST(ForeignValue, ThatComesInAnApplyIsNotInForce) {
  const Result result = run_story(
      kKnown + "wlanctl set 2.4g Channel=9 >/dev/null;" + kSetAtCommand +
      "wlanctl apply 2.4g; code=$?; echo == code; echo $code; echo == status; wlanctl status 2.4g | grep settings:;"
      "echo == diff; wlanctl diff 2.4g --in-force; echo == log; wlanctl log --json; echo == apply; wlanctl apply 2.4g;"
      "echo == then; wlanctl status 2.4g | grep -o -e 'channel 3' -e 'in force agree'; grep -e ^TxPower= -e "
      "^Channel= " +
      kDat);
  EXPECT_EQ("0\n", behind(result.out, "code"));
  EXPECT_THAT(result.err,
              HasSubstr("note: 2.4g: another process has changed the store meanwhile, which is not in force: " +
                        kChanged + "; wlanctl diff 2.4g --in-force shows it, and wlanctl apply 2.4g applies it"));
  EXPECT_EQ("  settings: values apart: store/file 2, store/in force 2; alike: file/in force\n",
            behind(result.out, "status"));
  EXPECT_EQ("2.4g: 2 values differ (what is in force -> store)\n  Channel  9 -> 3\n  TxPower  100 -> 25\n",
            behind(result.out, "diff"));
  const Json changes = document_in(behind(result.out, "log"))["data"]["entries"][0]["changes"];
  EXPECT_EQ(Json::parse(R"({"key":"Channel","index":-1,"from":6,"to":9})"), changes.at(0));
  EXPECT_THAT(changes.dump(), Not(HasSubstr("TxPower"))) << "an undo takes back what the apply brought about";
  EXPECT_THAT(behind(result.out, "apply"), HasSubstr("interfaces restarted"));
  EXPECT_EQ("channel 3\nin force agree\nChannel=3\nTxPower=25\n", behind(result.out, "then"));
}

TEST(ForeignValue, ThatComesInARollBackIsNotInForce) {
  const Result result = run_story(
      kKnown + "wlanctl set 2.4g Channel=9 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null;" + kSetAtCommand +
      "wlanctl rollback 2.4g; echo == diff; wlanctl diff 2.4g --in-force; echo == apply; wlanctl apply 2.4g;"
      "echo == then; wlanctl status 2.4g | grep -o -e 'channel 3' -e 'in force agree'");
  EXPECT_THAT(result.err, HasSubstr("has changed the store meanwhile, which is not in force: " + kChanged));
  EXPECT_EQ("2.4g: 2 values differ (what is in force -> store)\n  Channel  6 -> 3\n  TxPower  100 -> 25\n",
            behind(result.out, "diff"));
  EXPECT_THAT(behind(result.out, "apply"), HasSubstr("interfaces restarted"));
  EXPECT_EQ("channel 3\nin force agree\n", behind(result.out, "then"));
}

// The library's note to itself is none: a commit takes it back.
TEST(ForeignValue, IsNotWhatTheCommitItselfChanges) {
  const Result result = run_story(
      kKnown + "wlanctl set 2.4g BssidNum=3 >/dev/null 2>&1; wlanctl apply 2.4g; echo == then; wlanctl apply 2.4g",
      {"--chips", "7603,7612"});
  EXPECT_THAT(result.err, Not(HasSubstr("another process")));
  EXPECT_THAT(behind(result.out, "then"), HasSubstr("nothing to apply"));
}

const std::string kEdited = "sed -i 's/^SSID1=.*/SSID1=Foreign/; s/^WPAPSK1=.*/WPAPSK1=foreign-secret/' " +
                            std::string(kDat) + "; wlanctl revert 2.4g >/dev/null 2>&1;";
const std::string kSettings = "wlanctl status 2.4g | grep settings:;";
const std::string kAgree = "  settings: store, dat file and what is in force agree\n";

TEST(ForeignFile, IsAppliedAsAWholeThoughNothingDiffers) {
  const Result result = run_story(
      kKnown + kEdited + "echo == before;" + kSettings +
      "wlanctl diff 2.4g --in-force; echo $?; echo == diff; wlanctl diff 2.4g; echo == dry; wlanctl apply 2.4g "
      "--dry-run --json; echo == apply; wlanctl apply 2.4g; echo $?; echo == after;" +
      kSettings + "wlanctl diff 2.4g --in-force; wlanctl apply 2.4g");
  EXPECT_EQ("  settings: alike: store/file; in force is not known\n2\n", behind(result.out, "before"));
  EXPECT_THAT(behind(result.out, "diff"),
              testing::StartsWith("2.4g: the store is as the dat file; an apply would mean: radio\n"));
  EXPECT_THAT(document_in(behind(result.out, "dry"))["data"]["bands"][0]["commands"].dump(),
              HasSubstr("ifconfig ra0 up"));
  EXPECT_EQ("2.4g: applied; dat file written, interfaces restarted,\n  driver told of 2 SSIDs\n0\n",
            behind(result.out, "apply"));
  EXPECT_THAT(result.err, HasSubstr("since wlanctl last applied it; it counted as what was in force, and all of it was "
                                    "applied anew"));
  EXPECT_EQ(kAgree +
                "2.4g: the store is as what is in force\n2.4g: nothing to apply; the store, the dat file and what is "
                "in force agree\n",
            behind(result.out, "after"));
}

TEST(ForeignFile, IsAppliedAsAWholeThoughALightChangeIsAllThatDiffers) {
  const Result result =
      run_story(kKnown + kEdited + "wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g; wlanctl apply 2.4g");
  EXPECT_THAT(result.out, testing::StartsWith("2.4g: applied; dat file written, interfaces restarted,"));
  EXPECT_THAT(result.out, HasSubstr("2.4g: nothing to apply; the store, the dat file and what is in force agree\n"));
}

// What is kept on the way to the next apply makes nothing known.
TEST(ForeignFile, StaysInDoubtUntilAnApplyIsDone) {
  for (const char* const between :
       {"wlanctl save 2.4g --force", "wlanctl save 2.4g --force; wlanctl save 2.4g --force",
        "kill_at_first_command; wlanctl set 2.4g HideSSID:1=1; with_pid pid wlanctl apply 2.4g; rm pid"}) {
    const Result result = run_story(
        "kill_at_first_command() { printf '#!/bin/sh\n[ -e pid ] && kill -9 $(cat pid); exec /real/ifconfig \"$@\"\n' "
        "| "
        "stand_in ifconfig; };" +
        kKnown + kEdited + "{ " + between + "; } >/dev/null 2>&1;" + kSettings +
        "echo == apply; wlanctl apply 2.4g; echo == then;" + kSettings);
    EXPECT_EQ("  settings: alike: store/file; in force is not known\n",
              result.out.substr(0, result.out.find("== apply")))
        << between;
    EXPECT_THAT(behind(result.out, "apply"), HasSubstr("interfaces restarted")) << between;
    EXPECT_EQ(kAgree, behind(result.out, "then")) << between;
  }
}

// What the driver has on the air is of the settings that were last applied.
TEST(ForeignFile, WithFewerSsidsLeavesNoneOnTheAir) {
  const auto steps = run_steps({kKnown + "sed -i 's/^BssidNum=.*/BssidNum=1/' " + kDat +
                                    "; wlanctl revert 2.4g --force >/dev/null 2>&1; wlanctl apply 2.4g",
                                "ifconfig ra1"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_THAT(steps[1].out, Not(HasSubstr("UP")));
}

TEST(ForeignFile, IsAppliedAsAWholeWhereWhatWasKeptIsDamaged) {
  for (const char* const between : {"", "wlanctl save 2.4g --force >/dev/null 2>&1;"}) {
    const Result result = run_story(kKnown + kEdited + "truncate -s -3 /run/wlanctl-applied-2.4g;" + between +
                                    "wlanctl apply 2.4g; echo == then;" + kSettings + "wlanctl apply 2.4g");
    EXPECT_THAT(result.out, testing::StartsWith("2.4g: applied; dat file written, interfaces restarted,")) << between;
    EXPECT_EQ(kAgree + "2.4g: nothing to apply; the store, the dat file and what is in force agree\n",
              behind(result.out, "then"))
        << between;
    EXPECT_THAT(result.err, Not(HasSubstr("others ha"))) << "which nobody knows";
  }
}

TEST(ForeignFile, OfAFreshGatewayCountsAsInForce) {
  const auto steps = run_steps({"wlanctl apply 2.4g", kSettings});
  EXPECT_EQ("2.4g: nothing to apply; the store is as the dat file, which counts as in force\n", steps[0].out);
  EXPECT_EQ(kAgree, steps[1].out);
}

}  // namespace
}  // namespace wlanctl_test
