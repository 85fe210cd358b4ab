// apply --confirm and confirm: the new settings stay when somebody says so in time, and go when nobody does.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

TEST(Confirm, KeepsASsidThatWasChangedLookedAtTriedAndApplied) {
  const Result result = run_story(
      "echo == set; wlanctl set 2.4g SSID:1=Kitchen; echo == diff; wlanctl diff 2.4g;"
      "echo == dry; wlanctl apply 2.4g --dry-run; echo == apply; wlanctl apply 2.4g --confirm 600;"
      "echo == confirm; wlanctl confirm 2.4g; no_guardian; echo == after; wlanctl get 2.4g SSID:1;"
      "grep ^SSID1 " +
      std::string(kDat) + "; ls /run | grep pending; commands | grep 'ra0 set SSID'");
  EXPECT_THAT(behind(result.out, "diff"), HasSubstr("Gateway-Home -> Kitchen"));
  EXPECT_THAT(behind(result.out, "dry"), HasSubstr("set SSID=\"Kitchen\""));
  EXPECT_THAT(behind(result.out, "apply"),
              HasSubstr("confirm it within 600 seconds of its start: wlanctl confirm 2.4g"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n", behind(result.out, "confirm"));
  EXPECT_EQ(
      "Kitchen\nSSID1=Kitchen\n/userfs/bin/iwpriv ra0 set SSID=Kitchen\n/userfs/bin/iwpriv ra0 set SSID=Kitchen\n",
      behind(result.out, "after"));
}

TEST(Confirm, IsAskedForByWhoeverLooksOrChangesMeanwhile) {
  const Result result = run_story(
      "wlanctl set 2.4g SSID:1=Kitchen; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; for verb in diff status "
      "'set 2.4g Channel=1'; do echo == ${verb%% *}; wlanctl $verb 2>&1 | grep -A 1 'seconds for wlanctl confirm "
      "2.4g'; "
      "done; echo == after; wlanctl confirm >/dev/null; wlanctl diff 2>&1 | grep confirm");
  for (const char* const verb : {"diff", "status", "set"}) {
    EXPECT_THAT(behind(result.out, verb), HasSubstr("what was before the apply comes back")) << verb;
  }
  EXPECT_EQ("", behind(result.out, "after"));
}

TEST(Confirm, PutsStoreFileAndDriverBackWhenItDoesNotCome) {
  const Result result =
      run_story("library_probe init 0 init 1 >/dev/null 2>&1; segment 2.4g >store; cp " + std::string(kDat) +
                " file; wlanctl set 2.4g SSID:1=Kitchen Channel=1; wlanctl apply 2.4g --confirm 600;"
                "overdue 2.4g; gone 2.4g; echo == store; segment 2.4g | cmp - store && echo same; echo == file; cmp " +
                kDat +
                " file && echo same; echo == driver; commands | grep 'ra0 set SSID' | tail -1;"
                "echo == up; commands | grep 'ifconfig ra0 up' | wc -l; no_guardian;"
                "echo == apply; wlanctl apply 2.4g");
  EXPECT_EQ("same\n", behind(result.out, "store"));
  EXPECT_EQ("same\n", behind(result.out, "file"));
  EXPECT_EQ("/userfs/bin/iwpriv ra0 set SSID=Gateway-Home\n", behind(result.out, "driver"));
  EXPECT_EQ("2\n", behind(result.out, "up"));
  EXPECT_THAT(behind(result.out, "apply"), HasSubstr("nothing to apply"));
}

TEST(Confirm, PutsAnotherSsidCountBackWithTheDriversInterfaces) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 EnableSSID:3=1; wlanctl apply 2.4g --confirm 600; overdue 2.4g; gone 2.4g; echo == "
      "now; ls "
      "/sys/class/net | grep -c '^ra[0-9]'; echo == commands; commands",
      {"--chips", "7603,7612"});
  EXPECT_EQ("2\n", behind(result.out, "now"));
  EXPECT_THAT(lines_of(behind(result.out, "commands")),
              testing::IsSupersetOf({"ifconfig ra2 up", "ifconfig ra2 down"}));
}

TEST(Confirm, RollsBackToWhatWasInForceAndNotToWhatWasOnlySaved) {
  const Result result = run_story(
      "wlanctl set 2.4g SSID:1=Kitchen; wlanctl save 2.4g; wlanctl apply 2.4g --confirm 600; overdue 2.4g; gone 2.4g;"
      "echo == ssid; wlanctl get 2.4g SSID:1; echo == file; grep ^SSID1 " +
      std::string(kDat));
  EXPECT_EQ("Gateway-Home\n", behind(result.out, "ssid"));
  EXPECT_EQ("SSID1=Kitchen\n", behind(result.out, "file"));
  EXPECT_THAT(result.err, HasSubstr("a roll back leaves them in it"));
}

TEST(Confirm, LeavesTheOtherBandAloneInARollback) {
  const Result result = run_story(
      "wlanctl set 5g Channel=100 >/dev/null; segment 5g >store; wlanctl set 2.4g Channel=1; wlanctl apply 2.4g "
      "--confirm 600; overdue 2.4g; gone 2.4g; echo == store; segment 5g | cmp - store && echo same; commands | grep "
      "rai");
  EXPECT_EQ("same\n", behind(result.out, "store"));
}

TEST(Confirm, CountsTheTimeFromTheStartOfTheApply) {
  const Result result = run_story(
      "printf '#!/bin/sh\\n[ -e /front/first ] || cut -d\" \" -f1 /proc/uptime >/front/first; exec /real/ifconfig "
      "\"$@\"\\n' | stand_in ifconfig; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 "
      ">/dev/null; cat /front/first; sed -n 2p $pending-2.4g | cut -d' ' -f3; wlanctl confirm 2.4g >/dev/null");
  const Words times = lines_of(result.out);
  ASSERT_EQ(2u, times.size()) << result.out << result.err;
  // The first command is run when the time is under way; the clock of that file has hundredths.
  EXPECT_LE(std::stoll(times[1]) - 600 * 1000, std::llround(std::stod(times[0]) * 1000) + 10);
}

TEST(Confirm, RefusesASecondApplyUntilTheFirstIsConfirmed) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; wlanctl set 2.4g Channel=2;"
      "echo == plain; wlanctl apply 2.4g; echo $?; wlanctl apply 2.4g --confirm 5 --json >second.json; echo $?;"
      "echo == other; wlanctl apply 5g; echo == dry; wlanctl apply 2.4g --dry-run | head -1; wlanctl confirm "
      ">/dev/null;"
      "echo == then; wlanctl apply 2.4g");
  EXPECT_EQ("1\n1\n", behind(result.out, "plain"));
  EXPECT_THAT(result.err, HasSubstr("an apply of 2.4g waits for its confirmation; wlanctl confirm 2.4g keeps it"));
  EXPECT_THAT(behind(result.out, "other"), HasSubstr("5g: nothing to apply"));
  EXPECT_THAT(behind(result.out, "dry"), HasSubstr("would restart the radio"));
  EXPECT_THAT(behind(result.out, "then"), HasSubstr("2.4g: applied"));
}

TEST(Confirm, TakesBothBandsOrTheOneThatIsNamed) {
  const Result result = run_story(
      "wlanctl set 2.4g HideSSID:1=1; wlanctl set 5g HideSSID:1=1; wlanctl apply --confirm 600; echo == one;"
      "wlanctl confirm 5g; ls /run | grep pending; echo == rest; wlanctl confirm; ls /run | grep pending;"
      "wlanctl set 2.4g HideSSID:1=0 >/dev/null; wlanctl set 5g HideSSID:1=0 >/dev/null;"
      "wlanctl apply --confirm 600 >/dev/null; echo == both; wlanctl confirm --json >both.json; cat both.json");
  EXPECT_EQ("5g: confirmed; the settings stay\nwlanctl-pending-2.4g\n", behind(result.out, "one"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n", behind(result.out, "rest"));
  const Json document = document_in(behind(result.out, "both"));
  EXPECT_EQ((Json{"2.4g", "5g"}), document["data"]["bands"]);
}

TEST(Confirm, OfNothingSaysSo) {
  const std::vector<Result> steps = run_steps({"wlanctl confirm 5g", "wlanctl confirm 5g --json"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_EQ("nothing waits to be confirmed on 5g\n", steps[0].out);
  EXPECT_EQ(Json({{"bands", Json::array()}, {"waited", false}}), document_in(steps[1].out)["data"]);
}

TEST(Confirm, WaitsForAnotherOneAndGivesUp) {
  const Result result = run_story("flock /var/run/wlanctl.lock sh -c 'wlanctl confirm --wait 0; echo $?'");
  EXPECT_EQ("4\n", result.out);
}

TEST(Confirm, IsAskedForOnlyWhenSomethingIsApplied) {
  const Result result =
      run_story("wlanctl apply --confirm 600 --json >a.json; cat a.json; ls /run | grep pending; guardian");
  const Json document = document_in(result.out);
  EXPECT_EQ(Json(), document["data"]["bands"].at(0)["confirm_within"]);
}

TEST(Confirm, IsInTheDocumentOfTheApply) {
  const Json document = json_of("apply 2.4g --confirm 600", "wlanctl set 2.4g HideSSID:1=1");
  EXPECT_EQ(600, document["data"]["bands"].at(0)["confirm_within"]);
}

TEST(Confirm, KeepsTheOldSettingsWhereOnlyTheirOwnerReadsThem) {
  const Result result = run_story(
      "wlanctl set 2.4g HideSSID:1=1; wlanctl apply 2.4g --confirm 600; echo == mode; stat -c %a $pending-2.4g");
  EXPECT_EQ("600\n", behind(result.out, "mode"));
}

TEST(Confirm, LeavesNothingBehindWhenTheApplyFails) {
  const std::string text(140, 'x');
  const Result result =
      run_story("wlanctl set 2.4g Channel=1 WEPAuthType:1=" + text + " WEPAuthType:2=" + text +
                " >/dev/null; wlanctl apply 2.4g --confirm 600; s=$?; echo == status; echo $s; no_guardian;"
                "ls /run | grep pending; commands; wlanctl get 2.4g Channel");
  EXPECT_EQ("1\n1\n", behind(result.out, "status"));
}

TEST(Confirm, NamesAFileThatIsDamagedAndEndsItsWaitingByForce) {
  const Result result = run_story(
      "wlanctl set 2.4g HideSSID:1=1; wlanctl apply 2.4g --confirm 600; kill -9 $(guardian); no_guardian; echo x "
      ">>$pending-2.4g;"
      "echo == get; wlanctl get 2.4g HideSSID:1; echo == apply; wlanctl apply 2.4g; echo $?; echo == confirm;"
      "wlanctl confirm; echo $?; wlanctl status 2.4g >/dev/null; ls /run | grep pending-2; echo == force;"
      "wlanctl confirm --force; echo $?; ls /run | grep pending-2");
  EXPECT_EQ("1\n", behind(result.out, "get"));
  EXPECT_THAT(result.err, HasSubstr("what it kept is damaged; wlanctl confirm 2.4g --force ends the waiting"));
  EXPECT_EQ("1\n", behind(result.out, "apply"));
  EXPECT_THAT(result.err, HasSubstr("what it kept in /var/run/wlanctl-pending-2.4g is damaged"));
  EXPECT_EQ("1\nwlanctl-pending-2.4g\n", behind(result.out, "confirm"));
  EXPECT_THAT(result.err,
              HasSubstr("what an apply of 2.4g kept for its roll back, in /var/run/wlanctl-pending-2.4g, is "
                        "damaged"));
  EXPECT_THAT(result.err, HasSubstr("kept for a roll back, in /var/run/wlanctl-pending-2.4g, is damaged"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\n", behind(result.out, "force"));
}

TEST(Confirm, ByAnotherUserDoesNotTakeTheFileForDamaged) {
  const Result result = run_story(
      "wlanctl set 2.4g SSID:1=Kitchen >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; chmod 755 . .. "
      "2>/dev/null;"
      "for verb in diff status doctor; do echo == $verb; setpriv --reuid 1000 --clear-groups "
      "wlanctl $verb 2.4g 2>&1 | tr -s '\\n ' ' '; echo; done");
  for (const char* const verb : {"diff", "status"}) {
    EXPECT_THAT(behind(result.out, verb),
                AllOf(HasSubstr("/var/run/wlanctl-pending-2.4g, cannot be read: Permission denied; root can read it"),
                      Not(HasSubstr("damaged"))));
  }
  EXPECT_THAT(behind(result.out, "doctor"),
              AllOf(HasSubstr("an apply waits for its confirmation /var/run/wlanctl-pending-2.4g, which "
                              "cannot be read: Permission denied"),
                    Not(HasSubstr("damaged")), Not(HasSubstr("a file of the tool's own"))));
}

TEST(Confirm, WithoutADescriptorLeftDoesNotTakeTheFileForDamaged) {
  for (const char* const verb : {"confirm", "apply", "diff"}) {
    const Result result = run_story(
        "wlanctl set 2.4g SSID:1=Kitchen >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; echo == few; "
        "export WLANCTL_UNOPENED=$pending-2.4g; LD_PRELOAD=\"" +
        built("lib/libno_descriptors.so") + ":$LD_PRELOAD\" wlanctl " + verb + " 2.4g >/dev/null; ls $pending-2.4g");
    EXPECT_EQ("/var/run/wlanctl-pending-2.4g\n", behind(result.out, "few")) << verb;
    EXPECT_THAT(result.err, AllOf(HasSubstr("cannot be read: Too many open files; mend that, and try again"),
                                  Not(HasSubstr("damaged"))))
        << verb;
  }
}

TEST(Confirm, RollsBackToWhatOthersHaveCommittedSince) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=3 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1;"
      "library_probe init 0 oper 0 0 set wifimgr_lib_set_ssid 0 1 Owners commit 0 1 >/dev/null 2>&1;"
      "wlanctl set 2.4g HideSSID:2=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; overdue 2.4g; gone 2.4g;"
      "echo == back; wlanctl get 2.4g SSID:1 HideSSID:2; commands | grep 'ra0 set SSID' | tail -1");
  EXPECT_EQ("SSID:1      Owners\nHideSSID:2  0\n/userfs/bin/iwpriv ra0 set SSID=Owners\n", behind(result.out, "back"));
}

TEST(Confirm, RollsRadioAndFileBackThoughTheStoreWasMadeAnew) {
  const Result result = run_story("library_probe init 0 init 1 >/dev/null; cp " + std::string(kDat) +
                                  " file; wlanctl set 2.4g SSID:1=Kitchen Channel=11 >/dev/null;"
                                  "wlanctl apply 2.4g --confirm 600 >/dev/null; ipcrm -M 0x12345; library_probe init 0 "
                                  ">/dev/null; overdue 2.4g; gone 2.4g;"
                                  "no_guardian; echo == back; cmp " +
                                  kDat + " file && echo file; commands | grep 'ra0 set SSID' | tail -1");
  EXPECT_EQ("file\n/userfs/bin/iwpriv ra0 set SSID=Gateway-Home\n", behind(result.out, "back"));
}

TEST(Confirm, HasOneGuardianThoughTheStandardFilesAreClosed) {
  const Result result = run_story(
      "wlanctl set 2.4g HideSSID:1=1 >/dev/null; wlanctl apply 2.4g --confirm 600 <&- >&- 2>&-;"
      "wlanctl get 2.4g HideSSID:1; guardian | wc -l");
  EXPECT_EQ("1\n1\n", result.out);
  EXPECT_EQ("", result.err);
}

}  // namespace
}  // namespace wlanctl_test
