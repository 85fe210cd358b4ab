// The history of a wlanctl that is killed at each step of writing it, and of two at once: old or new entries, never
// half ones, and never in the way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::IsEmpty;

constexpr char kFolder[] = "/etc/Wireless/wlanctl-history";

// Kills a call before each of its steps in the history's folder, one step more each time, until it comes through. After
// each: what log says, and what it had to skip. `before` comes before each call, `after` behind it.
std::string killed_everywhere(const std::string& call, const std::string& before, const std::string& after = "") {
  return "n=0; s=137; while [ $s = 137 ] && [ $n -lt 40 ]; do n=$((n + 1));" + before + " killed_in \"$n " + kFolder +
         "\" " + call + " >/dev/null 2>&1; s=$?; wlanctl log --json >l.json || echo log failed; cat l.json >>logs; " +
         after + " done; [ $n -ge 12 ] && echo every step, exit code $s; ls " + kFolder +
         " | grep -vx 'entry-[0-9]*'; ";
}

struct Told {
  std::string out;
  std::string err;
  std::vector<Json> logs;
};

Told story(const std::string& script) {
  const Result result = run_story("wlanctl save 2.4g >/dev/null 2>&1;" + script + "echo == logs; cat logs");
  Told told = {result.out.substr(0, result.out.find("== logs")), result.err, {}};
  const std::string logs = behind(result.out, "logs");
  for (size_t at = 0; at < logs.size();) {
    const size_t end = logs.find("\n}\n", at);
    if (end == std::string::npos) break;
    told.logs.push_back(document_in(logs.substr(at, end + 3 - at)));
    at = end + 3;
  }
  return told;
}

void expect_whole(const Told& told, const std::string& operation) {
  for (const Json& log : told.logs) {
    EXPECT_THAT(log["notes"], IsEmpty());
    const Json& newest = log["data"]["entries"][0];
    EXPECT_TRUE(newest["state"] != "begun" || newest["operation"] == operation || newest["operation"] == "rollback")
        << newest;
  }
}

// Begun and completed: each is made in its folder, written, synced, renamed, and the folder synced; what is left of the
// call before is removed.
constexpr char kEveryStep[] = "every step, exit code 0\n";

TEST(HistoryKilled, BySaveIsOldOrNew) {
  const Told told = story(killed_everywhere("wlanctl save 2.4g", "wlanctl set 2.4g Channel=$n >/dev/null 2>&1;"));
  EXPECT_EQ(kEveryStep, told.out);
  expect_whole(told, "save");
  EXPECT_EQ("done", told.logs.back()["data"]["entries"][0]["state"]);
}

TEST(HistoryKilled, ByApplyIsOldOrNewAndTheNextApplyWorks) {
  const Told told = story(killed_everywhere("wlanctl apply 2.4g", "wlanctl set 2.4g Channel=$n >/dev/null 2>&1;",
                                            "wlanctl apply 2.4g >/dev/null 2>&1 || echo next failed;"));
  EXPECT_EQ(kEveryStep, told.out);
  expect_whole(told, "apply");
}

TEST(HistoryKilled, ByRevertIsOldOrNew) {
  const Told told = story(killed_everywhere("wlanctl revert 2.4g", "wlanctl set 2.4g Channel=$n >/dev/null 2>&1;"));
  EXPECT_EQ(kEveryStep, told.out);
  expect_whole(told, "revert");
}

TEST(HistoryKilled, ByUndoLeavesTheStoreAsItWasOrUndone) {
  const Told told = story(killed_everywhere(
      "wlanctl undo", "wlanctl set 2.4g Channel=1 >/dev/null 2>&1; wlanctl save 2.4g >/dev/null 2>&1;",
      "case $(wlanctl get 2.4g Channel) in 1 | 6) ;; *) echo neither ;; esac;"
      "wlanctl set 2.4g Channel=6 >/dev/null 2>&1; wlanctl save 2.4g >/dev/null 2>&1;"));
  EXPECT_EQ(kEveryStep, told.out);
  expect_whole(told, "undo");
}

TEST(UndoKilled, WhileItSetsValuesIsAllOrNothing) {
  const Result result = run_story(
      "for n in 1 2 3 4 5 6; do wlanctl set 2.4g SSID:1=Kitchen Channel=1 RTSThreshold=2000 >/dev/null 2>&1; wlanctl "
      "save 2.4g "
      ">/dev/null 2>&1; WLANCTL_STEP=$n LD_PRELOAD=\"$LD_PRELOAD:" +
      built("lib/libkill_at_step.so") +
      "\" wlanctl undo >/dev/null 2>&1; echo $? >>codes; wlanctl set 2.4g HideSSID:2=0 >/dev/null 2>&1; wlanctl get "
      "2.4g SSID:1 "
      "Channel RTSThreshold | tr -s ' \\n' ' '; echo; wlanctl revert 2.4g >/dev/null 2>&1; wlanctl set 2.4g "
      "SSID:1=Gateway-Home Channel=6 RTSThreshold=2347 >/dev/null 2>&1; wlanctl save 2.4g >/dev/null 2>&1; done; grep "
      "-c 137 codes");
  const Words lines = lines_of(result.out);
  ASSERT_EQ(7u, lines.size()) << result.out;
  for (size_t i = 0; i < 6; ++i) {
    EXPECT_THAT(lines[i], testing::AnyOf("SSID:1 Kitchen Channel 1 RTSThreshold 2000 ",
                                         "SSID:1 Gateway-Home Channel 6 RTSThreshold 2347 "));
  }
  EXPECT_GE(std::stoi(lines[6]), 3);
}

TEST(HistoryKilled, ByAnApplyThatIsToBeConfirmedIsRolledBackWithAnEntry) {
  const Told told = story(
      killed_everywhere("wlanctl apply 2.4g --confirm 600", "wlanctl set 2.4g Channel=1 >/dev/null 2>&1;",
                        "if [ $s = 137 ]; then gone 2.4g; no_guardian; fi; wlanctl get 2.4g Channel "
                        ">>channels; wlanctl diff 2.4g --in-force --exit-code >/dev/null 2>&1; echo $? >>diffs;") +
      "wlanctl rollback >/dev/null; sort channels | uniq -c | tr -s ' '; ");
  expect_whole(told, "apply");
  // Before the first change nothing is touched, and the store keeps what was set.
  EXPECT_THAT(told.out, testing::StartsWith(kEveryStep));
  EXPECT_THAT(told.out, testing::ContainsRegex("^every step, exit code 0\n [0-9]+ 1\n [0-9]+ 6\n$"));
}

TEST(HistoryKilled, ByARollBackIsMadeUpForByTheNextOne) {
  const Told told = story(
      killed_everywhere("wlanctl rollback 2.4g",
                        "wlanctl set 2.4g Channel=1 >/dev/null 2>&1; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1;",
                        "if [ $s = 137 ]; then wlanctl rollback 2.4g >/dev/null 2>&1; fi; wlanctl get 2.4g Channel;"));
  EXPECT_THAT(told.out, testing::MatchesRegex("(6\n)+every step, exit code 0\n"));
  expect_whole(told, "rollback");
}

// At each step of all its files: what it waits for, what it says, and its entry.
TEST(HistoryKilled, ByAConfirmationIsMadeUpForByTheNextOne) {
  const Result result = run_story(
      "n=0; s=137; while [ $s = 137 ] && [ $n -lt 40 ]; do n=$((n + 1)); wlanctl set 2.4g Channel=6 >/dev/null 2>&1;"
      "wlanctl apply 2.4g >/dev/null 2>&1; wlanctl set 2.4g Channel=1 >/dev/null 2>&1; wlanctl apply 2.4g --confirm "
      "600 "
      ">/dev/null 2>&1; killed_in \"$n /\" wlanctl confirm 2.4g >said 2>&1; s=$?; wlanctl log --json >l.json || echo "
      "no "
      "log; [ $s = 137 ] && { grep -q 'confirmed; the settings stay' said && ! grep -q '\"confirmed\"' l.json && echo "
      "early at $n; wlanctl confirm 2.4g >/dev/null || echo refused at $n; }; no_guardian; wlanctl get 2.4g Channel; "
      "wlanctl log --json -n 1 | grep '\"state\"'; done | sort | uniq -c | tr -s ' '; ls " +
      std::string(kFolder) + " | grep -vx 'entry-[0-9]*'");
  EXPECT_THAT(result.out, testing::MatchesRegex(" [0-9][0-9]+ +\"state\": \"confirmed\",\n [0-9][0-9]+ 1\n"))
      << result.err;
}

TEST(HistoryKilled, ByTheFirstOfAllLeavesAFolderThatTheNextOneUses) {
  const Result result = run_story("wlanctl show >/dev/null 2>&1; for n in 1 2 3; do killed_in \"$n " +
                                  std::string(kFolder) + "\" wlanctl save 2.4g >/dev/null 2>&1; echo $?; rm -rf " +
                                  kFolder + "/*; done; wlanctl save 2.4g >/dev/null 2>&1; wlanctl log | wc -l");
  EXPECT_EQ("137\n137\n137\n2\n", result.out);
}

TEST(HistoryKilled, WhenTheOldestGoIsNotMoreThanItMayBe) {
  const Told told = story("for i in $(seq 100); do wlanctl save 2.4g >/dev/null 2>&1; done;" +
                          killed_everywhere("wlanctl save 2.4g", ":;",
                                            "ls " + std::string(kFolder) + " | grep -cx 'entry-[0-9]*' >>counts;") +
                          "sort -n counts | tail -n 1; ");
  EXPECT_THAT(told.out, testing::EndsWith("\n100\n"));
  for (const Json& log : told.logs) EXPECT_THAT(log["notes"], IsEmpty());
}

TEST(HistoryOfTwo, AtOnceHasAllTheirEntries) {
  const Result result = run_story(
      "wlanctl show >/dev/null 2>&1; for who in a b c; do (for i in 1 2 3 4 5; do SUDO_USER=$who wlanctl save 2.4g "
      ">/dev/null 2>&1 || echo failed; done) & done; wait; wlanctl log -n 100 >log; grep -c save log; for who in a b "
      "c; do "
      "grep -c \"by $who\" log; done; cut -d ' ' -f 1 log | grep -v '^$' | sort -n | uniq | wc -l");
  EXPECT_EQ("15\n5\n5\n5\n15\n", result.out) << result.err;
}

TEST(HistoryOfTwo, AtOnceIsReadWhole) {
  const Result result = run_story(
      "wlanctl save 2.4g >/dev/null 2>&1; (for i in $(seq 20); do wlanctl save 2.4g >/dev/null 2>&1; done; : >done) &\n"
      "until [ -e done ]; do wlanctl log 2>&1 >/dev/null; done; wait");
  EXPECT_EQ("", result.out) << result.err;
}

}  // namespace
}  // namespace wlanctl_test
