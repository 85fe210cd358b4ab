// import that is killed in the middle: nothing stays half set.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

// Between each two writes of the library, of the bands one after the other: nothing is left half set.
TEST(ImportKilled, LeavesNothingHalfSet) {
  const std::string text =
      "{\"wlanctl_settings\": 1, \"bands\": {\"2.4g\": {\"settings\": {\"Channel\": 11, \"SSID:1\": \"Attic\", "
      "\"AutoChannelSkipList\": \"1;2\", \"BssidNum\": 3, \"WirelessMode\": \"4\", \"AuthMode:1\": \"OPEN\", "
      "\"EncrypType:1\": \"NONE\", \"AccessControlList:1\": \"02:00:00:00:01:00;02:00:00:00:01:01\"}}, \"5g\": "
      "{\"settings\": {\"Channel\": 40, \"SSID:2\": \"Cellar\"}}}}\n";
  const Result result =
      run_story("library_probe init 0 init 1 >/dev/null 2>&1; wlanctl export >before.json;" + into("f.json", text) +
                "step=0; while :; do step=$((step + 1)); WLANCTL_STEP=$step LD_PRELOAD=\"$LD_PRELOAD:" +
                built("lib/libkill_at_step.so") +
                "\" wlanctl import f.json >/dev/null 2>&1; status=$?; [ $status = 137 ] || break;"
                "  [ -e /var/run/wlanctl-storing ] || echo no note at $step;"
                "  wlanctl export 2.4g 2>told >/dev/null; grep -q 'is storing settings' told || echo untold at $step;"
                "  wlanctl set 2.4g TxPower=100 >/dev/null 2>told; grep -q 'ended in the middle' told || echo "
                "unfinished at $step;"
                "  [ -e /var/run/wlanctl-storing ] && echo note left at $step;"
                "  wlanctl export 2>/dev/null | cmp - before.json || echo half set at $step; done;"
                "echo steps $((step > 10)) status $status; wlanctl get 5g SSID:2; ls /var/run | grep storing");
  EXPECT_EQ("steps 1 status 0\nCellar\n", result.out) << result.err;
}

TEST(ImportKilled, BeforeItsNoteIsThereChangesNothing) {
  const Result result =
      run_story("library_probe init 0 init 1 >/dev/null 2>&1; wlanctl export >before.json;" +
                into("f.json", settings("\"Channel\": 11, \"TxPower\": 50")) +
                "killed_at 'before 1 /var/run/wlanctl-storing' wlanctl import f.json; echo $?;"
                "wlanctl export | cmp - before.json && echo same;"
                "killed_at 'after 1 /var/run/wlanctl-storing' wlanctl import f.json; echo $?;"
                "wlanctl set 2.4g RTSThreshold=2347; wlanctl export | cmp - before.json && echo same");
  EXPECT_THAT(result.out, testing::StartsWith("137\nsame\n137\n"));
  EXPECT_THAT(result.out, testing::EndsWith("same\n"));
  EXPECT_THAT(result.err,
              HasSubstr("wlanctl import ended in the middle of storing settings of 2.4g; nothing of it is in"));
}

// A test's call of wlanctl that is killed behind the given write.
std::string killed_behind(int step, const std::string& call) {
  return "WLANCTL_STEP=" + std::to_string(step) + " LD_PRELOAD=\"$LD_PRELOAD:" + built("lib/libkill_at_step.so") +
         "\" \"$WLANCTL_PROGRAM\" " + call + ";";
}

// What somebody else has set since is not the killed one's.
TEST(ImportKilled, LeavesWhatSomebodyElseHasSetSince) {
  const auto steps =
      run_live({into("f.json", settings("\"Channel\": 11, \"TxPower\": 50")) +
                    killed_behind(99, "import f.json --dry-run >/dev/null") + killed_behind(4, "import f.json"),
                "wlanctl get 2.4g Channel TxPower; library_probe attach put Channel 0 -1 3 >/dev/null",
                "wlanctl set 2.4g RTSThreshold=2347 >/dev/null", "wlanctl get 2.4g Channel TxPower"});
  EXPECT_EQ(137, steps[0].status);
  EXPECT_EQ("Channel  11\nTxPower  50\n", steps[1].out);
  EXPECT_THAT(steps[2].err, HasSubstr("what it had set is put back, 1 value"));
  EXPECT_EQ("Channel  3\nTxPower  100\n", steps[3].out);
}

// A revert is what the operator wants now; what the killed one found is older.
TEST(ImportKilled, IsNotPutBackOverARevert) {
  const auto steps = run_live({into("f.json", settings("\"Channel\": 6, \"TxPower\": 50")) +
                                   "wlanctl set 2.4g Channel=1 >/dev/null;" + killed_behind(4, "import f.json"),
                               "wlanctl revert 2.4g >/dev/null; wlanctl set 2.4g RTSThreshold=2347 >/dev/null",
                               "wlanctl get 2.4g Channel TxPower; ls /var/run/wlanctl-storing"});
  EXPECT_EQ(137, steps[0].status);
  EXPECT_EQ("", steps[1].err);
  EXPECT_EQ("Channel  6\nTxPower  100\n", steps[2].out);
}

TEST(ImportKilled, ANoteThatIsDamagedIsToldAndGone) {
  const auto steps = run_live({"umask 077; echo nonsense >/var/run/wlanctl-storing; wlanctl set 2.4g Channel=11",
                               "ls /var/run/wlanctl-storing"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("is damaged; look whether the settings are as they should"));
  EXPECT_NE(0, steps[1].status);
}

TEST(ImportKilled, ANoteThatIsDamagedIsToldByWhoLooks) {
  for (const char* const note : {"/var/run/wlanctl-storing", "/var/run/wlanctl-filing"}) {
    const auto steps =
        run_live({std::string("umask 077; echo nonsense >") + note + "; wlanctl status 2.4g", "wlanctl diff"});
    for (const Result& step : steps)
      EXPECT_THAT(step.err, HasSubstr(std::string("what ") + note + " says of a wlanctl"));
  }
}

TEST(ImportKilled, ANoteOfDatFilesThatIsDamagedIsToldAndGone) {
  const auto steps = run_live(
      {"umask 077; echo nonsense >/var/run/wlanctl-filing; wlanctl set 2.4g Channel=11", "ls /var/run/wlanctl-filing"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("what /var/run/wlanctl-filing says of a wlanctl that ended between the writes of "
                                      "both dat files is damaged"));
  EXPECT_NE(0, steps[1].status);
}

// Another process gets in between: what was set goes back, what is the other's stays.
TEST(Import, TakesBackWhatItHadSetWhenASetterRefuses) {
  const auto steps = run_live({into("f.json", settings("\"Channel\": 11,\n\"HideSSID:2\": 1")) +
                                   "WLANCTL_STEP_RUN='library_probe attach put BssidNum 0 -1 1 >/dev/null'; export "
                                   "WLANCTL_STEP_RUN;" +
                                   killed_behind(2, "import f.json"),
                               "wlanctl get 2.4g Channel BssidNum; ls /var/run/wlanctl-storing"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("f.json:4: HideSSID:2 cannot be \"1\": The ssid index should be from 1 to "
                                      "BssidNum:1; another process changed the store; try again"));
  EXPECT_EQ("Channel   6\nBssidNum  1\n", steps[1].out);
}

TEST(Import, IsDoneOnlyWhenAllOfItIsThere) {
  const auto steps = run_live({into("f.json", settings("\"Channel\": 11,\n\"TxPower\": 50")) +
                                   "WLANCTL_STEP_RUN='library_probe attach put Channel 0 -1 3 >/dev/null'; export "
                                   "WLANCTL_STEP_RUN;" +
                                   killed_behind(3, "import f.json"),
                               "wlanctl get 2.4g Channel TxPower"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("f.json:3: Channel cannot be \"11\": it is another one in the store now"));
  EXPECT_EQ("Channel  3\nTxPower  100\n", steps[1].out);
}

}  // namespace
}  // namespace wlanctl_test
