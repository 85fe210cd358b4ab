// Passphrases and keys: taken from where nobody looks on, and shown to nobody who does not ask.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

// Every secret begins like that; none is a value of the dat files.
constexpr char kSecret[] = "hush-hush";

TEST(Secret, IsMaskedWhereverItIsShown) {
  const std::vector<Result> steps = run_steps({
      "printf 'hush-hush-1\\nhush-hush-002\\nhush-hush-3\\nhush-hush-4\\n' |"
      " wlanctl set 2.4g WPAPSK:1=- Key1Str:1=- RADIUS_Key:1=- WdsKey:1=-",
      "wlanctl set 2.4g WPAPSK:1=hush-hush-5 --json",
      "wlanctl show 2.4g --json; wlanctl show; wlanctl show 2.4g 1",
      "wlanctl diff --json; wlanctl diff 2.4g",
      "wlanctl dump 2.4g --json; wlanctl dump 2.4g",
      "wlanctl apply 2.4g --dry-run --json; wlanctl apply 2.4g --dry-run",
      "wlanctl check --json /etc/Wireless/RT2860AP/RT2860AP.dat",
      "wlanctl revert",
  });
  for (size_t i = 0; i < steps.size(); ++i) {
    EXPECT_THAT(steps[i].out + steps[i].err, Not(HasSubstr(kSecret))) << i;
  }
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].out, HasSubstr("2.4g WPAPSK:1 = ********  (was ********)\n"));
  EXPECT_THAT(steps[2].out, AllOf(HasSubstr("\"WPAPSK\": \"********\""), HasSubstr("\"WdsKey\": \"********\"")));
  EXPECT_THAT(steps[3].out, HasSubstr("WPAPSK:1      ******** -> ******** (new)\n"));
}

TEST(Secret, IsShownToWhoAsks) {
  const std::vector<Result> steps =
      run_steps({"echo hush-hush-1 | wlanctl set 2.4g WPAPSK:1=-", "wlanctl show 2.4g 1 --secrets",
                 "wlanctl diff 2.4g --secrets --json", "wlanctl get 2.4g WPAPSK:1"});
  EXPECT_THAT(steps[1].out, HasSubstr("hush-hush-1"));
  EXPECT_THAT(steps[2].out, AllOf(HasSubstr("hush-hush-1"), HasSubstr("sample-passphrase-1")));
  EXPECT_EQ("hush-hush-1\n", steps[3].out);
}

TEST(Secret, IsNotInARefusal) {
  const std::string longer = std::string(kSecret) + std::string(60, 'x');
  const std::vector<Result> steps = run_steps({
      "echo " + longer + " | wlanctl set 2.4g WPAPSK:1=-",
      "echo " + longer + " >file; wlanctl set 2.4g --file WPAPSK:1=file --json",
      "echo 'hush-hush$(reboot)' | wlanctl set 2.4g WPAPSK:1=- --json",
      "echo 'hush-hush;x' | wlanctl set 2.4g RADIUS_Key:1=- Key1Str:1=hush-hush=",
      "echo hush | wlanctl set 2.4g RADIUS_Key:1=-",
      "wlanctl set 2.4g WPAPSK=hush-hush Nothing=hush-hush WPAPSK:9=hush-hush --json",
      "wlanctl set 2.4g WPAPSK:1 hush-hush",
  });
  for (size_t i = 0; i < steps.size(); ++i) {
    EXPECT_EQ(1, steps[i].status) << i << steps[i].out;
    EXPECT_THAT(steps[i].out + steps[i].err, Not(HasSubstr("hush"))) << i;
  }
}

TEST(Secret, IsInNoJournalAndNoTraceThoughTracingIsOn) {
  const std::vector<Result> steps =
      run_steps({"wlanctl trace level 8 >/dev/null; wlanctl set 2.4g Channel=6 >/dev/null",
                 "printf 'hush-hush-1\\nhush-hush-002\\n' | wlanctl set 2.4g WPAPSK:1=- Key1Str:1=- && wlanctl save",
                 "grep -ls hush-hush /run/gateway-sim/journal /tmp/* /proc/zq2810/*; true",
                 "grep -c hush-hush /etc/Wireless/RT2860AP/RT2860AP.dat"});
  EXPECT_EQ(0, steps[1].status);
  EXPECT_THAT(steps[1].out + steps[1].err, Not(HasSubstr(kSecret)));
  EXPECT_EQ("", steps[2].out);
  EXPECT_EQ("2\n", steps[3].out);
}

TEST(Secret, IsMaskedOfEveryKeyThatHasOne) {
  std::string script;
  const Json found = json_of("keys 2.4g");
  for (const Json& key : found["data"]["keys"]) {
    if (!key["secret"]) continue;
    script += "wlanctl set 2.4g " + key["key"].get<std::string>() + ":1=hush-hush-9\n";
  }
  EXPECT_EQ(7u, lines_of(script).size());
  const Result result = run(script + "wlanctl show 2.4g; wlanctl diff 2.4g");
  EXPECT_EQ(0, result.status);
  EXPECT_THAT(result.out + result.err, Not(HasSubstr(kSecret)));
}

TEST(Secret, IsNotRepeatedWhereItStandsInTheWrongPlace) {
  const std::vector<Result> steps = run_steps({
      "wlanctl set WPAPSK:1=hush-hush",
      "wlanctl set WPAPSK:1=hush-hush --json",
      "wlanctl set 2.4g WPAPSK:hush-hush",
      "wlanctl set 2.4g WPAPSK:hush-hush=x",
      "wlanctl set 2.4g --file WPAPSK:1=hush-hush",
      "wlanctl get 2.4g WPAPSK=hush-hush WPAPSK:1=hush-hush --json",
      "wlanctl show 2.4g WPAPSK:1=hush-hush",
      "wlanctl WPAPSK:1=hush-hush",
  });
  for (size_t i = 0; i < steps.size(); ++i) {
    EXPECT_NE(0, steps[i].status) << i;
    EXPECT_THAT(steps[i].out + steps[i].err, Not(HasSubstr("hush"))) << i;
  }
}

TEST(Secret, IsNotInTheListOfProcesses) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; hold_store 0x12348 &\n"
          "until [ -e held ]; do sleep 0.02; done\n"
          "\"$WLANCTL_PROGRAM\" set 2.4g WPAPSK:1=hush-hush-1 >/dev/null & set=$!\n"
          "until tr '\\0' ' ' </run/gateway-sim/proc/$set/cmdline | grep -q 'WPAPSK:1=\\*'; do\n"
          "[ -e /run/gateway-sim/proc/$set ] || { echo gone; break; }; sleep 0.02; done; touch done; wait");
  EXPECT_EQ("", result.out) << result.err;
}

TEST(Secret, OfAKeyThatNobodyKnowsIsMaskedToo) {
  const TestFolder folder;
  std::string dat = "Default\nBssidNum=1\nChannel=6\nReloadFlag=0\n";
  for (const char* const key : {"ApCliWPAPSK", "WPAPSK", "RADIUS_Key", "RADIUS_Acct_Key", "Key1Str", "ApCliKey1Str",
                                "WscVendorPinCode", "AdminPassword"}) {
    dat += std::string(key) + "=hush-hush\n";
  }
  write_file(folder / "dat", dat);
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 >/dev/null; wlanctl dump 2.4g",
                 "sed -i 's/=hush-hush$/=hush-other/' /etc/Wireless/RT2860AP/RT2860AP.dat; wlanctl diff 2.4g",
                 "wlanctl diff 2.4g --json", "wlanctl apply 2.4g --dry-run", "wlanctl apply 2.4g --dry-run --json"},
                {"--dat24", folder / "dat"});
  EXPECT_THAT(steps[1].out, HasSubstr("8 values differ"));
  for (const Result& step : steps) EXPECT_THAT(step.out + step.err, Not(HasSubstr("hush"))) << step.out;
}

TEST(Secret, IsAskedForWithoutAnEchoAtATerminal) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; mkfifo typed; : >seen\n"
          "script -qfec 'wlanctl set 2.4g WPAPSK:1=-' seen <typed >/dev/null & typing=$!\n"
          "exec 3>typed; until grep -q 'WPAPSK:1: ' seen; do sleep 0.02; done; echo hush-hush-1 >&3\n"
          "wait $typing; echo $?; exec 3>&-; grep -c hush seen; wlanctl get 2.4g WPAPSK:1");
  EXPECT_EQ("0\n0\nhush-hush-1\n", result.out) << result.err;
}

TEST(Secret, IsNoLongerAskedForAfterCtrlCAndTheTerminalHasItsEcho) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; mkfifo typed; : >seen\n"
          "echo 'trap : INT; wlanctl set 2.4g WPAPSK:1=-; echo ended $?; stty -a | grep -q \" echo \" && echo echoes' "
          ">asks\n"
          "env --default-signal=INT script -qfec 'sh asks' seen <typed >/dev/null & typing=$!\n"
          "exec 3>typed; until grep -q 'WPAPSK:1: ' seen; do sleep 0.02; done; printf '\\003' >&3\n"
          "wait $typing; exec 3>&-; grep -c -e 'ended 130' -e echoes seen");
  EXPECT_EQ("2\n", result.out) << result.err;
}

TEST(Secret, IsNoLongerAskedForAfterASignalAndTheTerminalHasItsEcho) {
  const std::pair<std::string, std::string> ends[] = {{"TERM", "143"}, {"HUP", "129"}};
  for (const auto& [signal, status] : ends) {
    const Result result =
        run("library_probe init 0 init 1 >/dev/null; mkfifo typed; : >seen\n"
            "echo 'echo $$ >pid; exec \"$WLANCTL_PROGRAM\" set 2.4g WPAPSK:1=-' >asked\n"
            "echo 'sh asked; echo ended $?; stty -a | grep -q \" echo \" && echo echoes' >asks\n"
            "script -qfec 'sh asks' seen <typed >/dev/null 2>&1 & typing=$!\n"
            "exec 3>typed; until grep -q 'WPAPSK:1: ' seen; do sleep 0.02; done; kill -" +
            signal + " $(cat pid)\nwait $typing; exec 3>&-; grep -c -e 'ended " + status + "' -e echoes seen");
    EXPECT_EQ("2\n", result.out) << result.err;
  }
}

}  // namespace
}  // namespace wlanctl_test
