// The history: what each operation leaves in it, and how log shows that.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

// The entries, the newest first, after a script.
Json entries_after(const std::string& script, const std::string& words = "log") {
  const Result result = run_story("{ " + script + "; } >/dev/null 2>&1; wlanctl " + words + " --json");
  return document_in(result.out)["data"]["entries"];
}

const std::string kChange = "wlanctl set 2.4g SSID:1=Kitchen Channel=1 WPAPSK:1=topsecret >/dev/null;";

Json change_of(const Json& entry, const std::string& key) {
  for (const Json& change : entry["changes"]) {
    if (change["key"] == key) return change;
  }
  return nullptr;
}

TEST(History, HasAnApplyWithWhatItChanged) {
  const Json entries = entries_after(kChange + "wlanctl apply 2.4g");
  ASSERT_EQ(1u, entries.size());
  const Json& entry = entries[0];
  EXPECT_EQ(1, entry["entry"]);
  EXPECT_EQ("2.4g", entry["band"]);
  EXPECT_EQ("apply", entry["operation"]);
  EXPECT_EQ("operator", entry["by"]);
  EXPECT_EQ("radio", entry["meaning"]);
  EXPECT_EQ("done", entry["state"]);
  EXPECT_EQ(0, entry["exit_code"]);
  EXPECT_EQ(true, entry["in_force"]);
  EXPECT_EQ(nullptr, entry["about"]);
  EXPECT_EQ(nullptr, entry["taken_back_by"]);
  EXPECT_EQ(Json::parse(R"({"key":"Channel","index":-1,"from":6,"to":1})"), change_of(entry, "Channel"));
  EXPECT_EQ(Json::parse(R"({"key":"SSID","index":1,"from":"Gateway-Home","to":"Kitchen"})"), change_of(entry, "SSID"));
}

TEST(History, HasWhatAnApplyMadeConsistentByItself) {
  const Json entries = entries_after("wlanctl set 2.4g Channel=1; wlanctl apply 2.4g");
  EXPECT_EQ(Json::parse(R"({"key":"HT_OpMode","index":-1,"from":0,"to":1})"), change_of(entries[0], "HT_OpMode"));
}

TEST(History, TellsWhatAnApplyMeant) {
  EXPECT_EQ("save",
            entries_after("wlanctl apply 2.4g; wlanctl set 2.4g HideSSID:1=1; wlanctl apply 2.4g")[0]["meaning"]);
  EXPECT_EQ("reboot", entries_after("wlanctl set 2.4g BssidNum=1; wlanctl apply 2.4g --force")[0]["meaning"]);
}

TEST(History, SaysThatARebootIsAdvisedRatherThanThatThereWasOne) {
  const std::vector<Result> steps =
      run_steps({"wlanctl set 2.4g BssidNum=1; wlanctl apply 2.4g --force", "wlanctl log"});
  EXPECT_THAT(steps[1].out, HasSubstr("  reboot advised  in force\n"));
}

TEST(History, HasNothingOfAnApplyWithNothingToApply) {
  EXPECT_EQ(1u, entries_after("wlanctl save 2.4g; wlanctl apply 2.4g").size());
}

TEST(History, HasAnApplyThatRunsAgain) {
  const Json entries = entries_after("wlanctl set 2.4g Channel=1; wlanctl apply 2.4g; wlanctl apply 2.4g --again");
  ASSERT_EQ(2u, entries.size());
  EXPECT_THAT(entries[0]["changes"], IsEmpty());
  EXPECT_EQ("radio", entries[0]["meaning"]);
}

TEST(History, HasNothingOfADryRun) {
  EXPECT_THAT(entries_after(kChange + "wlanctl apply 2.4g --dry-run"), IsEmpty());
}

TEST(History, HasNothingOfASet) {
  EXPECT_THAT(entries_after(kChange + ":"), IsEmpty());
}

TEST(History, HasASaveAndARevert) {
  const Json entries = entries_after(
      "wlanctl set 2.4g Channel=1; wlanctl save 2.4g; wlanctl set 2.4g Channel=3;"
      "wlanctl revert 2.4g");
  ASSERT_EQ(2u, entries.size());
  EXPECT_EQ("revert", entries[0]["operation"]);
  EXPECT_EQ(Json::parse(R"([{"key":"AutoChannelSkipList","index":-1,"from":"12;13;14","to":"12;13"},
                            {"key":"Channel","index":-1,"from":3,"to":1}])"),
            entries[0]["changes"]);
  EXPECT_EQ("save", entries[1]["operation"]);
  EXPECT_EQ("nothing", entries[1]["meaning"]);
  EXPECT_EQ("done", entries[1]["state"]);
  EXPECT_EQ(Json::parse(R"([{"key":"Channel","index":-1,"from":6,"to":1}])"), entries[1]["changes"]);
}

TEST(History, HasAnEntryForEachBand) {
  const Json entries = entries_after("wlanctl save");
  ASSERT_EQ(2u, entries.size());
  EXPECT_EQ("5g", entries[0]["band"]);
  EXPECT_EQ("2.4g", entries[1]["band"]);
}

// The file system has a page, and the settings of eight SSIDs need two.
const std::string kNoRoom =
    "wlanctl set 2.4g BssidNum=8; cp /etc/Wireless/RT2860AP/RT2860AP.dat dat; mount -t tmpfs -o size=4k none "
    "/etc/Wireless/RT2860AP; head -n 40 dat >/etc/Wireless/RT2860AP/RT2860AP.dat;";

TEST(History, HasASaveThatFailed) {
  const Json entries = entries_after(kNoRoom + "wlanctl save 2.4g");
  ASSERT_EQ(1u, entries.size());
  EXPECT_EQ("failed", entries[0]["state"]);
  EXPECT_EQ(1, entries[0]["exit_code"]);
}

TEST(History, HasARevertThatWasRefused) {
  const Json entries = entries_after(std::string("library_probe init 0 init 1; : >") + kDat + "; wlanctl revert 2.4g");
  ASSERT_EQ(1u, entries.size());
  EXPECT_EQ("failed", entries[0]["state"]);
  EXPECT_THAT(entries[0]["changes"], IsEmpty());
}

TEST(History, HasAnApplyThatCouldNotWriteTheDatFile) {
  const Json entries = entries_after(kNoRoom + "wlanctl apply 2.4g");
  ASSERT_EQ(1u, entries.size());
  EXPECT_EQ("failed", entries[0]["state"]);
  EXPECT_EQ(1, entries[0]["exit_code"]);
  EXPECT_EQ(false, entries[0]["in_force"]);
}

TEST(History, HasAnApplyThatIsNotInForce) {
  const Json entries =
      entries_after("simctl fail brctl exit=1 addif ra1; wlanctl set 2.4g Channel=1; wlanctl apply 2.4g");
  EXPECT_EQ(false, entries[0]["in_force"]);
  EXPECT_EQ(6, entries[0]["exit_code"]);
  EXPECT_EQ("done", entries[0]["state"]);
}

TEST(History, KnowsAnApplyThatWaitsAndItsConfirmation) {
  const Result result =
      run_story(kChange +
                "wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; echo == waits; wlanctl log;"
                "wlanctl confirm >/dev/null; echo == confirmed; wlanctl log; wlanctl log --json >l.json");
  EXPECT_THAT(behind(result.out, "waits"), HasSubstr("waits for its"));
  EXPECT_THAT(behind(result.out, "confirmed"), HasSubstr("in force  confirmed\n"));
  EXPECT_THAT(lines_of(behind(result.out, "confirmed")), testing::SizeIs(2));
}

TEST(History, DoesNotSayThatAnApplyWaitsWhichNobodyWaitsFor) {
  const Result result = run_story(kChange +
                                  "wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; rm /run/wlanctl-pending-2.4g"
                                  " /etc/Wireless/wlanctl-before-2.4g; wlanctl log | tr -s '\\n ' ' '");
  EXPECT_THAT(result.out, HasSubstr("whether it was confirmed is not known"));
}

void expect_rolled_back(const Json& entries, const std::string& by) {
  ASSERT_EQ(2u, entries.size());
  EXPECT_EQ("rollback", entries[0]["operation"]);
  EXPECT_EQ(by, entries[0]["by"]);
  EXPECT_EQ(1, entries[0]["about"]);
  EXPECT_EQ("done", entries[0]["state"]);
  EXPECT_EQ("radio", entries[0]["meaning"]);
  EXPECT_EQ(Json::parse(R"({"key":"Channel","index":-1,"from":1,"to":6})"), change_of(entries[0], "Channel"));
  EXPECT_EQ(2, entries[1]["taken_back_by"]);
  EXPECT_EQ("apply", entries[1]["operation"]);
}

TEST(History, HasARollBackByTheVerb) {
  expect_rolled_back(entries_after(kChange + "wlanctl apply 2.4g --confirm 600; wlanctl rollback"), "operator");
}

TEST(History, HasARollBackByTheGuardian) {
  expect_rolled_back(entries_after(kChange + "wlanctl apply 2.4g --confirm 600; overdue 2.4g; gone 2.4g; no_guardian"),
                     "guardian");
}

TEST(History, HasARollBackByTheNextWlanctl) {
  expect_rolled_back(
      entries_after(kChange + "wlanctl apply 2.4g --confirm 600; kill -9 $(guardian); no_guardian; overdue 2.4g;"
                              "wlanctl set 2.4g HideSSID:1=0"),
      "recovery");
}

TEST(History, HasARollBackByTheApplyItself) {
  const Json entries =
      entries_after("simctl fail brctl exit=1 addif ra1; " + kChange + "wlanctl apply 2.4g --confirm 600");
  expect_rolled_back(entries, "apply");
  ASSERT_EQ(2u, entries.size());
  EXPECT_EQ(false, entries[1]["in_force"]);
  EXPECT_EQ(6, entries[1]["exit_code"]);
}

TEST(History, HasAnApplyThatWasKilledAndItsRollBack) {
  const Json entries = entries_after(kChange +
                                     "killed_at 'after 2 /var/run/wlanctl-pending-2.4g' wlanctl apply 2.4g "
                                     "--confirm 600; gone 2.4g; no_guardian");
  expect_rolled_back(entries, "guardian");
  ASSERT_EQ(2u, entries.size());
  EXPECT_EQ("begun", entries[1]["state"]);
  EXPECT_EQ(Json::parse(R"({"key":"Channel","index":-1,"from":6,"to":1})"), change_of(entries[1], "Channel"));
}

TEST(History, OutlivesABoot) {
  const Result result = run_story(kChange +
                                  "wlanctl apply 2.4g >/dev/null 2>&1; simctl power-cut >/dev/null;"
                                  "wlanctl log -n 1 | head -n 1");
  EXPECT_THAT(result.out, StartsWith("1  "));
}

TEST(History, NamesWhoIsAtWork) {
  const Json entries = entries_after(
      "SUDO_USER=alice wlanctl save 2.4g; SUDO_USER= wlanctl save 2.4g;"
      "script -qec 'wlanctl save 2.4g' /dev/null </dev/null");
  ASSERT_EQ(3u, entries.size());
  EXPECT_EQ("alice", entries[2]["user"]);
  EXPECT_EQ("root", entries[1]["user"]);
  EXPECT_EQ(nullptr, entries[1]["terminal"]);
  EXPECT_THAT(entries[0]["terminal"].dump(), StartsWith("\"/dev/pts/"));
}

TEST(History, ShowsAUsersNameWithoutWhatATerminalActsOn) {
  const Result result =
      run_story("SUDO_USER=\"$(printf 'a\\033[31mb c')\" wlanctl save 2.4g >/dev/null 2>&1; wlanctl log");
  EXPECT_THAT(result.out, HasSubstr("by a?[31mb c"));
}

TEST(History, MasksSecretsUnlessTheyAreWanted) {
  const std::string apply = kChange + "wlanctl apply 2.4g >/dev/null 2>&1;";
  const Result result =
      run_story(apply +
                "wlanctl log --json; wlanctl log; wlanctl log show 1; wlanctl log show 1 --json; echo == secret;"
                "wlanctl log show 1 --secrets; echo == json; wlanctl log --secrets --json");
  EXPECT_THAT(result.out.substr(0, result.out.find("== secret")), Not(HasSubstr("topsecret")));
  EXPECT_THAT(result.out, HasSubstr("  WPAPSK:1      ******** -> ******** (new)\n"));
  EXPECT_THAT(behind(result.out, "secret"), HasSubstr("-> topsecret\n"));
  EXPECT_THAT(behind(result.out, "json"), HasSubstr("\"topsecret\""));
}

TEST(Log, ListsTheNewestFirstAndNoMoreThanAskedFor) {
  const Json all = entries_after("wlanctl save; wlanctl save 5g");
  EXPECT_EQ(3, all[0]["entry"]);
  EXPECT_EQ(1, all[2]["entry"]);
  const std::string saves = "wlanctl save; wlanctl save 5g";
  EXPECT_EQ(2u, entries_after(saves, "log -n 2").size());
  EXPECT_EQ(1u, entries_after(saves, "log 2.4g").size());
  EXPECT_EQ(3, entries_after(saves, "log 5g -n 1")[0]["entry"]);
}

TEST(Log, IsTextWithAHeadAndTheNamesOfWhatChanged) {
  const Result result = run_story(
      "wlanctl set 2.4g EAPifname=br1 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; wlanctl save 2.4g "
      ">/dev/null 2>&1; wlanctl log");
  const Words lines = lines_of(result.out);
  ASSERT_EQ(4u, lines.size());
  EXPECT_THAT(lines[0], MatchesRegex("2  ....-..-.. ..:..:..  2.4g  save  by root  done"));
  EXPECT_EQ("    no change of a setting", lines[1]);
  EXPECT_EQ("    EAPifname", lines[3]);
}

TEST(Log, ShowsOneEntryWithItsValues) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; wlanctl log "
      "show 1");
  EXPECT_THAT(result.out, MatchesRegex("entry   1\nwhen    [^\n]*\nband    2.4g\nwhat    save by root\n.*\n"
                                       "  Channel  6 -> 1\n"));
}

TEST(Log, OfAnEntryIsADocumentLikeTheList) {
  const Result result = run_story("wlanctl save 2.4g >/dev/null 2>&1; wlanctl log show 1 --json");
  const Json document = document_in(result.out);
  EXPECT_EQ("log show", document["verb"]);
  EXPECT_EQ(1, document["data"]["entries"][0]["entry"]);
}

TEST(Log, SaysWhichEntryThereIsNot) {
  const Result result =
      run_story("wlanctl log show 7; echo $?; wlanctl log show seven; echo $?; wlanctl log show; echo $?");
  EXPECT_EQ("2\n2\n2\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("there is no entry 7; wlanctl log lists them"));
  EXPECT_THAT(result.err, HasSubstr("\"seven\" is no entry"));
}

TEST(Log, OfNothingSaysSo) {
  const Result result = run_story("wlanctl log; echo $?");
  EXPECT_EQ("no entries\n0\n", result.out);
  EXPECT_EQ("", result.err);
}

TEST(Log, NeedsNoStoreAndMakesNone) {
  const Result result = run_story("wlanctl log >/dev/null; ipcs -m | grep -c 0x0001234; ls /etc/Wireless");
  EXPECT_EQ("0\nRT2860AP\nRT2860AP_AC\n", result.out);
}

TEST(Log, RefusesANumberOfEntriesThatIsNone) {
  EXPECT_EQ("2\n2\n", run_story("wlanctl log -n 0; echo $?; wlanctl log -n 101; echo $?").out);
}

TEST(Log, FitsAConsole) {
  const Result result =
      run_story("SUDO_USER=a-user-with-a-rather-long-name-that-does-not-end; export SUDO_USER;" + kChange +
                "wlanctl set 2.4g HideSSID:1=1 HideSSID:2=1 BeaconPeriod=200 RTSThreshold=2000 DtimPeriod=3 "
                ">/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; wlanctl rollback >/dev/null;"
                "script -qec 'wlanctl save 2.4g' /dev/null </dev/null >/dev/null; wlanctl log; wlanctl log show 1");
  EXPECT_THAT(result.out, HasSubstr("by a-user-with-a-rather-long-name-t"));
  EXPECT_THAT(result.out, Not(HasSubstr("long-name-th")));
  for (const std::string& line : lines_of(result.out)) EXPECT_LE(line.size(), 80u) << line;
}

}  // namespace
}  // namespace wlanctl_test
