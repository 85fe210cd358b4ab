// wlanctl monitor: a line for each thing that happens, and no trace of its own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "apply_story.h"
#include "monitor_story.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

Result watch(const std::string& words, const std::string& script, const Words& options = {}) {
  return run(watched(words, script), options);
}

TEST(Monitor, TellsOfAStationThatJoinsAndLeaves) {
  const Result result = watch("2.4g",
                              "simctl station add ra1 02:aa:bb:cc:dd:01; comes 'station-joined'\n"
                              "simctl station remove ra1 02:aa:bb:cc:dd:01; comes 'station-left'");
  EXPECT_THAT(result.out, HasSubstr("  2.4g  station-joined  02:aa:bb:cc:dd:01 SSID 2 Gateway-Guest\n"));
  EXPECT_THAT(result.out, HasSubstr("  2.4g  station-left  02:aa:bb:cc:dd:01 SSID 2 Gateway-Guest\n"));
  EXPECT_EQ("ended 0", lines_of(result.out).at(0));
  EXPECT_EQ("", result.err);
}

TEST(Monitor, TellsOfANewChannel) {
  const Result result = watch("", "simctl channel 2.4g 11; comes '2.4g  channel  channel 6 -> 11'");
  EXPECT_THAT(result.out, Not(HasSubstr("radar")));
}

TEST(Monitor, TakesAChannelThatARadioLeavesUnaskedForRadar) {
  const Result result = watch("",
                              "simctl channel 5g 100; comes 'channel 36 -> 100'\n"
                              "simctl channel 5g 44; comes 'radar  perhaps: channel 100 left unasked'");
  EXPECT_THAT(result.out, HasSubstr("5g  channel  channel 100 -> 44\n"));
}

TEST(Monitor, TakesAChannelOfARestartForNoRadar) {
  const Result result = watch("5g",
                              "simctl channel 5g 100; comes 'channel 36 -> 100'\n"
                              "ifconfig rai1 down; ifconfig rai0 down; ifconfig rai0 up; comes 'channel 100 -> 36'\n"
                              "simctl channel 5g 40; comes 'channel 36 -> 40'");
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("radar"))));
}

TEST(Monitor, TellsOfInterfacesAndTheirBridges) {
  const Result result = watch("",
                              "ifconfig ra1 down; comes 'interface-down  ra1 down'\n"
                              "brctl delif br-lan ra1; comes 'bridge-left  ra1 out of br-lan'\n"
                              "brctl addif br0 ra1; comes 'bridge-joined  ra1 into br0'\n"
                              "ifconfig ra1 up; comes 'interface-up  ra1 up'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(Monitor, TellsOfAWpsSession) {
  const Result result = watch("", "simctl wps rai0 state 3 peer 02:aa:bb:cc:dd:01; comes 'enrolling'");
  EXPECT_THAT(result.out, HasSubstr("5g  wps  SSID 1 Gateway-Home-5G: enrolling 02:aa:bb:cc:dd:01\n"));
}

TEST(Monitor, TellsOfValuesInTheStoreAndMasksSecrets) {
  const Result result = watch("",
                              "wlanctl set 2.4g SSID:2=Attic Channel=11 WPAPSK:1=correct-horse >/dev/null; "
                              "comes 'value  SSID:2  Gateway-Guest -> Attic'");
  EXPECT_THAT(result.out, HasSubstr("2.4g  value  Channel  6 -> 11\n"));
  EXPECT_THAT(result.out, HasSubstr("value  WPAPSK:1  ******** -> ********\n"));
  EXPECT_THAT(result.out, Not(HasSubstr("correct-horse")));
}

TEST(Monitor, TellsOfAStoreThatGoesAndComesBack) {
  const Result result = watch("5g",
                              "ipcrm -M 0x12346; comes '5g  store-gone  the store is gone'\n"
                              "wlanctl set 5g Channel=40 >/dev/null 2>&1; comes '5g  store-back  there is a store'\n"
                              "wlanctl set 5g Channel=44 >/dev/null 2>&1; comes 'value  Channel  40 -> 44'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(Monitor, TellsOfADatFileThatIsWrittenAndGone) {
  const Result result = watch("2.4g",
                              "wlanctl save 2.4g >/dev/null 2>&1; comes 'dat-file  written, [0-9]* bytes'\n"
                              "rm /etc/Wireless/RT2860AP/RT2860AP.dat; comes 'dat-file  it is gone'");
  EXPECT_THAT(result.out, Not(HasSubstr("applied")));
}

TEST(Monitor, TellsOfAnApply) {
  const Result result = watch("2.4g",
                              "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1\n"
                              "comes '2.4g  applied  applied'");
  EXPECT_THAT(result.out, AllOf(HasSubstr("interface-down  ra0 down"), HasSubstr("interface-up  ra0 up")));
}

TEST(Monitor, TellsTheValuesOfAnApplyBeforeIt) {
  const Result result = watch("2.4g",
                              "wlanctl set 2.4g Channel=11 SSID:1=Kitchen >/dev/null\n"
                              "wlanctl apply 2.4g >/dev/null 2>&1; comes '  applied  '");
  for (const char* const before : {"  value  Channel  6 -> 11", "  value  SSID:1  ", "  channel  channel 6 -> 11"}) {
    ASSERT_THAT(result.out, HasSubstr(before));
    EXPECT_LT(result.out.find(before), result.out.find("  applied  ")) << result.out;
  }
}

TEST(Monitor, TellsWhenTheDriverDidNotTakeWhatWasApplied) {
  const Result result = watch("2.4g",
                              "wlanctl set 2.4g HideSSID:1=1 >/dev/null; simctl fail iwpriv exit=1\n"
                              "wlanctl apply 2.4g >/dev/null 2>&1\n"
                              "comes '2.4g  not-in-force  not all reached the driver'\n"
                              "simctl fail none; wlanctl apply 2.4g >/dev/null\n"
                              "comes '2.4g  in-force-again  all is in force again'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(Monitor, TellsWhenWhatWasAppliedIsNotInForceAndIsAgain) {
  const Result result = watch("2.4g",
                              "wlanctl set 2.4g Channel=11 >/dev/null; simctl fail ifconfig exit=1 ra0 up\n"
                              "wlanctl apply 2.4g >/dev/null 2>&1; comes '2.4g  not-in-force  ra0 is down'\n"
                              "simctl fail none; ifconfig ra0 up; brctl addif br-lan ra0\n"
                              "comes '2.4g  in-force-again  all is in force again'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

// A driver that is asked nothing any more has heard nothing, whoever writes the file.
TEST(Monitor, TakesAnEditOfTheDatFileForNoNewsOfADriverThatWasNotTold) {
  const Result result = watch("2.4g",
                              "wlanctl set 2.4g HideSSID:1=1 >/dev/null; simctl fail iwpriv exit=1\n"
                              "wlanctl apply 2.4g >/dev/null 2>&1; comes 'not-in-force  not all reached'\n"
                              "simctl fail none; echo '#' >>/etc/Wireless/RT2860AP/RT2860AP.dat; comes dat-file\n"
                              "ifconfig ra1 down; comes 'ra1 down'; ifconfig ra1 up; comes 'ra1 up'\n"
                              "simctl channel 2.4g 11; comes 'channel 6 -> 11'\n"
                              "simctl channel 2.4g 1; comes 'channel 11 -> 1'");
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("in-force-again"))));
}

TEST(Monitor, TakesADriverThatDoesNotAnswerForNoneThatIsOnItsChannel) {
  const Result result = watch(
      "2.4g",
      functions() +
          "printf '#!/bin/sh\\n/real/ifconfig \"$@\"; [ \"$*\" != \"ra0 up\" ] || simctl channel 2.4g 6\\n' | stand_in "
          "ifconfig; wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1\n"
          "comes 'not-in-force  channel 6, not 11'\n"
          "simctl fail channel EIO ra0; comes driver-gone\n"
          "simctl fail none; comes driver-back; simctl channel 2.4g 11; comes in-force-again");
  const std::string text = result.out;
  EXPECT_THAT(text, HasSubstr("ended 0"));
  EXPECT_LT(text.find("driver-back"), text.find("in-force-again")) << text;
  EXPECT_EQ(text.find("not-in-force"), text.rfind("not-in-force")) << text;
}

TEST(Monitor, KeepsToWhatItKnowsWhereTheStateCannotBeRead) {
  const Result result =
      watch("2.4g",
            "wlanctl set 2.4g Channel=11 >/dev/null; simctl fail ifconfig exit=1 ra0 up\n"
            "wlanctl apply 2.4g >/dev/null 2>&1; comes 'not-in-force  ra0 is down'\n"
            "truncate -s -3 /run/wlanctl-lacking-2.4g\n"
            "simctl channel 2.4g 3; comes 'channel .* -> 3'; simctl channel 2.4g 4; comes 'channel 3 -> 4'");
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("in-force-again"))));
}

// Kinds with the most to say. The names of SSIDs are the operator's.
TEST(Monitor, KeepsALineToEightyColumnsBesideTheNamesOfSsids) {
  const Result result = run(watched(
      "",
      "simctl station add ra1 02:aa:bb:cc:dd:01; comes station-joined\n"
      "simctl station remove ra1 02:aa:bb:cc:dd:01; comes station-left\n"
      "simctl wps ra0 state 2; comes '  wps  SSID 1 Gateway-Home: idle -> open'\n"
      "simctl wps ra0 state 3 peer 02:aa:bb:cc:dd:01; comes enrolling\n"
      "simctl channel 5g 100; comes ' 36 -> 100'; simctl channel 5g 44; comes radar\n"
      "hold_store 0x12348 & comes lock-held; touch done; comes lock-free\n"
      "hold_store 0x12349 forever; comes '5g  lock-held  process [0-9]*, which is gone'\n"
      "simctl fail channel EIO ra0; comes driver-gone; simctl fail none; comes driver-back\n"
      "brctl delif br-lan ra1; brctl addif br0 ra1; simctl fail iwpriv exit=1\n"
      "wlanctl set 2.4g Channel=11 HideSSID:1=1 >/dev/null; wlanctl apply 2.4g --confirm 3600 --keep >/dev/null 2>&1\n"
      "comes apply-waiting; comes 'not-in-force  ra1 in br0, not br-lan'; comes 'not all reached the driver'\n"
      "wlanctl confirm 2.4g --force >/dev/null 2>&1; comes confirmed; simctl fail none; brctl delif br0 ra1\n"
      "wlanctl apply 2.4g >/dev/null 2>&1; comes in-force-again\n"
      "ipcrm -M 0x12345; comes 'store-gone'"));
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
  for (std::string line : lines_of(result.out)) {
    for (const std::string name : {" Gateway-Guest", " Gateway-Home"}) {
      if (line.find(name) != std::string::npos) line.erase(line.find(name), name.size());
    }
    EXPECT_LE(line.size(), 80u) << line;
  }
}

TEST(Monitor, TellsOfAnApplyThatChangesNothingButRunsAgain) {
  const Result result = watch("2.4g", "wlanctl apply 2.4g --again >/dev/null 2>&1; comes '  applied  '", {});
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(Monitor, TakesASaveForNoApply) {
  const Result result = watch("2.4g",
                              "ifconfig ra1 down; comes 'ra1 down'\n"
                              "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl save 2.4g >/dev/null 2>&1\n"
                              "comes 'value  Channel'; simctl channel 2.4g 3; comes ' 6 -> 3'");
  EXPECT_THAT(result.out, AllOf(HasSubstr("dat-file"), Not(HasSubstr("applied"))));
}

TEST(Monitor, TellsOfAConfirmation) {
  const Result result =
      watch("2.4g",
            "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1\n"
            "comes 'apply-waiting  [0-9]* s for wlanctl confirm'\n"
            "wlanctl confirm 2.4g >/dev/null 2>&1; comes '  confirmed  '");
  EXPECT_THAT(result.out, Not(HasSubstr("rolled")));
}

TEST(Monitor, TellsOfAConfirmationThoughTheStoreWasSavedMeanwhile) {
  const Result result =
      watch("2.4g",
            "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1\n"
            "comes 'apply-waiting'; wlanctl save 2.4g >/dev/null 2>&1; comes 'dat-file'\n"
            "wlanctl confirm 2.4g >/dev/null 2>&1; comes '  confirmed  '");
  EXPECT_THAT(result.out, Not(HasSubstr("rolled")));
}

TEST(Monitor, TellsOfARollBack) {
  const Result result =
      watch("2.4g",
            "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1\n"
            "comes 'apply-waiting'\n"
            "wlanctl rollback 2.4g >/dev/null 2>&1; comes '  rolled-back  '");
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("confirmed"))));
}

TEST(Monitor, TellsWhoHoldsALock) {
  const Result result = watch("",
                              "hold_store 0x12348 & holder=$!\n"
                              "comes \"2.4g  lock-held  process $holder (hold_store)\"\n"
                              "touch done; comes '2.4g  lock-free'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(Monitor, TellsOfALockWhoseHolderIsGone) {
  const Result result = watch("", "hold_store 0x12349 forever; comes '5g  lock-held  .*, which is gone'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(Monitor, TellsOfADriverThatIsGoneAndAnswersAgain) {
  const Result result =
      watch("2.4g",
            "simctl fail channel EIO ra0; comes 'driver-gone  ioctl open fail'\n"
            "simctl fail none; comes 'driver-back  the driver answers; channel 6'\n"
            "rmmod mt7603eap; comes 'interface-gone  ra0 is gone'; comes 'driver-gone  there is no ra0'\n"
            "insmod /lib/modules/4.4.115/mt7603eap.ko; comes 'interface-new  ra0 is there'; comes driver-back",
            {"--chips", "7603,7612"});
  EXPECT_THAT(result.out, HasSubstr("station-left  02:5a:10:24:00:11 SSID 1"));
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(Monitor, TakesADriverThatIsSlowForGoneAndGoesOn) {
  const Result result = watch("2.4g",
                              "simctl fail channel slow=60 ra0; comes 'driver-gone  it takes longer than 3 s'\n"
                              "ifconfig ra1 down; comes 'ra1 down'; simctl fail none; comes 'driver-back'");
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
}

TEST(Monitor, SaysOnceWhatIsMissingAndGoesOn) {
  const Result result = run(watched("",
                                    "comes '2.4g  dat-file  there is no '; simctl channel 5g 40; comes '36 -> 40'\n"
                                    "simctl channel 5g 44; comes '40 -> 44'",
                                    "rmmod mt7603eap; ipcrm -M 0x12345; rm /etc/Wireless/RT2860AP/RT2860AP.dat"),
                            {"--chips", "7603,7612"});
  const auto count = [&](const std::string& text) {
    int found = 0;
    for (const std::string& line : lines_of(result.out)) found += line.find(text) != std::string::npos ? 1 : 0;
    return found;
  };
  EXPECT_EQ(1, count("2.4g  store-gone  there is no store to be read")) << result.out;
  EXPECT_EQ(1, count("2.4g  driver-gone  there is no ra0"));
  EXPECT_EQ(1, count("2.4g  dat-file  there is no dat file"));
  EXPECT_EQ(5u, lines_of(result.out).size() - 1) << result.out;
}

TEST(Monitor, LeavesTheOtherBandOut) {
  const Result result = watch("5g",
                              "simctl channel 2.4g 11; ifconfig ra1 down; simctl channel 5g 40; comes '36 -> 40'\n"
                              "simctl channel 5g 44; comes '40 -> 44'");
  EXPECT_THAT(result.out, Not(HasSubstr("2.4g")));
}

TEST(Monitor, HasLocalTimesWithTheirZone) {
  const Result result = run(watched("", "simctl channel 2.4g 11; comes 'channel'", "TZ=NPT-05:45; export TZ"));
  EXPECT_THAT(
      lines_of(result.out).at(1),
      MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}\\+05:45  2\\.4g  channel.*"));
}

TEST(Monitor, TellsEachEventAsADocumentOnALine) {
  const Result result =
      run(watched("--json",
                  "simctl channel 5g 100; comes '\"to\":100'; simctl channel 5g 44; comes '\"radar\"'\n"
                  "simctl station add ra0 02:aa:bb:cc:dd:01; comes joined; simctl wps ra0 state 3; comes '\"wps\"'\n"
                  "wlanctl set 2.4g SSID:1=Kitchen WPAPSK:1=correct-horse >/dev/null; comes Kitchen\n"
                  "wlanctl set 2.4g Channel=11 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1; comes '\"applied\"'\n"
                  "wlanctl set 2.4g Channel=1 >/dev/null; wlanctl apply 2.4g --confirm 600 >/dev/null 2>&1\n"
                  "comes apply-waiting; wlanctl rollback 2.4g >/dev/null 2>&1; comes rolled-back\n"
                  "simctl fail ifconfig exit=1 ra0 up; wlanctl apply 2.4g --again >/dev/null 2>&1; comes not-in-force\n"
                  "simctl fail none; wlanctl apply 2.4g --again >/dev/null 2>&1; comes in-force-again\n"
                  "hold_store 0x12349 & comes lock-held; touch done; comes lock-free\n"
                  "simctl fail channel EIO; comes driver-gone; simctl fail none; comes driver-back\n"
                  "ipcrm -M 0x12346; comes store-gone"));
  const Words lines = lines_of(result.out);
  ASSERT_GT(lines.size(), 20u);
  std::string documents;
  for (size_t i = 1; i < lines.size(); ++i) {
    EXPECT_EQ("monitor", document_in(lines[i])["verb"]);
    documents += lines[i] + "\n";
  }
  validate_text(documents);
  EXPECT_THAT(documents, Not(HasSubstr("correct-horse")));
  EXPECT_THAT(documents, HasSubstr(R"("event":"channel","band":"5g","text":"channel 36 -> 100","from":36,"to":100)"));
}

TEST(Monitor, EndsAfterTheEventsAskedFor) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; : >err; wlanctl monitor 2.4g -n 2 >out 2>err & monitor=$!\n"
          "until grep -q watching err; do sleep 0.02; done\n"
          "ifconfig ra1 down; ifconfig ra1 up; ifconfig ra1 down; wait $monitor; echo $?; cat out");
  const Words lines = lines_of(result.out);
  ASSERT_EQ(3u, lines.size()) << result.out;
  EXPECT_EQ("0", lines[0]);
  EXPECT_THAT(lines[1], HasSubstr("ra1 down"));
  EXPECT_THAT(lines[2], HasSubstr("ra1 up"));
}

TEST(Monitor, EndsAfterTheSecondsAskedFor) {
  for (const char* const json : {"", " --json"}) {
    const Result result =
        run(std::string("library_probe init 0 init 1 >/dev/null; wlanctl monitor --for 1") + json + " 2>/dev/null");
    EXPECT_EQ(0, result.status);
    EXPECT_THAT(result.out, IsEmpty());
  }
}

TEST(Monitor, EndsWithZeroWhenItIsInterrupted) {
  for (const char* const signal : {"INT", "TERM", "HUP"}) {
    const Result result = run(watched("", std::string("kill -") + signal + " $monitor"));
    EXPECT_EQ("ended 0\n", result.out) << signal;
    EXPECT_EQ("", result.err);
  }
}

TEST(Monitor, EndsWithZeroWhenItIsAskedAgainWhileItEnds) {
  for (int turn = 0; turn < 5; ++turn) {
    const Result result = run(watched("", "for i in $(seq 300); do kill -TERM $monitor; done 2>/dev/null"));
    EXPECT_EQ("ended 0\n", result.out);
    EXPECT_EQ("", result.err);
  }
}

TEST(Monitor, GoesOnThroughASignalThatItsCallerHasHadIgnored) {
  const Result result =
      run("trap '' HUP\n" + watched("2.4g", "kill -HUP $monitor; ifconfig ra1 down; comes 'ra1 down'"));
  EXPECT_THAT(result.out, HasSubstr("ended 0"));
  EXPECT_THAT(result.out, HasSubstr("interface-down"));
}

TEST(Monitor, EndsWithZeroWhenNobodyReadsAnyMore) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; mkfifo pipe; : >err\n"
          "{ wlanctl monitor >pipe 2>err; echo $? >code; } & exec 3<pipe\n"
          "until grep -q watching err; do sleep 0.02; done; exec 3<&-; wait; cat code; grep -v watching err");
  EXPECT_EQ("0\n", result.out);
}

TEST(Monitor, EndsByASignalThoughItsPipeIsFullAndHoldsNoLockMeanwhile) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; mkfifo pipe; : >err\n"
          "{ \"$WLANCTL_PROGRAM\" monitor --json >pipe 2>err & echo $! >pid; wait $!; echo $? >code; } & exec 3<>pipe\n"
          "until grep -q watching err; do sleep 0.02; done\n"
          // More than a pipe holds.
          "for i in $(seq 400); do echo 'link set ra1 down'; echo 'link set ra1 up'; done >changes; ip -batch changes\n"
          "wlanctl set 2.4g Channel=11 --wait 0; wlanctl apply 2.4g >/dev/null 2>&1; echo applied $?\n"
          "kill -TERM $(cat pid); wait; cat code");
  EXPECT_EQ("2.4g Channel = 11  (was 6)\napplied 0\n0\n", result.out) << result.err;
}

TEST(Monitor, KnowsHowThingsAreAfterMoreEventsThanTheKernelKeeps) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; mkfifo pipe; : >err\n"
          "\"$WLANCTL_PROGRAM\" monitor 2.4g --json >pipe 2>err & monitor=$!\n"
          "exec 3<>pipe; until grep -q watching err; do sleep 0.02; done\n"
          "for i in $(seq 3000); do echo 'link set ra1 down'; echo 'link set ra1 up'; done >changes\n"
          "echo 'link set ra1 down' >>changes; ip -batch changes\n"
          "simctl channel 2.4g 11; cat <&3 >lines & reader=$!; until grep -q '\"to\":11' lines; do sleep 0.05; done\n"
          "kill $monitor; wait $monitor; echo $?; kill $reader; grep -c ra1 lines; grep ra1 lines | tail -n 1");
  const Words lines = lines_of(result.out);
  ASSERT_EQ(3u, lines.size()) << result.out;
  EXPECT_EQ("0", lines[0]);
  EXPECT_LT(std::stoi(lines[1]), 6000) << "the kernel kept all of them";
  EXPECT_EQ("interface-down", document_in(lines[2])["data"]["event"]);
}

TEST(Monitor, TakesStationsThatWereThereBeforeTheDriverAnsweredForNoNews) {
  const Result result = run(watched("2.4g",
                                    "simctl fail none; comes driver-back\n"
                                    "simctl station add ra0 02:aa:bb:cc:dd:01; comes 02:aa:bb:cc:dd:01",
                                    "simctl fail channel EIO ra0"));
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("02:5a:10:24:00:11"))));
}

// Each question is answered, but together they take too long: the stations are told at a later look.
TEST(Monitor, TakesStationsThatASlowDriverToldLaterForNoNews) {
  const Result result =
      run(watched("2.4g",
                  "simctl fail none; simctl station add ra1 02:aa:bb:cc:dd:01; "
                  "comes ' -> 11'\n"
                  "simctl station add ra0 02:aa:bb:cc:dd:02; comes 'station-joined  02:aa:bb:cc:dd:02 '",
                  "simctl fail stations slow=3.2; (until grep -q watching complaints; do sleep 0.02; "
                  "done; simctl fail none; simctl channel 2.4g 11) &\n"));
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("02:5a:10:24:00:11")), Not(HasSubstr("  wps  "))));
}

TEST(Monitor, TakesATableThatWasCutOffForNoStationThatLeft) {
  const Result result = run(watched(
      "2.4g",
      "simctl fail stations cut=5 ra0; simctl channel 2.4g 11; comes ' -> 11'\n"
      "simctl fail none; simctl station add ra0 02:aa:bb:cc:dd:01; comes 'station-joined  02:aa:bb:cc:dd:01 '"));
  EXPECT_THAT(result.out, AllOf(HasSubstr("ended 0"), Not(HasSubstr("station-left"))));
}

TEST(Monitor, TellsWhatCannotBeWritten) {
  const Result result = run("library_probe init 0 init 1 >/dev/null; ipcrm -M 0x12345; wlanctl monitor >/dev/full");
  EXPECT_EQ(1, result.status);
  EXPECT_THAT(result.err, HasSubstr("wlanctl: the output could not be written; is there room?\n"));
}

TEST(Monitor, ChangesNothing) {
  // Looking at a store that is there, and at one that is not.
  for (const char* const before : {"", "library_probe init 0 init 1 >/dev/null; "}) {
    const Result result = run(
        std::string(before) +
        "state() { ipcs -m -s | awk '{print $1, $2, $4, $5}'; ls -l --full-time /run /etc/Wireless /etc/Wireless/*; "
        "ls /tmp; ls | grep -v state; }\n"
        "state >state-1; wlanctl monitor --for 2 >/dev/null 2>&1; state >state-2; diff state-1 state-2");
    EXPECT_EQ(0, result.status) << result.out;
  }
}

TEST(Monitor, RefusesLimitsThatAreNone) {
  for (const char* const words : {"--for 0", "-n 0", "--for x", "2g"}) {
    EXPECT_EQ(2, run(std::string("wlanctl monitor ") + words).status) << words;
  }
}

}  // namespace
}  // namespace wlanctl_test
