// What the library runs is out of reach of the terminal, and ends: interrupts, time limits, processes that are stopped.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kChange = "wlanctl show >/dev/null 2>&1; cp " + std::string(kDat) +
                            " file; wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null;";
const std::string kBack = "echo == back; wlanctl get 2.4g Channel 2>/dev/null; cmp " + std::string(kDat) +
                          " file && echo file; ifconfig ra0 | grep -c UP; ls /run | grep pending;";

// Does something when the interface is to come up, once.
std::string when_it_comes_up(const std::string& interface, const std::string& what) {
  return "printf '#!/bin/sh\\n[ \"$*\" = \"" + interface +
         " up\" ] && mkdir /front/done 2>/dev/null && { %s; }\\nexec "
         "/real/ifconfig "
         "\"$@\"\\n' '" +
         what + "' | stand_in ifconfig;";
}

std::string when_ra0_comes_up(const std::string& what) {
  return when_it_comes_up("ra0", what);
}

// In a process group of its own, as a shell on a terminal starts it.
std::string in_a_group(const std::string& words) {
  return "setsid -w sh -c 'echo $$ >/front/pid; exec wlanctl " + words + "'; code=$?; echo == code; echo $code;";
}

const std::string kControlC = when_ra0_comes_up("kill -INT -$(cat /front/pid)");

TEST(Interrupt, LeavesTheCommandsAloneAndTheApplyGoesOn) {
  const Result result = run_story(kChange + kControlC + in_a_group("apply 2.4g") +
                                  "echo == up; ifconfig ra0 | grep -c UP; wlanctl diff 2.4g");
  EXPECT_EQ("0\n", behind(result.out, "code"));
  EXPECT_THAT(result.out, HasSubstr("2.4g: applied; dat file written"));
  EXPECT_THAT(result.err, HasSubstr("wlanctl: interrupted; the apply of 2.4g is finished first, and its result told"));
  EXPECT_THAT(behind(result.out, "up"), HasSubstr("1\n2.4g: the store is as the dat file"));
}

TEST(Interrupt, RollsAnApplyBackThatIsToBeConfirmed) {
  const Result result = run_story(kChange + kControlC + in_a_group("apply 2.4g --confirm 600") + kBack);
  EXPECT_EQ("1\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("interrupted; the command under way is finished, then 2.4g is rolled back"));
  EXPECT_THAT(result.err, HasSubstr("the apply of 2.4g was interrupted; its settings before are back"));
  EXPECT_EQ("6\nfile\n1\n", behind(result.out, "back"));
}

TEST(Interrupt, OfTheSecondBandsApplyRollsBothBack) {
  const Result result =
      run_story("wlanctl set 2.4g Channel=1 >/dev/null; wlanctl set 5g Channel=44 >/dev/null;" +
                when_it_comes_up("rai0", "kill -INT -$(cat /front/pid)") + in_a_group("apply --confirm 600") +
                "echo == back; wlanctl get 2.4g Channel; wlanctl get 5g Channel");
  EXPECT_EQ("1\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("is finished, then both bands are rolled back\n"));
  EXPECT_EQ("6\n36\n", behind(result.out, "back"));
}

TEST(Interrupt, OfALostTerminalLeavesTheApplyToItsConfirmation) {
  const Result result =
      run_story(kChange + when_ra0_comes_up("kill -HUP -$(cat /front/pid)") + in_a_group("apply 2.4g --confirm 600") +
                "echo == up; ifconfig ra0 | grep -c UP; wlanctl confirm");
  EXPECT_EQ("1\n2.4g: confirmed; the settings stay\n", behind(result.out, "up"));
}

TEST(Interrupt, StopsASwitchOfTheRadioOnlyWhenItIsDone) {
  const Result result = run_story("wlanctl radio off 2.4g >/dev/null;" + kControlC + in_a_group("radio on 2.4g"));
  EXPECT_EQ("0\n", behind(result.out, "code"));
  EXPECT_THAT(result.out, HasSubstr("ra1  up"));
  EXPECT_THAT(result.err, HasSubstr("interrupted; the radio is switched first"));
}

// Whoever hung up finds the result where the output went.
TEST(Interrupt, OfALostTerminalDoesNotKeepTheResultBack) {
  for (const char* const verb : {"radio off 2.4g", "radio on 2.4g", "rollback 2.4g", "apply 2.4g"}) {
    const bool is_rollback = std::string(verb) == "rollback 2.4g";
    const std::string hangs_up =
        "printf '#!/bin/sh\\n[ \"$1\" = ra0 ] && mkdir /front/done 2>/dev/null && kill -HUP -$(cat /front/pid)\\nexec "
        "/real/ifconfig \"$@\"\\n' | stand_in ifconfig;";
    const Result result =
        run_story(kChange + (is_rollback ? "wlanctl apply 2.4g --confirm 600 >/dev/null;" : "") + hangs_up +
                  in_a_group(std::string(verb) + " >out") + "echo == said; grep -c '^2.4g: ' out; ls -d /front/done");
    EXPECT_EQ("0\n", behind(result.out, "code")) << verb;
    EXPECT_EQ("1\n/front/done\n", behind(result.out, "said")) << verb;
  }
}

TEST(Command, HasTheSignalsOfABoot) {
  const Result result = run_story(
      kChange +
      when_ra0_comes_up("grep -E \"SigBlk|SigIgn\" /proc/self/status >/front/signals; readlink /proc/self/fd/0 "
                        ">>/front/signals; cut -d\" \" -f6 /proc/self/stat >/front/session") +
      "trap '' HUP INT PIPE USR1; wlanctl apply 2.4g >/dev/null; sed 's/[0-9a-f]*\\([0-9a-f]\\{7\\}\\)$/\\1/' "
      "/front/signals; [ $(cat /front/session) != $(cut "
      "-d' ' -f6 /proc/$$/stat) ] && echo own");
  EXPECT_EQ("SigBlk:\t0000000\nSigIgn:\t0000000\n/dev/null\nown\n", result.out);
}

TEST(Command, IsEndedWithItsGroupWhenItTakesTooLong) {
  const Result result = run_story(
      kChange +
      when_ra0_comes_up("sh -c \"trap : TERM; echo \\$\\$ >/front/child; while :; do sleep 1; done\"; exit 0") +
      "wlanctl apply 2.4g --command-timeout 1; code=$?; echo == code; echo $code; kill -0 $(cat /front/child) 2>&1 |"
      "grep -c 'No such process'");
  EXPECT_EQ("6\n1\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("ra0 is down: \"ifconfig ra0 up\" did not end in time, and was ended"));
}

TEST(Command, ThatAnInterruptLeavesAloneIsEndedForItsTime) {
  const Result result = run_story(kChange + when_ra0_comes_up("kill -INT -$(cat /front/pid); sleep 60") +
                                  in_a_group("apply 2.4g --confirm 600 --command-timeout 1"));
  EXPECT_EQ("1\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("\"ifconfig ra0 up\" did not end in time, and was ended"));
  EXPECT_THAT(result.err, Not(HasSubstr("was interrupted, and ended")));
}

TEST(Command, ThatTakesLongerThanTheConfirmationIsRolledBack) {
  const Result result = run_story(kChange +
                                  "simctl fail ifconfig hang ra0 up 1 >/dev/null; wlanctl apply 2.4g --confirm 8;"
                                  "code=$?; echo == code; echo $code;" +
                                  kBack + "no_guardian");
  EXPECT_EQ("6\n", behind(result.out, "code"));
  EXPECT_THAT(result.err, HasSubstr("the apply of 2.4g was not done within the 8 seconds of --confirm: \"ifconfig ra0 "
                                    "up\" did not end in time, and was ended; its settings before are back"));
  EXPECT_EQ("6\nfile\n1\n", behind(result.out, "back"));
}

TEST(Apply, ThatIsStoppedIsRolledBackByItsGuardian) {
  const Result result = run_story(kChange + when_ra0_comes_up("kill -STOP $(cat /front/pid)") +
                                  "{ until grep -q 'State:.T' /proc/$(cat /front/pid)/status; do sleep 0.02; done "
                                  "2>/dev/null; overdue 2.4g; } &" +
                                  in_a_group("apply 2.4g --confirm 600") + "gone 2.4g;" + kBack);
  EXPECT_EQ("137\n", behind(result.out, "code"));
  EXPECT_EQ("6\nfile\n1\n", behind(result.out, "back"));
}

TEST(Guardian, ThatIsStoppedIsReplacedByTheNextVerb) {
  const Result result = run_story(
      kChange +
      "wlanctl apply 2.4g --confirm 600 >/dev/null; old=$(guardian); stop $old; wlanctl set 2.4g "
      "HideSSID:2=1 >/dev/null; new=$(guardian); echo == new; [ -n \"$new\" ] && [ $new != $old ] && echo one;"
      "wlanctl confirm; no_guardian");
  EXPECT_EQ("one\n2.4g: confirmed; the settings stay\n", behind(result.out, "new"));
  EXPECT_THAT(result.err, HasSubstr("the guardian of the apply of 2.4g was stopped, and is replaced"));
}

TEST(Guardian, ThatWasStoppedUntilItWasTooLateIsMadeUpFor) {
  const Result result = run_story(kChange +
                                  "wlanctl apply 2.4g --confirm 600 >/dev/null; stop $(guardian); overdue 2.4g;"
                                  "wlanctl set 2.4g HideSSID:2=0 >/dev/null;" +
                                  kBack);
  EXPECT_EQ("6\nfile\n1\n", behind(result.out, "back"));
  EXPECT_THAT(result.err, HasSubstr("it is rolled back now"));
}

TEST(Guardian, ThatIsStoppedInTheMiddleOfARollBackHoldsNobodyUp) {
  const Result result = run_story(
      kChange +
      "printf '#!/bin/sh\\n[ -e /front/armed ] && rm /front/armed && kill -STOP "
      "$(grep -l wlanctl-guard /run/gateway-sim/proc/[0-9]*/comm | cut -d/ -f5)\\nexec /real/ifconfig \"$@\"\\n' |"
      "stand_in ifconfig; wlanctl apply 2.4g --confirm 600 >/dev/null; touch /front/armed; overdue 2.4g;"
      "while [ -e /front/armed ]; do sleep 0.05; done; wlanctl set 2.4g HideSSID:2=0 "
      ">/dev/null; code=$?; echo == code; echo $code;" +
      kBack);
  EXPECT_EQ("0\n", behind(result.out, "code")) << result.err;
  EXPECT_EQ("6\nfile\n1\n", behind(result.out, "back"));
}

}  // namespace
}  // namespace wlanctl_test
