// apply: what it runs, what it leaves alone, and what it refuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

Json only_band(const Json& document) {
  return document["data"]["bands"].at(0);
}

TEST(Apply, RunsNothingWhenNothingIsChangedAndSaysSo) {
  const Result result =
      run_story("cp " + std::string(kDat) + " before; wlanctl apply; echo == commands; commands; cmp before " + kDat);
  EXPECT_EQ(0, result.status);
  EXPECT_THAT(result.out, HasSubstr("2.4g: nothing to apply"));
  EXPECT_THAT(result.out, HasSubstr("5g: nothing to apply"));
  EXPECT_EQ("", behind(result.out, "commands"));
}

TEST(Apply, HasAnActionAndScriptsInJsonWhenThereIsNothingToApply) {
  const Json band = only_band(json_of("apply 5g"));
  EXPECT_EQ((Json{{"band", "5g"},
                  {"apply", "nothing"},
                  {"action", "none"},
                  {"counted_as_in_force", "dat_file"},
                  {"scripts", Json::array()},
                  {"not_in_force", Json::array()},
                  {"confirm_within", nullptr}}),
            band);
}

TEST(Apply, HasNothingToDoRightAfterAnApply) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 TxPower=3 HideSSID:1=1; wlanctl set 5g Channel=100; wlanctl apply >first;"
      "before=$(commands | wc -l); wlanctl apply; echo == more; echo $(($(commands | wc -l) - before))");
  EXPECT_EQ(0, result.status);
  EXPECT_THAT(result.out, HasSubstr("2.4g: nothing to apply"));
  EXPECT_THAT(result.out, HasSubstr("5g: nothing to apply"));
  EXPECT_EQ("0\n", behind(result.out, "more"));
}

TEST(Apply, SavesAndTellsTheDriverWhatNeedsNoRestart) {
  const Result result = run_story(
      "wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g --json >apply.json;"
      "cat apply.json; echo == commands; commands; echo == dat; grep ^HideSSID= " +
      std::string(kDat));
  const Json band = only_band(document_in(result.out.substr(0, result.out.find("== "))));
  EXPECT_EQ("save", band["apply"]);
  EXPECT_EQ("saved", band["action"]);
  ASSERT_EQ(2U, band["scripts"].size());
  EXPECT_EQ((Json{{"ssid", 2}, {"path", "/etc/Wireless/RT2860AP/WLAN_exec.sh"}, {"status", 0}}), band["scripts"][1]);
  const std::string commands = behind(result.out, "commands");
  EXPECT_THAT(commands, HasSubstr("iwpriv ra0 set HideSSID=1\n"));
  EXPECT_THAT(commands, HasSubstr("iwpriv ra1 set HideSSID=0\n"));
  EXPECT_THAT(commands, Not(HasSubstr("ifconfig")));
  EXPECT_EQ("HideSSID=1;0\n", behind(result.out, "dat"));
}

TEST(Apply, RestartsTheInterfacesForTheRadio) {
  const Result result = run_story(
      "wlanctl set 5g Channel=100 >/dev/null; wlanctl apply 5g --json >apply.json; cat apply.json;"
      "echo == commands; commands; echo == dat; grep ^Channel= /etc/Wireless/RT2860AP_AC/RT2860AP.dat");
  const Json band = only_band(document_in(result.out.substr(0, result.out.find("== "))));
  EXPECT_EQ("radio", band["apply"]);
  EXPECT_EQ("committed", band["action"]);
  const Words commands = lines_of(behind(result.out, "commands"));
  EXPECT_THAT(commands, Contains("ifconfig rai0 down"));
  EXPECT_THAT(commands, Contains("ifconfig rai0 up"));
  EXPECT_THAT(commands, Contains("brctl addif br-lan rai0"));
  EXPECT_THAT(commands, Contains(HasSubstr("iwpriv rai0 set SSID=")));
  EXPECT_THAT(commands, Not(Contains(HasSubstr("insmod"))));
  EXPECT_EQ("Channel=100\n", behind(result.out, "dat"));
}

TEST(Apply, NamesTheInterfacesThatOnlyARebootMakes) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 >/dev/null; wlanctl apply 2.4g 2>&1; echo == up; cat /sys/class/net/ra2/operstate");
  EXPECT_THAT(result.out,
              HasSubstr("2.4g: not on the air before that reboot, as the driver has made no interface: ra2\n"));
  EXPECT_EQ("", behind(result.out, "up"));
}

TEST(Apply, RecommendsARebootForAnotherSsidCountAndNeverRebootsItself) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 >/dev/null; wlanctl apply 2.4g --json >apply.json; cat apply.json;"
      "echo == commands; commands; echo == up; cat /sys/class/net/ra2/operstate >/dev/null && echo ra2",
      {"--chips", "7603,7612"});
  const Json document = document_in(result.out.substr(0, result.out.find("== ")));
  EXPECT_EQ("reboot", only_band(document)["apply"]);
  EXPECT_EQ("committed", only_band(document)["action"]);
  EXPECT_THAT(document["notes"].dump(),
              HasSubstr("a reboot is recommended, though every SSID has its interface by now"));
  const Words commands = lines_of(behind(result.out, "commands"));
  EXPECT_THAT(commands, Contains("insmod /lib/modules/4.4.115/mt7603eap.ko"));
  EXPECT_THAT(commands, Not(Contains("reboot")));
  EXPECT_EQ("ra2\n", behind(result.out, "up"));
}

TEST(Apply, ReloadsTheDriverAlsoWhenTheSsidCountWasSetTwice) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3; wlanctl set 2.4g BssidNum=3; wlanctl apply 2.4g; echo == commands; commands",
      {"--chips", "7603,7612"});
  EXPECT_THAT(lines_of(behind(result.out, "commands")), Contains("rmmod mt7603eap.ko"));
}

TEST(Apply, TakesDownAsManyInterfacesAsTheLastApplyBroughtUp) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 EnableSSID:3=1; wlanctl apply 2.4g; before=$(commands | wc -l);"
      "wlanctl set 2.4g Channel=1; wlanctl apply 2.4g; echo == commands; commands | tail -n +$((before + 1))",
      {"--chips", "7603,7612"});
  EXPECT_THAT(lines_of(behind(result.out, "commands")), Contains("ifconfig ra2 down"));
}

TEST(Apply, TellsTheDriverWhatWasOnlySavedBefore) {
  const Result result =
      run_story("wlanctl set 2.4g HideSSID:1=1; wlanctl save 2.4g; echo == commands; wlanctl apply 2.4g; commands");
  EXPECT_THAT(lines_of(behind(result.out, "commands")), Contains("/userfs/bin/iwpriv ra0 set HideSSID=1"));
}

TEST(Apply, KeepsThe192BitModeThatTheNormalisationWouldOpen) {
  const Result result = run_story(
      "wlanctl set 2.4g AuthMode:1=WPA3-192Bit; wlanctl apply 2.4g; wlanctl set 2.4g Channel=1; wlanctl apply 2.4g;"
      "echo == mode; wlanctl get 2.4g AuthMode:1; echo == again; wlanctl apply 2.4g");
  EXPECT_EQ("WPA3-192\n", behind(result.out, "mode"));
  EXPECT_THAT(behind(result.out, "again"), HasSubstr("nothing to apply"));
}

TEST(Apply, KeepsTheRadiusServerOfWepThatTheNormalisationWouldDrop) {
  const Result result = run_story(
      "wlanctl set 5g AuthMode:1=WEPRadius; wlanctl apply 5g; wlanctl set 5g Channel=100; wlanctl apply 5g;"
      "echo == mode; wlanctl get 5g AuthMode:1 IEEE8021X:1; echo == again; wlanctl apply 5g");
  EXPECT_THAT(behind(result.out, "mode"), HasSubstr("WEPAUTO"));
  EXPECT_THAT(behind(result.out, "mode"), HasSubstr("1\n"));
  EXPECT_THAT(behind(result.out, "again"), HasSubstr("nothing to apply"));
}

TEST(Apply, RefusesAValueThatAShellWouldActOn) {
  const Result result = run_story(
      "wlanctl set --force 2.4g 'SSID:2=a$(touch hit)' Channel=1 >/dev/null; wlanctl apply --json >apply.json;"
      "cat apply.json; echo == commands; commands; ls hit 2>/dev/null");
  const Json document = document_in(result.out.substr(0, result.out.find("== ")));
  EXPECT_EQ(1, document["exit_code"]);
  ASSERT_EQ(1U, document["problems"].size());
  EXPECT_EQ("SSID:2", document["problems"][0]["key"]);
  EXPECT_EQ("2.4g", document["problems"][0]["band"]);
  EXPECT_EQ("", behind(result.out, "commands"));
}

TEST(Apply, RefusesALineOfItsOwnInAnUnquotedValue) {
  const Result result = run_story(
      "wlanctl set --force 2.4g \"RADIUS_Key:1=$(printf 'secret-secret\\ntouch hit')\" >/dev/null; wlanctl apply;"
      "echo $?; ls hit");
  EXPECT_THAT(result.err, HasSubstr("RADIUS_Key:1 of 2.4g is dangerous"));
  EXPECT_THAT(result.err, Not(HasSubstr("secret-secret")));
  EXPECT_THAT(result.out, testing::EndsWith("\n1\n"));
}

TEST(Apply, AppliesAValueThatAShellActsOnWhenForced) {
  const Result result =
      run_story("wlanctl set --force 2.4g 'SSID:1=a$(touch hit)'; wlanctl apply --force 2.4g >/dev/null; ls hit");
  EXPECT_THAT(result.out, HasSubstr("hit\n"));
}

TEST(Apply, LooksAtWhatTheScriptWouldHoldAndNotAtUnservedSsids) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3; wlanctl set --force 2.4g 'SSID:3=a`id`'; wlanctl set 2.4g BssidNum=2 Channel=1;"
      "wlanctl apply 2.4g; echo == $?");
  EXPECT_THAT(result.out, HasSubstr("== 0\n"));
}

TEST(Apply, LeavesFileAndInterfacesAloneWhenALineOfTheFileGetsTooLong) {
  const std::string text(140, 'x');
  const Result result =
      run_story("cp " + std::string(kDat) + " before; wlanctl set 2.4g Channel=1 WEPAuthType:1=" + text +
                " WEPAuthType:2=" + text + " >/dev/null; wlanctl apply 2.4g; s=$?; echo == status; echo $s;" +
                "echo == commands; commands; echo == file; cmp before " + kDat + " && echo same");
  EXPECT_EQ("1\n", behind(result.out, "status"));
  EXPECT_THAT(result.err, HasSubstr("2.4g was not applied"));
  EXPECT_EQ("", behind(result.out, "commands"));
  EXPECT_EQ("same\n", behind(result.out, "file"));
}

TEST(Apply, TouchesNothingOfTheOtherBand) {
  const Result result = run_story(
      "library_probe init 0 init 1 >/dev/null 2>&1; wlanctl set 2.4g Channel=1; wlanctl set 5g Channel=100; segment 5g "
      ">before;"
      "cp /etc/Wireless/RT2860AP_AC/RT2860AP.dat dat; wlanctl apply 2.4g; segment 5g | cmp - before && echo == same;"
      "cmp dat /etc/Wireless/RT2860AP_AC/RT2860AP.dat; commands | grep -E 'rai|wdsi'; ls /etc/Wireless/RT2860AP_AC");
  EXPECT_EQ("RT2860AP.dat\n", behind(result.out, "same"));
}

TEST(Apply, SaysWhenTheDriverDoesNotTakeTheScript) {
  const Result result = run_story(
      "rm /userfs/bin/iwpriv; printf '#!/bin/sh\\nexit 7\\n' >/userfs/bin/iwpriv; chmod 755 /userfs/bin/iwpriv;"
      "wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g --json >apply.json; cat apply.json");
  const Json document = document_in(result.out);
  EXPECT_EQ(5, document["exit_code"]);
  ASSERT_EQ(2U, document["problems"].size());
  EXPECT_EQ(1, document["problems"][0]["ssid"]);
  EXPECT_EQ("saved", only_band(document)["action"]);
}

TEST(Apply, SaysWhenTheDriverDoesNotTakeOneOfManyLines) {
  const Result result = run_story(
      "simctl fail iwpriv exit=7 call=2 ra0 set 1 >/dev/null; wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply "
      "2.4g; code=$?; echo == code; echo $code; echo == rest; commands | grep -c 'ra0 set "
      "SSID=Gateway-Home'");
  EXPECT_THAT(result.out, HasSubstr("driver told of 1 of 2 SSIDs\n"));
  EXPECT_EQ("5\n", behind(result.out, "code"));
  EXPECT_EQ("2\n", behind(result.out, "rest"));
  EXPECT_THAT(result.err, HasSubstr("the driver's script of SSID 1 of 2.4g failed, with status 7: \"iwpriv ra0 set "));
}

TEST(Apply, NeverPrintsAPassphrase) {
  const Result result = run_story(
      "wlanctl set 2.4g WPAPSK:1=correct-horse Channel=1 >/dev/null; rm /userfs/bin/iwpriv;"
      "printf '#!/bin/sh\\necho $*\\necho $* >&2\\n' >/userfs/bin/iwpriv; chmod 755 /userfs/bin/iwpriv;"
      "wlanctl apply 2.4g; wlanctl set 2.4g HideSSID:1=1; wlanctl apply 2.4g --json");
  EXPECT_THAT(result.out + result.err, Not(HasSubstr("correct-horse")));
}

TEST(Apply, GoesOnWhenItsTerminalHangsUpOrSomebodyEndsIt) {
  const Result result = run_story(
      "printf '#!/bin/sh\\nkill -HUP $(cat pid); kill -TERM $(cat pid); exec /real/ifconfig \"$@\"\\n' | stand_in "
      "ifconfig;"
      "wlanctl set 2.4g Channel=1; with_pid pid wlanctl apply 2.4g; echo == again; wlanctl apply 2.4g;"
      "echo == dat; grep ^Channel= " +
      std::string(kDat));
  EXPECT_THAT(behind(result.out, "again"), HasSubstr("nothing to apply"));
  EXPECT_EQ("Channel=1\n", behind(result.out, "dat"));
}

TEST(Apply, IsAppliedAgainAfterItWasKilledInTheMiddle) {
  const Result result = run_story(
      "printf '#!/bin/sh\\n[ -e pid ] && kill -9 $(cat pid); exec /real/ifconfig \"$@\"\\n' | stand_in ifconfig;"
      "wlanctl set 2.4g Channel=1; with_pid pid wlanctl apply 2.4g; rm pid; echo == again;"
      "wlanctl apply 2.4g");
  EXPECT_THAT(behind(result.out, "again"), HasSubstr("applied; dat file written, interfaces restarted"));
}

TEST(Apply, WaitsForAnotherOneAndGivesUp) {
  const Result result = run_story("flock /var/run/wlanctl.lock sh -c 'wlanctl apply --wait 0; echo $?'");
  EXPECT_EQ("4\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("another wlanctl did not end"));
}

TEST(Apply, HasNoStoreWithoutADatFile) {
  const Result result = run_story("rm " + std::string(kDat) + "; wlanctl apply 2.4g --json >a; echo $?; cat a");
  EXPECT_THAT(result.out, testing::StartsWith("3\n"));
}

TEST(Apply, RefusesATimeThatIsNone) {
  const Result result = run_story("wlanctl apply --confirm 0; echo $?; wlanctl apply --confirm soon --json; echo $?");
  EXPECT_THAT(result.out, testing::StartsWith("2\n"));
  EXPECT_THAT(result.out, testing::EndsWith("2\n"));
}

TEST(Apply, TellsTheDriverAgainWhatItCouldNotTell) {
  const Result result = run_story(
      "mkdir /etc/Wireless/RT2860AP/WLAN_exec.sh; wlanctl set 2.4g SSID:1=Kitchen >/dev/null; wlanctl apply 2.4g;"
      "echo $?; rmdir /etc/Wireless/RT2860AP/WLAN_exec.sh; wlanctl diff 2.4g; echo == again; wlanctl apply 2.4g;"
      "echo == driver; commands | grep 'ra0 set SSID' | sort -u; echo == then; wlanctl apply 2.4g");
  EXPECT_THAT(result.err, HasSubstr("the driver did not take all of what was last applied to 2.4g"));
  EXPECT_THAT(behind(result.out, "again"), HasSubstr("driver told of 2 SSIDs"));
  EXPECT_EQ("/userfs/bin/iwpriv ra0 set SSID=Kitchen\n", behind(result.out, "driver"));
  EXPECT_THAT(behind(result.out, "then"), HasSubstr("nothing to apply"));
}

TEST(Doubt, OfWhatIsInForceIsToldWhereItIsStillSo) {
  const auto steps = run_steps({"wlanctl set 2.4g Channel=11; wlanctl apply 2.4g --dry-run",
                                "wlanctl set 2.4g --force 'SSID:1=$x'; wlanctl apply 2.4g",
                                "wlanctl apply 2.4g --force", "wlanctl apply 5g"});
  constexpr char kUnknown[] = "nothing is known of what was last applied";
  EXPECT_THAT(steps[0].err, HasSubstr(kUnknown));
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr(kUnknown));
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_THAT(steps[2].err, Not(HasSubstr(kUnknown)));
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
  EXPECT_THAT(steps[3].err, Not(HasSubstr(kUnknown)));
}

TEST(Doubt, ThatOthersHadChangedTheFileStaysTold) {
  const auto steps = run_steps({"wlanctl apply 2.4g", std::string("sed -i s/^Channel=.*/Channel=3/ ") + kDat,
                                "wlanctl apply 2.4g --dry-run", "wlanctl apply 2.4g"});
  EXPECT_THAT(steps[2].err, HasSubstr("/etc/Wireless/RT2860AP/RT2860AP.dat has changed since wlanctl last applied "
                                      "it; it counts as what is in force; wlanctl apply 2.4g makes it known"));
  EXPECT_THAT(steps[3].err, AllOf(HasSubstr("/etc/Wireless/RT2860AP/RT2860AP.dat had changed since wlanctl last "
                                            "applied it; it counted as what was in force"),
                                  Not(HasSubstr("makes it known"))));
}

}  // namespace
}  // namespace wlanctl_test
