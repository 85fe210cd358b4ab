// ssid remove: those behind move down with all of their values; and what becomes of a change that ends in the middle.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include <map>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string functions_with_kill() {
  return functions() + "at_setter() { WLANCTL_SETTER=\"$1\"; shift; export WLANCTL_SETTER\n" +
         "  LD_PRELOAD=\"$LD_PRELOAD:" + built("lib/libkill_at_setter.so") +
         "\" \"$@\"; set -- $?; unset WLANCTL_SETTER; return $1; }\n";
}

std::vector<Result> run_with_word(Words steps, const Words& options = {}) {
  for (std::string& step : steps) step = functions_with_kill() + step;
  return run_live(std::move(steps), options, "echo guest-word-1 >word; ");
}

struct PerSsid {
  std::string dat_key;
  bool is_numbered;
  int first;  // number of SSID 1's key
};

// Of the table that the library's settings are made of.
std::vector<PerSsid> keys_of_ssids() {
  const std::string rows = sim_test::shell("sh '" + source_folder() + "/scripts/settings.sh' rows | cut -f 1-3").out;
  std::vector<PerSsid> keys;
  for (const std::string& row : lines_of(rows)) {
    char key[64] = "";
    char scope[16] = "";
    char numbering[16] = "";
    if (std::sscanf(row.c_str(), "%63s %15s %15s", key, scope, numbering) != 3 || std::string(scope) != "SSID")
      continue;
    keys.push_back({key, std::string(numbering) != "SHARED", std::string(numbering) == "FROM_ZERO" ? 0 : 1});
  }
  EXPECT_GT(keys.size(), 40u);
  return keys;
}

std::string numbered(const PerSsid& key, int ssid) {
  char text[64];
  std::snprintf(text, sizeof text, key.dat_key.c_str(), ssid - 1 + key.first);
  return text;
}

// A value of its own for each key and SSID, which few setters would take.
std::string value_of(size_t key, int ssid) {
  return std::to_string(ssid) + "v" + std::to_string(key);
}

// Puts them all into a store with that many SSIDs.
std::string distinct(int count) {
  const std::vector<PerSsid> keys = keys_of_ssids();
  std::string script = "library_probe attach put BssidNum 0 -1 " + std::to_string(count);
  for (size_t key = 0; key < keys.size(); ++key) {
    for (int ssid = 1; ssid <= count; ++ssid) {
      script += " put " + (keys[key].is_numbered ? numbered(keys[key], ssid) : keys[key].dat_key) + " 0 " +
                std::to_string(keys[key].is_numbered ? -1 : ssid) + " " + value_of(key, ssid);
    }
  }
  return script + " >/dev/null\n";
}

// What the store has of each key, SSID by SSID.
std::map<std::string, Words> records_in(const std::string& document) {
  std::map<std::string, Words> records;
  const Json all = document_in(document);
  for (const Json& record : all["data"]["bands"][0]["records"]) records[record["key"]] = record["values"];
  return records;
}

void expect_values_of(const std::map<std::string, Words>& records, const std::vector<int>& from) {
  const std::vector<PerSsid> keys = keys_of_ssids();
  for (size_t key = 0; key < keys.size(); ++key) {
    for (size_t i = 0; i < from.size(); ++i) {
      const int ssid = static_cast<int>(i) + 1;
      const std::string name = keys[key].is_numbered ? numbered(keys[key], ssid) : keys[key].dat_key;
      const size_t field = keys[key].is_numbered ? 0 : i;
      ASSERT_TRUE(records.contains(name)) << name;
      ASSERT_GT(records.at(name).size(), field) << name;
      EXPECT_EQ(value_of(key, from[i]), records.at(name)[field]) << name << " of SSID " << ssid;
    }
  }
}

TEST(SsidRemove, MovesEveryValueOfThoseBehindDownByOne) {
  const auto steps = run_with_word({distinct(4) + "wlanctl ssid remove 2.4g 2 --yes --json",
                                    "wlanctl dump 2.4g --secrets --json", "wlanctl get 2.4g BssidNum"});
  EXPECT_EQ(0, steps[0].status) << steps[0].out;
  EXPECT_EQ(Json::parse(R"([3, 4])"), Json::array({document_in(steps[0].out)["data"]["bands"][0]["moved"][0]["from"],
                                                   document_in(steps[0].out)["data"]["bands"][0]["moved"][1]["from"]}));
  expect_values_of(records_in(steps[1].out), {1, 3, 4});
  EXPECT_EQ("3\n", steps[2].out);
}

TEST(SsidRemove, OfTheFirstOfEightMovesAllOthers) {
  const auto steps = run_with_word(
      {distinct(8) + "wlanctl ssid remove 2.4g 1 --yes >/dev/null", "wlanctl dump 2.4g --secrets --json"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  expect_values_of(records_in(steps[1].out), {2, 3, 4, 5, 6, 7, 8});
}

TEST(SsidRemove, OfTheLastOnlyCountsDown) {
  const auto steps = run_with_word({"wlanctl ssid remove 2.4g 2 --yes --json"});
  const Json band = document_in(steps[0].out)["data"]["bands"][0];
  EXPECT_EQ(Json::parse(R"([{"key":"BssidNum","index":-1,"before":"2","after":"1"}])"), band["changes"]);
  EXPECT_EQ(1, band["count"]);
}

TEST(SsidRemove, KeepsTheOnlyOne) {
  const auto steps = run_with_word({"wlanctl ssid remove 2.4g 2 --yes >/dev/null", "wlanctl ssid remove 2.4g 1 --yes"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err,
              HasSubstr("SSID 1 \"Gateway-Home\" (ra0) is the only one of 2.4g; wlanctl ssid disable 2.4g 1 "
                        "takes it off the air"));
}

TEST(SsidRemove, SaysWhatIsLostAndWhoGetsAnotherInterface) {
  const auto steps =
      run_with_word({"wlanctl set 2.4g BssidNum=3 SSID:3=Cellar >/dev/null; wlanctl ssid remove 2.4g "
                     "Gateway-Guest --yes"});
  EXPECT_THAT(steps[0].out, HasSubstr("2.4g: SSID 2 \"Gateway-Guest\" (ra1), WPA2PSK/AES, goes with its values:\n"));
  EXPECT_THAT(steps[0].out, HasSubstr(" MaxStaNum=32 "));
  EXPECT_THAT(steps[0].out, HasSubstr(" WPAPSK=********"));
  EXPECT_THAT(steps[0].out, HasSubstr("\n  SSID 3 \"Cellar\" (ra2) becomes SSID 2 (ra1)\n"));
  EXPECT_THAT(steps[0].err, HasSubstr("the SSIDs behind it have other interfaces and MAC addresses after the apply"));
  for (const std::string& line : lines_of(steps[0].out)) EXPECT_LE(line.size(), 80u) << line;
}

TEST(SsidRemove, WithoutATerminalNeedsAYes) {
  const auto steps = run_with_word({"wlanctl ssid remove 2.4g 2 </dev/null", "wlanctl get 2.4g BssidNum",
                                    "wlanctl ssid remove 2.4g 2 --json </dev/null"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].out, HasSubstr("goes with its values"));
  EXPECT_THAT(steps[0].err,
              HasSubstr("this would take SSID 2 \"Gateway-Guest\" (ra1) of 2.4g away, with its values; if "
                        "that is meant, say so with --yes; wlanctl ssid disable keeps them"));
  EXPECT_EQ("2\n", steps[1].out);
  EXPECT_EQ(1, steps[2].status);
}

// On a terminal of its own, with that typed.
std::string typed(const std::string& text, const std::string& command) {
  return std::string("'") + PYTHON_PROGRAM +
         "' -c '\nimport os, pty, sys\npid, tty = pty.fork()\nif pid == 0: "
         "os.execvp(\"sh\", [\"sh\", \"-c\", sys.argv[2]])\nseen = b\"\"\nsaid = False\nwhile True:\n  try: part = "
         "os.read(tty, 4096)\n  except OSError: break\n  if not part: break\n  seen += part\n  if not said and "
         "seen.endswith(b\": \"):\n    os.write(tty, sys.argv[1].encode() + b\"\\n\")\n    said = "
         "True\nsys.stdout.write("
         "seen.decode().replace(\"\\r\", \"\"))\nsys.exit(os.waitstatus_to_exitcode(os.waitpid(pid, 0)[1]))' '" +
         text + "' '" + command + "'";
}

TEST(SsidRemove, AsksAtATerminal) {
  const auto steps = run_with_word({typed("no", "wlanctl ssid remove 2.4g 2"), "wlanctl get 2.4g BssidNum",
                                    typed("yes", "wlanctl ssid remove 2.4g 2"), "wlanctl get 2.4g BssidNum"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].out, HasSubstr("goes with its values"));
  EXPECT_THAT(steps[0].out, HasSubstr("Take it away? yes or no: "));
  EXPECT_THAT(steps[0].out, HasSubstr("nothing is taken away"));
  EXPECT_EQ("2\n", steps[1].out);
  EXPECT_EQ(0, steps[2].status) << steps[2].out;
  EXPECT_EQ("1\n", steps[3].out);
}

TEST(SsidAdd, AsksForThePassphraseAtATerminalAndDoesNotShowIt) {
  const auto steps =
      run_with_word({typed("hush-hush-1", "wlanctl ssid add 2.4g Kitchen"), "wlanctl get 2.4g WPAPSK:3"});
  EXPECT_EQ(0, steps[0].status) << steps[0].out;
  EXPECT_THAT(steps[0].out, HasSubstr("passphrase of Kitchen: \n"));
  EXPECT_THAT(steps[0].out, Not(HasSubstr("hush")));
  EXPECT_EQ("hush-hush-1\n", steps[1].out);
}

TEST(SsidRemove, NamesListsOfWhichItDoesNotKnowWhoseTheyAre) {
  const auto steps =
      run_with_word({"sed -i 's/^IdleTimeout=.*/Unheard_Of=1;2;3/' " + std::string(kDat) +
                         "; library_probe init 0 >/dev/null; wlanctl ssid remove 2.4g 1 --yes >/dev/null",
                     "wlanctl dump 2.4g | grep Unheard"});
  EXPECT_THAT(steps[0].err, HasSubstr("Unheard_Of has several values and is none of the settings; they stay where they "
                                      "are"));
  EXPECT_EQ("  Unheard_Of=1;2;3\n", steps[1].out);
}

TEST(SsidRemove, AndAddGiveTheStoreBackItsCount) {
  const auto steps =
      run_with_word({"wlanctl ssid add 2.4g Kitchen --passphrase-file word >/dev/null; wlanctl ssid remove 2.4g "
                     "Kitchen --yes",
                     "wlanctl show 2.4g | grep -c Kitchen"});
  EXPECT_THAT(steps[0].out, HasSubstr("next: wlanctl apply 2.4g\n"));
  EXPECT_EQ("0\n", steps[1].out);
}

// Every value that is stored is a place to be killed at, or every so many; the last turn is not killed any more.
std::string killed_at_each(const std::string& words, int step) {
  return "words='" + words +
         "'; wlanctl dump --secrets >before; n=1; while at_setter \"kill $n\" wlanctl ssid $words " +
         ">/dev/null 2>&1; [ $? = 137 ]; do wlanctl set 2.4g RTSThreshold=2347 >/dev/null 2>said; wlanctl dump "
         "--secrets | " +
         "cmp - before || echo $n; grep -q 'ended in the middle' said || echo silent $n; [ ! -e /run/wlanctl-storing ] "
         "|| echo " +
         "left $n; n=$((n + " + std::to_string(step) +
         ")); done; echo $((n > 40)); wlanctl dump --secrets | cmp -s - before " + "|| echo changed";
}

TEST(SsidKilled, AtAnySetterOfAnAddIsPutBackByTheNextVerb) {
  const auto steps = run_with_word({killed_at_each("add 2.4g Kitchen --passphrase-file word", 1)});
  EXPECT_EQ("1\nchanged\n", steps[0].out);
}

TEST(SsidKilled, OnOneBandOfTwoIsPutBackOnBoth) {
  const auto steps = run_with_word({killed_at_each("add --both Kitchen --passphrase-file word", 11)});
  EXPECT_EQ("1\nchanged\n", steps[0].out);
}

TEST(SsidKilled, AtAnySetterOfARemovalIsPutBackByTheNextVerb) {
  const auto steps = run_with_word({distinct(2) + killed_at_each("remove 2.4g 1 --yes", 1)});
  EXPECT_EQ("1\nchanged\n", steps[0].out);
}

TEST(SsidKilled, IsToldByWhoOnlyLooksAndNothingIsDone) {
  const auto steps =
      run_with_word({"at_setter 'kill 5' wlanctl ssid add 2.4g Kitchen --passphrase-file word",
                     "segment 2.4g >before; wlanctl ssid list 2.4g; segment 2.4g | cmp - before; ls /run | grep "
                     "storing"});
  EXPECT_EQ(137, steps[0].status);
  EXPECT_THAT(steps[1].err,
              HasSubstr("wlanctl ssid is storing settings of 2.4g, or ended in the middle; then the next wlanctl that "
                        "changes something puts back what it had set"));
  EXPECT_THAT(steps[1].out, testing::EndsWith("wlanctl-storing\n"));
}

TEST(SsidKilled, LeavesWhatOthersHaveSetSince) {
  const auto steps = run_with_word(
      {"n=1; while at_setter \"kill $n\" wlanctl ssid remove 2.4g 1 --yes >/dev/null 2>&1; [ $? = 137 ] && ! "
       "wlanctl get "
       "2.4g SSID:1 2>/dev/null | grep -q Guest; do wlanctl set 2.4g RTSThreshold=2347 >/dev/null 2>&1; "
       "n=$((n + 1)); done; "
       "wlanctl get 2.4g SSID:1 WscDefaultSSID:1",
       "library_probe attach put SSID1 0 -1 Mine >/dev/null; wlanctl set 2.4g RTSThreshold=2347 >/dev/null; "
       "wlanctl get "
       "2.4g SSID:1 WscDefaultSSID:1 BssidNum"});
  EXPECT_EQ("SSID:1            Gateway-Guest\nWscDefaultSSID:1  Gateway-Home\n", steps[0].out);
  EXPECT_EQ("SSID:1            Mine\nWscDefaultSSID:1  Gateway-Home\nBssidNum          2\n", steps[1].out);
}

TEST(SsidKilled, BeforeARevertLeavesTheFilesValues) {
  const auto steps =
      run_with_word({"at_setter 'kill 5' wlanctl ssid add 2.4g Kitchen --passphrase-file word; wlanctl revert "
                     "2.4g --force >/dev/null; ls /run | grep -c storing; wlanctl diff 2.4g 2>/dev/null | head -1"});
  EXPECT_THAT(steps[0].out, HasSubstr("0\n2.4g: the store is as the dat file"));
}

TEST(SsidKilled, AndDamagedIsToldAndForgotten) {
  const auto steps =
      run_with_word({"at_setter 'kill 5' wlanctl ssid add 2.4g Kitchen --passphrase-file word; echo more "
                     ">>/run/wlanctl-storing; wlanctl set 2.4g RTSThreshold=2347 >/dev/null; echo $?; wlanctl ssid "
                     "disable 2.4g 1 >/dev/null; echo $?; ls /run | grep storing"});
  EXPECT_EQ("0\n0\n", steps[0].out);
  EXPECT_THAT(steps[0].err, AllOf(HasSubstr("is damaged"), Not(HasSubstr("put back"))));
}

// The file is right but for its boot: what the store is now, that boot did not leave.
TEST(SsidKilled, InAnotherBootIsForgotten) {
  const std::string another =
      std::string("'") + PYTHON_PROGRAM +
      "' -c 'p = \"/run/wlanctl-storing\"; head, rest = open(p).read().split(\"\\n\", 1); text = \"another ssid\\n\" + "
      "rest.split(\"\\n\", 1)[1]; s = 0xcbf29ce484222325\nfor b in text.encode(): s = (s ^ b) * 0x100000001b3 % 2**64\n"
      "open(p, \"w\").write(head.rsplit(\" \", 1)[0] + \" %d\\n\" % s + text)'; ";
  const auto steps = run_with_word(
      {"at_setter 'kill 5' wlanctl ssid add 2.4g Kitchen --passphrase-file word; cp /run/wlanctl-storing kept; " +
           another + "wlanctl set 2.4g RTSThreshold=2347 >/dev/null",
       "cp kept /run/wlanctl-storing; wlanctl set 2.4g RTSThreshold=2347 >/dev/null"});
  EXPECT_THAT(steps[0].err, Not(HasSubstr("ended in the middle")));
  EXPECT_THAT(steps[1].err, HasSubstr("ended in the middle"));
}

TEST(SsidRefused, InTheMiddleIsPutBackAtOnceOnBothBands) {
  const auto steps =
      run_with_word({"wlanctl dump --secrets >before; for n in 1 7 40 55; do at_setter \"refuse $n\" wlanctl ssid "
                     "add --both Kitchen --passphrase-file word >/dev/null; echo $?; wlanctl dump --secrets | cmp - "
                     "before; done; ls /run | grep storing"});
  EXPECT_EQ("1\n1\n1\n1\n", steps[0].out);
  EXPECT_THAT(steps[0].err, HasSubstr("did not take all of it"));
  EXPECT_THAT(steps[0].err, HasSubstr("everything is put back; try again"));
}

}  // namespace
}  // namespace wlanctl_test
