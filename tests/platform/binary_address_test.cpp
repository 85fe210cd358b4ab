// The hardware address of an interface in six bytes, and what is made of that of the bridge.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

#include "platform/board.h"
#include "support/requests.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using requests::SocketCall;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Bytes = std::vector<uint8_t>;

constexpr unsigned long kGetAddress = 0x8927;
constexpr uint8_t kCanary = 0x5a;

const board::Mac kBridge = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55};
const board::Mac kHighBytes = {0xa1, 0xb2, 0xc3, 0xd4, 0xe5, 0xf6};

// A caller's six bytes between canaries.
struct Address {
  Address() { std::fill(std::begin(bytes), std::end(bytes), kCanary); }
  uint8_t* out() { return bytes + 2; }
  bool is(const Bytes& mac) const {
    Bytes expected(10, kCanary);
    std::copy(mac.begin(), mac.end(), expected.begin() + 2);
    return expected == Bytes(std::begin(bytes), std::end(bytes));
  }
  bool is_untouched() const { return is({}); }
  uint8_t bytes[10];
};

std::string line(const std::string& function, const char* what) {
  return "[" + function + "]:===" + what + "===\n";
}

void expect_one_query(const std::string& interface, const std::string& rest = "") {
  ASSERT_EQ(1U, board::queries.size());
  EXPECT_EQ(kGetAddress, board::queries[0].number);
  EXPECT_EQ(board::record_for(interface, rest), board::queries[0].record);
}

TEST(InterfaceMac, IsThatOfTheInterface) {
  board::add_interface("ra0", {0x02, 0xab, 0xcd, 0xef, 0x0a, 0xf0});
  Address address;
  EXPECT_EQ(0, wifimgr_lib_get_interface_mac("ra0", address.out()));
  EXPECT_TRUE(address.is({0x02, 0xab, 0xcd, 0xef, 0x0a, 0xf0}));
}

TEST(InterfaceMac, IsAskedOverARawSocketWithTheFamilyPreset) {
  board::answer_with_address(kHighBytes);
  const int open = requests::open_descriptors();
  Address address;
  EXPECT_EQ(0, wifimgr_lib_get_interface_mac("ra0", address.out()));
  EXPECT_TRUE(address.is(kHighBytes));
  EXPECT_EQ(open, requests::open_descriptors());
  EXPECT_THAT(requests::sockets, ElementsAre(SocketCall{AF_INET, SOCK_RAW, 255}));
  expect_one_query("ra0", std::string("\2\0", 2));
}

TEST(InterfaceMac, IsThatOfTheFirst15CharactersOfTheName) {
  board::add_interface("interface-of-15", {2, 0, 0, 0, 0, 15});
  for (const char* const name : {"interface-of-15", "interface-of-156", "interface-of-15 and more"}) {
    Address address;
    EXPECT_EQ(0, wifimgr_lib_get_interface_mac(name, address.out()));
    EXPECT_TRUE(address.is({2, 0, 0, 0, 0, 15})) << name;
  }
}

TEST(InterfaceMac, SucceedsAndStaysUntouchedWhateverFails) {
  const int open = requests::open_descriptors();
  Address address;
  EXPECT_EQ(0, wifimgr_lib_get_interface_mac("ra0", address.out()));
  EXPECT_EQ(0, wifimgr_lib_get_interface_mac(nullptr, address.out()));
  seams::fail(requests::socket_fault, 1, EPERM);
  EXPECT_EQ(0, wifimgr_lib_get_interface_mac("lo", address.out()));
  board::answer_with_address(kBridge, -1);
  EXPECT_EQ(0, wifimgr_lib_get_interface_mac("lo", address.out()));
  EXPECT_TRUE(address.is_untouched());
  EXPECT_EQ(open, requests::open_descriptors());
}

TEST(InterfaceMac, IsNotWrittenToANullPointer) {
  EXPECT_EQ(0, wifimgr_lib_get_interface_mac("lo", nullptr));
}

TEST(InterfaceMac, TracesSuccessWhateverFails) {
  Address address;
  for (const char* const name : {"lo", "ra0"}) {
    EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_interface_mac(name, address.out()); }),
                ElementsAre(line("wifimgr_lib_get_interface_mac", "Enter"),
                            line("wifimgr_lib_get_interface_mac", "Success Exit")));
  }
}

TEST(BridgeMac, IsThatOfBr0) {
  board::add_interface("br1", {2, 0, 0, 0, 0, 1});
  board::add_interface("br0", kBridge);
  Address address;
  EXPECT_EQ(0, wifimgr_lib_get_ethaddr(address.out()));
  EXPECT_TRUE(address.is(kBridge));
}

TEST(BridgeMac, IsAskedOverARawSocket) {
  board::answer_with_address(kHighBytes);
  const int open = requests::open_descriptors();
  Address address;
  EXPECT_EQ(0, wifimgr_lib_get_ethaddr(address.out()));
  EXPECT_TRUE(address.is(kHighBytes));
  EXPECT_EQ(open, requests::open_descriptors());
  EXPECT_THAT(requests::sockets, ElementsAre(SocketCall{AF_INET, SOCK_RAW, 255}));
  expect_one_query("br0", std::string("\2\0", 2));
}

TEST(BridgeMac, IsZeroWhenItCannotBeRead) {
  Address missing;
  EXPECT_EQ(0, wifimgr_lib_get_ethaddr(missing.out()));
  EXPECT_TRUE(missing.is({0, 0, 0, 0, 0, 0}));
  board::add_interface("br0", kBridge);
  seams::fail(requests::socket_fault, 1, EPERM);
  Address refused;
  EXPECT_EQ(0, wifimgr_lib_get_ethaddr(refused.out()));
  EXPECT_TRUE(refused.is({0, 0, 0, 0, 0, 0}));
}

TEST(BridgeMac, IsNotReadToANullPointer) {
  EXPECT_EQ(1, wifimgr_lib_get_ethaddr(nullptr));
}

TEST(BridgeMac, TracesItsStepsInOrder) {
  Address address;
  EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_ethaddr(address.out()); }),
              ElementsAre(line("wifimgr_lib_get_ethaddr", "Enter"), line("wifimgr_lib_get_interface_mac", "Enter"),
                          line("wifimgr_lib_get_interface_mac", "Success Exit"),
                          line("wifimgr_lib_get_ethaddr", "Success Exit")));
}

// A socket of the caller's, unknown to the seams.
int own_socket(int family = AF_INET, int type = SOCK_DGRAM) {
  const int descriptor = socket(family, type, 0);
  EXPECT_GE(descriptor, 0);
  requests::sockets.clear();
  return descriptor;
}

TEST(BridgeMacOverASocket, IsThatOfBr0) {
  board::add_interface("br0", kBridge);
  for (const int family : {AF_INET, AF_INET6, AF_UNIX}) {
    const int descriptor = own_socket(family);
    Address address;
    EXPECT_EQ(0, wifimgr_lib_get_ifaddr(descriptor, address.out()));
    EXPECT_TRUE(address.is(kBridge));
    EXPECT_GE(fcntl(descriptor, F_GETFD), 0);
    close(descriptor);
  }
}

TEST(BridgeMacOverASocket, OpensAndClosesNone) {
  const int descriptor = own_socket();
  board::answer_with_address(kHighBytes);
  const int open = requests::open_descriptors();
  Address address;
  EXPECT_EQ(0, wifimgr_lib_get_ifaddr(descriptor, address.out()));
  EXPECT_TRUE(address.is(kHighBytes));
  EXPECT_THAT(requests::sockets, IsEmpty());
  EXPECT_EQ(open, requests::open_descriptors());
  EXPECT_GE(fcntl(descriptor, F_GETFD), 0);
  expect_one_query("br0");
}

TEST(BridgeMacOverASocket, IsAskedOverTheSocketGiven) {
  const int first = own_socket();
  const int second = own_socket();
  for (const int descriptor : {first, second}) {
    int asked = -1;
    requests::kernel = [&](int over, unsigned long, void*) {
      asked = over;
      return 0;
    };
    Address address;
    EXPECT_EQ(0, wifimgr_lib_get_ifaddr(descriptor, address.out()));
    EXPECT_EQ(descriptor, asked);
  }
}

TEST(BridgeMacOverASocket, FailsUntouched) {
  Address address;
  const int descriptor = own_socket();
  const auto entered = line("wifimgr_lib_get_ifaddr", "Enter");
  const auto failed = line("wifimgr_lib_get_ifaddr", "Fail Exit");
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(-1, wifimgr_lib_get_ifaddr(descriptor, address.out())); }),
              ElementsAre(entered, failed));
  EXPECT_GE(fcntl(descriptor, F_GETFD), 0);
  EXPECT_EQ(-1, wifimgr_lib_get_ifaddr(-1, address.out()));
  EXPECT_EQ(-1, wifimgr_lib_get_ifaddr(descriptor, nullptr));
  board::answer_with_address(kBridge, -1);
  EXPECT_EQ(-1, wifimgr_lib_get_ifaddr(descriptor, address.out()));
  EXPECT_TRUE(address.is_untouched());
}

TEST(BridgeMacOverASocket, TracesEntryAndSuccess) {
  board::answer_with_address(kBridge);
  const int descriptor = own_socket();
  Address address;
  EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_ifaddr(descriptor, address.out()); }),
              ElementsAre(line("wifimgr_lib_get_ifaddr", "Enter"), line("wifimgr_lib_get_ifaddr", "Success Exit")));
}

// A caller's record of 16 bytes with canaries behind.
struct Record {
  Record() { std::fill(std::begin(bytes), std::end(bytes), kCanary); }
  bool is_untouched() const { return Bytes(std::begin(bytes), std::end(bytes)) == Bytes(20, kCanary); }
  uint8_t bytes[20];
};

void expect_record(const Record& record, const Bytes& written) {
  Bytes expected(20, kCanary);
  std::copy(written.begin(), written.end(), expected.begin() + 2);
  EXPECT_THAT(record.bytes, ElementsAreArray(expected));
}

TEST(BridgeV6Address, IsMadeOfTheMacOfBr0) {
  board::add_interface("br0", kBridge);
  Record record;
  EXPECT_EQ(0, wifimgr_lib_get_br0_v6addr(record.bytes));
  expect_record(record, {0x02, 0x22, 0x11, 0xe3, 0x44, 0xef, 0x02, 0x11, 0x22, 0xff, 0xfe, 0x33, 0x44, 0x55});
}

TEST(BridgeV6Address, PutsEveryByteOfTheMacInItsPlace) {
  board::answer_with_address(kHighBytes);
  Record record;
  EXPECT_EQ(0, wifimgr_lib_get_br0_v6addr(record.bytes));
  expect_record(record, {0xa3, 0xc3, 0xb2, 0xe3, 0xe5, 0xef, 0xa3, 0xb2, 0xc3, 0xff, 0xfe, 0xd4, 0xe5, 0xf6});
}

TEST(BridgeV6Address, InvertsTheLocalBit) {
  board::answer_with_address({0x02, 0, 0, 0, 0, 0});
  Record record;
  EXPECT_EQ(0, wifimgr_lib_get_br0_v6addr(record.bytes));
  expect_record(record, {0, 0, 0, 0xe3, 0, 0xef, 0, 0, 0, 0xff, 0xfe, 0, 0, 0});
}

TEST(BridgeV6Address, IsAskedOverAnIpv6DatagramSocket) {
  board::answer_with_address(kBridge);
  const int open = requests::open_descriptors();
  Record record;
  EXPECT_EQ(0, wifimgr_lib_get_br0_v6addr(record.bytes));
  EXPECT_EQ(open, requests::open_descriptors());
  EXPECT_THAT(requests::sockets, ElementsAre(SocketCall{AF_INET6, SOCK_DGRAM, 0}));
  expect_one_query("br0");
}

TEST(BridgeV6Address, FailsUntouched) {
  const auto entered = line("wifimgr_lib_get_br0_v6addr", "Enter");
  const auto failed = line("wifimgr_lib_get_br0_v6addr", "Fail Exit");
  const int open = requests::open_descriptors();
  Record record;
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(-1, wifimgr_lib_get_br0_v6addr(record.bytes)); }),
              ElementsAre(entered, failed));
  board::add_interface("br0", kBridge);
  seams::fail(requests::socket_fault, 1, EAFNOSUPPORT);
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(-1, wifimgr_lib_get_br0_v6addr(record.bytes)); }),
              ElementsAre(entered, failed));
  board::answer_with_address(kBridge, -1);
  EXPECT_EQ(-1, wifimgr_lib_get_br0_v6addr(record.bytes));
  EXPECT_EQ(-1, wifimgr_lib_get_br0_v6addr(nullptr));
  EXPECT_TRUE(record.is_untouched());
  EXPECT_EQ(open, requests::open_descriptors());
}

TEST(BridgeV6Address, TracesEntryAndSuccess) {
  board::answer_with_address(kBridge);
  Record record;
  EXPECT_THAT(
      seams::trace_of([&] { (void)wifimgr_lib_get_br0_v6addr(record.bytes); }),
      ElementsAre(line("wifimgr_lib_get_br0_v6addr", "Enter"), line("wifimgr_lib_get_br0_v6addr", "Success Exit")));
}

}  // namespace
