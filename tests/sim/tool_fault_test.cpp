// Commands that are told to go wrong.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

constexpr char kState[] = "state() { [ $(($(cat /sys/class/net/$1/flags) & 1)) = 1 ] && echo up || echo down; }; ";

TEST(ToolFault, EachCommandExitsAsTold) {
  const Result result = run_script(
      "for t in ifconfig brctl iwpriv insmod rmmod wscd mtd sys killall reboot; do"
      " simctl fail $t exit=7 print=\"$t is broken\" 1; $t; echo $t $?; done");
  EXPECT_EQ("ifconfig 7\nbrctl 7\niwpriv 7\ninsmod 7\nrmmod 7\nwscd 7\nmtd 7\nsys 7\nkillall 7\nreboot 7\n",
            result.out);
  EXPECT_EQ(
      "ifconfig is broken\nbrctl is broken\niwpriv is broken\ninsmod is broken\nrmmod is broken\nwscd is broken\n"
      "mtd is broken\nsys is broken\nkillall is broken\nreboot is broken\n",
      result.err);
}

TEST(ToolFault, LeavesTheWorkUndone) {
  const Result result =
      run_script(std::string(kState) + "simctl fail ifconfig exit=0; /sbin/ifconfig ra0 down; echo $?; state ra0");
  EXPECT_EQ("0\nup\n", result.out);
}

TEST(ToolFault, KillsByASignal) {
  const Result result =
      run_script("for s in KILL SIGTERM 11; do simctl fail ifconfig signal=$s; ifconfig lo; echo $?; done 2>/dev/null");
  EXPECT_EQ("137\n143\n139\n", result.out);
}

TEST(ToolFault, HangsUntilItIsKilled) {
  const Result result = run_script(
      "simctl fail brctl hang; brctl show >shown & until grep -q 'brctl show.*hangs' /run/gateway-sim/journal; do :; "
      "done;"
      "ifconfig lo >/dev/null; echo $?; kill $!; wait $!; echo $?; wc -c <shown");
  EXPECT_EQ("0\n143\n0\n", result.out);
}

// A wait is never shorter than it was told to be.
TEST(ToolFault, WaitsBeforeItsWork) {
  const Result result =
      run_script(std::string(kState) +
                 "simctl fail ifconfig slow=0.05 ra0; before=$(date +%s%N); ifconfig ra0 down; echo $?;"
                 "[ $(($(date +%s%N) - before)) -ge 50000000 ]; echo $?; state ra0");
  EXPECT_EQ("0\n0\ndown\n", result.out);
}

TEST(ToolFault, PrintsAndStillDoesItsWork) {
  const Result result =
      run_script(std::string(kState) + "simctl fail ifconfig print='a  word'; ifconfig ra0 down; echo $?; state ra0");
  EXPECT_EQ("0\ndown\n", result.out);
  EXPECT_EQ("a  word\n", result.err);
}

TEST(ToolFault, HoldsForCallsWithItsWordsAlone) {
  const Result result = run_script(
      "simctl fail ifconfig exit=3 ra0 up; for c in 'ra0 down' 'ra1 up' 'ra0 up' 'ra0 mtu 1400 up'; do"
      " ifconfig $c; echo $?; done; brctl addif br-lan up 2>/dev/null; echo $?");
  EXPECT_EQ("0\n0\n3\n3\n1\n", result.out);
}

TEST(ToolFault, HoldsForTheNextCallsOrFromOneOn) {
  const Result result = run_script(
      "calls() { for i in 1 2 3 4; do ifconfig lo >/dev/null; echo -n \"$? \"; done; echo; };"
      "simctl fail ifconfig exit=3 1; calls; simctl fail ifconfig exit=3 call=2 2; calls;"
      "simctl fail ifconfig exit=3 call=3; calls; simctl fail none; calls;"
      "simctl fail ifconfig exit=3 call=2 1; simctl fail ifconfig exit=4 call=3 1; calls");
  EXPECT_EQ("3 0 0 0 \n0 3 3 0 \n0 0 3 3 \n0 0 0 0 \n0 3 4 0 \n", result.out);
}

TEST(ToolFault, CountIsExactAmongManyProcesses) {
  const Result result = run_script(
      "simctl fail ifconfig exit=3 7; for i in $(seq 24); do { ifconfig lo >/dev/null; echo $?; } & done >answers;"
      "wait; sort answers | uniq -c | tr -s ' '");
  EXPECT_EQ(" 17 0\n 7 3\n", result.out);
}

TEST(ToolFault, ANewOneReplacesTheOldOfTheSameCalls) {
  const Result result = run_script(
      "simctl fail ifconfig exit=3; simctl fail ifconfig exit=4 ra0; simctl fail ifconfig signal=HUP;"
      "simctl show | grep ^command");
  EXPECT_EQ("command ifconfig exits with 4, given ra0\ncommand ifconfig dies of SIGHUP\n", result.out);
}

TEST(ToolFault, EndsWithABoot) {
  EXPECT_EQ("0\n", run_script("simctl fail ifconfig exit=3; reboot; simctl show | grep -c ^command").out);
}

TEST(ToolFault, IsInTheJournal) {
  const Result result = run_script(
      "simctl fail iwpriv print=gone slow=0.001 exit=2 ra0 set 1; iwpriv ra0 set Channel=1 2>/dev/null;"
      "simctl fail mtd hang call=3; simctl fail wscd signal=9; wscd -i ra0; simctl fail none; simctl fail none;"
      "cut -f2- /run/gateway-sim/journal");
  EXPECT_EQ(
      "simctl fail iwpriv print=gone slow=0.001 exit=2 ra0 set 1\t"
      "commands: iwpriv prints \"gone\", waits 0.001 s, exits with 2, given ra0 set 1 time\n"
      "iwpriv ra0 set Channel=1\tfailed as told: exit 2\n"
      "simctl fail mtd hang call=3\tcommands: mtd hangs, after 2 calls\n"
      "simctl fail wscd signal=9\tcommands: wscd dies of SIGKILL\n"
      "wscd -i ra0\tfailed as told: SIGKILL\n"
      "simctl fail none\tcommands: none fails any more\n"
      "simctl fail none\t-\n",
      result.out);
}

TEST(ToolFault, RefusesWordsThatMakeNoSense) {
  const Result result = run_script(
      "for c in 'ifconfig' 'ifconfig ra0' 'ifconfig exit=256' 'ifconfig exit=x' 'ifconfig signal=NONE' 'brctl slow=-1'"
      " 'brctl slow=x' 'mtd hang exit=1' 'mtd hang call=0' 'mtd hang 0' 'mtd hang 1 ra0' 'mtd frob=1' 'mtd print='"
      " 'simctl hang' 'nosuch hang'; do simctl fail $c; echo $?; done 2>/dev/null;"
      "simctl fail mtd \"print=$(printf 'a\\nb')\"; echo $?; simctl fail mtd hang 'a b'; echo $?;"
      "simctl show | grep -c ^command");
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(18));
  for (size_t i = 0; i + 1 < lines.size(); ++i) EXPECT_EQ("2", lines[i]) << i;
  EXPECT_EQ("0", lines.back());
  EXPECT_THAT(result.err, HasSubstr("a text is one line"));
}

}  // namespace
}  // namespace sim_test
