// The exit codes, verb by verb: the same for the same trouble, in the text's case and in the document's.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

struct Row {
  const char* words;
  int without_store;   // none, and no dat file to make one of
  int beside_another;  // which has the tool's lock, and does not end
};

// With --wait 0, where the verb waits at all.
constexpr Row kRows[] = {
    {"show 2.4g", 3, 0},
    {"get 2.4g Channel", 3, 0},
    {"set 2.4g Channel=1", 3, 4},
    {"edit 2.4g", 3, 4},
    {"keys 2.4g", 0, 0},
    {"explain Channel", 0, 0},
    {"ssid list 2.4g", 3, 0},
    {"ssid add 2.4g Kitchen --passphrase-file word", 3, 4},
    {"ssid remove 2.4g 2 --yes", 3, 4},
    {"ssid rename 2.4g 2 Visitors", 3, 4},
    {"ssid enable 2.4g 2", 3, 4},
    {"ssid disable 2.4g 2", 3, 4},
    {"diff 2.4g", 3, 0},
    {"save 2.4g", 3, 4},
    {"revert 2.4g", 3, 4},
    {"export 2.4g", 3, 0},
    {"import f.json", 3, 4},
    {"check /etc/Wireless/RT2860AP/RT2860AP.dat", 2, 0},
    {"apply 2.4g", 3, 4},
    {"apply 2.4g --confirm 600", 3, 4},
    {"confirm 2.4g", 0, 4},
    {"rollback 2.4g", 1, 4},
    {"log", 0, 0},
    {"undo", 3, 4},
    {"status 2.4g", 3, 0},
    {"monitor 2.4g --for 1", 0, 0},
    {"stations 2.4g", 3, 0},
    {"neighbours 2.4g", 0, 0},
    {"wps status 2.4g 1", 3, 0},
    {"wps pbc 2.4g 1", 3, 4},
    {"wps pin 2.4g 1 12345670", 3, 4},
    {"wps stop 2.4g 1", 3, 4},
    {"radio off 2.4g", 3, 4},
    {"radio on 2.4g", 3, 4},
    {"led 0", 0, 0},
    {"button", 0, 0},
    {"calibration read 2.4g", 0, 4},
    {"calibration write 2.4g --yes", 0, 4},
    {"dump 2.4g", 3, 0},
    {"trace level 1", 0, 0},
    {"trace on", 0, 0},
    {"trace off", 0, 0},
    {"unlock 2.4g", 0, 4},
    {"doctor 2.4g", 1, 0},
    {"completion bash", 0, 0},
    {"help", 0, 0},
};

// Something to undo, to import, and to edit; an image in flash and in its file.
const std::string kBegin =
    "echo guest-word-1 >word; printf '#!/bin/sh\\nsed -i \"s/^WscConfMode:1=.*/WscConfMode:1=2/\" $1\\n' >editor; "
    "chmod +x editor; EDITOR=./editor; export EDITOR; unset VISUAL\n" +
    into("f.json", settings("\"WscConfMode:1\": 2")) +
    "{ simctl calibration 2.4G chip=7915; wlanctl calibration read 2.4g; library_probe init 0 init 1\nwlanctl set 2.4g "
    "WscConfMode:1=1; wlanctl apply 2.4g; } >/dev/null 2>&1; ";

void expect_codes(const std::string& trouble, int Row::*code) {
  Words steps;
  for (const Row& row : kRows) {
    const bool waits = row.*code == 4;
    steps.push_back(std::string("EDITOR=./editor; export EDITOR; wlanctl ") + row.words + (waits ? " --wait 0" : "") +
                    " --json </dev/null");
  }
  steps.insert(steps.begin(), kBegin + trouble);
  const std::vector<Result> results = run_steps(steps);
  for (size_t i = 1; i < results.size(); ++i) {
    const Row& row = kRows[i - 1];
    EXPECT_EQ(row.*code, results[i].status) << row.words << '\n' << results[i].out.substr(0, 2000);
  }
}

TEST(ExitCodes, AreThereForEveryVerb) {
  const Words all = verbs();
  ASSERT_GT(all.size(), 20u);
  std::set<std::string> known;
  for (const Row& row : kRows) known.insert(std::string(row.words).substr(0, std::string(row.words).find(' ')));
  for (const std::string& verb : all) EXPECT_TRUE(known.contains(verb)) << verb;
}

TEST(ExitCodes, AreThreeWithoutAStoreWhereOneIsNeeded) {
  expect_codes("ipcrm -M 0x12345; mv " + std::string(kDat) + " away", &Row::without_store);
}

TEST(ExitCodes, AreFourBesideAnotherThatDoesNotEnd) {
  expect_codes(
      "(flock 9; touch held; until [ -e done ]; do sleep 0.02; done) 9>/var/run/wlanctl.lock & until [ -e held ]; do "
      "sleep 0.02; done",
      &Row::beside_another);
}

struct Ill {
  const char* trouble;
  const char* words;
  int code;
};

constexpr char kDeaf[] = "simctl fail iwpriv exit=1";
constexpr char kMute[] = "simctl fail channel EIO; simctl fail stations EIO";
constexpr char kDown[] = "simctl fail ifconfig exit=1 ra0 up";

// What driver and kernel do not do, and what is only to be warned of.
constexpr Ill kIlls[] = {
    {kDeaf, "set 2.4g WscConfMode:1=2", 5},
    {kDeaf, "edit 2.4g", 5},
    {kDeaf, "import f.json", 5},
    {kDeaf, "undo", 5},
    {kDeaf, "apply 2.4g --again", 5},
    {kDeaf, "wps pbc 2.4g 1", 5},
    {kDeaf, "wps stop 2.4g 1", 5},
    {kMute, "status 2.4g", 5},
    {kMute, "stations 2.4g", 5},
    {kDown, "apply 2.4g --again", 6},
    {"wlanctl radio off 2.4g; simctl fail ifconfig exit=1 ra0 up", "radio on 2.4g", 6},
    {kMute, "apply 2.4g --again", 6},
    {"wlanctl set 2.4g Channel=1; wlanctl apply 2.4g --confirm 600; ifconfig ra0 down", "confirm 2.4g", 6},
    {"wlanctl set 2.4g Channel=1; wlanctl apply 2.4g --confirm 600; simctl fail ifconfig exit=1 ra0 up",
     "rollback 2.4g", 6},
    {"simctl fail ifconfig exit=1 ra0 up; wlanctl apply 2.4g --again", "status 2.4g", 6},
    {"echo Chanel=6 >>/etc/Wireless/RT2860AP/RT2860AP.dat", "check /etc/Wireless/RT2860AP/RT2860AP.dat", 7},
    {"ifconfig ra1 down", "doctor 2.4g", 7},
};

TEST(ExitCodes, AreFiveToSevenOfADriverThatDoesNotAnswerOfWhatIsNotInForceAndOfWarnings) {
  for (const Ill& ill : kIlls) {
    const Result result =
        run_steps({kBegin + "{ " + ill.trouble + "\n} >/dev/null 2>&1",
                   std::string("EDITOR=./editor; export EDITOR; wlanctl ") + ill.words + " --json </dev/null"})
            .back();
    EXPECT_EQ(ill.code, result.status) << ill.trouble << ": " << ill.words << '\n' << result.out.substr(0, 2000);
  }
}

}  // namespace
}  // namespace wlanctl_test
