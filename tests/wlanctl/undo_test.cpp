// undo: what an entry changed comes back into the store, all of it or nothing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kApplied =
    "wlanctl set 2.4g SSID:1=Kitchen Channel=1 WPAPSK:1=topsecret >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1;";
constexpr char kGet[] = "wlanctl get 2.4g SSID:1 Channel WPAPSK:1;";
constexpr char kBefore[] = "SSID:1    Gateway-Home\nChannel   6\nWPAPSK:1  sample-passphrase-1\n";
constexpr char kAfter[] = "SSID:1    Kitchen\nChannel   1\nWPAPSK:1  topsecret\n";

TEST(Undo, BringsBackWhatTheNewestEntryChanged) {
  const Result result =
      run_story(kApplied + "wlanctl undo; echo == get;" + kGet + "echo == file; grep ^SSID1= " + kDat);
  EXPECT_THAT(result.out, HasSubstr("2.4g Channel = 6  (was 1)\n"));
  EXPECT_THAT(result.out, HasSubstr("2.4g SSID:1 = Gateway-Home  (was Kitchen)\n"));
  EXPECT_THAT(result.out, HasSubstr("2.4g WPAPSK:1 = ********  (was ********)\n"));
  EXPECT_THAT(result.out,
              HasSubstr("2.4g: entry 1 is undone in the store\n  wlanctl apply 2.4g brings that into force\n"));
  EXPECT_EQ(kBefore, behind(result.out, "get"));
  EXPECT_EQ("SSID1=Kitchen\n", behind(result.out, "file"));
}

TEST(Undo, TellsNoDriverAndIsBroughtIntoForceByAnApply) {
  const Result result =
      run_story(kApplied +
                "commands >before; wlanctl undo >/dev/null; commands | cmp - before && echo == quiet;"
                "wlanctl apply 2.4g >/dev/null 2>&1; echo $?; commands | grep 'ra0 set SSID' | tail -1");
  EXPECT_EQ("0\n/userfs/bin/iwpriv ra0 set SSID=Gateway-Home\n", behind(result.out, "quiet"));
}

TEST(Undo, IsADocument) {
  const Result result =
      run_story("wlanctl set 2.4g Channel=1 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; wlanctl undo --json");
  const Json data = document_in(result.out)["data"];
  EXPECT_EQ(Json::parse(R"({"band":"2.4g","entry":1,"dry_run":false,
      "changes":[{"key":"Channel","index":-1,"before":1,"after":6}],"already":[],"left":[],"next":"wlanctl apply 2.4g"})"),
            data);
}

TEST(Undo, MasksSecretsUnlessTheyAreWanted) {
  const Result result = run_story(kApplied +
                                  "wlanctl undo --dry-run --json; wlanctl undo --dry-run; echo == wanted; wlanctl undo "
                                  "--secrets");
  EXPECT_THAT(result.out.substr(0, result.out.find("== wanted")), Not(HasSubstr("topsecret")));
  EXPECT_THAT(behind(result.out, "wanted"), HasSubstr("WPAPSK:1 = sample-passphrase-1  (was topsecret)"));
}

TEST(Undo, OfARevertBringsBackWhatTheStoreHad) {
  const Result result = run_story(
      "wlanctl set 2.4g SSID:1=Kitchen Channel=1 >/dev/null; wlanctl revert 2.4g >/dev/null 2>&1;"
      "wlanctl undo >/dev/null; wlanctl get 2.4g SSID:1 Channel");
  EXPECT_EQ("SSID:1   Kitchen\nChannel  1\n", result.out);
}

const std::string kRolledBack =
    "wlanctl set 2.4g SSID:1=Kitchen >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1;"
    "wlanctl rollback >/dev/null 2>&1;";

TEST(Undo, OfARollBackBringsBackWhatWasRolledBackByItsNumber) {
  const Result result = run_story(kRolledBack + "wlanctl undo 2 >/dev/null; wlanctl get 2.4g SSID:1");
  EXPECT_EQ("Kitchen\n", result.out);
}

TEST(Undo, PassesOverARollBackAndWhatThatTookBack) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; wlanctl set 2.4g SSID:1=Kitchen "
      ">/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; wlanctl rollback >/dev/null 2>&1; wlanctl undo;"
      "wlanctl get 2.4g SSID:1 Channel; wlanctl undo; echo $?");
  EXPECT_THAT(result.out, HasSubstr("2.4g Channel = 6  (was 1)\n"));
  EXPECT_THAT(result.out, HasSubstr("2.4g: entry 1 is undone in the store\n"));
  EXPECT_THAT(result.out, testing::EndsWith("SSID:1   Gateway-Home\nChannel  6\n1\n"));
  EXPECT_THAT(result.err, HasSubstr("entry 3, a roll back, and 2, which it took back, are passed over; wlanctl undo 3 "
                                    "brings back what was rolled back"));
  EXPECT_THAT(result.err, HasSubstr("there is nothing to undo"));
}

TEST(Undo, OfBothBandsTakesTheNewestOfEach) {
  const std::string applied =
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl set 5g Channel=40 >/dev/null; wlanctl apply >/dev/null 2>&1;";
  const Result result = run_story(applied +
                                  "wlanctl undo --both --dry-run >/dev/null; wlanctl undo --both; wlanctl get "
                                  "2.4g Channel; wlanctl get 5g Channel; wlanctl undo --both; echo $?");
  EXPECT_THAT(result.out, testing::StartsWith("2.4g Channel = 6  (was 1)\n"));
  EXPECT_THAT(result.out, testing::EndsWith(
                              "2.4g: entry 1 is undone in the store\n5g Channel = 36  (was 40)\n5g: entry 2 is undone "
                              "in the store\n  wlanctl apply brings that into force\n6\n36\n1\n"))
      << result.err;
  EXPECT_THAT(result.err, HasSubstr("there is nothing to undo on 2.4g"));
  EXPECT_THAT(result.err, HasSubstr("there is nothing to undo on 5g"));
  const Json data = document_in(run_story(applied + "wlanctl undo --both --json").out)["data"];
  ASSERT_TRUE(data.contains("bands"));
  EXPECT_EQ(1, data["bands"][0]["entry"]);
  EXPECT_EQ(36, data["bands"][1]["changes"][0]["after"]);
}

TEST(Undo, NamesTheOtherHalfOfAnApplyOfBothBands) {
  const std::string set = "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl set 5g Channel=40 >/dev/null;";
  const Result result =
      run_story(set +
                "wlanctl apply >/dev/null 2>&1; wlanctl undo --dry-run >/dev/null; echo == named >&2;"
                "wlanctl undo 5g --dry-run >/dev/null; wlanctl undo 2 --dry-run >/dev/null; wlanctl undo "
                "--both --dry-run >/dev/null; echo == done >&2; wlanctl undo >/dev/null; wlanctl undo 1 "
                ">/dev/null; wlanctl get 2.4g Channel; wlanctl get 5g Channel");
  EXPECT_THAT(result.err, HasSubstr("note: entry 1 of 2.4g is of the same apply, and stays; wlanctl undo --both undoes "
                                    "the two\n"));
  EXPECT_THAT(behind(result.err, "named"), Not(HasSubstr("undoes the two")));
  EXPECT_THAT(
      behind(result.err, "done"),
      HasSubstr("note: entry 1 of 2.4g is of the same apply, and stands; wlanctl undo 1 undoes it too, as wlanctl "
                "undo --both would have done\n"));
  EXPECT_EQ("6\n36\n", result.out);
  // Each of an apply of its own.
  EXPECT_THAT(run_story(set + "wlanctl apply 2.4g >/dev/null 2>&1; wlanctl save 2.4g >/dev/null 2>&1; wlanctl apply 5g "
                              ">/dev/null 2>&1; wlanctl "
                              "undo --dry-run >/dev/null")
                  .err,
              Not(HasSubstr("same apply")));
}

TEST(Undo, OfBothBandsIsDoneOnBothOrOnNone) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl set 5g Channel=40 >/dev/null; wlanctl save >/dev/null 2>&1;"
      "wlanctl set 5g Channel=44 >/dev/null; wlanctl undo --both; echo $?; wlanctl get 2.4g Channel; wlanctl log show "
      "3; "
      "wlanctl undo --both --force >/dev/null; wlanctl get 2.4g Channel; wlanctl get 5g Channel");
  EXPECT_EQ("1\n1\n6\n36\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("Channel of 5g has changed since"));
}

const std::string kAddedSsid =
    "wlanctl set 2.4g BssidNum=3 RADIUS_Key:3=anothersecret SSID:3=Guest EnableSSID:3=1 WscConfMode:3=0 >/dev/null "
    "2>&1; "
    "wlanctl save 2.4g >/dev/null 2>&1;";

// The driver has no interface for it yet, or loses it.
TEST(Undo, OfAnAddedSsidAsksNoDriverAndNamesForce) {
  const Result result = run_story(
      "echo topsecret | wlanctl ssid add 2.4g Guest --passphrase-file - >/dev/null 2>&1; wlanctl apply 2.4g >/dev/null "
      "2>&1; wlanctl undo; echo $?; wlanctl apply 2.4g >/dev/null 2>&1; echo $?; wlanctl apply 2.4g --force >/dev/null "
      "2>&1; echo $?");
  EXPECT_THAT(result.out, HasSubstr("\n  wlanctl apply 2.4g --force brings that into force\n0\n1\n0\n"));
  EXPECT_THAT(result.err, Not(HasSubstr("the driver did not take")));
}

TEST(Undo, OfAnUndoneSsidBringsItBack) {
  const Result result = run_story(
      "echo topsecret | wlanctl ssid add 2.4g Guest --passphrase-file - >/dev/null 2>&1; wlanctl save 2.4g >/dev/null "
      "2>&1; wlanctl undo >/dev/null 2>&1; wlanctl undo 2 >/dev/null 2>&1; echo $?; wlanctl get 2.4g BssidNum SSID:3 "
      "WPAPSK:3");
  EXPECT_EQ("0\nBssidNum  3\nSSID:3    Guest\nWPAPSK:3  topsecret\n", result.out) << result.err;
}

TEST(Undo, NamesForceInItsDocument) {
  const Result result = run_story(kAddedSsid + "wlanctl undo --dry-run --json");
  EXPECT_EQ("wlanctl apply 2.4g --force", document_in(result.out)["data"]["next"]);
}

TEST(Undo, OfAnotherSsidCountBringsBackItsSsids) {
  const Result result = run_story(
      "wlanctl set 2.4g BssidNum=3 SSID:3=Third EnableSSID:3=1 >/dev/null 2>&1; wlanctl save 2.4g >/dev/null 2>&1;"
      "wlanctl set 2.4g BssidNum=2 >/dev/null; wlanctl save 2.4g --force >/dev/null 2>&1; wlanctl undo >/dev/null;"
      "wlanctl get 2.4g BssidNum SSID:3; wlanctl undo 2.4g 1; wlanctl get 2.4g BssidNum SSID:3");
  EXPECT_THAT(result.out, testing::StartsWith("BssidNum  3\nSSID:3    Third\n"));
  EXPECT_THAT(result.out, testing::EndsWith("BssidNum  2\nSSID:3    Gateway-3\n"));
}

// Behind a revert the store has nothing of it any more.
TEST(Undo, OfARemovedSsidBringsBackAllOfItAfterARevertToo) {
  const Result result = run_story(
      "wlanctl set 2.4g AutoChannelSkipList=12 BssidNum=3 SSID:3=Third HideSSID:3=1 >/dev/null 2>&1; wlanctl apply "
      "2.4g >/dev/null 2>&1; "
      "wlanctl "
      "export 2.4g | grep -v ApCliMac >was; wlanctl ssid remove 2.4g 2 --yes >/dev/null 2>&1; wlanctl apply 2.4g "
      "--force >/dev/null 2>&1;"
      "wlanctl revert 2.4g >/dev/null; wlanctl undo >/dev/null; echo $?; wlanctl export 2.4g | grep -v ApCliMac | diff "
      "was -");
  EXPECT_EQ("0\n", result.out) << result.err;
}

TEST(Undo, OfAListBringsAllOfItBack) {
  const Result result = run_story(
      "wlanctl get 2.4g AutoChannelSkipList >was 2>/dev/null; wlanctl set 2.4g 'AutoChannelSkipList=1;2;3;4;5' "
      ">/dev/null "
      "2>&1;"
      "wlanctl revert 2.4g >/dev/null 2>&1; wlanctl undo --json; wlanctl undo 2 >/dev/null; wlanctl get 2.4g "
      "AutoChannelSkipList | cmp - was && echo same");
  EXPECT_THAT(result.out, HasSubstr("\"after\": \"1;2;3;4;5\""));
  EXPECT_THAT(result.out, testing::EndsWith("same\n")) << result.err;
}

TEST(Undo, TakesTheNewestThatIsNotUndoneYet) {
  const Result result = run_story(
      "for c in 1 2 3; do wlanctl set 2.4g Channel=$c >/dev/null 2>&1; wlanctl save 2.4g >/dev/null 2>&1; "
      "done; wlanctl save 2.4g >/dev/null 2>&1; for i in 1 2 3 4; do wlanctl undo; done; wlanctl get 2.4g "
      "Channel");
  EXPECT_EQ(
      "2.4g Channel = 2  (was 3)\n2.4g: entry 3 is undone in the store\n  wlanctl apply 2.4g brings that into force\n"
      "2.4g Channel = 1  (was 2)\n2.4g: entry 2 is undone in the store\n  wlanctl apply 2.4g brings that into force\n"
      "2.4g Channel = 6  (was 1)\n2.4g: entry 1 is undone in the store\n  wlanctl apply 2.4g brings that into "
      "force\n6\n",
      result.out);
  EXPECT_EQ(
      "wlanctl: there is nothing to undo; wlanctl log lists what was done; wlanctl revert takes back what was only "
      "set\n",
      result.err.substr(result.err.rfind("wlanctl: there")));
}

TEST(Undo, OfABandTakesTheNewestOfIt) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null 2>&1; wlanctl save 2.4g >/dev/null 2>&1; wlanctl set 5g "
      "Channel=40 >/dev/null 2>&1; wlanctl save 5g >/dev/null 2>&1; wlanctl undo 2.4g | head -1; wlanctl "
      "undo 2.4g; echo $?");
  EXPECT_EQ("2.4g Channel = 6  (was 1)\n1\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("there is nothing to undo on 2.4g"));
}

TEST(Undo, IsUndoneByItsNumber) {
  const Result result =
      run_story(kApplied + "wlanctl undo >/dev/null; wlanctl undo 2 >/dev/null; " + kGet +
                "wlanctl log --json >l.json; wlanctl log show 1 | grep -c undone; wlanctl undo >/dev/null; " + kGet);
  EXPECT_EQ(std::string(kAfter) + "0\n" + kBefore, result.out) << result.err;
}

TEST(Undo, IsNotDoneTwice) {
  const Result result = run_story(kApplied + "wlanctl undo >/dev/null; wlanctl undo 1; echo $?");
  EXPECT_EQ("1\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("entry 1 is undone by 2 already; wlanctl undo 2 brings it back"));
}

TEST(Undo, IsRefusedWhereAValueHasChangedSince) {
  const Result result =
      run_story(kApplied +
                "wlanctl set 2.4g Channel=3 WPAPSK:1=anothersecret >/dev/null; segment 2.4g >before; "
                "wlanctl undo; echo $?; segment 2.4g | cmp - before && echo untouched; echo == forced; wlanctl undo "
                "--force | grep Channel; " +
                kGet);
  EXPECT_THAT(result.out, testing::StartsWith("1\nuntouched\n"));
  EXPECT_THAT(result.err,
              HasSubstr("Channel of 2.4g has changed since: it is \"3\", and entry 1 left \"1\"; --force puts back"));
  EXPECT_THAT(
      result.err,
      HasSubstr("WPAPSK:1 of 2.4g has changed since: it is \"********\", and entry 1 left \"********\", another"));
  EXPECT_EQ("2.4g Channel = 6  (was 3)\n" + std::string(kBefore), behind(result.out, "forced"));
}

TEST(Undo, ThatIsRefusedNamesTheWayOnToTheBeginning) {
  const Result result = run_story(
      "put() { wlanctl set $1 $2 >/dev/null; wlanctl $3 $1 >/dev/null 2>&1; }\n"
      "wlanctl get 2.4g RTSThreshold; put 2.4g RTSThreshold=2000 apply; put 5g Channel=40 save\n"
      "put 2.4g RTSThreshold=1900 save; put 2.4g RTSThreshold=1800 revert; put 2.4g RTSThreshold=1700 apply\n"
      "step() { wlanctl undo $* >/dev/null; echo $* $? $(wlanctl get 2.4g RTSThreshold); }\n"
      "step 2.4g; step 2.4g; step 3; step 2.4g; step 1; step 2.4g");
  EXPECT_EQ("2347\n2.4g 0 2000\n2.4g 1 2000\n3 0 2000\n2.4g 1 2000\n1 0 2347\n2.4g 1 2347\n", result.out);
  const std::string force = "and entry 4 left \"1900\"; --force puts back what was before that entry all the same";
  EXPECT_THAT(result.err, HasSubstr("it is \"2000\", " + force +
                                    "; wlanctl undo 3 leaves it and goes on with the entry before it"));
  EXPECT_THAT(result.err, HasSubstr("it is \"2000\", " + force +
                                    "; wlanctl undo 1 leaves it and goes on with the entry before it"));
  // There is none before it any more.
  EXPECT_THAT(result.err, testing::EndsWith("it is \"2347\", " + force + "\n"));
}

TEST(Undo, LeavesWhatIsAsBeforeAlready) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 SSID:1=Kitchen >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; wlanctl "
      "set 2.4g Channel=6 >/dev/null; wlanctl undo --json");
  const Json data = document_in(result.out)["data"];
  EXPECT_EQ(Json::parse(R"(["Channel"])"), data["already"]);
  EXPECT_EQ(1u, data["changes"].size());
}

TEST(Undo, OfWhatIsAsBeforeAlreadySaysSo) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; wlanctl set 2.4g "
      "Channel=6 >/dev/null; wlanctl undo; echo $?; wlanctl undo; echo $?");
  EXPECT_EQ("2.4g: the store is as before entry 1 already\n0\n1\n", result.out);
}

// An entry with a change that no setter takes back.
std::string with_change(const std::string& change, const std::string& number = "1") {
  return "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; cd /etc/Wireless/wlanctl-history;"
         "sed 1d entry-" +
         number + " >text; echo '" + change +
         "' >>text; sum=$(python3 -c '\n"
         "import sys\nsum = 0xcbf29ce484222325\n"
         "for byte in open(\"text\", \"rb\").read(): sum = ((sum ^ byte) * 0x100000001b3) % 2**64\nprint(sum)');"
         "{ echo wlanctl-history 1 $sum; cat text; } >entry-" +
         number + "; rm text; cd - >/dev/null;";
}

// Of an SSID that was not served before the undo, too.
TEST(Undo, LeavesAllThatItChangedInTheHistory) {
  const Result result = run_story(std::string("sed -i s/^RADIUS_Key3=.*/RADIUS_Key3=/ ") + kDat + ";" +
                                  with_change(":BssidNum :3 :2\n:RADIUS_Key:3 :anothersecret :") +
                                  "wlanctl undo >/dev/null; wlanctl log show 2");
  EXPECT_THAT(result.out, HasSubstr("  RADIUS_Key:3  "));
  EXPECT_THAT(result.out, HasSubstr("  BssidNum  "));
}

TEST(Undo, SaysWhatItCannotBringBackAndBringsBackNothing) {
  const struct {
    const char* change;
    const char* reason;
  } kRows[] = {
      {":RTSThreshold :99999 :2347", "RTSThreshold of 2.4g cannot be brought back to \"99999\": "},
      {":NoSuchSetting :1 :2",
       "NoSuchSetting of 2.4g cannot be brought back to \"1\": the library has no setter for it"},
      {":SSID:9 :a :b", "SSID:9 of 2.4g cannot be brought back to \"a\": the library has no setter for it"},
  };
  for (const auto& row : kRows) {
    const Result result = run_story(with_change(row.change) +
                                    "wlanctl undo; echo $?; wlanctl get 2.4g Channel; echo == forced;"
                                    "wlanctl undo --force --json");
    EXPECT_THAT(result.out, testing::StartsWith("1\n1\n")) << row.change;
    EXPECT_THAT(result.err, HasSubstr(row.reason));
    const Json document = document_in(behind(result.out, "forced"));
    EXPECT_EQ(0, document["exit_code"]);
    EXPECT_EQ(1u, document["data"]["changes"].size());
    EXPECT_EQ(1u, document["data"]["left"].size());
    EXPECT_THAT(document["notes"].dump(), HasSubstr("cannot be brought back"));
  }
}

TEST(Undo, ThatCannotBringAllBackNamesTheWayOnToo) {
  const Result result = run_story("wlanctl set 2.4g TxPower=50 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1;" +
                                  with_change(":NoSuchSetting :1 :2", "2") + "wlanctl undo");
  EXPECT_EQ(1, result.status);
  EXPECT_THAT(result.err, HasSubstr("; --force brings back the others; wlanctl undo 1 leaves it and goes on"));
}

TEST(Undo, DryRunTouchesNothing) {
  const Result result =
      run_story(kApplied +
                "segment 2.4g >before; ls /etc/Wireless/wlanctl-history >files; wlanctl undo --dry-run;"
                "echo $?; segment 2.4g | cmp - before && ls /etc/Wireless/wlanctl-history | cmp - files && echo same");
  EXPECT_THAT(result.out, HasSubstr("2.4g Channel = 6  (was 1)\n"));
  EXPECT_THAT(result.out, HasSubstr("2.4g: this would undo entry 1 in the store; nothing was changed\n0\nsame\n"));
}

TEST(Undo, TellsWhatAnApplyWillMakeOfIt) {
  const Result result =
      run_story(kApplied + "wlanctl undo --dry-run >/dev/null; echo == both >&2; wlanctl undo >/dev/null");
  EXPECT_THAT(result.err, testing::StartsWith("wlanctl: note: HT_OpMode: an apply will make it 1\n"));
  EXPECT_THAT(behind(result.err, "both"), HasSubstr("HT_OpMode: an apply will make it 1\n"));
}

TEST(Undo, DryRunMakesNoStore) {
  const Result result = run_story(kApplied +
                                  "simctl power-cut >/dev/null; wlanctl undo --dry-run | tail -1; ipcs -m | grep -c "
                                  "0x00012345");
  EXPECT_EQ("2.4g: this would undo entry 1 in the store; nothing was changed\n0\n", result.out) << result.err;
}

TEST(Undo, ComesAfterTheDecisionOfAnApplyThatWaits) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; wlanctl "
      "undo; echo $?; wlanctl confirm >/dev/null; wlanctl undo >/dev/null; echo $?");
  EXPECT_EQ("1\n0\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("an apply of 2.4g waits for its confirmation; wlanctl confirm 2.4g keeps it"));
}

TEST(Undo, ComesAfterTheDecisionOfAnApplyThatABootInterrupted) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1; simctl "
      "power-cut >/dev/null; wlanctl undo; echo $?");
  EXPECT_EQ("1\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("the gateway went down before the apply of 2.4g was confirmed"));
}

TEST(Undo, WaitsForAnotherOneAndGivesUp) {
  EXPECT_EQ("4\n", run_story("flock /var/run/wlanctl.lock sh -c 'wlanctl undo --wait 0; echo $?'").out);
}

TEST(Undo, RefusesWrongWords) {
  const Result result = run_story(
      "wlanctl save 2.4g >/dev/null 2>&1; for words in 6g '1 1' '2.4g 5g' 99 '5g 1' 1 0; do wlanctl undo "
      "$words; echo $?; done; wlanctl undo nonsense --json");
  EXPECT_EQ("2\n2\n2\n2\n2\n1\n2\n", result.out.substr(0, result.out.find('{')));
  for (const char* const said : {"\"6g\" is no band and no entry", "there is more than one entry",
                                 "there is more than one band", "--both undoes the newest entry of each",
                                 "there is no entry 99", "entry 1 is of 2.4g", "entry 1 changed no setting"}) {
    EXPECT_THAT(result.err, HasSubstr(said));
  }
}

TEST(Undo, WithoutAHistoryHasNothingToUndo) {
  const Result result = run_story("wlanctl undo; echo $?");
  EXPECT_EQ("1\n", result.out);
}

TEST(Undo, IsInTheHistory) {
  const Result result = run_story(
      "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1; wlanctl undo >/dev/null;"
      "wlanctl log --json");
  const Json entries = document_in(result.out)["data"]["entries"];
  ASSERT_EQ(2u, entries.size());
  EXPECT_EQ("undo", entries[0]["operation"]);
  EXPECT_EQ(1, entries[0]["about"]);
  EXPECT_EQ(2, entries[1]["taken_back_by"]);
  EXPECT_EQ(Json::parse(R"([{"key":"Channel","index":-1,"from":1,"to":6}])"), entries[0]["changes"]);
}

}  // namespace
}  // namespace wlanctl_test
