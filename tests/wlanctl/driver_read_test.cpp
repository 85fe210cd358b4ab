// What the driver has read and serves, where the tool could take something else for in force.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string kFirst = "wlanctl apply 2.4g --again >/dev/null 2>&1;";
const std::string kServes = "echo == serves; iwpriv ra0 show | grep -e ^SSID= -e ^BeaconPeriod= | sort;";
const std::string kAgrees = "  settings: store, dat file and what is in force agree\n";
const std::string kState = "wlanctl status 2.4g 2>/dev/null | grep settings:;";

TEST(DriverRead, OfAnApplyThatWasKilledIsAppliedAnew) {
  const Result result = run_story(
      kFirst + "wlanctl set 2.4g BeaconPeriod=150 >/dev/null; simctl fail ifconfig hang ra1 up >/dev/null;" +
      "wlanctl apply 2.4g >/dev/null 2>&1 & apply=$!; until [ $(commands | grep -c 'ifconfig ra1 up') -ge 2 ]; do "
      "sleep 0.02; done; kill -9 $apply; simctl fail none >/dev/null; echo == killed;" +
      kState + "wlanctl set 2.4g BeaconPeriod=100 >/dev/null; wlanctl diff 2.4g 2>&1; wlanctl apply 2.4g;" + kServes +
      "echo == end;" + kState);
  EXPECT_THAT(behind(result.out, "killed"),
              AllOf(HasSubstr("in force is not known"), HasSubstr("an apply of 2.4g had ended in the middle;"),
                    HasSubstr("2.4g: applied; dat file written, interfaces restarted")));
  EXPECT_THAT(result.err, HasSubstr("an apply of 2.4g had ended in the middle; all of it was applied"));
  EXPECT_EQ("BeaconPeriod=100\nSSID=Gateway-Home\n", behind(result.out, "serves"));
  EXPECT_EQ(kAgrees, behind(result.out, "end"));
}

TEST(DriverRead, AtARadioOnOfWhatWasOnlySavedIsNotKnownAsInForce) {
  const Result result = run_story(
      kFirst +
      "wlanctl set 2.4g SSID:1=Kitchen BeaconPeriod=150 >/dev/null; wlanctl save 2.4g >/dev/null; wlanctl radio off "
      "2.4g "
      ">/dev/null; wlanctl radio on 2.4g >/dev/null; wlanctl set 2.4g SSID:1=Gateway-Home BeaconPeriod=100 >/dev/null; "
      "wlanctl save 2.4g >/dev/null; echo == state;" +
      kState + "wlanctl apply 2.4g >/dev/null;" + kServes + "echo == end;" + kState);
  EXPECT_THAT(behind(result.out, "state"), HasSubstr("in force is not known"));
  EXPECT_EQ("BeaconPeriod=100\nSSID=Gateway-Home\n", behind(result.out, "serves"));
  EXPECT_EQ(kAgrees, behind(result.out, "end"));
}

TEST(DriverRead, AtARadioOnIsTheDatFileWhateverTheStoreHas) {
  const Result result =
      run_story(kFirst +
                "wlanctl set 2.4g SSID:1=New HideSSID:1=1 >/dev/null; wlanctl radio off 2.4g >/dev/null; wlanctl "
                "radio on 2.4g;" +
                kServes);
  EXPECT_THAT(result.err, HasSubstr("2.4g: the driver has read the dat file, and the store has 2 other values; wlanctl "
                                    "apply 2.4g brings them into force"));
  EXPECT_THAT(behind(result.out, "serves"), HasSubstr("SSID=Gateway-Home\n"));
}

TEST(DriverRead, AtARadioOnIsNoNewsWhereStoreAndFileAgree) {
  const Result result = run_story(kFirst + "wlanctl radio off 2.4g; wlanctl radio on 2.4g; echo == end;" + kState);
  EXPECT_EQ(kAgrees, behind(result.out, "end"));
  EXPECT_THAT(result.err, Not(HasSubstr("has read")));
}

TEST(DriverRead, AtARadioOnOfARadioThatIsUpIsNothing) {
  const Result result =
      run_story(kFirst +
                "wlanctl set 2.4g SSID:1=New >/dev/null; wlanctl radio on 2.4g; wlanctl save 2.4g >/dev/null; "
                "wlanctl radio on 2.4g; echo == diff; wlanctl diff 2.4g");
  EXPECT_THAT(result.err, Not(HasSubstr("has read")));
  EXPECT_THAT(behind(result.out, "diff"), HasSubstr("SSID:1  Gateway-Home -> New\n"));
}

TEST(DriverRead, OfASsidThatWasRemovedGoesWithTheNextApply) {
  const Result result = run_story(kFirst +
                                  "wlanctl ssid remove 2.4g 2 --yes >/dev/null; simctl fail ifconfig exit=1 ra1 down 1 "
                                  ">/dev/null; wlanctl apply 2.4g "
                                  "--force >/dev/null; code=$?; echo == first; echo $code; cat "
                                  "/sys/class/net/ra1/flags; simctl fail none >/dev/null; wlanctl apply "
                                  "2.4g >/dev/null; echo == second; cat /sys/class/net/ra1/flags");
  EXPECT_EQ("6\n0x1003\n", behind(result.out, "first"));
  EXPECT_EQ("0x1002\n", behind(result.out, "second")) << result.out;
}

TEST(DriverRead, OfAFileThatOthersChangeMeanwhileIsNotKnown) {
  const Result result = run_story(
      kFirst + "wlanctl set 2.4g Channel=11 BeaconPeriod=150 >/dev/null; (until grep -q ^BeaconPeriod=150 " +
      std::string(kDat) + "; do sleep 0.01; done; sed -i s/^BeaconPeriod=.*/BeaconPeriod=400/ " + kDat +
      ") & simctl fail ifconfig slow=1 ra0 down >/dev/null; wlanctl apply 2.4g >/dev/null; wait; simctl fail none "
      ">/dev/null; echo == state;" +
      kState + "wlanctl apply 2.4g >/dev/null;" + kServes + "echo == end;" + kState);
  EXPECT_THAT(result.err,
              HasSubstr("others have changed /etc/Wireless/RT2860AP/RT2860AP.dat while it was applied: what "
                        "of it the driver has read is not known"));
  EXPECT_THAT(behind(result.out, "state"), HasSubstr("in force is not known"));
  EXPECT_EQ("BeaconPeriod=150\nSSID=Gateway-Home\n", behind(result.out, "serves"));
  EXPECT_EQ(kAgrees, behind(result.out, "end"));
}

TEST(DriverRead, OfAFileThatIsReadOtherwiseIsNobodyElsesChange) {
  const Result result = run_story("sed -i 's/$/\\r/' " + std::string(kDat) +
                                  "; wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g --force >/dev/null");
  EXPECT_THAT(result.err, HasSubstr("was written, but is read otherwise: what of it the driver has taken is not known; "
                                    "wlanctl check"));
  EXPECT_THAT(result.err, testing::Not(HasSubstr("others have changed")));
}

TEST(ApplyWithoutARestart, TellsWhichInterfaceIsInNoBridge) {
  const Result result =
      run_story(kFirst + "ip link set ra1 nomaster; wlanctl set 2.4g SSID:1=K1 >/dev/null; wlanctl apply 2.4g");
  EXPECT_THAT(result.err, HasSubstr("2.4g: ra1 is in no bridge instead of br-lan"));
}

TEST(ApplyWithAReload, TellsThatTheDriverWasNotUnloaded) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 >/dev/null 2>&1; wlanctl apply 2.4g >/dev/null 2>first; wlanctl set 2.4g BssidNum=2 "
      ">/dev/null; simctl fail rmmod exit=1 >/dev/null; wlanctl apply 2.4g --force >/dev/null; echo == first; cat "
      "first",
      {"--chips", "7603,7612"});
  EXPECT_THAT(result.err, HasSubstr("2.4g: the driver was not reloaded: \"rmmod mt7603eap.ko\" ended with status 1; a "
                                    "reboot loads it anew"));
  EXPECT_THAT(behind(result.out, "first"), Not(HasSubstr("not reloaded")));
}

}  // namespace
}  // namespace wlanctl_test
