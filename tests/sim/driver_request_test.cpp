// What the driver answers about the radio itself, and how it refuses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "driver_probe.h"

namespace sim_test {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::SizeIs;

// Each request of the driver, with the least length it takes; the interface is one of the radio's.
struct Row {
  const char* number;
  const char* oid;
  unsigned length;
};
constexpr Row kRows[] = {
    {"8be1", "052a", 528}, {"8be1", "0683", 18436}, {"8be1", "069c", 4}, {"8be1", "0751", 20}, {"8be1", "0752", 16},
    {"8be1", "075c", 198}, {"8be1", "0765", 4},     {"8be1", "09a1", 4}, {"8be1", "2044", 32}, {"8be1", "494a", 9},
    {"8be1", "494c", 19},  {"8be1", "9204", 1},     {"8be9", "0", 56},   {"8bef", "0", 8},     {"8bf2", "0", 768},
    {"8bfc", "0", 80},     {"8bfe", "0", 768},
};

std::string send(const Row& row, unsigned length, const std::string& more) {
  return request_probe_program() + " rai0 " + row.number + " " + row.oid + " " + std::to_string(length) + " " + more +
         "; ";
}

TEST(DriverRequest, RefusesAPayloadThatIsTooShort) {
  std::string script;
  for (const Row& row : kRows) script += send(row, row.length - 1, "-");
  const Words lines = lines_of(run_script(script).out);
  ASSERT_THAT(lines, SizeIs(std::size(kRows)));
  EXPECT_THAT(lines, Each("EINVAL"));
}

TEST(DriverRequest, RefusesAMissingBuffer) {
  std::string script;
  for (const Row& row : kRows) script += send(row, row.length, "null");
  script += ask_oid("ra0", "9220", 1, "null") + ask_oid("ra0", "9205", 1, "null");
  const Words lines = lines_of(run_script(script).out);
  ASSERT_THAT(lines, SizeIs(std::size(kRows) + 2));
  EXPECT_THAT(lines, Each("EFAULT"));
}

TEST(DriverRequest, WritesNoByteBeyondTheReply) {
  std::string script;
  for (const Row& row : kRows) {
    const std::string number = row.number;
    // The station table is larger than its length field says.
    script += send(row, row.length, number == "8bef" ? "- 4096 >/dev/null" : "- >/dev/null") + "echo $?; ";
  }
  const Words lines = lines_of(run_script(script).out);
  // The two about a station name none, which is refused.
  int refused = 0;
  for (const std::string& line : lines) {
    EXPECT_NE("3", line);
    refused += line == "1" ? 1 : 0;
  }
  EXPECT_EQ(2, refused);
}

TEST(DriverRequest, RefusesWhatItDoesNotKnow) {
  const Result result = run_script(ask_oid("ra0", "0001", 64) + ask_oid("rai0", "ffff", 64) + ask("ra0", "8be0", 64) +
                                   ask("ra0", "8bff", 64) + ask("ra1", "8be2", 0));
  EXPECT_EQ("EOPNOTSUPP\nEOPNOTSUPP\nEOPNOTSUPP\nEOPNOTSUPP\nEOPNOTSUPP\n", result.out);
}

TEST(DriverRequest, NeedsADescriptor) {
  EXPECT_EQ("EBADF\n", run_script(ask_oid("closed", "069c", 4)).out);
}

TEST(DriverRequest, NeedsAnInterface) {
  std::string script;
  for (const char* name : {"''", "ra7", "nosuch", "raix", "ra0x", "rai"}) script += ask_oid(name, "069c", 4);
  EXPECT_THAT(lines_of(run_script(script).out), testing::AllOf(SizeIs(6), Each("ENODEV")));
}

TEST(DriverRequest, NeedsAnInterfaceOfTheDriver) {
  std::string script;
  for (const char* name : {"br0", "lo", "wds0"}) script += ask_oid(name, "069c", 4);
  EXPECT_THAT(lines_of(run_script(script).out), testing::AllOf(SizeIs(3), Each("EOPNOTSUPP")));
}

TEST(DriverRequest, FailsOnAnAddressWhereNothingIs) {
  std::string script;
  for (const Row& row : kRows) script += send(row, row.length, "wild");
  for (const char* oid : {"9220", "9205"}) script += ask_oid("ra0", oid, 1, "wild");
  script += ask_oid("wild", "069c", 4) + request_probe_program() + " wild 8b01 0 0; " + request_probe_program() +
            " wild 8b05 0 0";
  const Words lines = lines_of(run_script(script).out);
  ASSERT_THAT(lines, SizeIs(std::size(kRows) + 5));
  EXPECT_THAT(lines, Each("EFAULT"));
}

TEST(DriverRequest, OnlyReadsWhatItIsHanded) {
  EXPECT_EQ("0000\n0000\n\nEFAULT\n",
            run_script(ask_oid("ra0", "9220", 2, "const") + ask_oid("ra0", "9204", 2, "const") +
                       ask_oid("ra0", "9205", 0, "const") + ask_oid("ra0", "069c", 4, "const"))
                .out);
}

constexpr char kWithoutNetAdmin[] = "setpriv --bounding-set=-net_admin --inh-caps=-net_admin ";

TEST(DriverRequest, AnEvenNumberNeedsNetAdmin) {
  std::string script;
  for (const char* number : {"8be0", "8be2", "8bf2", "8bfc", "8bfe"}) {
    for (const char* interface : {"ra0", "nosuch", "br0"}) script += kWithoutNetAdmin + ask(interface, number, 768);
  }
  EXPECT_THAT(lines_of(run_script(script).out), testing::AllOf(SizeIs(15), Each("EPERM")));
}

TEST(DriverRequest, AnOddNumberNeedsNoPermission) {
  EXPECT_EQ("IEEE 802.11\n6\n00000000\n0000\n",
            run_script("simctl noise 2.4G 0; " + (std::string(kWithoutNetAdmin) + wireless_probe_program() + " ra0; ") +
                       kWithoutNetAdmin + ask_oid("ra0", "069c", 4) + kWithoutNetAdmin + ask_oid("ra0", "9204", 2))
                .out);
}

// In a user namespace there is only one user; the bits tell then.
TEST(DriverRequest, TakesSettingsFromAnyUser) {
  const std::string other = is_machines_root() ? "setpriv --reuid=65534 --regid=65534 --clear-groups " : "";
  const Result result =
      run_script("simctl fail noise EIO 1; " + other + ask_oid("ra0", "069c", 4) + "simctl show | grep -c ^request; " +
                 other + ask_oid("ra0", "9220", 2, "00aa") + other + ask_oid("ra0", "9220", 2, "00ab") +
                 "iwpriv ra0 show | grep Oui; cd /run/gateway-sim; stat -c %a lists payloads lists/faults.lock");
  EXPECT_EQ("EIO\n0\n00aa\n00ab\nOuiFilter=00ab\n777\n777\n666\n", result.out);
}

TEST(DriverRequest, GoesWithTheDriver) {
  const Result result =
      run_script("rmmod mt7603eap; " + ask_oid("ra0", "069c", 4) +
                     "insmod /lib/modules/4.4.115/mt7603eap.ko; simctl noise 2.4G 0;" + ask_oid("ra0", "069c", 4),
                 {"--chips", "7603"});
  EXPECT_THAT(lines_of(result.out), testing::ElementsAre(testing::StartsWith("E"), "00000000"));
}

TEST(DriverRequest, TellsPinnedReadingsExactly) {
  const Result result = run_script(
      "simctl noise 2.4G -90; simctl noise 5G 2147483647; simctl load 2.4G 71; simctl load 5G 4294967295;"
      "simctl temperature 2.4G 61; simctl temperature 5G 0; " +
      ask_oid("ra0", "069c", 4) + ask_oid("rai0", "069c", 4) + ask_oid("ra1", "0765", 4) + ask_oid("rai0", "0765", 16) +
      ask_oid("ra0", "09a1", 4) + ask_oid("rai1", "09a1", 4));
  EXPECT_EQ("a6ffffff\nffffff7f\n47000000\nffffffff000000000000000000000000\n3d000000\n00000000\n", result.out);
}

TEST(DriverRequest, ReadingsWanderAroundWhereTheyStart) {
  const Words lines =
      lines_of(run_script(ask_oid("ra0", "069c", 4) + ask_oid("rai0", "069c", 4) + ask_oid("ra0", "0765", 4) +
                          ask_oid("rai0", "0765", 4) + ask_oid("ra0", "09a1", 4) + ask_oid("rai0", "09a1", 4))
                   .out);
  const int kMiddles[] = {-92, -95, 38, 12, 54, 58};
  ASSERT_THAT(lines, SizeIs(std::size(kMiddles)));
  for (size_t i = 0; i < lines.size(); ++i) {
    EXPECT_NEAR(kMiddles[i], static_cast<int32_t>(number_at(lines[i], 0, 4)), 3) << i;
  }
}

TEST(DriverRequest, AWanderingLoadStaysAPercentage) {
  const Words lines = lines_of(run_script("simctl load 2.4G ~-50; simctl load 5G ~150; " + ask_oid("ra0", "0765", 4) +
                                          ask_oid("rai0", "0765", 4))
                                   .out);
  EXPECT_THAT(lines, testing::ElementsAre("00000000", "64000000"));
}

TEST(DriverRequest, APinnedLoadIsAnyNumber) {
  const Words lines = lines_of(
      run_script("simctl load 2.4G -5; simctl load 5G 150; " + ask_oid("ra0", "0765", 4) + ask_oid("rai0", "0765", 4))
          .out);
  EXPECT_THAT(lines, testing::ElementsAre("fbffffff", "96000000"));
}

TEST(DriverRequest, ChannelFollowsEveryWayToSetIt) {
  const Result result =
      run_script("iwpriv ra1 set Channel=11; " + ask("ra0", "8b05", 16, "- 0") + wireless_probe_program() +
                 " ra0; simctl channel 2.4G 3; " + wireless_probe_program() + " ra1; simctl channel 5G 0; " +
                 wireless_probe_program() + " rai0");
  EXPECT_EQ("\nIEEE 802.11\n11\nIEEE 802.11\n3\nIEEE 802.11\n36\n", result.out);
}

TEST(DriverRequest, StatisticsCountStationsAndTraffic) {
  const Result result = run_script(
      "simctl noise 2.4G -80; " + ask("ra0", "8be9", 56) + ask("ra1", "8be9", 60) +
      "ifconfig ra0 down; simctl station add ra0 02:aa:bb:cc:dd:01; simctl station add ra0 02:aa:bb:cc:dd:02;"
      "cd /sys/class/net/ra0/statistics; "
      "cat tx_packets rx_packets tx_bytes rx_bytes tx_errors rx_errors; " +
      ask("ra0", "8be9", 56) + "iwpriv ra0 stat");
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(2 + 6 + 1 + 8));
  EXPECT_EQ("02000000b0ffffff", bytes_at(lines[0], 0, 8));
  EXPECT_EQ("00000000b0ffffff", bytes_at(lines[1], 0, 8));
  EXPECT_EQ(2 * 60U, lines[1].size());
  for (size_t i = 0; i < 6; ++i) EXPECT_EQ(lines[2 + i], std::to_string(number_at(lines[8], 8 + 8 * i, 8))) << i;
  EXPECT_EQ("Stations        = 2", lines[9]);
  EXPECT_EQ("Noise           = -80 dBm", lines[10]);
  EXPECT_EQ("Tx packets      = " + lines[2], lines[11]);
  EXPECT_EQ("Rx errors       = " + lines[7], lines[16]);
}

TEST(DriverRequest, KeepsTheOuiFilterOfARadio) {
  const Result result =
      run_script(ask_oid("ra0", "9220", 3, "00aaff 0") + "iwpriv ra0 show | grep Oui; iwpriv ra1 show | grep Oui; " +
                 "simctl show ra0 | grep Oui; " + ask_oid("ra0", "9220", 0, "null 0") + "iwpriv ra0 show | grep Oui; " +
                 ask_oid("ra0", "9220", 0, "null 0"));
  EXPECT_EQ("\nOuiFilter=00aaff\n    OuiFilter 00aaff\n\n\n", result.out);
}

TEST(DriverRequest, KeepsAndRemovesProbeResponses) {
  const Result result =
      run_script(ask_oid("ra0", "9204", 2, "0102 0") + ask_oid("ra1", "9204", 1, "07 0") +
                 ask_oid("rai0", "9204", 1, "09 0") + "for i in ra0 ra1 rai0; do iwpriv $i show | grep Probe; done; " +
                 ask_oid("ra0", "9205", 1, "ff 0") + "for i in ra0 ra1 rai0; do iwpriv $i show | grep Probe; done");
  EXPECT_EQ("\n\n\nProbeResponse=0102\nProbeResponse=07\nProbeResponse=09\n\nProbeResponse=09\n", result.out);
}

TEST(DriverRequest, RemovesNoFilterWithTheProbeResponses) {
  EXPECT_EQ("\n\nOuiFilter=01\n", run_script(ask_oid("ra0", "9220", 1, "01 0") + ask_oid("ra0", "9205", 1, "01 0") +
                                             "iwpriv ra0 show | grep Oui")
                                      .out);
}

TEST(DriverRequest, ForgetsPayloadsWithTheDriver) {
  const Result result = run_script(ask_oid("ra0", "9220", 1, "01 0") +
                                       "rmmod mt7603eap; insmod /lib/modules/4.4.115/mt7603eap.ko;"
                                       "iwpriv ra0 show | grep -c Oui",
                                   {"--chips", "7603"});
  EXPECT_EQ("\n0\n", result.out);
}

TEST(DriverRequest, ListsTheDriversProcesses) {
  const Result result = run_script(
      "simctl process remove all; simctl process add sixteen-letters! 7 running=0;"
      "simctl process add b 4294967295; " +
      ask("rai0", "8bfe", 768));
  const std::string reply = lines_of(result.out).at(0);
  EXPECT_EQ(2U, number_at(reply, 0, 4));
  EXPECT_EQ("sixteen-letters!", text_at(reply, 4, 16));
  EXPECT_EQ("0700000000000000", bytes_at(reply, 20, 8));
  EXPECT_EQ("b", text_at(reply, 28, 16));
  EXPECT_EQ("ffffffff01000000", bytes_at(reply, 44, 8));
  EXPECT_EQ(std::string(2 * (768 - 52), '0'), bytes_at(reply, 52, 768 - 52));
}

TEST(DriverRequest, CountsMoreProcessesThanItLists) {
  const Result result = run_script(
      "simctl process remove all; i=0; while [ $i -lt 255 ]; do i=$((i+1)); simctl process add p$i $i; done; "
      "simctl process add one-more 1; echo $?; " +
      ask("rai0", "8bfe", 768));
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_EQ("1", lines[0]);
  EXPECT_EQ("ff000000", bytes_at(lines[1], 0, 4));
  EXPECT_EQ("p31", text_at(lines[1], 4 + 24 * 30, 16));
  EXPECT_EQ(std::string(2 * 20, '0'), bytes_at(lines[1], 748, 20));
}

}  // namespace
}  // namespace sim_test
