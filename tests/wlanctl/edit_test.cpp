// edit: the settings in an editor; here a script, and on a terminal where that matters.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// `editor` becomes $EDITOR: a script that gets the file as $1.
std::string edit(const std::string& editor, const std::string& call = "wlanctl edit 2.4g") {
  return "cat >editor <<'.'\n#!/bin/sh\n" + editor +
         "\n.\nchmod +x editor; EDITOR=./editor; export EDITOR; unset VISUAL; " + call;
}

constexpr char kFolders[] = "; s=$?; ls /var/run | grep wlanctl-edit; exit $s";

// script gives the calls a terminal.
std::string on_terminal(const std::string& call) {
  return "script -qec '" + call + "' /dev/null </dev/null";
}

TEST(Edit, StoresWhatWasChanged) {
  const auto steps = run_live({edit("sed -i -e s/^Channel=.*/Channel=11/ -e s/^SSID:1=.*/SSID:1=Attic/ $1") + kFolders,
                               "wlanctl get 2.4g Channel SSID:1"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("2.4g Channel = 11  (was 6)\n2.4g SSID:1 = Attic  (was Gateway-Home)\n", steps[0].out);
  EXPECT_EQ("Channel  11\nSSID:1   Attic\n", steps[1].out);
}

TEST(Edit, TellsEachLineThatCannotBeRead) {
  const auto steps = run_live({edit("seq 12 >>$1", "wlanctl edit 2.4g --json")});
  EXPECT_EQ(12u, document_in(steps[0].out)["problems"].size());
}

TEST(Edit, TakesBlanksAroundAnEqualsSign) {
  const auto steps = run_live({edit("sed -i -e 's/^Channel=.*/Channel = 11/' -e 's/^HideSSID:1=/HideSSID:1 = /' $1"),
                               edit("sed -i 's/^SSID:1=.*/SSID:1 = Attic/' $1"), "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ("2.4g Channel = 11  (was 6)\n", steps[0].out) << steps[0].err;
  EXPECT_THAT(steps[1].err, HasSubstr("SSID:1: a blank behind = is a part of this value"));
  EXPECT_EQ("Gateway-Home\n", steps[2].out);
}

// What the store has came from a file that no setter has judged.
TEST(Edit, LeavesAloneWhatItHasWrittenItselfBlanksToo) {
  const auto steps =
      run({"sed -i 's/^TxPower=.*/TxPower= 50 /' /etc/Wireless/RT2860AP/RT2860AP.dat; library_probe init 0 "
           ">/dev/null\n" +
           edit("grep ^TxPower $1 | od -c >&2; sed -i s/^Channel=.*/Channel=11/ $1")});
  EXPECT_THAT(steps.err, HasSubstr("=       5   0"));
  EXPECT_EQ("2.4g Channel = 11  (was 6)\n", steps.out) << steps.err;
}

TEST(Edit, ShowsWhatEachSettingMeansAndTakes) {
  const auto steps = run_live({edit("cat $1 >seen"),
                               "grep -B1 ^MaxStaNum:1= seen; grep -A1 ^MaxStaNum:1= seen; grep -B3 ^BeaconPeriod= seen",
                               "awk 'length > 80 && /^#/' seen; grep -c '^\\[2.4g\\]$' seen; grep MacAddress seen"});
  EXPECT_THAT(steps[1].out, HasSubstr("# Most stations: 0 to 45\nMaxStaNum:1=32\n"));
  EXPECT_THAT(steps[1].out, HasSubstr("MaxStaNum:1=32\nMaxStaNum:2=32\n"));
  EXPECT_THAT(steps[1].out, HasSubstr("in time units"));
  EXPECT_EQ("1\n# MacAddress is 02:28:10:24:00:00, and only read\n", steps[2].out);
}

TEST(Edit, MasksSecretsUnlessTheyAreChangedOrAskedFor) {
  const auto steps =
      run_live({edit("grep ^WPAPSK $1; cp $1 seen"), "grep sample- seen", "wlanctl get 2.4g WPAPSK:1",
                edit("cp $1 seen", "wlanctl edit 2.4g --secrets"), "grep ^WPAPSK:1 seen",
                edit("sed -i s/^WPAPSK:1=.*/WPAPSK:1=one-of-mine/ $1"), "wlanctl get 2.4g WPAPSK:1 WPAPSK:2"});
  EXPECT_THAT(steps[0].out + steps[0].err, HasSubstr("WPAPSK:1=***\nWPAPSK:2=***\n"));
  EXPECT_THAT(steps[1].out, IsEmpty());
  EXPECT_EQ("sample-passphrase-1\n", steps[2].out);
  EXPECT_EQ("WPAPSK:1=sample-passphrase-1\n", steps[4].out);
  EXPECT_EQ("2.4g WPAPSK:1 = ********  (was ********)\n", steps[5].out);
  EXPECT_EQ("WPAPSK:1  one-of-mine\nWPAPSK:2  sample-passphrase-2\n", steps[6].out);
}

TEST(Edit, AnUnchangedOrEmptiedFileStoresNothing) {
  const auto steps = run_live(
      {"wlanctl export >before", edit(":") + kFolders, edit(": >$1") + kFolders, edit("sed -i s/^#.*// $1") + kFolders,
       edit("sed -i /^SSID/d $1", "wlanctl edit 2.4g --json"), "wlanctl export | cmp - before && echo same"});
  for (const size_t at : {1u, 2u, 3u}) {
    EXPECT_EQ(0, steps[at].status) << at;
    EXPECT_EQ("nothing is changed, nothing is stored\n", steps[at].out) << at;
  }
  EXPECT_THAT(document_in(steps[4].out)["data"]["bands"][0]["changes"], IsEmpty());
  EXPECT_EQ("same\n", steps[5].out);
}

TEST(Edit, KeepsTheTextThatTheEditorRenamed) {
  const std::string renaming = "sed -i 's/^SSID:1=.*/SSID:1=Mine/' $1; mv $1 $1.new";
  const auto steps = run_live({edit(renaming), "grep ^SSID:1= /var/run/wlanctl-edit-*/settings.new",
                               edit(":", "wlanctl edit 2.4g --from /var/run/wlanctl-edit-*/settings.new"),
                               "rm -r /var/run/wlanctl-edit-*; " + edit(renaming, "wlanctl edit 2.4g --json")});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ("", steps[0].out);
  EXPECT_THAT(
      steps[0].err,
      testing::ContainsRegex("nothing is stored; what you wrote is kept in (/var/run/wlanctl-edit-[^/]*/settings.new);"
                             " wlanctl edit 2.4g --from /var/run/wlanctl-edit-[^/]*/settings.new goes on with it\n"));
  EXPECT_THAT(steps[0].err,
              testing::ContainsRegex("wlanctl: the text is not there any more: /var/run/wlanctl-edit-[^/]*/settings, "
                                     "nothing is stored; have the editor save it under the name that it is given\n"));
  EXPECT_EQ("SSID:1=Mine\n", steps[1].out);
  EXPECT_EQ("2.4g SSID:1 = Mine  (was Gateway-Home)\n", steps[2].out) << steps[2].err;
  EXPECT_EQ(1, steps[3].status);
}

TEST(Edit, SaysThatTheTextIsNotThereWhereNothingIsLeftOfIt) {
  const auto steps = run_live({edit("rm $1") + kFolders, edit("rm $1", "wlanctl edit 2.4g --json")});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ("", steps[0].out);
  EXPECT_THAT(steps[0].err, testing::AllOf(HasSubstr("the text is not there any more"), Not(HasSubstr("kept"))));
  EXPECT_EQ(1, document_in(steps[1].out)["exit_code"]);
}

TEST(Edit, KeepsWhatItCannotRead) {
  const auto steps = run_live({edit("truncate -s 2M $1"), "rm -r /var/run/wlanctl-edit-*",
                               edit("cp $1 $1.save; rm $1; mkfifo $1"), "ls /var/run/wlanctl-edit-*"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, testing::AllOf(HasSubstr("/settings: it is larger than 1 MiB, nothing is stored; "),
                                           HasSubstr("nothing is stored; what the editor left is kept in /var/run/")));
  EXPECT_EQ(0, steps[1].status);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_THAT(steps[2].err, testing::AllOf(HasSubstr("/settings: it is a pipe, no file, nothing is stored; "),
                                           HasSubstr("/settings.save goes on with it")));
  EXPECT_EQ("settings\nsettings.save\n", steps[3].out);
}

TEST(Edit, EditsBothBandsWithoutABand) {
  const auto steps =
      run_live({edit("sed -i -e 's/^Channel=6$/Channel=1/' -e 's/^Channel=36$/Channel=40/' $1", "wlanctl edit --json"),
                "wlanctl get 2.4g Channel; wlanctl get 5g Channel"});
  const Json data = document_in(steps[0].out)["data"];
  EXPECT_EQ(40, data["bands"][1]["changes"][0]["after"]);
  EXPECT_TRUE(data["kept"].is_null());
  EXPECT_EQ("1\n40\n", steps[1].out);
}

TEST(Edit, WithoutATerminalEndsWithTheErrorsAndKeepsTheText) {
  const auto steps =
      run_live({edit("sed -i -e s/^Channel=.*/Channel=181/ -e s/^TxPower=.*/TxPower=50/ $1; echo nonsense >>$1; "
                     "echo SSID:1=b >>$1"),
                "stat -c %a /var/run/wlanctl-edit-* /var/run/wlanctl-edit-*/settings; grep -c Channel=181 "
                "/var/run/wlanctl-edit-*/settings; wlanctl get 2.4g TxPower",
                edit("echo nonsense >>$1", "wlanctl edit 2.4g --json")});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err,
              HasSubstr(": Channel cannot be \"181\": The input channel is invalid; it takes 0; 2.4g 1 "));
  EXPECT_THAT(steps[0].err, HasSubstr(": there is no = in the line"));
  EXPECT_THAT(steps[0].err, HasSubstr(": SSID:1 stands in line "));
  EXPECT_THAT(steps[0].err, HasSubstr("nothing is stored; what you wrote is kept in /var/run/wlanctl-edit-"));
  EXPECT_EQ("700\n600\n1\n100\n", steps[1].out);
  EXPECT_THAT(document_in(steps[2].out)["data"]["kept"].get<std::string>(),
              testing::StartsWith("/var/run/wlanctl-edit-"));
}

TEST(Edit, AtATerminalOpensAgainWithTheErrorsAboveTheirLines) {
  const auto steps =
      run_live({edit("n=$(cat rounds 2>/dev/null | wc -l); echo >>rounds; cp $1 seen$n; if [ $n = 0 ]; then sed -i "
                     "-e s/^Channel=.*/Channel=181/ $1; else sed -i s/^Channel=.*/Channel=11/ $1; fi",
                     on_terminal("wlanctl edit 2.4g")) +
                    kFolders,
                "wc -l <rounds; grep -B4 ^Channel=181 seen1; wlanctl get 2.4g Channel"});
  EXPECT_EQ(0, steps[0].status) << steps[0].out;
  EXPECT_THAT(steps[1].out, testing::StartsWith("2\n"));
  EXPECT_THAT(steps[1].out, HasSubstr("#! Channel cannot be \"181\": The input channel is invalid"));
  EXPECT_THAT(steps[1].out, testing::EndsWith("\nChannel=181\n11\n"));
}

// The first round leaves an error, and `after` happens before the next one.
std::string second_round_after(const std::string& after, const std::string& before = "") {
  return edit("sed -i s/^Channel=.*/Channel=181/ $1; " + after, before + on_terminal("wlanctl edit 2.4g"));
}

constexpr char kKeptLine[] = "grep -c ^Channel=181 /var/run/wlanctl-edit-*/settings; ls /var/run/wlanctl-edit-*";

TEST(Edit, KeepsTheTextWhereTheEditorIsGoneInALaterRound) {
  const auto steps = run_live({second_round_after("rm $0"), kKeptLine});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].out, HasSubstr("there is no editor: ./editor"));
  EXPECT_THAT(steps[0].out, HasSubstr("what you wrote is kept in"));
  EXPECT_EQ("1\nsettings\n", steps[1].out);
}

TEST(Edit, KeepsTheTextWhereThereIsNoRoomForALaterRound) {
  const auto steps = run_live({second_round_after("cat /dev/zero >/run/full 2>/dev/null; :",
                                                  "mkdir /mnt/small; mount -t tmpfs -o size=192k x /mnt/small; mkdir "
                                                  "/mnt/small/gateway-sim; mount --rbind /run/gateway-sim "
                                                  "/mnt/small/gateway-sim; mount --rbind /mnt/small /run; "),
                               kKeptLine});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].out, HasSubstr("is there room in /var/run?"));
  EXPECT_THAT(steps[0].out, HasSubstr("what you wrote is kept in"));
  EXPECT_EQ("1\nsettings\n", steps[1].out);
}

TEST(Edit, AtATerminalEndsWhenTheErrorsStay) {
  const auto steps =
      run_live({edit("echo >>rounds; sed -i s/^Channel=.*/Channel=181/ $1", on_terminal("wlanctl edit 2.4g")),
                "wc -l <rounds; grep -c '^#!' /var/run/wlanctl-edit-*/settings"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].out, HasSubstr("what you wrote is kept in"));
  EXPECT_THAT(steps[1].out, testing::StartsWith("2\n"));
}

TEST(Edit, DoesNotOverwriteWhatSomebodyElseHasSetMeanwhile) {
  const auto steps = run_live(
      {edit("wlanctl set 2.4g Channel=1 HideSSID:1=1 >/dev/null; sed -i s/^TxPower=.*/TxPower=50/ $1"),
       "wlanctl get 2.4g Channel HideSSID:1 TxPower",
       edit("wlanctl set 2.4g Channel=3 >/dev/null; sed -i s/^Channel=.*/Channel=11/ $1"), "wlanctl get 2.4g Channel",
       edit("wlanctl set 2.4g Channel=4 >/dev/null; sed -i s/^Channel=.*/Channel=11/ $1", "wlanctl edit 2.4g --force"),
       "wlanctl get 2.4g Channel"});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ("Channel     1\nHideSSID:1  1\nTxPower     50\n", steps[1].out);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_THAT(steps[2].err,
              HasSubstr("Channel cannot be \"11\": meanwhile it has become \"3\", from \"1\"; edit once more, "
                        "or insist with --force"));
  EXPECT_EQ("3\n", steps[3].out);
  EXPECT_EQ(0, steps[4].status);
  EXPECT_EQ("11\n", steps[5].out);
}

TEST(Edit, SaysThatAModeWithoutPskAsksARadiusServer) {
  const auto steps = run_live({edit("sed -i s/^AuthMode:1=.*/AuthMode:1=WPA2/ $1")});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("note: AuthMode:1: WPA2 asks a RADIUS server, and no passphrase"));
}

TEST(Edit, SaysThatThereIsNoEditor) {
  const auto steps =
      run_live({std::string("EDITOR=/nowhere/vi VISUAL= wlanctl edit 2.4g") + kFolders,
                "unset EDITOR VISUAL; mkdir path; ln -s $(command -v sh) $(command -v sed) path; PATH=path "
                "\"$WLANCTL_PROGRAM\" edit 2.4g"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ("wlanctl: there is no editor: /nowhere/vi: No such file or directory; name one in VISUAL or EDITOR\n",
            steps[0].err);
  EXPECT_THAT(steps[0].out, IsEmpty());
  EXPECT_THAT(steps[1].err, HasSubstr("there is no editor: vi: No such file"));
}

TEST(Edit, PrefersVisualAndTakesTheWordsBehindTheName) {
  const auto steps = run_live({edit("[ \"$1\" = -x ] && sed -i s/^Channel=.*/Channel=11/ $2",
                                    "VISUAL='./editor -x' EDITOR=false wlanctl edit 2.4g")});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
}

TEST(Edit, StoresNothingWhenTheEditorFails) {
  const auto steps =
      run_live({edit("sed -i s/^Channel=.*/Channel=11/ $1; exit 3") + kFolders, "wlanctl get 2.4g Channel"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("wlanctl: ./editor ended with 3, nothing is stored; edit once more\n"));
  EXPECT_THAT(steps[0].err, HasSubstr("what you wrote is kept in /var/run/wlanctl-edit-"));
  EXPECT_EQ("6\n", steps[1].out);
}

// Ends the tool while the editor runs, which was told `script` first.
std::string ended_by(const std::string& signal, const std::string& script, const std::string& call = "edit 2.4g") {
  return edit(script + "; kill -" + signal + " $PPID; while :; do sleep 0.1; done", "\"$WLANCTL_PROGRAM\" " + call);
}

TEST(Edit, TakesItsFileAwayWhereNothingWasWritten) {
  const auto steps = run_live({ended_by("HUP", ":") + kFolders, ended_by("TERM", ":") + kFolders,
                               edit("exit 3", "wlanctl edit 2.4g") + kFolders});
  EXPECT_EQ(129, steps[0].status);
  EXPECT_EQ(143, steps[1].status);
  EXPECT_EQ(1, steps[2].status);
  for (const Result& step : steps) EXPECT_THAT(step.out, IsEmpty());
}

TEST(Edit, KeepsWhatWasWrittenWhateverEndsIt) {
  for (const char* const signal : {"TERM", "HUP"}) {
    const auto steps = run_live({ended_by(signal, "sed -i s/^Channel=.*/Channel=11/ $1"),
                                 "stat -c %a /var/run/wlanctl-edit-*/settings; grep ^Channel= "
                                 "/var/run/wlanctl-edit-*/settings; wlanctl get 2.4g Channel"});
    EXPECT_EQ(signal == std::string("TERM") ? 143 : 129, steps[0].status);
    EXPECT_THAT(steps[0].err, testing::ContainsRegex("nothing is stored; what you wrote is kept in "
                                                     "(/var/run/wlanctl-edit-[^/]*/settings); wlanctl edit 2.4g --from "
                                                     "/var/run/wlanctl-edit-[^/]*/settings goes on with it"));
    EXPECT_EQ("600\nChannel=11\n6\n", steps[1].out);
  }
}

TEST(Edit, KeepsWhatTheEditorSavedBesideItsFile) {
  const auto steps =
      run_live({ended_by("HUP", "echo Channel=11 >$1.save"), "cat /var/run/wlanctl-edit-*/settings.save"});
  EXPECT_THAT(steps[0].err, HasSubstr("/settings.save goes on with it"));
  EXPECT_EQ("Channel=11\n", steps[1].out);
}

TEST(Edit, SaysInTheSystemsLogWhatItKeeps) {
  const auto steps = run_live(
      {ended_by("HUP", "sed -i s/^Channel=.*/Channel=11/ $1") +
       " >/dev/null 2>&1; for i in $(seq 200); do grep edit /run/gateway-sim/syslog && break; sleep 0.02; done"});
  EXPECT_THAT(steps[0].out, HasSubstr("edit was ended: nothing is stored; what you wrote is kept in "));
}

TEST(Edit, KeepsTheTextOfAnEarlierRoundToo) {
  const auto steps = run_live({edit("n=$(cat rounds 2>/dev/null | wc -l); echo >>rounds; if [ $n = 0 ]; then sed -i "
                                    "s/^Channel=.*/Channel=181/ $1;"
                                    " else kill -HUP $PPID; while :; do sleep 0.1; done; fi",
                                    on_terminal("\"$WLANCTL_PROGRAM\" edit 2.4g")),
                               "grep -c ^Channel=181 /var/run/wlanctl-edit-*/settings"});
  EXPECT_EQ("1\n", steps[1].out) << steps[0].out;
}

TEST(Edit, GoesOnFromWhatWasKept) {
  const auto steps =
      run_live({ended_by("HUP", "sed -i s/^Channel=.*/Channel=11/ $1"), "wlanctl set 2.4g TxPower=50 >/dev/null",
                edit("sed -i -e s/^SSID:1=.*/SSID:1=Attic/ -e s/^TxPower=.*// $1",
                     "wlanctl edit 2.4g --from /var/run/wlanctl-edit-*/settings"),
                ended_by("HUP", "sed -i s/^Channel=.*/Channel=1/ $1; mv $1 /kept; cp /kept $1"),
                edit(":", "wlanctl edit 2.4g --from /kept"), edit(":", "wlanctl edit 2.4g --from /nowhere --json")});
  EXPECT_EQ("2.4g Channel = 11  (was 6)\n2.4g SSID:1 = Attic  (was Gateway-Home)\n", steps[2].out) << steps[2].err;
  EXPECT_EQ("2.4g Channel = 1  (was 11)\n", steps[4].out) << steps[4].err;
  EXPECT_EQ(2, steps[5].status);
}

// They are the editor's at a terminal.
TEST(Edit, IsNotEndedByTheKeysThatAreTheEditors) {
  const auto steps = run_live(
      {edit("kill -INT $PPID; kill -QUIT $PPID; kill -TSTP $PPID; sed -i s/^Channel=.*/Channel=11/ $1") + kFolders});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_EQ("2.4g Channel = 11  (was 6)\n", steps[0].out);
}

TEST(Edit, LeavesBytesThatALineCannotHold) {
  const auto steps =
      run_live({"wlanctl set 2.4g SSID:1=\"$(printf '\\377')\" >/dev/null; wlanctl export 2.4g >before",
                edit("grep SSID:1 $1 >seen; sed -i s/^TxPower=.*/TxPower=50/ $1"), "grep '^# SSID:1 has bytes' seen",
                "wlanctl set 2.4g TxPower=100 >/dev/null; wlanctl export 2.4g | cmp - before && echo same"});
  EXPECT_EQ(0, steps[2].status);
  EXPECT_EQ("same\n", steps[3].out);
}

TEST(Edit, KeepsTheTextWhenAnotherWlanctlDoesNotEnd) {
  const auto steps = run_live({edit("sed -i s/^Channel=.*/Channel=11/ $1",
                                    "exec 9>/var/run/wlanctl.lock; flock 9; wlanctl edit 2.4g --wait 0")});
  EXPECT_EQ(4, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("what you wrote is kept in /var/run/wlanctl-edit-"));
}

TEST(Edit, SaysThatAnApplyWaitsForItsConfirmation) {
  const Result result = run_story(
      "library_probe init 0 init 1 >/dev/null 2>&1; wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g "
      "--confirm "
      "600 >/dev/null 2>&1; " +
      edit("sed -i s/^Channel=.*/Channel=11/ $1") + "; wlanctl confirm 2.4g >/dev/null; no_guardian");
  EXPECT_THAT(result.err, HasSubstr("more seconds for wlanctl confirm 2.4g"));
}

TEST(Edit, HasNoStoreWhereNoneCanBeMade) {
  EXPECT_EQ(3, run_steps({"rm /etc/Wireless/RT2860AP/RT2860AP.dat; " + edit(":")})[0].status);
}

TEST(Edit, SaysTwoForWrongWords) {
  EXPECT_EQ(2, run_live({"wlanctl edit 6g --json"})[0].status);
}

}  // namespace
}  // namespace wlanctl_test
