// apply --confirm, killed at each of its steps, and its guardian too: either nothing was changed, or all comes back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

// The pending file is replaced before the guardian starts, before the first change, and at the end.
std::string killed(const std::string& when) {
  return "killed_at '" + when +
         " /var/run/wlanctl-pending-2.4g' wlanctl apply 2.4g --confirm 600; s=$?; echo == killed; echo $s;";
}

const std::string kChange = "library_probe init 0 init 1 >/dev/null 2>&1; cp " + std::string(kDat) +
                            " file; wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; segment 2.4g >changed;";
const std::string kUnchanged =
    "echo == unchanged; commands; segment 2.4g | cmp - changed && cmp " + std::string(kDat) + " file && echo yes;";
const std::string kBack = "echo == back; wlanctl get 2.4g SSID:1 Channel 2>/dev/null; cmp " + std::string(kDat) +
                          " file && echo file; commands | grep 'ra0 set SSID' | tail -1; commands | grep -E "
                          "'ifconfig ra0' | tail -1;";
constexpr char kAllBack[] =
    "SSID:1   Gateway-Home\nChannel  6\nfile\n/userfs/bin/iwpriv ra0 set SSID=Gateway-Home\nifconfig ra0 up\n";

// Ends a process when the interfaces are taken down, in the middle of a commit.
std::string killing_ifconfig(const std::string& whom) {
  return "printf '#!/bin/sh\\n[ -e /front/armed ] && rm /front/armed && kill -9 %s\\nexec /real/ifconfig \"$@\"\\n' '" +
         whom + "' | stand_in ifconfig;";
}

constexpr char kGuardianPid[] = "$(grep -l wlanctl-guard /run/gateway-sim/proc/[0-9]*/comm | cut -d/ -f5)";

// An apply whose guardian is killed in the middle, and whose time is over then.
const std::string kUnguarded =
    killing_ifconfig(kGuardianPid) +
    "touch /front/armed; wlanctl apply 2.4g --confirm 600 >/dev/null; no_guardian; overdue 2.4g;";

constexpr char kApply[] =
    "with_pid /front/pid wlanctl apply 2.4g --confirm 600 >/dev/null; s=$?; echo == killed; echo $s;";

TEST(ApplyKilled, BeforeItsStateIsKeptChangesNothing) {
  const Result result = run_story(kChange + killed("before 1") + "ls /run | grep pending-2.4g$;" + kUnchanged +
                                  "echo == next; wlanctl apply 2.4g");
  EXPECT_EQ("137\n", behind(result.out, "killed"));
  EXPECT_EQ("yes\n", behind(result.out, "unchanged"));
  EXPECT_THAT(behind(result.out, "next"), HasSubstr("2.4g: applied"));
}

// It would take an SSID off the air behind the roll back's own commands.
TEST(ApplyKilled, LeavesNoCommandBehindToItsGuardiansRollBack) {
  const Result result = run_story(
      kChange +
      "printf '#!/bin/sh\\n[ -e /front/armed ] && [ $1-$2 = ra1-down ] && rm /front/armed && { echo $$ >/front/left; "
      "until [ -e /front/go ]; do sleep 0.02; done; }\\nexec /real/ifconfig \"$@\"\\n' | stand_in ifconfig; touch "
      "/front/armed; with_pid /front/pid wlanctl apply 2.4g --confirm 600 >/dev/null & until [ -s /front/left ]; do "
      "sleep 0.02; done; kill -9 $(cat /front/pid); gone 2.4g; no_guardian; touch /front/go; while kill -0 $(cat "
      "/front/left); do sleep 0.02; done 2>/dev/null; echo == up; ifconfig ra1 | grep -c UP; wlanctl status 2.4g "
      ">/dev/null; echo $?");
  EXPECT_EQ("1\n0\n", behind(result.out, "up")) << result.err;
}

TEST(ApplyKilled, BeforeItsGuardianStartsChangesNothingAndIsTidiedUp) {
  const Result result = run_story(kChange + killed("after 1") + "ls /run | grep pending; guardian;" + kUnchanged +
                                  "echo == next; wlanctl apply 2.4g; ls /run | grep pending");
  EXPECT_EQ("137\nwlanctl-pending-2.4g\n", behind(result.out, "killed"));
  EXPECT_EQ("yes\n", behind(result.out, "unchanged"));
  EXPECT_THAT(result.err, HasSubstr("the apply of 2.4g ended in the middle; nothing was changed"));
  EXPECT_THAT(behind(result.out, "next"), HasSubstr("2.4g: applied"));
  EXPECT_THAT(behind(result.out, "next"), Not(HasSubstr("pending")));
}

TEST(ApplyKilled, BeforeTheFirstChangeIsTidiedUpByItsGuardian) {
  const Result result = run_story(kChange + killed("before 2") + "gone 2.4g; no_guardian;" + kUnchanged);
  EXPECT_EQ("137\n", behind(result.out, "killed"));
  EXPECT_EQ("yes\n", behind(result.out, "unchanged"));
}

TEST(ApplyKilled, RightAfterTheFirstChangeIsRolledBackAtOnce) {
  const Result result = run_story(kChange + killed("after 2") + "gone 2.4g;" + kBack);
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(ApplyKilled, InTheMiddleOfTheCommitIsRolledBackAtOnce) {
  const Result result = run_story(kChange + killing_ifconfig("$(cat /front/pid)") + "touch /front/armed;" + kApply +
                                  "gone 2.4g;" + kBack);
  EXPECT_EQ("137\n", behind(result.out, "killed"));
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(ApplyKilled, BeforeTheWaitingBeginsIsRolledBackAtOnce) {
  const Result result = run_story(kChange + killed("before 3") + "gone 2.4g;" + kBack);
  EXPECT_EQ("137\n", behind(result.out, "killed"));
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(ApplyKilled, AfterItAllCanStillBeConfirmed) {
  const Result result = run_story(kChange + killed("after 3") + "echo == confirm; wlanctl confirm 2.4g; no_guardian;" +
                                  "echo == stays; wlanctl get 2.4g SSID:1");
  EXPECT_EQ("137\n", behind(result.out, "killed"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n", behind(result.out, "confirm"));
  EXPECT_EQ("Kitchen\n", behind(result.out, "stays"));
}

TEST(ApplyKilled, AfterItAllIsRolledBackWhenNobodyConfirms) {
  const Result result = run_story(kChange + killed("after 3") + "overdue 2.4g; gone 2.4g;" + kBack);
  EXPECT_EQ("137\n", behind(result.out, "killed"));
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(GuardianKilled, IsReplacedByTheNextVerbForTheTimeThatIsLeft) {
  const Result result = run_story(
      kChange +
      "wlanctl apply 2.4g --confirm 600 >/dev/null; kill -9 $(guardian); no_guardian; wlanctl set 2.4g "
      "RTSThreshold=2347 --json "
      ">get.json; cat get.json; echo == guardians; guardian | wc -l; wlanctl get 2.4g Channel; guardian | wc -l;"
      "echo == confirm; wlanctl confirm 2.4g; no_guardian");
  const Json document = document_in(result.out.substr(0, result.out.find("== ")));
  EXPECT_THAT(document["notes"].dump(), HasSubstr("a new one watches over it for the"));
  EXPECT_EQ("1\n1\n1\n", behind(result.out, "guardians"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n", behind(result.out, "confirm"));
}

TEST(GuardianKilled, IsReplacedByOneThatRollsBackInTime) {
  const Result result = run_story(kChange +
                                  "wlanctl apply 2.4g --confirm 600 >/dev/null; kill -9 $(guardian); no_guardian; "
                                  "wlanctl set 2.4g RTSThreshold=2347; "
                                  "overdue 2.4g; gone 2.4g;" +
                                  kBack);
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(GuardianKilled, IsMadeUpForWhenTheTimeIsOver) {
  const Result result =
      run_story(kChange + kUnguarded +
                "wlanctl set 2.4g RTSThreshold=2347; echo == next; wlanctl diff 2.4g; ls /run | grep pending;" + kBack);
  EXPECT_THAT(result.err, HasSubstr("was not confirmed in time and its guardian is gone; it is rolled back now"));
  EXPECT_THAT(behind(result.out, "next"), HasSubstr("the store is as the dat file"));
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(GuardianKilled, IsToldByWhoOnlyLooksAndNothingIsDone) {
  const Result result = run_story(kChange + kUnguarded +
                                  "echo == looks; commands >before; wlanctl get 2.4g SSID:1; wlanctl show >/dev/null;"
                                  "wlanctl status 2.4g >/dev/null; commands | cmp - before; ls /run | grep pending");
  EXPECT_THAT(result.err, HasSubstr("was not confirmed in time, and its roll back is due"));
  EXPECT_EQ("Kitchen\nwlanctl-pending-2.4g\n", behind(result.out, "looks"));
}

TEST(GuardianKilled, InTheMiddleOfTheRollbackIsMadeUpFor) {
  const Result result = run_story(
      kChange +
      "printf '#!/bin/sh\\ngrep -aq \" waiting \" /run/wlanctl-pending-2.4g && rm /front/armed 2>/dev/null && kill "
      "-9 %s\\nexec /real/ifconfig \"$@\"\\n' '" +
      kGuardianPid +
      "' | stand_in ifconfig; touch /front/armed; wlanctl apply 2.4g --confirm 600 >/dev/null; overdue 2.4g; "
      "no_guardian;"
      "echo == pending; ls /run | grep pending; wlanctl set 2.4g RTSThreshold=2347 >/dev/null;" +
      kBack + "ls /run | grep pending");
  EXPECT_EQ("wlanctl-pending-2.4g\n", behind(result.out, "pending"));
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(GuardianKilled, TogetherWithTheApplyIsMadeUpForAtOnce) {
  const Result result =
      run_story(kChange + killing_ifconfig(std::string(kGuardianPid) + " $(cat /front/pid)") + "touch /front/armed;" +
                kApply + "no_guardian; wlanctl set 2.4g RTSThreshold=2347 >/dev/null; ls /run | grep pending;" + kBack);
  EXPECT_THAT(result.err, HasSubstr("the apply of 2.4g ended in the middle; it is rolled back now"));
  EXPECT_THAT(result.err, Not(HasSubstr("have changed"))) << "the file is as that apply has written it";
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(GuardianKilled, AndTheTimeOverIsTooLateForAConfirmation) {
  const Result result = run_story(kChange + kUnguarded + "echo == confirm; wlanctl confirm 2.4g; echo $?;" + kBack);
  EXPECT_EQ("1\n", behind(result.out, "confirm"));
  EXPECT_THAT(result.err, HasSubstr("the apply of 2.4g can no longer be confirmed"));
  EXPECT_EQ(kAllBack, behind(result.out, "back"));
}

TEST(GuardianKilled, AndADryRunLeavesItAtThat) {
  const Result result = run_story(kChange + kUnguarded +
                                  "segment 2.4g >before; wlanctl apply 2.4g --dry-run | head -n 1;"
                                  "ls /run | grep pending; segment 2.4g | cmp - before && echo same");
  EXPECT_THAT(result.out, testing::EndsWith("wlanctl-pending-2.4g\nsame\n"));
  EXPECT_THAT(result.err, HasSubstr("waits for its confirmation, or to be rolled back"));
}

TEST(GuardianKilled, AndNoWayBackIsEndedByForce) {
  const Result result = run_story(kChange + kUnguarded + "mv " + kDat + " away; mkdir " + kDat +
                                  "; wlanctl confirm 2.4g; s=$?; echo == refused; echo $s; ls /run | grep pending;"
                                  "echo == forced; wlanctl confirm 2.4g --force; echo $?; ls /run | grep pending");
  EXPECT_EQ("1\nwlanctl-pending-2.4g\n", behind(result.out, "refused"));
  EXPECT_THAT(result.err, HasSubstr("wlanctl confirm 2.4g --force ends the waiting with what is there"));
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\n", behind(result.out, "forced"));
}

// How often each verb takes interfaces down or up.
const std::string kEachVerb =
    "for verb in 'set 2.4g HideSSID:1=0' 'set 2.4g Channel=3' 'diff 2.4g' 'confirm 2.4g' 'apply 2.4g'; do "
    "count=$(commands | "
    "grep -c ifconfig); wlanctl $verb >/dev/null; echo \"$? $(($(commands | grep -c ifconfig) - count))\"; done;";

TEST(RollBackThatIsDue, IsNotBegunWhereTheDatFileCannotBeWritten) {
  const Result result = run_story(kChange + kUnguarded + "mount --bind " + kDat + " " + kDat +
                                  "; mount -o remount,ro,bind " + kDat + "; echo == verbs; " + kEachVerb +
                                  "echo == mended; umount " + kDat + "; wlanctl rollback 2.4g;" + kBack);
  EXPECT_EQ("1 0\n1 0\n0 0\n1 0\n1 0\n", behind(result.out, "verbs"));
  EXPECT_THAT(result.err,
              HasSubstr("the roll back of the apply of 2.4g is due, and was not begun: " + std::string(kDat) +
                        " cannot be written: Read-only file system; mend that, and wlanctl rollback 2.4g"));
  EXPECT_THAT(result.out, HasSubstr("2.4g: rolled back; the settings before the apply are in force\n"));
}

// What keeps it from its end comes in the middle.
TEST(RollBackThatIsDue, IsTriedByOneVerbAlone) {
  const Result result = run_story(
      kChange + kUnguarded +
      "printf '#!/bin/sh\\ntouch /front/tried; mv /etc/Wireless/RT2860AP/RT2860AP.dat /etc/away; mkdir "
      "/etc/Wireless/RT2860AP/RT2860AP.dat\\nexec /real/ifconfig \"$@\"\\n' | stand_in ifconfig;"
      "wlanctl set 2.4g HideSSID:1=0 >/dev/null; ls /front/tried; rm /front/ifconfig; rmdir "
      "/etc/Wireless/RT2860AP/RT2860AP.dat; mv /etc/away /etc/Wireless/RT2860AP/RT2860AP.dat; echo == verbs; " +
      kEachVerb + "echo == mended; wlanctl rollback 2.4g;" + kBack);
  EXPECT_THAT(result.out, HasSubstr("/front/tried\n"));
  EXPECT_EQ("1 0\n1 0\n0 0\n1 0\n1 0\n", behind(result.out, "verbs"));
  EXPECT_THAT(result.err,
              HasSubstr("is due, and was not begun again: it failed before; mend that, and wlanctl rollback"));
  EXPECT_THAT(behind(result.out, "mended"),
              HasSubstr("2.4g: rolled back; the settings before the apply are in force\n"));
}

TEST(RollBackThatIsDue, EndsThoughThereIsNoRoomToWriteItDown) {
  const Result result = run_story(
      "mkdir /mnt/small; mount -t tmpfs -o size=160k x /mnt/small; mkdir /mnt/small/gateway-sim; mount --rbind "
      "/run/gateway-sim /mnt/small/gateway-sim; mount --rbind /mnt/small /run;" +
      kChange + kUnguarded +
      "head -c 400k /dev/zero >/run/full 2>/dev/null; wlanctl set 2.4g HideSSID:1=0 >/dev/null; ls /run | grep pending;"
      "echo == verbs; for verb in 'get 2.4g Channel' 'get 2.4g Channel' 'set 2.4g HideSSID:1=0' 'revert 2.4g'; do "
      "count=$(commands | grep -c ifconfig); "
      "wlanctl $verb >/dev/null; echo $(($(commands | grep -c ifconfig) - count)); done; wlanctl confirm 2.4g; echo "
      "$?; "
      "wlanctl diff 2.4g");
  EXPECT_EQ("0\n0\n0\n0\n1\n2.4g: the store is as the dat file; an apply would mean: nothing\n",
            behind(result.out, "verbs"));
}

}  // namespace
}  // namespace wlanctl_test
