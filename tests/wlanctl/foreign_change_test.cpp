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

}  // namespace
}  // namespace wlanctl_test
