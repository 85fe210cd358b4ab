// How noisy and how busy a radio's channel is.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::bytes_of;
using exchange::entered;
using exchange::failed;
using exchange::Seen;
using exchange::seen;
using exchange::succeeded;
using exchange::Text;
using exchange::zeros;

constexpr char kNoise[] = "wifimgr_lib_get_Noise";
constexpr char kLoad[] = "wifimgr_lib_get_chanLoad";
constexpr char kSteering[] = "wifimgr_lib_get_BndstrgChanLoad";

struct Query {
  const char* name;
  int (*call)(int band, int index, char* out);
  uint16_t oid;
  const char* no_socket;
  const char* refused;
};

const Query kQueries[] = {
    {kNoise, wifimgr_lib_get_Noise, 0x069C, "get_Noise: Create socket fail", "get_Noise: ioctl open fail"},
    {kLoad, wifimgr_lib_get_chanLoad, 0x0765, "chanLoad: Create socket fail", "chanLoad: ioctl open fail"},
};

// Runs `check` with each query of each band and the interface it asks.
template <typename Check>
void for_each_query(Check check) {
  for (const Query& query : kQueries) {
    for (const int band : {0, 1}) {
      SCOPED_TRACE(std::string(query.name) + " of band " + std::to_string(band));
      check(query, band, band == 0 ? "ra0" : "rai0");
    }
  }
}

TEST(RadioLoad, IsAskedOfTheRadioWithFourBytes) {
  for_each_query([](const Query& query, int band, const char* interface) {
    Text text;
    const Seen seen = exchange::seen([&] { return query.call(band, -1, text.out()); });
    exchange::expect_requests(seen, {exchange::oid_request(query.oid, interface, zeros(4))});
    exchange::expect_exit(seen, {0, "", {entered(query.name), succeeded(query.name)}});
    EXPECT_EQ(Text::holding("0"), text.image());
  });
}

TEST(RadioLoad, OfNoiseIsASignedNumber) {
  for (const int32_t noise : {0, 1, -1, -95, INT_MAX, INT_MIN}) {
    for (const int band : {0, 1}) {
      Text text;
      requests::driver = requests::answering(bytes_of(static_cast<uint32_t>(noise)));
      EXPECT_EQ(0, wifimgr_lib_get_Noise(band, -1, text.out()));
      EXPECT_EQ(Text::holding(std::to_string(noise)), text.image());
    }
  }
}

TEST(RadioLoad, OfTheChannelIsAnUnsignedNumber) {
  for (const uint32_t load : {0u, 1u, 255u, 2147483647u, 2147483648u, 4294967295u}) {
    for (const int band : {0, 1}) {
      Text text;
      requests::driver = requests::answering(bytes_of(load));
      EXPECT_EQ(0, wifimgr_lib_get_chanLoad(band, -1, text.out()));
      EXPECT_EQ(Text::holding(std::to_string(load)), text.image());
    }
  }
}

TEST(RadioLoad, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  for_each_query([](const Query& query, int band, const char*) {
    Text text;
    EXPECT_EQ(0, query.call(band, -1, text.out()));
    EXPECT_EQ(Text::holding("0"), text.image());
  });
}

TEST(RadioLoad, FailsWithoutASocket) {
  for_each_query([](const Query& query, int band, const char*) {
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return query.call(band, -1, text.out()); });
    exchange::expect_exit(seen, {1, "", {entered(query.name), failed(query.name, query.no_socket)}});
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(Text::untouched(), text.image());
  });
}

TEST(RadioLoad, FailsWhenTheDriverRefuses) {
  for_each_query([](const Query& query, int band, const char*) {
    Text text;
    const Seen seen = exchange::seen_with_refusal([&] { return query.call(band, -1, text.out()); });
    exchange::expect_exit(seen, {1, "", {entered(query.name), failed(query.name, query.refused)}});
    EXPECT_EQ(1u, seen.requests.size());
    EXPECT_EQ(Text::untouched(), text.image());
  });
}

TEST(RadioLoad, IsRefusedForAnyIndexButMinusOneFirst) {
  for (const Query& query : kQueries) {
    for (const int band : {0, 1, 2, -1}) {
      for (const int index : {0, 1, 8, -2, INT_MAX, INT_MIN}) {
        SCOPED_TRACE(index);
        Text text;
        const Seen seen = exchange::seen_without_socket([&] { return query.call(band, index, text.out()); });
        exchange::expect_exit(seen, {1, "", {entered(query.name), failed(query.name, "The index should be -1.")}});
        exchange::expect_silence(seen);
        EXPECT_EQ(Text::untouched(), text.image());
      }
    }
  }
}

TEST(RadioLoad, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const Query& query : kQueries) {
    for (const int band : exchange::wrong_bands()) {
      SCOPED_TRACE(band);
      Text text;
      const Seen seen = exchange::seen_without_socket([&] { return query.call(band, -1, text.out()); });
      exchange::expect_exit(seen, {1, "", {entered(query.name), failed(query.name, "The wifi_type is wrong.")}});
      exchange::expect_silence(seen);
      EXPECT_EQ(Text::untouched(), text.image());
    }
  }
}

TEST(RadioLoad, IsNotAskedForWithoutABuffer) {
  for_each_query([](const Query& query, int band, const char*) {
    const Seen seen = exchange::seen([&] { return query.call(band, -1, nullptr); });
    exchange::expect_exit(seen, {1, "", {entered(query.name), failed(query.name)}});
    exchange::expect_silence(seen);
  });
}

TEST(SteeringLoad, IsAskedOf5GWithSixteenBytesWhateverTheBandButZero) {
  for (const int band : {1, 2, -1, 256, 65536, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(band);
    Text text;
    const Seen seen = exchange::seen([&] { return wifimgr_lib_get_BndstrgChanLoad(band, 1, text.out(), 12); });
    exchange::expect_requests(seen, {exchange::oid_request(0x0765, "rai0", zeros(16))});
    exchange::expect_exit(seen, {0, "", {entered(kSteering), succeeded(kSteering)}});
    EXPECT_EQ(Text::holding("0"), text.image());
  }
}

TEST(SteeringLoad, IsTheSignedNumberInFront) {
  for (const int32_t load : {0, 1, 255, -1, INT_MAX, INT_MIN}) {
    Text text;
    requests::driver = requests::answering(bytes_of(static_cast<uint32_t>(load)) + exchange::rubbish(12));
    EXPECT_EQ(0, wifimgr_lib_get_BndstrgChanLoad(1, 1, text.out(), 12));
    EXPECT_EQ(Text::holding(std::to_string(load)), text.image());
  }
}

TEST(SteeringLoad, IsCutToTheBuffer) {
  requests::driver = requests::answering(bytes_of(12345));
  for (const int size : {1, 2, 5, 6, 40}) {
    SCOPED_TRACE(size);
    Text text;
    EXPECT_EQ(0, wifimgr_lib_get_BndstrgChanLoad(1, 1, text.out(), size));
    EXPECT_EQ(Text::holding(std::string("12345").substr(0, static_cast<size_t>(size) - 1)), text.image());
  }
}

TEST(SteeringLoad, WritesNothingIntoABufferOfNoBytes) {
  requests::driver = requests::answering(bytes_of(12345));
  Text text;
  EXPECT_EQ(0, wifimgr_lib_get_BndstrgChanLoad(1, 1, text.out(), 0));
  EXPECT_EQ(Text::untouched(), text.image());
}

struct Refusal {
  int band;
  int index;
  const char* why;
};

TEST(SteeringLoad, LooksAtTheIndexBeforeTheBand) {
  for (const Refusal& row : {Refusal{1, 0, "The ssid index should be 1 ."},
                             {1, 2, "The ssid index should be 1 ."},
                             {1, -1, "The ssid index should be 1 ."},
                             {1, INT_MIN, "The ssid index should be 1 ."},
                             {0, 0, "The ssid index should be 1 ."},
                             {2, 2, "The ssid index should be 1 ."},
                             {0, 1, "Only 5G support BndstrgChanLoad."}}) {
    Text text;
    const Seen seen = exchange::seen_without_socket(
        [&] { return wifimgr_lib_get_BndstrgChanLoad(row.band, row.index, text.out(), 12); });
    exchange::expect_exit(seen, {1, "", {entered(kSteering), failed(kSteering, row.why)}});
    exchange::expect_silence(seen);
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(SteeringLoad, FailsWithTheWordsOfTheChannelLoad) {
  Text text;
  const auto query = [&] { return wifimgr_lib_get_BndstrgChanLoad(1, 1, text.out(), 12); };
  exchange::expect_exit(exchange::seen_without_socket(query),
                        {1, "", {entered(kSteering), failed(kSteering, "chanLoad: Create socket fail")}});
  exchange::expect_exit(exchange::seen_with_refusal(query),
                        {1, "", {entered(kSteering), failed(kSteering, "chanLoad: ioctl open fail")}});
  EXPECT_EQ(Text::untouched(), text.image());
}

TEST(SteeringLoad, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  Text text;
  EXPECT_EQ(0, wifimgr_lib_get_BndstrgChanLoad(1, 1, text.out(), 12));
  EXPECT_EQ(Text::holding("0"), text.image());
}

TEST(SteeringLoad, IsNotAskedForWithoutABuffer) {
  const Seen seen = exchange::seen([] { return wifimgr_lib_get_BndstrgChanLoad(1, 1, nullptr, 12); });
  exchange::expect_exit(seen, {1, "", {entered(kSteering), failed(kSteering)}});
  exchange::expect_silence(seen);
}

}  // namespace
