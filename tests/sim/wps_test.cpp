// WPS as the driver keeps it: moved by iwpriv and simctl, seen in the driver's answers.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "driver_probe.h"
#include "sim/state/wps_pin.h"

namespace sim_test {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

std::string state_of(const std::string& interface) {
  return ask_oid(interface, "0751", 20, "- 4");
}

std::string pin_of(const std::string& interface) {
  return ask_oid(interface, "0752", 16, "- 4");
}

std::string station_of(const std::string& interface) {
  return ask_oid(interface, "2044", 32, "- 6");
}

std::string status_of(const std::string& interface) {
  return ask(interface, "8bf2", 768, "- 2");
}

Words replies(const std::string& script) {
  return lines_of(run_script(script).out);
}

std::string decimal_pin(const std::string& reply) {
  const std::string digits = std::to_string(number_at(reply, 0, 4));
  return std::string(8 - digits.size(), '0') + digits;
}

TEST(WpsPin, HasACheckDigit) {
  EXPECT_EQ("12345670", gateway::pin_from(1234567));
  EXPECT_EQ("00000000", gateway::pin_from(0));
  EXPECT_EQ("00000017", gateway::pin_from(1));
  EXPECT_EQ("99999995", gateway::pin_from(9999999));
  EXPECT_TRUE(gateway::is_valid_pin("12345670"));
  for (const char* pin : {"12345671", "1234567", "123456700", "1234567x", ""}) {
    EXPECT_FALSE(gateway::is_valid_pin(pin)) << pin;
  }
}

TEST(WpsPin, IsValidFromTheStartAndDiffersPerInterface) {
  const Words pins = replies(pin_of("ra0") + pin_of("ra1") + pin_of("rai0") + pin_of("rai1"));
  ASSERT_THAT(pins, SizeIs(4));
  for (const std::string& pin : pins) EXPECT_TRUE(gateway::is_valid_pin(decimal_pin(pin))) << pin;
  EXPECT_EQ(4U, std::set<std::string>(pins.begin(), pins.end()).size());
}

TEST(WpsPin, IsMadeAnewOnRequest) {
  const Words pins =
      replies(pin_of("ra0") + "iwpriv ra0 set WscGenPinCode=1; " + pin_of("ra0") + "iwpriv ra0 set WscGenPinCode=0; " +
              pin_of("ra0") + "iwpriv ra0 set WscGenPinCode=1; " + pin_of("ra0") + pin_of("ra1"));
  ASSERT_THAT(pins, SizeIs(5));
  for (const std::string& pin : pins) EXPECT_TRUE(gateway::is_valid_pin(decimal_pin(pin))) << pin;
  EXPECT_NE(pins[0], pins[1]);
  EXPECT_EQ(pins[1], pins[2]);
  EXPECT_NE(pins[2], pins[3]);
}

TEST(WpsPin, IsWhateverNumberItIsSetTo) {
  std::string script;
  for (const char* pin : {"0", "1234", "99999999", "4294967295"}) {
    script += std::string("iwpriv ra0 set WscPinCode=") + pin + "; " + pin_of("ra0") + "simctl wps ra1 pin " + pin +
              "; " + pin_of("ra1");
  }
  EXPECT_THAT(replies(script), ElementsAre("00000000", "00000000", "d2040000", "d2040000", "ffe0f505", "ffe0f505",
                                           "ffffffff", "ffffffff"));
}

TEST(WpsPin, IsANumber) {
  const Result result =
      run_script("for p in '' x 12x -1 4294967296 99999999999; do iwpriv ra0 set WscPinCode=$p; echo $?; done; " +
                 pin_of("ra0") + "iwpriv ra0 set WscPinCode=; echo $?; iwpriv ra0 show | grep -c WscPinCode");
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(9));
  for (size_t i = 0; i < 6; ++i) EXPECT_EQ("255", lines[i]) << i;
  EXPECT_TRUE(gateway::is_valid_pin(decimal_pin(lines[6])));
  EXPECT_EQ("255", lines[7]);
  EXPECT_EQ("0", lines[8]);
}

TEST(WpsState, IsIdleWhereWpsIsOn) {
  const TestFolder folder;
  write_file(folder / "24.dat", dat_text(4, "1;1;1;1", "WscConfMode=7;0;1\n"));
  EXPECT_EQ(
      "01000000\n00000000\n01000000\n00000000\n",
      run_script(state_of("ra0") + state_of("ra1") + state_of("ra2") + state_of("ra3"), {"--dat24", folder / "24.dat"})
          .out);
}

TEST(WpsState, FollowsTheCommandsOfASession) {
  const Words states = replies("iwpriv ra0 set WscMode=2; " + state_of("ra0") + "iwpriv ra0 set WscGetConf=1; " +
                               state_of("ra0") + status_of("ra0") + state_of("ra1") + "iwpriv ra0 set WscStop; " +
                               state_of("ra0") + status_of("ra0") + "iwpriv ra0 set WscGetConf=0; " + state_of("ra0") +
                               "iwpriv ra0 set WscGetConf=1; iwpriv ra0 set WscStop=1; " + state_of("ra0") +
                               "iwpriv ra0 set WscGetConf=1; iwpriv ra0 set WscOOB=0; " + state_of("ra0") +
                               "iwpriv ra0 set WscOOB=1; " + state_of("ra0") + "iwpriv ra0 show | grep WscConfStatus");
  EXPECT_THAT(states, ElementsAre("01000000", "02000000", "0100", "01000000", "01000000", "0000", "01000000",
                                  "01000000", "02000000", "01000000", "WscConfStatus=1"));
}

TEST(WpsState, FollowsTheMode) {
  const Words states =
      replies("iwpriv ra0 set WscGetConf=1; iwpriv ra0 set WscConfMode=2; " + state_of("ra0") +
              "iwpriv ra0 set WscConfMode=0; " + state_of("ra0") + "iwpriv ra0 set WscGetConf=1; " + state_of("ra0") +
              "iwpriv ra0 set WscStop; " + state_of("ra0") + "iwpriv ra0 set WscConfMode=1; " + state_of("ra0"));
  EXPECT_THAT(states, ElementsAre("02000000", "00000000", "00000000", "00000000", "01000000"));
}

TEST(WpsState, IsWhateverNumberItIsSetTo) {
  std::string script;
  for (const char* state : {"0", "1", "2", "3", "5", "2147483647", "0x80000000", "4294967295"}) {
    script += std::string("simctl wps rai1 state ") + state + "; " + state_of("rai1");
  }
  EXPECT_THAT(replies(script), ElementsAre("00000000", "01000000", "02000000", "03000000", "05000000", "ffffff7f",
                                           "00000080", "ffffffff"));
}

TEST(WpsPeer, IsThereAboveStateTwo) {
  const std::string peer = ask_oid("ra1", "075c", 198);
  const Words lines =
      replies("simctl wps ra1 state 3 peer 02:AA:bb:cc:dd:01; " + peer + station_of("ra0") +
              "simctl wps ra1 state 4; " + peer + "simctl wps ra1 state 2; " + peer + station_of("ra0"));
  ASSERT_THAT(lines, SizeIs(5));
  const std::string zeros(2 * 192, '0');
  EXPECT_EQ(zeros + "02aabbccdd01", lines[0]);
  EXPECT_EQ("02aabbccdd01", lines[1]);
  EXPECT_EQ(lines[0], lines[2]);
  EXPECT_EQ(zeros + "000000000000", lines[3]);
  EXPECT_EQ("000000000000", lines[4]);
}

TEST(WpsPeer, IsSomebodyWhenNobodyIsNamed) {
  const Words lines = replies("simctl wps ra0 state 3; " + station_of("ra1") + station_of("rai0"));
  EXPECT_THAT(lines, ElementsAre(testing::StartsWith("02"), "000000000000"));
}

TEST(WpsPeer, CannotBeThereInOtherStates) {
  const Result result =
      run_script("for s in 0 1 2 4294967295; do simctl wps ra0 state $s peer 02:aa:bb:cc:dd:01; echo $?; done; " +
                 state_of("ra0"));
  EXPECT_EQ("1\n1\n1\n1\n01000000\n", result.out);
}

TEST(WpsStatus, IsTheRadios) {
  const Words lines = replies("simctl wps ra1 status 65535; " + status_of("ra0") + status_of("rai0") +
                              "simctl wps ra0 status 2; " + status_of("ra1") + ask("ra0", "8bf2", 768));
  ASSERT_THAT(lines, SizeIs(4));
  EXPECT_EQ("ffff", lines[0]);
  EXPECT_EQ("0000", lines[1]);
  EXPECT_EQ("0200", lines[2]);
  EXPECT_EQ("02" + std::string(2 * 767, '0'), lines[3]);
}

TEST(WpsAccessList, TellsWhoIsAssociated) {
  const std::string list = ask_oid("ra0", "052a", 768);
  const Words lines = replies("simctl wps ra0 access 02:5a:10:24:00:11,02:00:00:00:00:01; " + list +
                              "simctl wps ra0 access none; " + list + ask_oid("ra1", "052a", 528));
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_EQ("00000000020000000000000000000000", bytes_at(lines[0], 0, 16));
  EXPECT_EQ(
      "025a10240011"
      "0100"
      "020000000001"
      "0000",
      bytes_at(lines[0], 16, 16));
  EXPECT_EQ(std::string(2 * (768 - 32), '0'), bytes_at(lines[0], 32, 768 - 32));
  EXPECT_EQ(std::string(2 * 768, '0'), lines[1]);
  EXPECT_EQ(std::string(2 * 528, '0'), lines[2]);
}

TEST(WpsAccessList, StartsFromTheDatFile) {
  const TestFolder folder;
  write_file(folder / "24.dat",
             dat_text(2, "1;1", "AccessPolicy1=2\nAccessControlList1=02:00:00:00:00:0A;02:00:00:00:00:0b\n"));
  const Words lines = lines_of(run_script(ask_oid("ra1", "052a", 528), {"--dat24", folder / "24.dat"}).out);
  ASSERT_THAT(lines, SizeIs(1));
  EXPECT_EQ("0200000002000000", bytes_at(lines[0], 0, 8));
  EXPECT_EQ("02000000000a000002000000000b0000", bytes_at(lines[0], 16, 16));
}

TEST(WpsAccessList, HasRoomFor64) {
  std::string macs;
  for (int i = 0; i < 64; ++i) macs += "02:00:00:00:00:" + std::to_string(10 + i) + ",";
  const Result result =
      run_script("simctl wps ra0 access " + macs + "02:00:00:00:00:99; echo $?; simctl wps ra0 access " + macs +
                 "; echo $?; " + ask_oid("ra0", "052a", 528));
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_EQ("1", lines[0]);
  EXPECT_EQ("0", lines[1]);
  EXPECT_EQ(64U, number_at(lines[2], 4, 4));
  EXPECT_EQ("0200000000730000", bytes_at(lines[2], 520, 8));
}

}  // namespace
}  // namespace sim_test
