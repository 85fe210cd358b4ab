// The reboot that a changed setting asks for.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

#include "apply/command_list.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using commands::joined;
using commands::Lines;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

struct Request {
  int32_t band = 0;
  uint8_t current = 2;
  uint32_t new_value = 3;
  int32_t wds_count = 0;
  const char* other_count = "1";
  const char* key = "TxPower";
};

// What one request runs; the byte's value afterwards is expected to be `current`.
Lines rebooted(const Request& request, uint8_t current) {
  seams::commands.clear();
  // The neighbours of the byte must stay.
  uint8_t bytes[3] = {0xa5, request.current, 0x5a};
  EXPECT_EQ(0, wifimgr_lib_reboot(request.band, &bytes[1], request.new_value, request.wds_count, request.other_count,
                                  request.key));
  EXPECT_EQ(current, bytes[1]);
  EXPECT_EQ(0xa5, bytes[0]);
  EXPECT_EQ(0x5a, bytes[2]);
  return seams::commands;
}

Lines down(const std::string& prefix, int count) {
  Lines lines;
  for (int i = 0; i < count; ++i) lines.push_back("/sbin/ifconfig " + prefix + std::to_string(i) + " down");
  return lines;
}

TEST(Reboot, TakesBothBandsDownFirst) {
  EXPECT_THAT(rebooted({0, 2, 3, 0, "1", "TxPower"}, 3),
              ElementsAre("/sbin/ifconfig ra0 down", "/sbin/ifconfig ra1 down", "/sbin/ifconfig rai0 down", "reboot"));
  EXPECT_THAT(rebooted({0, 1, 2, 2, "2", "TxPower"}, 2),
              ElementsAreArray({"/sbin/ifconfig wds0 down", "/sbin/ifconfig wds1 down", "/sbin/ifconfig wdsi0 down",
                                "/sbin/ifconfig wdsi1 down", "/sbin/ifconfig ra0 down", "/sbin/ifconfig rai0 down",
                                "/sbin/ifconfig rai1 down", "reboot"}));
}

TEST(Reboot, Of5GIsTheMirrorImage) {
  EXPECT_THAT(rebooted({1, 2, 3, 0, "1", "TxPower"}, 3),
              ElementsAre("/sbin/ifconfig rai0 down", "/sbin/ifconfig rai1 down", "/sbin/ifconfig ra0 down", "reboot"));
  EXPECT_THAT(rebooted({1, 1, 2, 2, "2", "TxPower"}, 2),
              ElementsAreArray({"/sbin/ifconfig wdsi0 down", "/sbin/ifconfig wdsi1 down", "/sbin/ifconfig wds0 down",
                                "/sbin/ifconfig wds1 down", "/sbin/ifconfig rai0 down", "/sbin/ifconfig ra0 down",
                                "/sbin/ifconfig ra1 down", "reboot"}));
}

TEST(Reboot, NeverForTheSsidCountAndTheHardwareNat) {
  for (const int32_t band : {0, 1, 2}) {
    for (const char* key : {"BssidNum", "WHNAT"}) EXPECT_THAT(rebooted({band, 2, 3, 4, "1", key}, 2), IsEmpty()) << key;
  }
}

TEST(Reboot, ForEveryOtherKeyAndSpelling) {
  for (const char* key : {"TxPower", "", "BssidNum2", "Bssid", "bssidnum", "WHNAT ", "WHNA", "BssidNum\n", "Channel"}) {
    EXPECT_THAT(rebooted({0, 1, 3, 0, "0", key}, 3), ElementsAre("/sbin/ifconfig ra0 down", "reboot")) << key;
  }
}

TEST(Reboot, NotForAnUnchangedValue) {
  for (const int32_t band : {0, 1}) {
    for (const uint8_t value : std::initializer_list<uint8_t>{0, 1, 127, 128, 255}) {
      EXPECT_THAT(rebooted({band, value, value, 4, "4", "TxPower"}, value), IsEmpty()) << +value;
    }
  }
}

TEST(Reboot, ComparesTheByteWithTheWholeNewValueAndKeepsItsLowByte) {
  EXPECT_EQ(joined({down("ra", 3), {"reboot"}}), rebooted({0, 3, 0x103, 0, "0", "TxPower"}, 3));
  EXPECT_EQ(joined({down("ra", 255), {"reboot"}}), rebooted({0, 255, 0xffffffff, 0, "0", "TxPower"}, 255));
  EXPECT_THAT(rebooted({0, 0, 0x100, 0, "0", "TxPower"}, 0), ElementsAre("reboot"));
  EXPECT_THAT(rebooted({1, 0, 0xfffffffe, 0, "0", "TxPower"}, 254), ElementsAre("reboot"));
}

TEST(Reboot, TakesAsManyBssesDownAsTheUnsignedByteSays) {
  for (const int current : {0, 1, 8, 127, 128, 200}) {
    const auto byte = static_cast<uint8_t>(current);
    EXPECT_EQ(joined({down("ra", current), {"reboot"}}), rebooted({0, byte, 201, 0, "0", "TxPower"}, 201));
    EXPECT_EQ(joined({down("rai", current), {"reboot"}}), rebooted({1, byte, 201, 0, "0", "TxPower"}, 201));
  }
}

TEST(Reboot, TakesAsManyWdsLinksDownAsAsked) {
  for (const int32_t count : {INT32_MIN, -1, 0, 1, 4, 7}) {
    EXPECT_EQ(joined({down("wds", count), down("wdsi", count), {"reboot"}}), rebooted({0, 0, 1, count, "0", "x"}, 1));
    EXPECT_EQ(joined({down("wdsi", count), down("wds", count), {"reboot"}}), rebooted({1, 0, 1, count, "0", "x"}, 1));
  }
}

TEST(Reboot, TakesTheOtherBandsCountForANumber) {
  for (const auto& [text, count] : std::initializer_list<std::pair<const char*, int>>{
           {"0", 0}, {"3", 3}, {"3\n", 3}, {" 2x", 2}, {"-4", 0}, {"", 0}, {"x", 0}, {"11", 11}}) {
    EXPECT_EQ(joined({down("rai", count), {"reboot"}}), rebooted({0, 0, 1, 0, text, "x"}, 1)) << text;
    EXPECT_EQ(joined({down("ra", count), {"reboot"}}), rebooted({1, 0, 1, 0, text, "x"}, 1)) << text;
  }
}

TEST(Reboot, OfAnUnknownBandDoesNothing) {
  for (const int32_t band : {2, -1, INT32_MIN, INT32_MAX}) {
    EXPECT_THAT(rebooted({band, 2, 3, 4, "4", "TxPower"}, 2), IsEmpty()) << band;
  }
}

TEST(Reboot, StoresTheNewValueBeforeItRunsTheReboot) {
  uint8_t current = 1;
  std::vector<int> seen;
  seams::on_command = [&](const std::string&) {
    seen.push_back(current);
    return -1;
  };
  EXPECT_EQ(0, wifimgr_lib_reboot(0, &current, 9, 0, "1", "TxPower"));
  EXPECT_THAT(seen, ElementsAre(1, 1, 9));
}

TEST(Reboot, NullPointersDoNothing) {
  uint8_t current = 1;
  EXPECT_EQ(0, wifimgr_lib_reboot(0, nullptr, 9, 1, "1", "TxPower"));
  EXPECT_EQ(0, wifimgr_lib_reboot(0, &current, 9, 1, nullptr, "TxPower"));
  EXPECT_EQ(0, wifimgr_lib_reboot(0, &current, 9, 1, "1", nullptr));
  EXPECT_EQ(1, current);
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(Reboot, TracesEntryAndSuccessWhetherItRebootsOrNot) {
  for (const char* key : {"TxPower", "WHNAT"}) {
    uint8_t current = 1;
    EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_reboot(0, &current, 9, 1, "1", key); }),
                ElementsAre("[wifimgr_lib_reboot]:===Enter===\n", "[wifimgr_lib_reboot]:===Success Exit===\n"));
  }
}

}  // namespace
