// What the driver is told by an apply, command by command: the one that it does not take is named.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

const std::string kChange =
    "wlanctl apply 2.4g --again >/dev/null 2>&1; wlanctl set 2.4g HideSSID:1=1 >/dev/null 2>&1; ";

TEST(DriverTold, ACommandThatFailsIsNamedWithWhatItPrinted) {
  const auto steps =
      run_steps({kChange + "simctl fail iwpriv exit=4 print=no-such-thing ra0 set 1", "wlanctl apply 2.4g"});
  EXPECT_EQ(5, steps[1].status);
  EXPECT_THAT(steps[1].err,
              ContainsRegex("SSID 1 of 2.4g failed, with status 4: \"iwpriv ra0 set [A-Za-z]+\" ended with "
                            "status 4 and printed \"no-such-thing\"; wlanctl apply 2.4g tells it again"));
  EXPECT_THAT(steps[1].err, Not(HasSubstr("SSID 2 of 2.4g failed")));
}

TEST(DriverTold, OfEachSsidItsOwnCommandIsNamed) {
  const auto steps = run_steps(
      {kChange + "simctl fail iwpriv exit=4 ra0 set 1; simctl fail iwpriv exit=3 ra1 set 1", "wlanctl apply 2.4g"});
  EXPECT_THAT(steps[1].err, HasSubstr("SSID 1 of 2.4g failed, with status 4: \"iwpriv ra0 set"));
  EXPECT_THAT(steps[1].err, HasSubstr("SSID 2 of 2.4g failed, with status 3: \"iwpriv ra1 set"));
}

// Its tool may repeat it.
TEST(DriverTold, ACommandThatFailsIsNamedWithoutItsSecret) {
  const auto steps =
      run_steps({"wlanctl set 2.4g WPAPSK:1=correct-horse; rm /userfs/bin/iwpriv; printf '#!/bin/sh\\ncase "
                 "\"$*\" in *WPAPSK*) echo \"$*\"; exit 4;; esac\\n' >/userfs/bin/iwpriv; chmod 755 "
                 "/userfs/bin/iwpriv",
                 "wlanctl apply 2.4g"});
  EXPECT_THAT(steps[1].err, HasSubstr("\"iwpriv ra0 set WPAPSK\" ended with status 4; wlanctl apply"));
  EXPECT_THAT(steps[1].out + steps[1].err, Not(HasSubstr("correct-horse")));
}

TEST(DriverTold, BehindACommandThatHangsNoOtherOneOfTheScriptIsRun) {
  const Result result =
      run_story(kChange +
                "simctl fail iwpriv hang >/dev/null; before=$(commands | grep -c 'iwpriv ra0'); wlanctl apply 2.4g "
                "--command-timeout 1 >/dev/null; echo $(($(commands | grep -c 'iwpriv ra0') - before))");
  EXPECT_THAT(result.err, HasSubstr("did not end in time, and was ended; wlanctl apply 2.4g tells it again"));
  EXPECT_EQ("1\n", result.out);
}

TEST(DriverTold, AnApplyThatWaitsForItsConfirmationIsNotToBeRunAgain) {
  const auto steps = run_steps({kChange + "simctl fail iwpriv exit=4 ra0", "wlanctl apply 2.4g --confirm 600"});
  EXPECT_THAT(steps[1].err,
              HasSubstr("wlanctl rollback 2.4g puts back what was before, and wlanctl confirm 2.4g --force "
                        "keeps it"));
}

TEST(DriverTold, WhatItDidNotTakeIsToldByADiffAsByStatus) {
  const auto steps = run_steps({kChange + "simctl fail iwpriv exit=4 ra0; wlanctl apply 2.4g", "wlanctl diff 2.4g",
                                "wlanctl diff 2.4g --in-force", "wlanctl status 2.4g"});
  for (const size_t i : {1u, 2u, 3u}) {
    EXPECT_EQ(6, steps[i].status) << i;
    EXPECT_THAT(steps[i].err, HasSubstr("the driver did not take all of what was last applied to 2.4g")) << i;
  }
}

}  // namespace
}  // namespace wlanctl_test
