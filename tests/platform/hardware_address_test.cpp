// The hardware address of an interface as a text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include <cerrno>
#include <climits>
#include <string>

#include "platform/board.h"
#include "platform/caller_buffer.h"
#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using board::Buffer;
using requests::SocketCall;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned long kGetAddress = 0x8927;

struct Getter {
  const char* function;
  int (*get)(const char* ifname, char* out, int size);
  const char* no_socket;  // on standard output
  const char* refused;
  bool traces_refusal;
};

const Getter kGetters[] = {
    {"wifimgr_lib_get_itf_hwaddr", wifimgr_lib_get_itf_hwaddr, "wifimgr_lib_get_itf_hwaddr 2026: socket open fail\n",
     "wifimgr_lib_get_itf_hwaddr 2033: ioctl open fail\n", false},
    {"wifimgr_lib_get_interface_mac0", wifimgr_lib_get_interface_mac0,
     "wifimgr_lib_get_interface_mac0 2078: socket open fail\n", "", true},
};

template <typename Check>
void for_each_getter(Check check) {
  for (const Getter& getter : kGetters) {
    SCOPED_TRACE(getter.function);
    check(getter);
  }
}

std::string line(const Getter& getter, const char* what) {
  return std::string("[") + getter.function + "]:===" + what + "===\n";
}

// A text with its NUL.
std::string ended(const std::string& text) {
  return text + std::string(1, '\0');
}

TEST(HardwareAddressText, IsThatOfTheInterface) {
  board::add_interface("ra0", {0x00, 0x11, 0x22, 0x33, 0x44, 0x55});
  board::add_interface("rai0", {0x02, 0xab, 0xcd, 0xef, 0x0a, 0xf0});
  for_each_getter([](const Getter& getter) {
    const struct {
      const char* name;
      const char* text;
    } rows[] = {{"ra0", "00:11:22:33:44:55"}, {"rai0", "02:AB:CD:EF:0A:F0"}, {"lo", "00:00:00:00:00:00"}};
    for (const auto& row : rows) {
      Buffer buffer;
      EXPECT_EQ("", sandbox::stdout_of([&] { EXPECT_EQ(0, getter.get(row.name, buffer.bytes, 32)); }));
      EXPECT_EQ(Buffer::with(ended(row.text)), buffer.all());
    }
  });
}

TEST(HardwareAddressText, HasTwoCapitalDigitsForEveryByte) {
  for_each_getter([](const Getter& getter) {
    const struct {
      board::Mac mac;
      const char* text;
    } rows[] = {{{0xff, 0xff, 0xff, 0xff, 0xff, 0xff}, "FF:FF:FF:FF:FF:FF"},
                {{0x80, 0x7f, 0x00, 0x01, 0xfe, 0x0a}, "80:7F:00:01:FE:0A"}};
    for (const auto& row : rows) {
      board::answer_with_address(row.mac);
      Buffer buffer;
      EXPECT_EQ(0, getter.get("ra0", buffer.bytes, 18));
      EXPECT_EQ(Buffer::with(ended(row.text)), buffer.all());
    }
  });
}

TEST(HardwareAddressText, IsCutToTheSizeWithItsEnd) {
  const std::string text = "02:AB:CD:EF:0A:F0";
  board::answer_with_address({0x02, 0xab, 0xcd, 0xef, 0x0a, 0xf0});
  for_each_getter([&](const Getter& getter) {
    for (size_t size = 1; size <= 18; ++size) {
      SCOPED_TRACE(size);
      Buffer buffer;
      EXPECT_EQ(0, getter.get("ra0", buffer.bytes, static_cast<int>(size)));
      EXPECT_EQ(Buffer::with(ended(text.substr(0, size - 1))), buffer.all());
    }
  });
}

TEST(HardwareAddressText, IsNotWrittenWithASizeOf0OrLess) {
  board::answer_with_address({0x02, 0xab, 0xcd, 0xef, 0x0a, 0xf0});
  for_each_getter([](const Getter& getter) {
    for (const int size : {0, -1, INT_MIN}) {
      Buffer buffer;
      EXPECT_EQ(0, getter.get("ra0", buffer.bytes, size));
      EXPECT_TRUE(buffer.is_untouched());
    }
  });
}

TEST(HardwareAddressText, IsAskedOverADatagramSocket) {
  board::answer_with_address({2, 0, 0, 0, 0, 1});
  for_each_getter([](const Getter& getter) {
    requests::sockets.clear();
    board::queries.clear();
    const int open = requests::open_descriptors();
    char out[18];
    EXPECT_EQ(0, getter.get("ra0", out, sizeof out));
    EXPECT_EQ(open, requests::open_descriptors());
    EXPECT_THAT(requests::sockets, ElementsAre(SocketCall{AF_INET, SOCK_DGRAM, 0}));
    ASSERT_EQ(1U, board::queries.size());
    EXPECT_EQ(kGetAddress, board::queries[0].number);
    EXPECT_EQ(board::record_for("ra0"), board::queries[0].record);
  });
}

TEST(HardwareAddressText, IsThatOfTheFirst15CharactersOfTheName) {
  board::add_interface("interface-of-15", {0x02, 0, 0, 0, 0, 0x15});
  for_each_getter([](const Getter& getter) {
    for (const char* const name : {"interface-of-15", "interface-of-156", "interface-of-15 and more"}) {
      SCOPED_TRACE(name);
      Buffer buffer;
      EXPECT_EQ(0, getter.get(name, buffer.bytes, 18));
      EXPECT_STREQ("02:00:00:00:00:15", buffer.bytes);
    }
    Buffer buffer;
    (void)sandbox::stdout_of([&] { EXPECT_EQ(-1, getter.get("interface-of-1", buffer.bytes, 18)); });
  });
}

TEST(HardwareAddressText, FailsForAnUnknownInterface) {
  for_each_getter([](const Getter& getter) {
    for (const char* const name : {"ra0", "", static_cast<const char*>(nullptr)}) {
      const int open = requests::open_descriptors();
      Buffer buffer;
      EXPECT_EQ(getter.refused,
                sandbox::stdout_of([&] { EXPECT_EQ(-1, getter.get(name, buffer.bytes, sizeof buffer.bytes)); }));
      EXPECT_TRUE(buffer.is_untouched());
      EXPECT_EQ(open, requests::open_descriptors());
    }
  });
}

TEST(HardwareAddressText, IsNotTakenFromAFailedRequest) {
  board::answer_with_address({2, 0, 0, 0, 0, 1}, -1);
  for_each_getter([](const Getter& getter) {
    Buffer buffer;
    EXPECT_EQ(getter.refused,
              sandbox::stdout_of([&] { EXPECT_EQ(-1, getter.get("lo", buffer.bytes, sizeof buffer.bytes)); }));
    EXPECT_TRUE(buffer.is_untouched());
  });
}

TEST(HardwareAddressText, TakesAPositiveResultForASuccess) {
  board::answer_with_address({2, 0, 0, 0, 0, 1}, 1);
  for_each_getter([](const Getter& getter) {
    Buffer buffer;
    EXPECT_EQ(0, getter.get("ra0", buffer.bytes, 18));
    EXPECT_STREQ("02:00:00:00:00:01", buffer.bytes);
  });
}

TEST(HardwareAddressText, FailsWithoutASocket) {
  for_each_getter([](const Getter& getter) {
    seams::fail(requests::socket_fault, 1, EMFILE);
    Buffer buffer;
    EXPECT_EQ(getter.no_socket,
              sandbox::stdout_of([&] { EXPECT_EQ(-1, getter.get("lo", buffer.bytes, sizeof buffer.bytes)); }));
    EXPECT_TRUE(buffer.is_untouched());
  });
  EXPECT_THAT(requests::queries, IsEmpty());
}

TEST(HardwareAddressText, FailsForANullPointer) {
  for_each_getter([](const Getter& getter) { EXPECT_EQ(-1, getter.get("lo", nullptr, 18)); });
}

TEST(HardwareAddressText, TracesEntryAndExit) {
  for_each_getter([](const Getter& getter) {
    char out[18];
    EXPECT_THAT(seams::trace_of([&] { (void)getter.get("lo", out, sizeof out); }),
                ElementsAre(line(getter, "Enter"), line(getter, "Success Exit")));
    (void)sandbox::stdout_of([&] { (void)seams::trace_of([&] { (void)getter.get("ra0", out, sizeof out); }); });
    if (getter.traces_refusal) {
      EXPECT_THAT(seams::trace, ElementsAre(line(getter, "Enter"), line(getter, "Fail Exit")));
    } else {
      EXPECT_THAT(seams::trace, ElementsAre(line(getter, "Enter")));
    }
  });
}

}  // namespace
