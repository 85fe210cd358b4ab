// The radios' stations and neighbours, as callers of the driver see them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "driver_probe.h"

namespace sim_test {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr size_t kTableSize = 4096;

std::string table_of(const std::string& interface) {
  return ask(interface, "8bef", 8, "- 4096");
}

// The station table's entry: BSS number, MAC, validity byte and marker.
std::string entry(const std::string& table, size_t number) {
  return bytes_at(table, 8 + 40 * number, 10);
}

std::string table_after(const std::string& script, const std::string& interface) {
  const Words lines = lines_of(run_script(script + "; " + table_of(interface)).out);
  return lines.empty() ? std::string(2 * kTableSize, '?') : lines.back();
}

TEST(StationTable, HoldsTheDefaultStations) {
  const Words lines = lines_of(run_script(table_of("ra0") + table_of("ra1") + table_of("rai0")).out);
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_EQ(2U, number_at(lines[0], 0, 8));
  EXPECT_EQ("00025a10240011010800", entry(lines[0], 0));
  EXPECT_EQ("00025a10240012010900", entry(lines[0], 1));
  EXPECT_EQ(std::string(2 * (kTableSize - 88), '0'), bytes_at(lines[0], 88, kTableSize - 88));
  EXPECT_EQ(lines[0], lines[1]);
  EXPECT_EQ(1U, number_at(lines[2], 0, 8));
  EXPECT_EQ("00025a10500021010800", entry(lines[2], 0));
}

TEST(StationTable, NamesTheBssOfEachStation) {
  const std::string table =
      table_after("simctl station add rai1 02:00:00:00:00:01; simctl station add rai0 02:00:00:00:00:02", "rai1");
  EXPECT_EQ(3U, number_at(table, 0, 8));
  EXPECT_EQ("01020000000001010900", entry(table, 1));
  EXPECT_EQ("00020000000002010a00", entry(table, 2));
}

TEST(StationTable, IsEmptyWithoutStations) {
  EXPECT_EQ(std::string(2 * kTableSize, '0'), table_after("simctl station remove ra0 all", "ra0"));
}

TEST(StationTable, LosesTheStationThatIsRemoved) {
  const std::string table = table_after("simctl station remove ra0 02:5a:10:24:00:11", "ra0");
  EXPECT_EQ(1U, number_at(table, 0, 8));
  EXPECT_EQ("00025a10240012010900", entry(table, 0));
}

TEST(StationTable, HasRoomFor32) {
  const Result result = run_script(
      "for i in $(seq 10 39); do simctl station add ra1 02:00:00:00:00:$i; done; echo $?;"
      "simctl station add ra0 02:00:00:00:00:99; echo $?; simctl station add ra1 02:00:00:00:00:39 rate=1; echo $?; " +
      table_of("ra0"));
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(4));
  EXPECT_THAT(Words(lines.begin(), lines.begin() + 3), ElementsAre("0", "1", "0"));
  EXPECT_EQ(32U, number_at(lines[3], 0, 8));
  EXPECT_EQ("01020000000039012700", entry(lines[3], 31));
  EXPECT_EQ("simctl: station: the radio's table has room for 32 stations\n", result.err);
}

// Readers of the 2.4G table take the id's low byte for a BSS number.
TEST(StationTable, GivesNoIdThatLooksLikeABss) {
  const std::string table = table_after(
      "simctl station add ra0 02:00:00:00:00:01 aid=255;"
      "for i in 10 11; do simctl station add ra1 02:00:00:00:00:$i; done; "
      "for i in $(seq 0 250); do echo; done >/dev/null",
      "ra0");
  for (size_t i = 0; i < 5; ++i) EXPECT_GE(number_at(table, 8 + 40 * i + 8, 1), 8U) << i;
}

TEST(StationTable, TakesMarkersOnRequest) {
  const std::string table = table_after(
      "simctl station add ra0 02:00:00:00:00:01 marker=0x0100; simctl station add ra0 02:00:00:00:00:02 marker=0 "
      "valid=0;"
      "simctl station add ra0 02:00:00:00:00:03 aid=2007 valid=255",
      "ra0");
  EXPECT_EQ("00020000000001010001", entry(table, 2));
  EXPECT_EQ("00020000000002000000", entry(table, 3));
  EXPECT_EQ("00020000000003ffd707", entry(table, 4));
}

TEST(StationTable, AStationIsOnOneBssAtATime) {
  const Result result = run_script("simctl station add rai1 02:5A:10:24:00:11; " + table_of("ra0") + table_of("rai0") +
                                   "cut -f3 /run/gateway-sim/journal");
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_EQ(1U, number_at(lines[0], 0, 8));
  EXPECT_EQ(2U, number_at(lines[1], 0, 8));
  EXPECT_EQ("01025a10240011010900", entry(lines[1], 1));
  EXPECT_EQ("ra0: station 02:5a:10:24:00:11 left; rai1: station 02:5a:10:24:00:11 associated", lines[2]);
}

TEST(StationTable, AddingAKnownStationChangesWhatIsNamed) {
  const Result result = run_script(
      "simctl station add ra0 02:5a:10:24:00:12 signal=-40; simctl show ra0 | grep 0:12 | sed 's/, for.*//'");
  EXPECT_EQ("  station 02:5a:10:24:00:12 on ra0: aid 9, signal -40 (-40) dBm, 72 Mbit/s\n", result.out);
}

TEST(Capabilities, AreThoseOfTheStation) {
  const Result result =
      run_script("simctl station add ra1 02:00:00:00:00:01 rrm=00000000000000fe btm=a7; " +
                 ask_oid("ra1", "494c", 19, "040e000000020000000001") + ask_oid("ra1", "494a", 9, "0407020000000001") +
                 ask_oid("ra0", "494c", 19, "040e000000025a10240011") + ask_oid("ra0", "494a", 9, "0407025a10240012"));
  EXPECT_EQ(
      "040e00000002000000000100000000000000fe\n0407020000000001a7\n"
      "040e000000025a102400117300000000000000\n0407025a1024001200\n",
      result.out);
}

TEST(Capabilities, OfAStrangerAreNotKnown) {
  const Result result =
      run_script(ask_oid("ra0", "494c", 19, "040e000000020000000001") + ask_oid("ra0", "494a", 9, "0407020000000001") +
                 ask_oid("ra1", "494c", 19, "040e000000025a10240011") + ask_oid("ra1", "494a", 9, "0407025a10240011"));
  EXPECT_EQ("ENOENT\nENOENT\nENOENT\nENOENT\n", result.out);
}

TEST(Capabilities, NeedTheRecordsOwnHead) {
  const Result result = run_script(
      ask_oid("ra0", "494c", 19, "050e000000025a10240011") + ask_oid("ra0", "494c", 19, "040d000000025a10240011") +
      ask_oid("ra0", "494c", 19, "040e000001025a10240011") + ask_oid("ra0", "494a", 9, "0307025a10240011") +
      ask_oid("ra0", "494a", 9, "0408025a10240011"));
  EXPECT_EQ("EINVAL\nEINVAL\nEINVAL\nEINVAL\nEINVAL\n", result.out);
}

TEST(NeighbourTable, HoldsTheNeighboursOfItsBand) {
  const Result result = run_script(
      "simctl neighbour remove 5G all;"
      "simctl neighbour add 5G 02:00:00:00:00:0a channel=149 signal=-61 ssid='a b%' security=WPA3PSK/AES wps=1;"
      "simctl neighbour add 5G 02:00:00:00:00:0b ssid=; " +
      ask_oid("rai0", "0683", 18436) + ask_oid("ra0", "0683", 18436));
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(2));
  const std::string& table = lines[0];
  EXPECT_EQ(2U, number_at(table, 0, 4));
  EXPECT_EQ("02000000000a9500c3ffffff", bytes_at(table, 4, 12));
  EXPECT_LT(number_at(table, 16, 4), 60U);
  EXPECT_EQ("0401612062250000", bytes_at(table, 20, 8));
  EXPECT_EQ("WPA3PSK/AES", text_at(table, 4 + 52, 32));
  EXPECT_EQ("11a/n/ac/ax", text_at(table, 4 + 84, 12));
  EXPECT_EQ(std::string(2 * 48, '0'), bytes_at(table, 4 + 96, 48));
  EXPECT_EQ("02000000000b2400", bytes_at(table, 148, 8));
  EXPECT_EQ("0000", bytes_at(table, 148 + 16, 2));
  EXPECT_EQ(std::string(2 * (18436 - 292), '0'), bytes_at(table, 292, 18436 - 292));
  EXPECT_EQ(3U, number_at(lines[1], 0, 4));
  EXPECT_EQ("Corner Bakery", text_at(lines[1], 4 + 18, 34));
  EXPECT_EQ("11b/g/n/ax", text_at(lines[1], 4 + 84, 12));
}

TEST(NeighbourTable, TakesAnSsidOfAnyBytes) {
  const Result result =
      run_script("simctl neighbour add 2.4G 02:6e:40:24:00:01 ssid=\"$(printf '\\001\\377 %%=\\n;x')\"; " +
                 ask_oid("ra0", "0683", 18436));
  EXPECT_EQ(
      "0801"
      "01ff20253d0a3b78",
      bytes_at(lines_of(result.out).at(0), 4 + 16, 10));
  EXPECT_EQ("2001", bytes_at(lines_of(run_script("simctl neighbour add 2.4G 02:6e:40:24:00:01 "
                                                 "ssid=abcdefghijklmnopqrstuvwxyz012345; " +
                                                 ask_oid("ra0", "0683", 18436))
                                          .out)
                                 .at(0),
                             20, 2));
}

TEST(NeighbourTable, HasRoomFor128) {
  const Result result = run_script(
      "simctl neighbour remove 2.4G all; for i in 0 1 2 3 4 5 6 7; do for j in 0 1 2 3 4 5 6 7 8 9 a b c d e f; do "
      "simctl neighbour add 2.4G 02:00:00:00:00:$i$j; done; done; simctl neighbour add 2.4G 02:00:00:00:00:99; echo "
      "$?; " +
      ask_oid("ra0", "0683", 18436));
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_EQ("1", lines[0]);
  EXPECT_EQ(128U, number_at(lines[1], 0, 4));
  EXPECT_EQ("02000000007f", bytes_at(lines[1], 4 + 144 * 127, 6));
}

TEST(ApCount, TellsOfTheStrongestNeighbour) {
  const Result result = run_script(
      "simctl channel 2.4G 6; simctl neighbour add 2.4G 02:6e:40:24:00:01 signal=-70 channel=6;"
      "simctl neighbour add 2.4G 02:6e:40:24:00:02 signal=-71; simctl neighbour add 2.4G 02:6e:40:24:00:03 "
      "signal=-69; " +
      ask("ra0", "8bfc", 1024) + "simctl neighbour remove 2.4G all; " + ask("ra0", "8bfc", 80));
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_EQ("0300000002000000bbffffff0b00026e40240003", bytes_at(lines[0], 0, 20));
  EXPECT_EQ(std::string(2 * 20, '0'), bytes_at(lines[0], 20, 20));
  EXPECT_NE(0U, number_at(lines[0], 40, 8));
  EXPECT_NE(0U, number_at(lines[0], 56, 8));
  EXPECT_EQ(std::string(2 * 20, '0'), bytes_at(lines[1], 0, 20));
}

}  // namespace
}  // namespace sim_test
