// Calls between the board's own functions, which a program may define itself.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::Each;
using testing::ElementsAre;

int answer = 0;
std::vector<std::string> asked;
int package = 0;

}  // namespace

extern "C" int wifimgr_lib_get_interface_mac(const char* ifname, uint8_t* mac) {
  asked.emplace_back(ifname);
  for (uint8_t i = 0; i < 6; ++i) mac[i] = static_cast<uint8_t>(0xa0 + i);
  return answer;
}

extern "C" int wifimgr_lib_get_CHIP_ID(int* id) {
  asked.push_back("chip " + std::to_string(*id));
  *id = package;
  return answer;
}

// A store in which every key holds "2".
extern "C" int read_attr(int wifi_type, int index, const char* name, char* buf, unsigned) {
  asked.push_back("read " + std::to_string(wifi_type) + " " + std::to_string(index) + " " + name);
  std::memcpy(buf, "2", 2);
  return answer;
}

extern "C" int update_attr(int wifi_type, int index, const char* name, const char* value) {
  asked.push_back("write " + std::to_string(wifi_type) + " " + std::to_string(index) + " " + name + " " + value);
  return answer;
}

namespace {

TEST(BridgeMac, ComesFromTheQueryOfTheInterface) {
  uint8_t mac[6] = {};
  EXPECT_EQ(0, wifimgr_lib_get_ethaddr(mac));
  EXPECT_THAT(mac, ElementsAre(0xa0, 0xa1, 0xa2, 0xa3, 0xa4, 0xa5));
  EXPECT_THAT(asked, ElementsAre("br0"));
}

TEST(BridgeMac, FailsWithTheQueryOfTheInterface) {
  for (const int failure : {1, -1}) {
    answer = failure;
    uint8_t mac[6];
    std::fill(std::begin(mac), std::end(mac), uint8_t{0x5a});
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_ethaddr(mac)); }),
                ElementsAre("[wifimgr_lib_get_ethaddr]:===Fail Exit===wifimgr_lib_get_ethaddr: get ethaddr fail\n"));
    EXPECT_THAT(mac, Each(0x5a));
  }
}

TEST(PcieRouting, AsksForThePackageStartingFrom0) {
  package = 29;
  EXPECT_EQ(0, wifimgr_lib_set_5G_PCIE(1));
  EXPECT_THAT(asked, ElementsAre("chip 0"));
  EXPECT_THAT(seams::commands, ElementsAre("sys memwl bfac080c 40000000"));
}

TEST(StoreSetting, IsAskedOfTheStoreAsABandWideValue) {
  char buf[WIFIMGR_VALUE_SIZE];
  EXPECT_EQ(0U, wifimgr_lib_set_DfsDedicatedZeroWait(1, -1, "1"));
  EXPECT_EQ(0U, wifimgr_lib_set_DfsZeroWaitDefault(1, -1, "0"));
  EXPECT_EQ(0, wifimgr_lib_get_DfsDedicatedZeroWait(1, -1, buf, sizeof buf));
  EXPECT_EQ(0, wifimgr_lib_get_DfsZeroWaitDefault(1, -1, buf, sizeof buf));
  EXPECT_EQ(0U, wifimgr_lib_set_MboSupport(1, 2, "1"));
  EXPECT_EQ(0, wifimgr_lib_get_MboSupport(1, 2, buf, sizeof buf));
  EXPECT_EQ(0U, wifimgr_lib_set_MapMode(1, -1, "2"));
  EXPECT_EQ(0, wifimgr_lib_get_MapMode(1, 2, buf, sizeof buf));
  EXPECT_THAT(asked, ElementsAre("write 1 -1 DfsDedicatedZeroWait 1", "write 1 -1 DfsZeroWaitDefault 0",
                                 "read 1 -1 DfsDedicatedZeroWait", "read 1 -1 DfsZeroWaitDefault", "read 1 -1 BssidNum",
                                 "write 1 -1 MboSupport2 1", "read 1 -1 BssidNum", "read 1 -1 MboSupport2",
                                 "write 1 -1 MapMode 2", "read 1 -1 BssidNum", "read 0 -1 MapMode"));
}

TEST(StoreSetting, StopsWhenTheSsidCountCannotBeRead) {
  answer = 1;
  char buf[WIFIMGR_VALUE_SIZE];
  EXPECT_EQ(1U, wifimgr_lib_set_MboSupport(0, 1, "1"));
  EXPECT_EQ(1, wifimgr_lib_get_MboSupport(0, 1, buf, sizeof buf));
  EXPECT_EQ(1, wifimgr_lib_get_MapMode(0, 1, buf, sizeof buf));
  EXPECT_THAT(asked, ElementsAre("read 0 -1 BssidNum", "read 0 -1 BssidNum", "read 0 -1 BssidNum"));
}

}  // namespace
