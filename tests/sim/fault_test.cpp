// Requests that are told to go wrong.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "driver_probe.h"

namespace sim_test {
namespace {

using testing::ElementsAre;

TEST(Fault, EachRequestFailsByItsName) {
  struct {
    const char* name;
    const char* number;
    const char* oid;
  } const kRows[] = {
      {"name", "8b01", "0"},           {"channel", "8b05", "0"},           {"statistics", "8be9", "0"},
      {"stations", "8bef", "0"},       {"wps-status", "8bf2", "0"},        {"ap-count", "8bfc", "0"},
      {"processes", "8bfe", "0"},      {"noise", "8be1", "069c"},          {"load", "8be1", "0765"},
      {"temperature", "8be1", "09a1"}, {"neighbours", "8be1", "0683"},     {"11k", "8be1", "494c"},
      {"11v", "8be1", "494a"},         {"wps-state", "8be1", "0751"},      {"wps-peer", "8be1", "075c"},
      {"wps-pin", "8be1", "0752"},     {"wps-access", "8be1", "052a"},     {"wps-station", "8be1", "2044"},
      {"oui-filter", "8be1", "9220"},  {"probe-response", "8be1", "9204"}, {"probe-response-delete", "8be1", "9205"}};
  std::string script;
  for (const auto& row : kRows) {
    script += std::string("simctl fail ") + row.name + " EXDEV; " + request_probe_program() + " ra0 " + row.number +
              " " + row.oid + " 20000; simctl fail none; ";
  }
  const Words lines = lines_of(run_script(script).out);
  ASSERT_EQ(std::size(kRows), lines.size());
  for (size_t i = 0; i < lines.size(); ++i) EXPECT_EQ("EXDEV", lines[i]) << kRows[i].name;
}

TEST(Fault, IsTheErrorThatWasAskedFor) {
  const Result result =
      run_script("for e in EIO 5 ENODEV 133 1; do simctl fail noise $e; " + ask_oid("ra0", "069c", 4) + "done");
  EXPECT_EQ("EIO\nEIO\nENODEV\nEHWPOISON\nEPERM\n", result.out);
}

TEST(Fault, OneOidLeavesTheOthers) {
  const Result result = run_script("simctl noise 2.4G 0; simctl load 2.4G 1; simctl fail oid:0x0765 EIO; " +
                                   ask_oid("ra0", "069c", 4) + ask_oid("ra0", "0765", 4));
  EXPECT_EQ("00000000\nEIO\n", result.out);
}

TEST(Fault, AnOidThatTheDriverDoesNotKnowFailsAsToldToo) {
  EXPECT_EQ("EIO\nEOPNOTSUPP\n",
            run_script("simctl fail oid:1 EIO; " + ask_oid("ra0", "0001", 4) + ask_oid("ra0", "0002", 4)).out);
}

TEST(Fault, TheRequestOfAllOidsFailsThemAll) {
  const Result result = run_script("simctl fail 0x8BE1 EIO; " + ask_oid("ra0", "069c", 4) +
                                   ask_oid("rai1", "0752", 16) + wireless_probe_program() + " ra0");
  EXPECT_EQ("EIO\nEIO\nIEEE 802.11\n6\n", result.out);
}

TEST(Fault, HoldsForOneInterfaceAlone) {
  const Result result = run_script("simctl noise 2.4G 0; simctl fail noise EIO ra1; " + ask_oid("ra0", "069c", 4) +
                                   ask_oid("ra1", "069c", 4));
  EXPECT_EQ("00000000\nEIO\n", result.out);
}

TEST(Fault, ComesBeforeALookAtThePayload) {
  EXPECT_EQ("EIO\n", run_script("simctl fail noise EIO; " + ask_oid("ra0", "069c", 0, "null")).out);
}

TEST(Fault, EndsAfterItsCount) {
  const std::string noise = ask_oid("ra0", "069c", 4);
  const Result result = run_script("simctl noise 2.4G 0; simctl fail noise EIO 2; simctl fail channel EIO; " + noise +
                                   noise + noise + "simctl show | grep ^request");
  EXPECT_EQ("EIO\nEIO\n00000000\nrequest channel fails with EIO\n", result.out);
}

TEST(Fault, CountIsExactAmongManyProcesses) {
  const Result result = run_script("simctl noise 2.4G 0; simctl fail noise EIO ra0 7; for i in $(seq 24); do " +
                                   ask_oid("ra0", "069c", 4) + "done >/dev/null; simctl fail noise EIO ra0 7;" +
                                   "for i in $(seq 24); do { " + ask_oid("ra0", "069c", 4) +
                                   "} & done >answers; wait; sort answers | uniq -c | tr -s ' '");
  EXPECT_EQ(" 17 00000000\n 7 EIO\n", result.out);
}

// The kernel lists who waits for a lock with an arrow.
TEST(Fault, CountGoesDownUnderALock) {
  const TestFolder folder;
  write_file(folder / "script", ask_oid("ra0", "069c", 4));
  const Result result = run_in(
      folder.path(),
      {"--", "sh", "-c",
       "simctl fail noise EIO 1; " + button_probe_program() +
           " locked /run/gateway-sim/lists/faults.lock"
           " 'sh ./script >answer & until grep -q -e \"->\" /proc/locks || [ -s answer ]; do :; done; wc -c <answer';"
           "until [ -s answer ]; do :; done; cat answer"});
  EXPECT_EQ("0\nEIO\n", result.out);
}

TEST(Fault, ANewOneReplacesTheOldOfItsKind) {
  const Result result = run_script(
      "simctl fail noise EIO 3; simctl fail noise EPERM; simctl fail noise EIO ra0;"
      "simctl show | grep ^request");
  EXPECT_EQ("request noise fails with EPERM\nrequest noise fails with EIO on ra0\n", result.out);
}

TEST(Fault, OutlivesTheDriverButNotABoot) {
  const Result result =
      run_script("simctl fail noise EIO; rmmod mt7603eap; insmod /lib/modules/4.4.115/mt7603eap.ko; " +
                     ask_oid("ra0", "069c", 4) + "reboot; simctl noise 2.4G 0; " + ask_oid("ra0", "069c", 4),
                 {"--chips", "7603"});
  EXPECT_EQ("EIO\n00000000\n", result.out);
}

TEST(Fault, SetsNoErrorWhereNoneIsDue) {
  const Result result =
      run_script("simctl fail none; simctl fail stations EIO rai0; " + ask("ra0", "8bef", 8, "- 4096 | cut -c1-16"));
  EXPECT_EQ("0200000000000000\n", result.out);
}

// The least that it takes; nothing says how much more.
TEST(Fault, AnswersLate) {
  const Result result = run_script(
      "simctl noise 2.4G 0; simctl fail noise slow=0.05 1; before=$(date +%s%N); " + ask_oid("ra0", "069c", 4) +
      "[ $(($(date +%s%N) - before)) -ge 50000000 ]; echo $?; simctl show | grep ^request");
  EXPECT_EQ("00000000\n0\n", result.out);
}

TEST(Fault, FailsLate) {
  const Result result = run_script("simctl fail noise EIO slow=0.05 1; before=$(date +%s%N); " +
                                   ask_oid("ra0", "069c", 4) + "[ $(($(date +%s%N) - before)) -ge 50000000 ]; echo $?");
  EXPECT_EQ("EIO\n0\n", result.out);
}

// That the fault is used up shows that the request waits.
constexpr char kUntilItWaits[] = "& while simctl show | grep -q ^request; do :; done; ";

TEST(Fault, KilledCallerDoesNotWaitOn) {
  const std::string noise = request_probe_program() + " ra0 8be1 069c 4";
  const Result result = run_script("simctl noise 2.4G 0; simctl fail noise slow=60 1; " + noise + kUntilItWaits +
                                   "kill -KILL $!; wait $!; echo $?; " + noise);
  EXPECT_EQ("137\n00000000\n", result.out);
}

TEST(Fault, HandledSignalEndsTheWaitWithRestartToo) {
  const Result result =
      run_script("simctl fail noise slow=60 1; " + request_probe_program() + " ra0 8be1 069c 4 - 4 handled >answer " +
                 kUntilItWaits + "until [ -s answer ]; do kill -USR1 $!; done; cat answer");
  EXPECT_EQ("EINTR\n", result.out);
}

TEST(Fault, OthersAreAnsweredMeanwhile) {
  const Result result = run_script("simctl noise 2.4G 0; simctl fail noise slow=60 1; " + request_probe_program() +
                                   " ra0 8be1 069c 4 >late " + kUntilItWaits + ask_oid("ra0", "069c", 4) +
                                   "ifconfig ra1 down; echo $?; wc -c <late; kill $!");
  EXPECT_EQ("00000000\n0\n0\n", result.out);
}

TEST(Fault, CutsTheAnswerAndSaysSo) {
  const std::string table = ask("ra0", "8bef", 8, "- 58 length");
  const Result result = run_script(
      "simctl station remove ra0 all; simctl station add ra0 02:00:00:00:00:01 aid=8;"
      "simctl station add ra0 02:00:00:00:00:02 aid=9;"
      "for n in 58 48 9 0; do simctl fail stations cut=$n 1; " +
      table + "done; simctl show | grep ^request");
  const std::string head = "0200000000000000";
  const std::string first = "00020000000001010800" + std::string(60, '0');
  const std::string second = "00020000000002010900";
  const auto zeros = [](size_t bytes) { return std::string(2 * bytes, '0'); };
  EXPECT_EQ(head + first + second + " 58\n" + head + first + zeros(10) + " 48\n" + head + zeros(50) + " 9\n" +
                zeros(58) + " 0\n",
            result.out);
}

TEST(Fault, CutLeavesTheRestOfTheCallersBufferAlone) {
  EXPECT_EQ("00ffffff\n",
            run_script("simctl noise 2.4G 0; simctl fail noise cut=1; " + ask_oid("ra0", "069c", 4, "ffffffff")).out);
}

TEST(Fault, CutBeyondTheAnswerChangesNothing) {
  EXPECT_EQ("000000000000 6\n",
            run_script("simctl noise 2.4G 0; simctl fail noise cut=4; " + ask_oid("ra0", "069c", 6, "- 6 length")).out);
}

// As with the kernel, which gives the record of an even number, one that sets something, not back.
TEST(Fault, EvenNumbersTellNoLength) {
  const Result result =
      run_script("simctl wps ra0 status 257; simctl fail wps-status cut=1; " + ask("ra0", "8bf2", 768, "- 2 length"));
  EXPECT_EQ("0100 768\n", result.out);
}

TEST(Fault, SaysWhatItDoes) {
  const Result result = run_script(
      "simctl fail channel slow=0.25 ra0 1; simctl fail noise EIO slow=60 rai0; simctl fail stations slow=1 cut=48 2;"
      "simctl fail load cut=0; simctl show | grep ^request");
  EXPECT_EQ(
      "request channel waits 0.250 s on ra0 1 time\n"
      "request noise waits 60.000 s, fails with EIO on rai0\n"
      "request stations waits 1.000 s, answers with 48 bytes at most 2 times\n"
      "request load answers with 0 bytes at most\n",
      result.out);
}

TEST(Fault, IsInTheJournal) {
  EXPECT_EQ(
      "simctl fail channel EIO ra0 1\tdriver: channel fails with EIO on ra0 1 time\n"
      "simctl fail 0x8be9 19 2\tdriver: statistics fails with ENODEV 2 times\n"
      "simctl fail oid:4660 EPERM\tdriver: oid:0x1234 fails with EPERM\n"
      "simctl fail 0x8be5 EPERM\tdriver: 0x8BE5 fails with EPERM\n"
      "simctl fail none\tdriver: no request fails any more\n"
      "simctl fail none\t-\n",
      run_script("simctl fail channel EIO ra0 1; simctl fail 0x8be9 19 2; simctl fail oid:4660 EPERM;"
                 "simctl fail 0x8be5 EPERM; simctl fail none; simctl fail none; cut -f2- /run/gateway-sim/journal")
          .out);
}

}  // namespace
}  // namespace sim_test
