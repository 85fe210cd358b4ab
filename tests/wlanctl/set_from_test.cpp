// set --from: lines of KEY[:N]=VALUE, all of them or none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(SetFrom, TakesLinesWithCommentsAndBlankLines) {
  const auto steps =
      run_live({into("f", "# the attic\n\nChannel=11\n  SSID:1= a # b=c \n\t# more\nHideSSID:2=1\n") +
                    "wlanctl set 2.4g --from f --force",
                "wlanctl get 2.4g Channel HideSSID:2; wlanctl get 2.4g SSID:1 | od -An -c | tr -d ' \\n'"});
  EXPECT_EQ("2.4g Channel = 11  (was 6)\n2.4g SSID:1 =  a # b=c   (was Gateway-Home)\n2.4g HideSSID:2 = 1  (was 0)\n",
            steps[0].out);
  EXPECT_THAT(steps[1].out, HasSubstr("a#b=c"));
}

TEST(SetFrom, TakesNoBlanksAroundAnEqualsSignForAPartOfANumberOrAList) {
  const auto steps = run_live({into("f", "Channel = 11\nHideSSID:2\t=\t1 \nTxPower= 50\nRADIUS_Server:1 = 10.0.0.1\n") +
                                   "wlanctl set 2.4g --from f",
                               "wlanctl get 2.4g Channel HideSSID:2 TxPower RADIUS_Server:1"});
  EXPECT_EQ("", steps[0].err);
  EXPECT_EQ("Channel          11\nHideSSID:2       1\nTxPower          50\nRADIUS_Server:1  10.0.0.1\n", steps[1].out);
}

TEST(SetFrom, LeavesTheBlanksOfANameAloneAndAsksWhereTheyMayBeMeantForNone) {
  const auto steps =
      run_live({into("f", "SSID:1=  Attic \nSSID:2 =Cellar\n") + "wlanctl set 2.4g --from f --json",
                into("f", "Channel=11\nSSID:1 = Attic\nWPAPSK:1 = secret-word\n") + "wlanctl set 2.4g --from f",
                "wlanctl get 2.4g Channel", into("f", "WPAPSK:1 = ***\nSSID:2 = \n") + "wlanctl set 2.4g --from f"});
  const Json changes = document_in(steps[0].out)["data"]["changes"];
  EXPECT_EQ("  Attic ", changes[0]["after"]);
  EXPECT_EQ("Cellar", changes[1]["after"]);
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err,
              HasSubstr("f:2: SSID:1: a blank behind = is a part of this value, and there is one in front of =, too; "
                        "write SSID:1=VALUE, or SSID:1= VALUE where it begins with a blank\n"));
  EXPECT_THAT(steps[1].err, HasSubstr("f:3: WPAPSK:1: a blank behind"));
  EXPECT_THAT(steps[1].err, Not(HasSubstr("secret-word")));
  EXPECT_EQ("6\n", steps[2].out);
  EXPECT_THAT(steps[3].err, Not(HasSubstr("WPAPSK")));
}

TEST(SetFrom, TakesStandardInput) {
  const auto steps = run_live(
      {"printf 'Channel=11\\r\\nTxPower=50' | wlanctl set 2.4g --from - --json", "wlanctl get 2.4g Channel TxPower"});
  EXPECT_EQ(2u, document_in(steps[0].out)["data"]["changes"].size());
  EXPECT_EQ("Channel  11\nTxPower  50\n", steps[1].out);
}

TEST(SetFrom, TellsEveryRefusalWithItsLineAndStoresNothing) {
  const auto steps =
      run_live({into("f", "TxPower=50\nChannel=181\nHideSSID:1=2\nnothing\nFoo=1\n[5g]\n[6g]\nSSID:1=$(x)\n") +
                    "wlanctl set 2.4g --from f",
                "wlanctl set 2.4g --from f --json", "wlanctl get 2.4g TxPower"});
  EXPECT_EQ(1, steps[0].status);
  for (const char* const said :
       {"f:2: Channel cannot be \"181\": The input channel is invalid", "f:3: HideSSID:1 cannot be \"2\"",
        "f:4: there is no = in the line", "f:5: there is no key \"Foo\"", "f:6: these are settings of 5g, not of 2.4g",
        "f:7: this is no band", "f:8: SSID:1 cannot be \"$(x)\""}) {
    EXPECT_THAT(steps[0].err, HasSubstr(said));
  }
  const Json problems = document_in(steps[1].out)["problems"];
  EXPECT_EQ(7u, problems.size());
  EXPECT_EQ("f", problems[0]["file"]);
  EXPECT_EQ(4, problems[0]["line"]);
  EXPECT_EQ("100\n", steps[2].out);
}

TEST(SetFrom, DoesNotRepeatALineThatIsNone) {
  const auto steps = run_live({"echo secret-word | wlanctl set 2.4g --from -"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, Not(HasSubstr("secret-word")));
}

TEST(SetFrom, AWordComesAfterTheLines) {
  const auto steps = run_live({into("f", "Channel=1\n[2.4G]\nTxPower=50\n") + "wlanctl set 2.4g --from f Channel=11",
                               "wlanctl get 2.4g Channel TxPower"});
  EXPECT_EQ("Channel  11\nTxPower  50\n", steps[1].out);
}

TEST(SetFrom, ADashIsADashAndAMaskIsNoPassphrase) {
  const auto steps = run_live(
      {into("f", "SSID:1=-\nWPAPSK:1=***\n") + "wlanctl set 2.4g --from f", "wlanctl get 2.4g SSID:1 WPAPSK:1"});
  EXPECT_EQ("SSID:1    -\nWPAPSK:1  sample-passphrase-1\n", steps[1].out);
}

TEST(SetFrom, SaysTwoForWhatCannotBeRead) {
  const auto steps =
      run_live({"wlanctl set 2.4g --from nowhere --json", "mkfifo pipe; timeout 5 wlanctl set 2.4g --from pipe",
                "echo '# nothing' | wlanctl set 2.4g --from -", "echo Channel=1 | wlanctl set 2.4g --from - SSID:1=-"});
  for (const Result& step : steps) EXPECT_EQ(2, step.status);
  EXPECT_THAT(steps[1].err, HasSubstr("cannot read pipe: it is a pipe, no file"));
  EXPECT_THAT(steps[2].err, HasSubstr("nothing to set; write lines of KEY=VALUE"));
  EXPECT_THAT(steps[3].err, HasSubstr("standard input cannot be both the lines and a value"));
}

TEST(SetFrom, SaysWhenAnotherWlanctlDoesNotEnd) {
  EXPECT_EQ(4,
            run_live({"exec 9>/var/run/wlanctl.lock; flock 9; echo Channel=1 | wlanctl set 2.4g --from - --wait 0"})[0]
                .status);
}

}  // namespace
}  // namespace wlanctl_test
