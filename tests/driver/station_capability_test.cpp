// What a station can do: 802.11k radio measurement and 802.11v management.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "driver/allocation.h"
#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::entered;
using exchange::failed;
using exchange::Seen;
using exchange::succeeded;
using exchange::zeros;

constexpr uint8_t kCanary = 0x5A;

struct Query {
  const char* name;
  const char* in_reasons;
  int (*call)(int band, int index, const uint8_t* mac, uint8_t* out);
  uint16_t oid;
  std::string head;   // before the MAC
  size_t capability;  // bytes behind it
};

const Query kQueries[] = {
    {"wifimgr_lib_get_Sta11kCap", "getSta11kCap", wifimgr_lib_get_Sta11kCap, 0x494C, std::string("\x04\x0e\0\0\0", 5),
     8},
    {"wifimgr_lib_get_Sta11vCap", "getSta11vCap", wifimgr_lib_get_Sta11vCap, 0x494A, "\x04\x07", 1},
};

template <typename Check>
void for_each_query(Check check) {
  for (const Query& query : kQueries) {
    for (const int band : {0, 1}) {
      SCOPED_TRACE(std::string(query.name) + " of band " + std::to_string(band));
      check(query, band);
    }
  }
}

// One call for a MAC with zero bytes, and what it left around the output.
struct Caller {
  uint8_t mac[6] = {0x00, 0xA1, 0x00, 0xC3, 0xD4, 0x00};
  uint8_t bytes[3] = {kCanary, kCanary, kCanary};

  int ask(const Query& query, int band, int index) { return query.call(band, index, mac, &bytes[1]); }
};

void expect_output(const Caller& caller, int value) {
  EXPECT_EQ(kCanary, caller.bytes[0]);
  EXPECT_EQ(value, caller.bytes[1]);
  EXPECT_EQ(kCanary, caller.bytes[2]);
  EXPECT_EQ(std::string("\x00\xA1\x00\xC3\xD4\x00", 6), std::string(reinterpret_cast<const char*>(caller.mac), 6));
}

// The record as it goes out, or as it comes back.
std::string record_with(const Query& query, const std::string& capability) {
  return query.head + std::string("\x00\xA1\x00\xC3\xD4\x00", 6) + capability;
}

TEST(StationCapability, IsAskedOfTheSsidsInterfaceWithThePackedRecord) {
  for_each_query([](const Query& query, int band) {
    for (int index = 1; index <= 4; ++index) {
      Caller caller;
      const Seen seen = exchange::seen([&] { return caller.ask(query, band, index); });
      exchange::expect_requests(
          seen, {exchange::oid_request(query.oid, (band == 0 ? "ra" : "rai") + std::to_string(index - 1),
                                       record_with(query, zeros(query.capability)))});
      exchange::expect_exit(seen, {0, "", {entered(query.name), succeeded(query.name)}});
      expect_output(caller, 0);
    }
  });
}

TEST(StationCapability, Of11kIsAnyBitInTheEightBytes) {
  const Query& query = kQueries[0];
  for (size_t position = 0; position < 8; ++position) {
    for (const char bits : {'\x01', '\x80', '\xFF'}) {
      SCOPED_TRACE(position);
      std::string capability = zeros(8);
      capability[position] = bits;
      requests::driver = requests::answering(record_with(query, capability));
      for (const int band : {0, 1}) {
        Caller caller;
        EXPECT_EQ(0, caller.ask(query, band, 1));
        expect_output(caller, 1);
      }
    }
  }
}

TEST(StationCapability, Of11kIsReadFromItsOwnBytesOnly) {
  requests::driver = requests::answering(exchange::rubbish(11) + zeros(8));
  Caller caller;
  EXPECT_EQ(0, caller.ask(kQueries[0], 0, 1));
  expect_output(caller, 0);
}

TEST(StationCapability, Of11vIsTheDriversByte) {
  for (const int byte : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
    requests::driver = requests::answering(exchange::rubbish(8) + static_cast<char>(byte));
    for (const int band : {0, 1}) {
      Caller caller;
      EXPECT_EQ(0, caller.ask(kQueries[1], band, 1));
      expect_output(caller, byte);
    }
  }
}

TEST(StationCapability, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  for_each_query([](const Query& query, int band) {
    Caller caller;
    EXPECT_EQ(0, caller.ask(query, band, 1));
    expect_output(caller, 0);
  });
}

void expect_failure(const Seen& seen, const Query& query, const Caller& caller, const std::string& why) {
  exchange::expect_exit(seen, {1, "", {entered(query.name), failed(query.name, why)}});
  expect_output(caller, kCanary);
}

TEST(StationCapability, FailsWithoutASocket) {
  for_each_query([](const Query& query, int band) {
    Caller caller;
    const Seen seen = exchange::seen_without_socket([&] { return caller.ask(query, band, 1); });
    expect_failure(seen, query, caller, query.in_reasons + std::string(": Create socket fail"));
    EXPECT_TRUE(seen.requests.empty());
  });
}

TEST(StationCapability, FailsWithoutMemory) {
  allocation::fails = true;
  for_each_query([](const Query& query, int band) {
    Caller caller;
    const Seen seen = exchange::seen([&] { return caller.ask(query, band, 1); });
    expect_failure(seen, query, caller, query.in_reasons + std::string(": malloc fail"));
    EXPECT_TRUE(seen.requests.empty());
  });
}

TEST(StationCapability, FailsWhenTheDriverRefuses) {
  for_each_query([](const Query& query, int band) {
    Caller caller;
    const Seen seen = exchange::seen_with_refusal([&] { return caller.ask(query, band, 1); });
    expect_failure(seen, query, caller, query.in_reasons + std::string(": ioctl open fail"));
    EXPECT_EQ(1u, seen.requests.size());
  });
}

TEST(StationCapability, OfAnIndexOutside1To4IsRefusedFirst) {
  for (const Query& query : kQueries) {
    for (const int band : {0, 1, 2, -1}) {
      for (const int index : {0, 5, -1, 257, INT_MAX, INT_MIN}) {
        SCOPED_TRACE(index);
        Caller caller;
        const Seen seen = exchange::seen_without_socket([&] { return caller.ask(query, band, index); });
        expect_failure(seen, query, caller, "The ssid index should be from 1 to 4");
        exchange::expect_silence(seen);
      }
    }
  }
}

TEST(StationCapability, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const Query& query : kQueries) {
    for (const int band : exchange::wrong_bands()) {
      for (const int index : {1, 4}) {
        SCOPED_TRACE(band);
        Caller caller;
        const Seen seen = exchange::seen_without_socket([&] { return caller.ask(query, band, index); });
        expect_failure(seen, query, caller, "The wifi_type is wrong.");
        exchange::expect_silence(seen);
      }
    }
  }
}

TEST(StationCapability, IsNotAskedForWithoutAMacOrAnOutput) {
  for_each_query([](const Query& query, int band) {
    Caller caller;
    for (const Seen& seen : {exchange::seen([&] { return query.call(band, 1, nullptr, &caller.bytes[1]); }),
                             exchange::seen([&] { return query.call(band, 1, caller.mac, nullptr); })}) {
      expect_failure(seen, query, caller, "");
      exchange::expect_silence(seen);
    }
  });
}

}  // namespace
