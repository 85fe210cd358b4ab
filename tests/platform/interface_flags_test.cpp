// Whether an interface has any of some flags.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <sys/socket.h>

#include <cerrno>
#include <string>

#include "platform/board.h"
#include "support/requests.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using requests::SocketCall;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kEntered[] = "[wifimgr_lib_get_test_itf_status]:===Enter===\n";
constexpr char kSucceeded[] = "[wifimgr_lib_get_test_itf_status]:===Success Exit===\n";
constexpr char kFailed[] = "[wifimgr_lib_get_test_itf_status]:===Fail Exit===\n";

constexpr unsigned long kGetFlags = 0x8913;
constexpr uint16_t kUp = 0x1;
constexpr uint16_t kBroadcast = 0x2;
constexpr uint16_t kLoopback = 0x8;

TEST(InterfaceFlags, AreThoseOfTheKernel) {
  board::add_interface("ra0", {2, 0, 0, 0, 0, 1});
  EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("ra0", kUp));
  board::set_flags("ra0", IFF_UP);
  EXPECT_EQ(1, wifimgr_lib_get_test_itf_status("ra0", kUp));
  EXPECT_EQ(1, wifimgr_lib_get_test_itf_status("ra0", kBroadcast));
  EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("ra0", kLoopback));
  EXPECT_EQ(1, wifimgr_lib_get_test_itf_status("lo", kLoopback));
  EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("lo", kUp | kBroadcast));
  board::set_flags("ra0", 0);
  EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("ra0", kUp));
}

TEST(InterfaceFlags, MatchByAnyBitOfTheMask) {
  for (unsigned flag = 0; flag < 16; ++flag) {
    const auto flags = static_cast<uint16_t>(1U << flag);
    board::answer_with_flags(flags);
    for (unsigned bit = 0; bit < 16; ++bit) {
      SCOPED_TRACE(std::to_string(flag) + " against " + std::to_string(bit));
      EXPECT_EQ(flag == bit ? 1 : 0, wifimgr_lib_get_test_itf_status("ra0", static_cast<uint16_t>(1U << bit)));
    }
    EXPECT_EQ(1, wifimgr_lib_get_test_itf_status("ra0", 0xffff));
    EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("ra0", static_cast<uint16_t>(~flags)));
    EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("ra0", 0));
  }
}

TEST(InterfaceFlags, AreAskedOverADatagramSocket) {
  board::answer_with_flags(kUp);
  const int open = requests::open_descriptors();
  EXPECT_EQ(1, wifimgr_lib_get_test_itf_status("ra0", kUp));
  EXPECT_EQ(open, requests::open_descriptors());
  EXPECT_THAT(requests::sockets, ElementsAre(SocketCall{AF_INET, SOCK_DGRAM, 0}));
  EXPECT_THAT(requests::queries, ElementsAre(kGetFlags));
  ASSERT_EQ(1U, board::queries.size());
  EXPECT_EQ(board::record_for("ra0"), board::queries[0].record);
}

TEST(InterfaceFlags, AreThoseOfTheFirst15CharactersOfTheName) {
  board::add_interface("interface-of-15", {2, 0, 0, 0, 0, 1});
  board::set_flags("interface-of-15", IFF_UP);
  for (const char* const name : {"interface-of-15", "interface-of-156", "interface-of-15 and more"}) {
    EXPECT_EQ(1, wifimgr_lib_get_test_itf_status(name, kUp)) << name;
  }
  EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("interface-of-1", kUp));
  board::answer_with_flags(kUp);
  EXPECT_EQ(1, wifimgr_lib_get_test_itf_status("interface-of-156", kUp));
  EXPECT_EQ(board::record_for("interface-of-15"), board::queries[0].record);
}

TEST(InterfaceFlags, AreNoneForAnUnknownInterface) {
  for (const char* const name : {"ra0", "", static_cast<const char*>(nullptr)}) {
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(0, wifimgr_lib_get_test_itf_status(name, 0xffff)); }),
                ElementsAre(kEntered, kFailed));
  }
}

TEST(InterfaceFlags, AreNoneWhenTheRequestFails) {
  const int open = requests::open_descriptors();
  board::answer_with_flags(0xffff, -1);
  EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("lo", 0xffff));
  EXPECT_EQ(open, requests::open_descriptors());
}

TEST(InterfaceFlags, AreNoneWithoutASocket) {
  seams::fail(requests::socket_fault, 1, EMFILE);
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(0, wifimgr_lib_get_test_itf_status("lo", 0xffff)); }),
              ElementsAre(kEntered, kFailed));
  EXPECT_THAT(requests::queries, IsEmpty());
}

TEST(InterfaceFlags, AreTracedWhetherTheyMatchOrNot) {
  for (const uint16_t mask : {kLoopback, kUp}) {
    EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_test_itf_status("lo", mask); }),
                ElementsAre(kEntered, kSucceeded));
  }
}

}  // namespace
