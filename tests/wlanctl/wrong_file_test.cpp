// What is no plain file in the place of one: it is named, nothing waits for it, and nothing of it is written.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::Each;
using testing::Field;
using testing::HasSubstr;
using testing::Not;

const std::string kFolder = "/etc/Wireless/RT2860AP/";
const std::string kDat = kFolder + "RT2860AP.dat";

// A call that does not end by itself has the status 124.
std::string ending(const std::string& words) {
  return "timeout 30 wlanctl " + words;
}

struct Wrong {
  std::string made;
  const char* reason;
};

const std::vector<Wrong>& wrongs() {
  static const std::vector<Wrong> all = {
      {"mkfifo " + kDat, "it is a pipe, not a file"},
      {"mkdir " + kDat, "it is a folder, not a file"},
      {"mknod " + kDat + " c 1 5 2>/dev/null || ln -s /dev/zero " + kDat, "it is a device, not a file"},
      {"python3 -c 'import socket; socket.socket(socket.AF_UNIX).bind(\"" + kDat + "\")'",
       "it is a socket, not a file"},
      {"truncate -s 1048577 " + kDat, "it is larger than 1 MiB"},
      // One that grows faster than it is read.
      {"cp away " + kDat + "; truncate -s 8G " + kDat, "it is larger than 1 MiB"},
  };
  return all;
}

TEST(WrongFile, AsTheDatFileOfALiveStoreIsNamedByWhoNeedsIt) {
  for (const Wrong& wrong : wrongs()) {
    SCOPED_TRACE(wrong.made);
    const std::vector<Result> steps = run_steps(
        {"wlanctl set 2.4g Channel=11 && mv " + kDat + " away && { " + wrong.made + "; } && ls -lL " + kDat +
             " >before",
         ending("diff 2.4g"), ending("save 2.4g"), ending("apply 2.4g"), ending("apply 2.4g --force --confirm 60"),
         ending("apply 2.4g --dry-run"), ending("revert 2.4g"), ending("revert 2.4g --force"),
         "ls -lL " + kDat + " | cmp - before", ending("get 2.4g Channel"), ending("set 2.4g Channel=1"),
         ending("status 2.4g"), ending("show 2.4g"), ending("confirm 2.4g"), ending("rollback 2.4g")});
    EXPECT_EQ(0, steps[0].status) << steps[0].err;
    for (const size_t i : {1U, 2U, 3U, 4U, 5U, 6U, 7U}) {
      EXPECT_EQ(2, steps[i].status) << i << steps[i].out << steps[i].err;
      EXPECT_THAT(steps[i].err, AllOf(HasSubstr(kDat), HasSubstr(wrong.reason))) << i;
    }
    EXPECT_EQ(0, steps[8].status) << "untouched";
    EXPECT_EQ("11\n", steps[9].out);
    EXPECT_EQ(0, steps[10].status) << steps[10].err;
    EXPECT_THAT(steps, Each(Field(&Result::status, testing::Ne(124))));
  }
}

TEST(WrongFile, AsTheDatFileWithoutAStoreIsNamedByEverybody) {
  for (const Wrong& wrong : wrongs()) {
    SCOPED_TRACE(wrong.made);
    const std::vector<Result> steps =
        run_steps({"mv " + kDat + " away; " + wrong.made, ending("set 2.4g Channel=1"), ending("get 2.4g Channel"),
                   ending("status 2.4g"), ending("apply 2.4g"), ending("radio on 2.4g"), "ipcs -m | grep 0x00012345"});
    for (const size_t i : {1U, 2U, 3U, 4U}) {
      EXPECT_EQ(3, steps[i].status) << i << steps[i].err;
      EXPECT_THAT(steps[i].err, AllOf(HasSubstr("there is no store of 2.4g"), HasSubstr(wrong.reason))) << i;
    }
    EXPECT_NE(124, steps[5].status);
    EXPECT_EQ("", steps[6].out) << "no store of such a file";
  }
}

TEST(WrongFile, ThatGrowsWithoutAnEndIsNoStore) {
  const std::vector<Result> steps =
      run_steps({"yes 'Channel=1' >>" + kDat + " & echo $! >writer; until [ $(stat -c %s " + kDat +
                     ") -gt 1048576 ]; do sleep 0.01; done",
                 ending("set 2.4g Channel=1"), ending("get 2.4g Channel"), "kill $(cat writer); : >" + kDat});
  EXPECT_EQ(3, steps[1].status);
  EXPECT_EQ(3, steps[2].status);
}

TEST(WrongFile, InThePlaceOfTheDriversScriptIsToldAndNothingWaits) {
  const std::vector<Result> steps = run_steps(
      {"wlanctl set 2.4g SSID:1=Kitchen; rm -f " + kFolder + "WLAN_exec.sh; mkfifo " + kFolder + "WLAN_exec.sh",
       ending("apply 2.4g"), "ls -l " + kFolder + "WLAN_exec.sh | cut -c 1", ending("apply 2.4g --dry-run")});
  EXPECT_THAT(steps[1].status, AnyOf(1, 5)) << steps[1].out << steps[1].err;
  EXPECT_THAT(steps[1].err, HasSubstr("cannot write " + kFolder + "WLAN_exec.sh"));
  EXPECT_EQ("p\n", steps[2].out);
  EXPECT_NE(124, steps[3].status);
}

TEST(WrongFile, ThatTakesTheDatFilesPlaceWhileAnApplyWaitsIsNotWrittenAndNothingWaits) {
  const std::vector<Result> steps = run_steps(
      {"wlanctl set 2.4g SSID:1=Kitchen; wlanctl apply 2.4g --confirm 600 >/dev/null; rm " + kDat + "; mkfifo " + kDat,
       ending("rollback 2.4g"), "ls /run/wlanctl-pending-2.4g", "rm " + kDat + "; " + ending("rollback 2.4g"),
       "grep ^SSID1= " + kDat});
  EXPECT_EQ(1, steps[1].status) << steps[1].err;
  EXPECT_THAT(steps[1].err, HasSubstr("cannot put " + kDat + " back: it is a pipe, not a file"));
  EXPECT_EQ(0, steps[2].status);
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
  EXPECT_EQ("SSID1=Gateway-Home\n", steps[4].out);
}

TEST(WrongFile, ThatNobodyWritesToIsNotWaitedForByCheckAndSet) {
  const std::vector<Result> steps = run_steps(
      {"mkfifo pipe", ending("check pipe"), ending("set 2.4g --file SSID:1=pipe"), ending("check /dev/zero"),
       ending("set 2.4g --file SSID:1=/dev/zero"), ending("set 2.4g SSID:1=- </dev/zero"), ending("check /dev")});
  for (const size_t i : {1U, 2U}) EXPECT_THAT(steps[i].err, HasSubstr("it is a pipe that nobody writes to")) << i;
  EXPECT_EQ(2, steps[1].status);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_EQ(2, steps[3].status);
  for (const size_t i : {4U, 5U}) EXPECT_EQ(1, steps[i].status) << i << steps[i].err;
  EXPECT_EQ(2, steps[6].status);
}

TEST(WrongFile, OfAnotherProgramIsReadToItsEnd) {
  const std::vector<Result> steps = run_steps(
      {"mkfifo pipe; cat " + kDat + " >pipe & wlanctl check --band 2.4g pipe",
       "{ head -n 20 " + kDat + "; tail -n +21 " + kDat + "; } | wlanctl check --band 2.4g /dev/stdin",
       "wlanctl check --band 2.4g /dev/stdin <" + kDat,
       "{ echo Kitchen; echo other; } | "
       "wlanctl set 2.4g --file SSID:1=/dev/stdin",
       "bash -c 'wlanctl set 2.4g --file SSID:2=<(echo Guest); wlanctl check --band 2.4g <(cat " + kDat + ")'"});
  EXPECT_THAT(steps, Each(Field(&Result::status, 0)));
  EXPECT_THAT(steps[3].out, HasSubstr("2.4g SSID:1 = Kitchen"));
  EXPECT_THAT(steps[4].out, HasSubstr("2.4g SSID:2 = Guest"));
}

TEST(WrongFile, InThePlaceOfACalibrationImageIsNamed) {
  const std::vector<Result> steps =
      run_steps({"simctl calibration 2.4g chip=7915; rm -f /etc/RT30xxEEPROM.bin; "
                 "mkfifo /etc/RT30xxEEPROM.bin /tmp/RT30xxEEPROM.bin",
                 ending("calibration read 2.4g"), ending("calibration write 2.4g --yes"),
                 "rm /etc/RT30xxEEPROM.bin; " + ending("calibration read 2.4g")});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr("/etc/RT30xxEEPROM.bin cannot be used: it is a pipe, not a file"));
  EXPECT_EQ(2, steps[2].status);
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
}

// The tool's own file in the same folder cannot be removed either, which helps nobody.
TEST(ReadOnlyFolder, IsToldOfTheDatFileBeforeAnythingIsDone) {
  const std::string begin =
      "wlanctl set 2.4g Channel=1 >/dev/null; mount --bind /etc/Wireless /etc/Wireless; mount -o remount,ro,bind "
      "/etc/Wireless; ";
  for (const char* const verb : {"apply 2.4g", "apply 2.4g --confirm 60", "save 2.4g"}) {
    const std::vector<Result> steps =
        run_steps({begin + "wlanctl " + verb, "grep -c ifconfig /run/gateway-sim/journal; ls /run | grep pending"});
    EXPECT_EQ(1, steps[0].status) << verb;
    EXPECT_THAT(steps[0].err,
                HasSubstr("wlanctl: /etc/Wireless/RT2860AP/RT2860AP.dat cannot be written: Read-only file "
                          "system; is its file system mounted read-only? nothing was changed\n"));
    EXPECT_THAT(steps[0].err, Not(HasSubstr("wlanctl-before")));
    EXPECT_EQ("0\n", steps[1].out) << verb;
  }
}

}  // namespace
}  // namespace wlanctl_test
