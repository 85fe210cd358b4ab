// An SSID that is switched on or off, by whichever verb, is so from the next apply on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kKnown = "wlanctl apply 2.4g >/dev/null 2>&1;";
const std::string kGuests = "wlanctl status 2.4g | grep -o 'ra1  *[a-z]*' | tr -s ' ';";

TEST(Switched, AnSsidComesAndGoesWithTheNextApply) {
  const Result result = run_story(
      kKnown + "wlanctl set 2.4g EnableSSID:2=0 >/dev/null; wlanctl apply 2.4g; echo == off; echo $?;" + kGuests +
      "wlanctl set 2.4g EnableSSID:2=1 >/dev/null; wlanctl apply 2.4g >/dev/null; echo == on; echo $?;" + kGuests);
  EXPECT_THAT(result.out, StartsWith("2.4g: applied; dat file written, interfaces restarted"));
  EXPECT_EQ("0\nra1 down\n", behind(result.out, "off")) << result.err;
  EXPECT_EQ("0\nra1 up\n", behind(result.out, "on")) << result.err;
}

TEST(Switched, ByAnImportToo) {
  const Result result =
      run_story(kKnown +
                "wlanctl export 2.4g --format dat >all.dat; sed -i 's/^EnableSSID=1;1/EnableSSID=1;0/' all.dat;"
                "wlanctl import all.dat 2.4g >/dev/null; echo == diff; wlanctl diff 2.4g;"
                "wlanctl apply 2.4g >/dev/null; echo == done; echo $?;" +
                kGuests);
  EXPECT_THAT(behind(result.out, "diff"), HasSubstr("an apply would mean: radio\n")) << result.err;
  EXPECT_EQ("0\nra1 down\n", behind(result.out, "done")) << result.err;
}

TEST(Switched, ByAnUndoToo) {
  const Result result =
      run_story(kKnown +
                "wlanctl set 2.4g EnableSSID:2=0 >/dev/null; wlanctl apply 2.4g --again >/dev/null 2>&1;"
                "wlanctl undo >/dev/null; wlanctl apply 2.4g >/dev/null; echo == done; echo $?;" +
                kGuests);
  EXPECT_EQ("0\nra1 up\n", behind(result.out, "done")) << result.err;
}

TEST(Switched, IsARestartToDiffAndToADryRun) {
  const auto steps = run_steps({"wlanctl apply 2.4g; wlanctl set 2.4g EnableSSID:2=0", "wlanctl diff 2.4g --json",
                                "wlanctl apply 2.4g --dry-run --json", "wlanctl apply 2.4g --json",
                                "wlanctl log --json", "wlanctl diff 2.4g --json"});
  EXPECT_EQ("radio", document_in(steps[1].out)["data"]["bands"][0]["apply"]);
  const Json dry = document_in(steps[2].out)["data"]["bands"][0];
  EXPECT_EQ("radio", dry["apply"]);
  EXPECT_EQ("commit", dry["action"]);
  EXPECT_THAT(dry["commands"].dump(), HasSubstr("ifconfig ra1 down"));
  const Json applied = document_in(steps[3].out)["data"]["bands"][0];
  EXPECT_EQ("radio", applied["apply"]);
  EXPECT_EQ("committed", applied["action"]);
  EXPECT_EQ("radio", document_in(steps[4].out)["data"]["entries"][0]["meaning"]);
  EXPECT_EQ("nothing", document_in(steps[5].out)["data"]["bands"][0]["apply"]);
}

// The library reads a number.
TEST(Switched, IsNoRestartWhereItMeansTheSame) {
  const auto steps = run_steps(
      {"wlanctl apply 2.4g; library_probe attach put EnableSSID 0 2 01 >/dev/null", "wlanctl diff 2.4g --json"});
  EXPECT_EQ("save", document_in(steps[1].out)["data"]["bands"][0]["apply"]);
}

// It was down before, but nothing wanted it up.
TEST(Switched, OneThatDoesNotComeUpIsRolledBack) {
  const Result result = run_story(
      "wlanctl set 2.4g EnableSSID:2=0 >/dev/null; wlanctl apply 2.4g --again >/dev/null 2>&1;"
      "wlanctl set 2.4g EnableSSID:2=1 >/dev/null; simctl fail ifconfig exit=1 ra1 up >/dev/null;"
      "wlanctl apply 2.4g --confirm 600; code=$?; echo == code; echo $code; ls /run | grep -c pending-2.4g;"
      "wlanctl get 2.4g EnableSSID:2");
  EXPECT_THAT(result.err, HasSubstr("the apply of 2.4g was not in force; its settings before are back"));
  EXPECT_EQ("6\n0\n0\n", behind(result.out, "code")) << result.err;
}

// What was lacking already keeps no change from being confirmed.
TEST(Switched, OneThatWasDownBeforeIsNotRolledBack) {
  const Result result = run_story(
      kKnown +
      "ifconfig ra1 down; wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g --confirm 600; code=$?;"
      "echo == code; echo $code; ls /run | grep -c pending-2.4g");
  EXPECT_THAT(result.err, Not(HasSubstr("are back")));
  EXPECT_EQ("6\n1\n", behind(result.out, "code"));
}

// What the help of radio and the manual say brings a band back.
TEST(RadioThatIsOff, ComesBackWithABootAndARestartAlone) {
  const Result result = run_story(
      "up() { ifconfig ra0 | grep -c UP; }; wlanctl apply 2.4g --again >/dev/null 2>&1; wlanctl radio off 2.4g "
      ">/dev/null; "
      "wlanctl apply 2.4g >/dev/null 2>&1; up; wlanctl apply 2.4g --again >/dev/null 2>&1; up; wlanctl radio off 2.4g "
      ">/dev/null; wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; up; reboot "
      ">/dev/null; up; "
      "wlanctl radio --help | tr -s '\\n ' ' '");
  EXPECT_THAT(result.out, testing::StartsWith("0\n1\n0\n1\n"));
  EXPECT_THAT(result.out,
              HasSubstr("A boot brings the band back too, and so does an apply that restarts the interfaces, "
                        "such as wlanctl apply --again."));
}

}  // namespace
}  // namespace wlanctl_test
