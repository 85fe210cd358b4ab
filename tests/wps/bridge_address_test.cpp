// The bridge's address, as the gateway's tool prints it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>

#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kDump[] = "/tmp/br0_info.txt";

// All 40 bytes of a buffer that held only "~".
std::string buffer_after(const std::string& dump) {
  seams::on_command = [dump](const std::string&) {
    sandbox::write_file(kDump, dump);
    return 0;
  };
  std::string buffer(40, '~');
  get_onu_ipaddr(buffer.data());
  return buffer;
}

std::string untouched() {
  return std::string(40, '~');
}

std::string holding(const std::string& address) {
  std::string buffer = untouched();
  return buffer.replace(0, address.size() + 1, address + '\0');
}

TEST(BridgeAddress, IsWhatStandsBehindItsWords) {
  EXPECT_EQ(holding("192.168.1.1"), buffer_after("br0       Link encap:Ethernet  HWaddr 02:00:00:00:00:01\n"
                                                 "          inet addr:192.168.1.1  Bcast:192.168.1.255\n"
                                                 "          inet6 addr: fe80::1/64 Scope:Link\n"));
  EXPECT_THAT(seams::commands, ElementsAre("ifconfig br0 > /tmp/br0_info.txt"));
  EXPECT_TRUE(sandbox::exists(kDump));
}

TEST(BridgeAddress, EndsAtTheFirstWhiteSpace) {
  for (const char* end : {" ", "\t", "\n", "\r\n", "\v", "\f", ""}) {
    EXPECT_EQ(holding("10.0.0.1"), buffer_after(std::string("inet addr:10.0.0.1") + end));
    EXPECT_EQ(holding("10.0.0.1"), buffer_after(std::string("inet addr:10.0.0.1") + end + "\nBcast:10.0.0.255"));
  }
}

TEST(BridgeAddress, IsAnyTextWithoutWhiteSpace) {
  EXPECT_EQ(holding("x;y$z"), buffer_after("inet addr:x;y$z \n"));
  EXPECT_EQ(holding("10.0.0.1"), buffer_after("inet addr:  10.0.0.1 \n"));
}

TEST(BridgeAddress, IsThatOfTheFirstLineThatHasOne) {
  EXPECT_EQ(holding("10.0.0.1"), buffer_after("inet6 addr: fe80::1\n"
                                              "inet  addr:10.9.9.9\n"
                                              "INET ADDR:10.9.9.9\n"
                                              "inet addr is\n"
                                              "xinet addr:10.0.0.1 inet addr:10.0.0.2\n"
                                              "inet addr:10.0.0.3\n"));
}

TEST(BridgeAddress, IsNotSoughtBehindTheFirstLineWithItsWords) {
  EXPECT_EQ(untouched(), buffer_after("inet addr:\ninet addr:10.0.0.1\n"));
  EXPECT_EQ(untouched(), buffer_after("inet addr:   \n10.0.0.1\n"));
}

TEST(BridgeAddress, IsCutTo31Characters) {
  for (const size_t length : {30U, 31U}) {
    EXPECT_EQ(holding(std::string(length, '1')), buffer_after("inet addr:" + std::string(length, '1') + " x\n"));
  }
  for (const size_t length : {32U, 40U, 1000U}) {
    EXPECT_EQ(holding(std::string(31, '1')), buffer_after("inet addr:" + std::string(length, '1') + " x\n"));
  }
}

TEST(BridgeAddress, IsFoundInLinesOfAnyLength) {
  EXPECT_EQ(holding("10.0.0.1"), buffer_after(std::string(100000, 'x') + "inet addr:10.0.0.1\n"));
  EXPECT_EQ(holding("10.0.0.1"), buffer_after(std::string(100000, 'x') + "\ninet addr:10.0.0.1"));
}

TEST(BridgeAddress, LeavesTheBufferWhenNoLineHasOne) {
  for (const char* dump : {"", "\n", "inet addr\n:10.0.0.1\n", "inet adr:10.0.0.1\n", "inet addr: \n"}) {
    EXPECT_EQ(untouched(), buffer_after(dump)) << dump;
  }
}

TEST(BridgeAddress, LeavesTheBufferWhenThereIsNoDump) {
  std::string buffer = untouched();
  get_onu_ipaddr(buffer.data());
  ASSERT_EQ(0, mkdir(kDump, 0755));
  get_onu_ipaddr(buffer.data());
  EXPECT_EQ(untouched(), buffer);
  EXPECT_EQ(2u, seams::commands.size());
}

TEST(BridgeAddress, ComesFromAnOldDumpWhenTheToolWritesNone) {
  sandbox::write_file(kDump, "inet addr:10.0.0.1\n");
  seams::on_command = [](const std::string&) { return 1; };
  std::string buffer = untouched();
  get_onu_ipaddr(buffer.data());
  EXPECT_EQ(holding("10.0.0.1"), buffer);
}

TEST(BridgeAddress, WithoutABufferRunsNothing) {
  get_onu_ipaddr(nullptr);
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(BridgeAddress, TracesAndPrintsNothingAndLeavesNoDescriptor) {
  const int before = requests::open_descriptors();
  EXPECT_EQ("", sandbox::stdout_of([] {
              EXPECT_THAT(seams::trace_of([] {
                            buffer_after("inet addr:10.0.0.1\n");
                            buffer_after("none");
                          }),
                          IsEmpty());
            }));
  EXPECT_EQ(before, requests::open_descriptors());
}

}  // namespace
