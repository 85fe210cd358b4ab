// Small settings and probes at run time.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TxQueue, IsSetForEach2_4GInterface) {
  EXPECT_EQ(0, wifimgr_lib_set_WifiTxQueue(3, 1000));
  EXPECT_THAT(seams::commands, ElementsAre("ifconfig ra0 txqueuelen 1000", "ifconfig ra1 txqueuelen 1000",
                                           "ifconfig ra2 txqueuelen 1000"));
}

TEST(TxQueue, NoInterfacesRunNothing) {
  for (const int32_t count : {0, -1, INT32_MIN}) {
    EXPECT_EQ(0, wifimgr_lib_set_WifiTxQueue(count, 1000));
    EXPECT_THAT(seams::commands, IsEmpty()) << count;
  }
}

TEST(TxQueue, LengthIsPrintedSigned) {
  for (const auto& [length, text] : std::initializer_list<std::pair<uint32_t, const char*>>{
           {0, "0"}, {0x7fffffff, "2147483647"}, {0x80000000, "-2147483648"}, {0xffffffff, "-1"}}) {
    seams::commands.clear();
    wifimgr_lib_set_WifiTxQueue(1, length);
    EXPECT_THAT(seams::commands, ElementsAre(std::string("ifconfig ra0 txqueuelen ") + text));
  }
}

TEST(TxQueue, LooksAtNoCommandsStatus) {
  seams::on_command = [](const std::string&) { return 256; };
  EXPECT_EQ(0, wifimgr_lib_set_WifiTxQueue(12, 1));
  EXPECT_EQ(12U, seams::commands.size());
}

// What a call leaves in a buffer that it is told `size` bytes of; the rest must stay.
template <typename Write>
std::string written(int32_t size, Write write) {
  char text[128];
  std::memset(text, '~', sizeof text);
  EXPECT_EQ(0, write(text, size));
  const size_t kept = static_cast<size_t>(std::clamp<int32_t>(size, 0, sizeof text));
  EXPECT_EQ(std::string(sizeof text - kept, '~'), std::string(text + kept, sizeof text - kept)) << size;
  if (text[0] == '~') return "~";
  return std::string(text, strnlen(text, sizeof text));
}

TEST(TxBurstLine, IsAlwaysFor5G) {
  for (const auto& [number, value, line] : std::initializer_list<std::tuple<int32_t, const char*, const char*>>{
           {0, "1", "/userfs/bin/iwpriv rai0 set TxBurst=1\n"},
           {3, "0", "/userfs/bin/iwpriv rai3 set TxBurst=0\n"},
           {-1, "", "/userfs/bin/iwpriv rai-1 set TxBurst=\n"},
           {INT32_MAX, "1\n", "/userfs/bin/iwpriv rai2147483647 set TxBurst=1\n\n"},
           {0, "a b%d", "/userfs/bin/iwpriv rai0 set TxBurst=a b%d\n"}}) {
    EXPECT_EQ(line, written(128, [&, n = number, v = value](char* dst, int32_t size) {
                return wifimgr_lib_set_TxBurst_to_file(dst, size, n, v);
              }));
  }
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(TxBurstLine, IsCutToTheCallersSize) {
  const std::string line = "/userfs/bin/iwpriv rai0 set TxBurst=1\n";  // 38 characters
  for (const int32_t size : {1, 2, 37, 38, 39, 40}) {
    EXPECT_EQ(line.substr(0, static_cast<size_t>(size - 1)),
              written(size, [](char* dst, int32_t n) { return wifimgr_lib_set_TxBurst_to_file(dst, n, 0, "1"); }));
  }
}

TEST(TxBurstLine, NothingIsWrittenWithoutRoomOrPointers) {
  for (const int32_t size : {0, -1, INT32_MIN}) {
    EXPECT_EQ("~", written(size, [](char* dst, int32_t n) { return wifimgr_lib_set_TxBurst_to_file(dst, n, 0, "1"); }));
  }
  EXPECT_EQ("~", written(9, [](char* dst, int32_t n) { return wifimgr_lib_set_TxBurst_to_file(dst, n, 0, nullptr); }));
  EXPECT_EQ(0, wifimgr_lib_set_TxBurst_to_file(nullptr, 100, 0, "1"));
  char none[1];
  EXPECT_EQ("[wifimgr_lib_set_TxBurst_to_file]:===Fail Exit===\n",
            seams::trace_of([&] { (void)wifimgr_lib_set_TxBurst_to_file(none, 0, 0, "1"); }).back());
}

TEST(MaxStaNumAlias, SetsTheOtherKeyOfTheSsid) {
  for (const int band : {0, 1}) {
    dat::load(0, {});
    dat::load(1, {});
    const std::string other = sandbox::segment_bytes(1 - band);
    const uint32_t number = static_cast<uint32_t>(band);
    for (const char* value : {"0", "64"}) {
      EXPECT_EQ(0U, wifimgr_lib_set_MaxStaNum(number, 2, value));
      EXPECT_EQ(value, sandbox::field(band, "MbssMaxStaNum", 2));
    }
    EXPECT_EQ("32", sandbox::field(band, "MbssMaxStaNum", 1));
    EXPECT_EQ("32\n", sandbox::field(band, "MaxStaNum", 2));
    EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
  }
}

TEST(MaxStaNumAlias, GivesTheSettersRefusal) {
  for (const int band : {0, 1}) {
    dat::load(band, {});
    const std::string before = sandbox::segment_bytes(band);
    const uint32_t number = static_cast<uint32_t>(band);
    EXPECT_THAT(seams::errors_of([number] { EXPECT_EQ(1U, wifimgr_lib_set_MaxStaNum(number, 1, "65")); }),
                ElementsAre("[wifimgr_lib_set_mbssMaxStaNum]:===Fail Exit===The MbssMaxStaNum value is invalid,65.\n"));
    for (const uint32_t index : {0U, 3U, UINT32_MAX}) {
      EXPECT_THAT(seams::errors_of([=] { EXPECT_EQ(1U, wifimgr_lib_set_MaxStaNum(number, index, "1")); }),
                  ElementsAre("[wifimgr_lib_set_mbssMaxStaNum]:===Fail Exit===The ssid index should be from 1 to "
                              "BssidNum:2.\n"));
    }
    EXPECT_EQ(1U, wifimgr_lib_set_MaxStaNum(number, 1, nullptr));
    EXPECT_EQ(before, sandbox::segment_bytes(band));
  }
}

TEST(MaxStaNumAlias, AnswersZeroForAnUnknownBandAndWritesNothing) {
  dat::load(0, {});
  dat::load(1, {});
  const std::string before = sandbox::segment_bytes(0) + sandbox::segment_bytes(1);
  for (const uint32_t band : {2U, 0x80000000U, 0xffffffffU}) {
    for (const char* value : {"1", "65", static_cast<const char*>(nullptr)}) {
      EXPECT_EQ(0U, wifimgr_lib_set_MaxStaNum(band, 1, value));
    }
    EXPECT_THAT(seams::errors_of([band] { wifimgr_lib_set_MaxStaNum(band, 1, "65"); }), IsEmpty());
  }
  EXPECT_EQ(before, sandbox::segment_bytes(0) + sandbox::segment_bytes(1));
}

TEST(NextMac, CountsTheLastByteUpWithoutACarry) {
  for (const auto& [last, next] :
       std::initializer_list<std::pair<uint8_t, uint8_t>>{{0, 1}, {0x7f, 0x80}, {0xfe, 0xff}, {0xff, 0}}) {
    uint8_t mac[7] = {0xff, 0xff, 0xff, 0xff, 0xff, last, 0xff};
    EXPECT_EQ(0, wifimgr_lib_use_global_mac(mac));
    EXPECT_THAT(mac, ElementsAre(0xff, 0xff, 0xff, 0xff, 0xff, next, 0xff));
  }
}

TEST(NextMac, NullIsLeftAlone) {
  EXPECT_EQ(0, wifimgr_lib_use_global_mac(nullptr));
}

TEST(SupportProbe, HardwareNatIsNotAvailableOnBothBands) {
  for (const uint32_t band : {0U, 1U}) {
    const auto ask = [band](char* dst, int32_t size) { return wifimgr_lib_is_WHNAT_support(band, dst, size); };
    EXPECT_EQ("N/A", written(128, ask));
    EXPECT_EQ("N/A", written(4, ask));
    EXPECT_EQ("N/", written(3, ask));
    EXPECT_EQ("", written(1, ask));
    for (const int32_t size : {0, -1, INT32_MIN}) EXPECT_EQ("~", written(size, ask));
    EXPECT_EQ(0, wifimgr_lib_is_WHNAT_support(band, nullptr, 4));
  }
}

TEST(SupportProbe, HardwareNatOfAnUnknownBandWritesNothing) {
  for (const uint32_t band : {2U, 0xffffffffU}) {
    EXPECT_EQ("~", written(128, [band](char* dst, int32_t n) { return wifimgr_lib_is_WHNAT_support(band, dst, n); }));
  }
}

TEST(SupportProbe, StreamsAreNotAvailable) {
  for (const auto& [size, text] : std::initializer_list<std::pair<int32_t, const char*>>{
           {128, "N/A"}, {4, "N/A"}, {3, "N/"}, {1, ""}, {0, "~"}, {-1, "~"}}) {
    EXPECT_EQ(text, written(size, [](char* dst, int32_t n) { return wifimgr_lib_is_Tx_Rx_Stream_support(dst, n); }));
  }
  EXPECT_EQ(0, wifimgr_lib_is_Tx_Rx_Stream_support(nullptr, 4));
}

TEST(RuntimeTrace, TellsEntryAndSuccess) {
  dat::load(0, {});
  char line[64];
  uint8_t mac[6] = {};
  const std::pair<const char*, std::function<void()>> calls[] = {
      {"wifimgr_lib_set_WifiTxQueue", [] { wifimgr_lib_set_WifiTxQueue(1, 1); }},
      {"wifimgr_lib_set_TxBurst_to_file", [&] { wifimgr_lib_set_TxBurst_to_file(line, 64, 0, "1"); }},
      {"wifimgr_lib_set_MaxStaNum", [] { wifimgr_lib_set_MaxStaNum(0, 1, "1"); }},
      {"wifimgr_lib_use_global_mac", [&] { wifimgr_lib_use_global_mac(mac); }},
  };
  for (const auto& [name, call] : calls) {
    const auto lines = seams::trace_of(call);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(std::string("[") + name + "]:===Enter===\n", lines.front());
    EXPECT_EQ(std::string("[") + name + "]:===Success Exit===\n", lines.back());
  }
}

}  // namespace
