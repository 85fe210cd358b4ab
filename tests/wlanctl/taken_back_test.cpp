// An apply that was taken back while nobody looked is told by the tool itself: to who calls it next, and to who still sits
// at the apply's terminal.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

constexpr char kTold[] = "was taken back at ";
constexpr char kWords[] =
    ".*the apply of 2.4g of [0-9-]* [0-9:]* was taken back at [0-9-]* [0-9:]*, because nobody confirmed it.*";

// Nobody confirms it.
const std::string kTakenBack =
    "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; overdue 2.4g; gone 2.4g;"
    "no_guardian;";

TEST(TakenBack, IsSaidByWhoLooksAndWhoChanges) {
  const Result result = run_story(kTakenBack +
                                  "for verb in status diff 'apply --dry-run' 'set 2.4g HideSSID:1=0' revert 'radio on "
                                  "2.4g' 'rollback 2.4g' 'wps stop 2.4g 1' 'status 2.4g' 'diff 2.4g'; do echo == "
                                  "$verb; wlanctl $verb 2>&1; done; echo == other; wlanctl diff 5g 2>&1");
  for (const char* const verb : {"status", "diff", "apply --dry-run", "set 2.4g HideSSID:1=0", "revert",
                                 "radio on 2.4g", "rollback 2.4g", "wps stop 2.4g 1", "status 2.4g", "diff 2.4g"}) {
    EXPECT_THAT(behind(result.out, verb), MatchesRegex(kWords)) << verb;
  }
  EXPECT_THAT(behind(result.out, "other"), Not(HasSubstr(kTold)));
}

TEST(TakenBack, IsSaidOnceMoreByTheApplyOrSaveThatEndsIt) {
  for (const char* const verb : {"apply 2.4g", "apply 2.4g --confirm 60", "save 2.4g"}) {
    const Result result = run_story(kTakenBack + "echo == first; wlanctl " + verb +
                                    " 2>&1; echo == then; for verb in status diff; do wlanctl $verb 2>&1; done;"
                                    "echo == confirm; wlanctl confirm 2.4g; echo $?");
    EXPECT_THAT(behind(result.out, "first"), HasSubstr(kTold)) << verb;
    EXPECT_THAT(behind(result.out, "then"), Not(HasSubstr(kTold))) << verb;
    EXPECT_EQ("nothing waits to be confirmed on 2.4g\n0\n", behind(result.out, "confirm")) << verb;
  }
}

TEST(TakenBack, IsNotEndedByARefusedApply) {
  const Result result =
      run_story(kTakenBack +
                "library_probe init 0 put SSID1 0 1 'a`b' >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1;"
                "wlanctl status 2>&1");
  EXPECT_THAT(result.out, MatchesRegex(kWords));
}

TEST(TakenBack, IsInTheDocumentsOfStatusAndDiff) {
  const Result result = run_story(kTakenBack + "for verb in status diff; do echo == $verb; wlanctl $verb --json; done");
  for (const char* const verb : {"status", "diff"}) {
    const Json document = document_in(behind(result.out, verb));
    const Json& band = document["data"]["bands"].at(0);
    EXPECT_EQ("unconfirmed", band["taken_back"]["reason"]) << verb;
    EXPECT_LE(band["taken_back"]["applied_at"].get<std::string>(), band["taken_back"]["taken_back_at"]);
    EXPECT_EQ(Json(), document["data"]["bands"].at(1)["taken_back"]) << verb;
    EXPECT_THAT(document["notes"].dump(), HasSubstr(kTold)) << verb;
  }
}

TEST(TakenBack, IsNeverTakenForConfirmed) {
  const Result result = run_story(kTakenBack + "for n in 1 2; do wlanctl confirm 2.4g; echo $?; done;" +
                                  "wlanctl confirm --json >c.json; echo $?; echo == after; wlanctl diff 2>&1");
  EXPECT_EQ("1\n1\n1\n", result.out.substr(0, 6));
  EXPECT_THAT(result.err, HasSubstr(", because nobody confirmed it; wlanctl diff 2.4g shows what is in force"));
  EXPECT_THAT(behind(result.out, "after"), Not(HasSubstr(kTold))) << "who asked knows";
}

TEST(TakenBack, ByTheConfirmationThatCameTooLateIsNotConfirmedByTheNext) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; stop $(guardian);"
      "overdue 2.4g;"
      "wlanctl confirm; echo $?; wlanctl confirm; echo $?; echo == after; wlanctl diff 2>&1");
  EXPECT_EQ("1\n1\n", result.out.substr(0, 4));
  EXPECT_THAT(behind(result.out, "after"), Not(HasSubstr(kTold)));
}

// For what was applied, and for this only once the old settings are gone.
TEST(TakenBack, IsKeptThoughThereIsRoomForNothingMore) {
  const Result result = run_story(
      "mkdir /mnt/small; mount -t tmpfs -o size=128k x /mnt/small; mkdir /mnt/small/gateway-sim; mount --rbind "
      "/run/gateway-sim /mnt/small/gateway-sim; mount --rbind /mnt/small /run;" +
      kTakenBack.substr(0, kTakenBack.find("overdue")) +
      "stop $(guardian); overdue 2.4g; size=$(stat -c %s /run/wlanctl-applied-2.4g); rm /run/wlanctl-applied-2.4g; "
      "head -c $(((size "
      "+ 4095) / 4096 * 4096)) /dev/zero >/run/spare; head -c 200k /dev/zero >/run/full 2>/dev/null; rm /run/spare;"
      "kill -CONT $(guardian); gone 2.4g; no_guardian; wlanctl confirm; echo $?");
  EXPECT_EQ("1\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("because nobody confirmed it"));
}

TEST(TakenBack, InTheMiddleIsSaidWithThatReason) {
  const Result result = run_story(
      "wlanctl set 2.4g SSID:1=Kitchen >/dev/null; killed_at 'after 2 /var/run/wlanctl-pending-2.4g' wlanctl apply "
      "2.4g "
      "--confirm 600 >/dev/null; gone 2.4g; no_guardian; wlanctl diff 2.4g --json");
  const Json document = document_in(result.out);
  EXPECT_EQ("ended", document["data"]["bands"].at(0)["taken_back"]["reason"]);
  EXPECT_THAT(document["notes"].dump(), HasSubstr("because it ended in the middle"));
}

TEST(TakenBack, ByItsOwnCallIsToldByThatAloneAndNotConfirmed) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; simctl fail ifconfig exit=1 ra0 up 1 >/dev/null;"
      "wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; echo == diff; wlanctl diff 2.4g 2>&1;"
      "echo == confirm; wlanctl confirm 2.4g 2>&1; echo $?;"
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; wlanctl rollback 2.4g "
      ">/dev/null; echo == asked; wlanctl status 2>&1; wlanctl confirm 2.4g 2>&1; echo $?");
  EXPECT_THAT(behind(result.out, "diff"), Not(HasSubstr(kTold)));
  EXPECT_THAT(behind(result.out, "confirm"), AllOf(HasSubstr("because it was not in force"), EndsWith("\n1\n")));
  EXPECT_THAT(behind(result.out, "asked"), AllOf(HasSubstr("by wlanctl rollback"), EndsWith("\n1\n")));
}

TEST(TakenBack, IsForgottenWithABoot) {
  const Result result = run_story(kTakenBack + "reboot >/dev/null 2>&1; wlanctl status 2>&1; wlanctl confirm; echo $?");
  EXPECT_THAT(result.out, AllOf(Not(HasSubstr(kTold)), EndsWith("nothing waits to be confirmed\n0\n")));
}

TEST(TakenBack, ThatIsDamagedIsToldAndConfirmsNothing) {
  const Result result = run_story(
      kTakenBack +
      "truncate -s -1 /var/run/wlanctl-taken-back-2.4g; for verb in 'confirm 2.4g' 'rollback 2.4g' 'confirm 2.4g'; do "
      "echo == ${verb%% *}; wlanctl $verb; echo $?; done; echo == looks; for verb in status 'diff 2.4g' 'set 2.4g "
      "HideSSID:1=0'; do wlanctl $verb 2>&1 | tr -s '\\n ' ' ' | grep -c 'nobody knows whether the last one was'; done;"
      "echo == doctor; wlanctl doctor 2.4g --json; echo == after; wlanctl save 2.4g >/dev/null; wlanctl confirm 2.4g; "
      "echo $?");
  EXPECT_EQ("1\n", behind(result.out, "confirm"));
  EXPECT_EQ("1\n", behind(result.out, "rollback"));
  EXPECT_THAT(result.err, HasSubstr("what was kept of an apply of 2.4g that was taken back, in "
                                    "/var/run/wlanctl-taken-back-2.4g, is damaged: nobody knows whether the last one "
                                    "was; wlanctl log 2.4g lists what was done"));
  EXPECT_EQ("1\n1\n1\n", behind(result.out, "looks"));
  EXPECT_THAT(behind(result.out, "doctor"), HasSubstr("state-damaged"));
  EXPECT_EQ("nothing waits to be confirmed on 2.4g\n0\n", behind(result.out, "after"));
}

// The guardian, which sees it, has nothing to put back any more.
const std::string kRemoved =
    "wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; rm "
    "$pending-2.4g; no_guardian;";

TEST(Pending, ThatWasRemovedUnderItsGuardianIsToldAndDecidedByItsOperator) {
  const Result result = run_story(
      kRemoved +
      "echo == syslog; grep -c 'wlanctl-pending-2.4g was removed while the apply of 2.4g waited' "
      "/run/gateway-sim/syslog; for verb in confirm apply; do echo == $verb; wlanctl $verb 2.4g; echo $?; done;"
      "echo == status; wlanctl status 2.4g 2>&1 | tr -s '\\n ' ' ' | grep -c 'nobody takes it back any more'; echo == "
      "rollback; wlanctl rollback 2.4g; echo $?; wlanctl get 2.4g SSID:1 Channel; wlanctl confirm 2.4g; echo $?");
  EXPECT_EQ("1\n", behind(result.out, "syslog"));
  EXPECT_EQ("1\n", behind(result.out, "confirm"));
  EXPECT_EQ("1\n", behind(result.out, "apply"));
  EXPECT_THAT(result.err, HasSubstr("was removed while the apply of 2.4g waited for its confirmation: nobody takes it "
                                    "back any more; wlanctl confirm 2.4g --force keeps its settings; wlanctl rollback "
                                    "2.4g puts back those before"));
  EXPECT_EQ("1\n", behind(result.out, "status"));
  EXPECT_EQ("2.4g: rolled back; the settings before the apply are in force\n0\nSSID:1   Gateway-Home\nChannel  6\n1\n",
            behind(result.out, "rollback"));
}

TEST(Pending, ThatWasRemovedUnderItsGuardianIsKeptByForce) {
  const Result result = run_story(kRemoved + "wlanctl confirm 2.4g --force; echo $?; wlanctl confirm 2.4g; echo $?");
  EXPECT_EQ("2.4g: confirmed; the settings stay\n0\nnothing waits to be confirmed on 2.4g\n0\n", result.out);
}

// One that is killed in the middle leaves settings of both.
TEST(Rollback, ThatWasKilledIsFinishedAndNotConfirmed) {
  const Result result = run_story(
      "wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; kill -9 "
      "$(guardian); simctl fail ifconfig hang ra0 >/dev/null; count=$(commands | grep -c ifconfig); with_pid pid "
      "wlanctl rollback 2.4g >/dev/null 2>&1 & until [ $(commands | grep -c ifconfig) -gt $count ]; do sleep 0.02; "
      "done;"
      "kill -9 $(cat pid); simctl fail none >/dev/null; echo == looks; wlanctl status 2.4g 2>&1 | tr -s '\\n ' ' ' | "
      "grep -c 'is being rolled back, or that was cut off'; echo == confirm; wlanctl confirm 2.4g; echo $?; wlanctl "
      "get "
      "2.4g SSID:1");
  EXPECT_EQ("1\n", behind(result.out, "looks"));
  EXPECT_EQ("1\nGateway-Home\n", behind(result.out, "confirm"));
  EXPECT_THAT(result.err, HasSubstr("was being rolled back, and that was cut off; it is rolled back now"));
}

TEST(Rollback, ThatWasKilledIsFinishedByTheGuardianAndToldByTheNext) {
  const Result result = run_story(
      "wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null; simctl fail "
      "ifconfig hang ra0 >/dev/null; count=$(commands | grep -c ifconfig); with_pid pid wlanctl rollback 2.4g "
      ">/dev/null "
      "2>&1 & until [ $(commands | grep -c ifconfig) -gt $count ]; do sleep 0.02; done; simctl fail none >/dev/null; "
      "kill "
      "-9 $(cat pid); gone 2.4g; no_guardian; wlanctl get 2.4g SSID:1 Channel; echo == status; wlanctl status 2.4g "
      "2>&1 | "
      "tr -s '\\n ' ' ' | grep -c 'was taken back at .*, by wlanctl rollback'; echo == confirm; wlanctl confirm 2.4g; "
      "echo $?");
  EXPECT_THAT(result.out, testing::StartsWith("SSID:1   Gateway-Home\nChannel  6\n"));
  EXPECT_EQ("1\n", behind(result.out, "status"));
  EXPECT_EQ("1\n", behind(result.out, "confirm"));
}

TEST(ConfirmOfNothing, EndsTheExampleOfTheHelpWell) {
  const Result result = run_story(
      "wlanctl apply 2.4g --confirm 60 && echo == confirm && wlanctl confirm 2.4g; echo $?; wlanctl confirm "
      "--json >c.json; echo == json; cat c.json");
  EXPECT_THAT(result.out, HasSubstr("2.4g: nothing to apply"));
  EXPECT_EQ("nothing waits to be confirmed on 2.4g\n0\n", behind(result.out, "confirm"));
  EXPECT_EQ(false, document_in(behind(result.out, "json"))["data"]["waited"]);
}

// A terminal of its own for the calls of `inner`; what it shows is in the file "shown".
std::string at_a_terminal(const std::string& inner) {
  return "cat >inner <<'END'\n" + inner + "\nEND\nscript -qec 'sh inner' shown </dev/null >/dev/null;";
}

const std::string kApplyAtTerminal =
    "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1 || exit;";

TEST(ApplyTerminal, IsToldOnceItIsTakenBack) {
  const Result result =
      run_story(at_a_terminal(functions() + kApplyAtTerminal + "overdue 2.4g; gone 2.4g; no_guardian") +
                "tr -s '\\r\\n ' ' ' <shown");
  EXPECT_THAT(result.out, MatchesRegex(".*wlanctl: " + std::string(kWords + 2)));
}

TEST(ApplyTerminal, IsToldWhatIsNotOnTheAirThen) {
  const Result result =
      run_story(at_a_terminal(functions() + kApplyAtTerminal +
                              "ip link set ra1 down; ip link set ra1 name gone; overdue 2.4g; gone 2.4g; no_guardian") +
                "tr -s '\\r\\n ' ' ' <shown");
  EXPECT_THAT(result.out, HasSubstr("; what was before is back, but not all of it is on the air"));
}

TEST(ApplyTerminal, ThatTakesNothingHoldsNobodyUp) {
  const Result result = run_story(
      at_a_terminal(
          functions() + kApplyAtTerminal +
          "python3 -c 'import termios; termios.tcflow(0, termios.TCOOFF)'; overdue 2.4g; gone 2.4g; no_guardian;"
          "python3 -c 'import termios; termios.tcflow(0, termios.TCOON)'") +
      "wlanctl get 2.4g Channel; grep -c 'taken back' shown");
  EXPECT_EQ("6\n0\n", result.out);
}

TEST(ApplyTerminal, ThatIsBarredToMessagesIsLeftAlone) {
  const Result result = run_story(
      at_a_terminal(functions() + kApplyAtTerminal + "chmod u+x $(tty); overdue 2.4g; gone 2.4g; no_guardian") +
      "grep -c 'taken back' shown");
  EXPECT_EQ("0\n", result.out);
}

}  // namespace
}  // namespace wlanctl_test
