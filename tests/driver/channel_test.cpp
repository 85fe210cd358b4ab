// The channel that a radio is on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::entered;
using exchange::failed;
using exchange::Seen;
using exchange::seen;
using exchange::Text;
using exchange::trace_of_failure;
using exchange::trace_of_success;

// A driver that puts a number where the data pointer stood, as this one does with the channel.
auto on_channel(int32_t channel) {
  return [channel](const requests::Request&, void* record) {
    std::memset(static_cast<char*>(record) + 16, 0x5a, 8);
    std::memcpy(static_cast<char*>(record) + 16, &channel, sizeof channel);
    return 0;
  };
}

struct Query {
  const char* name;
  int (*call)(char* out);
  const char* interface;
  const char* no_socket;
  const char* refused;
  int on_failure;
  bool traces;
};

const Query kQueries[] = {
    {"UpdateChannel", [](char* out) { return UpdateChannel(out), 0; }, "ra0", "==>UpdateChannel: Create socket fail\n",
     "==>UpdateChannel: ioctl open fail\n", 0, false},
    {"UpdateChannelAC", [](char* out) { return UpdateChannelAC(out), 0; }, "rai0",
     "==>UpdateChannelAC: Create socket fail\n", "==>UpdateChannelAC: ioctl open fail\n", 0, false},
    {"wifimgr_lib_get_CHANNEL", [](char* out) { return wifimgr_lib_get_CHANNEL(0, out); }, "ra0",
     "==>UpdateChannel: Create socket fail\n", "==>UpdateChannel: ioctl open fail\n", -1, true},
    {"wifimgr_lib_get_CHANNEL", [](char* out) { return wifimgr_lib_get_CHANNEL(1, out); }, "rai0",
     "==>UpdateChannel: Create socket fail\n", "==>UpdateChannel: ioctl open fail\n", -1, true},
};

// Runs `check` with each query.
template <typename Check>
void for_each_query(Check check) {
  for (const Query& query : kQueries) {
    SCOPED_TRACE(std::string(query.name) + " of " + query.interface);
    check(query);
  }
}

TEST(Channel, IsAskedOfTheRadioWithoutAPayload) {
  for_each_query([](const Query& query) {
    Text text;
    requests::driver = on_channel(11);
    exchange::expect_requests(seen([&] { return query.call(text.out()); }),
                              {exchange::bare_request(0x8B05, query.interface, 16)});
  });
}

TEST(Channel, IsWrittenAsADecimalText) {
  for_each_query([](const Query& query) {
    for (const int32_t channel : {0, 1, 6, 14, 36, 165, -1, INT_MAX, INT_MIN}) {
      Text text;
      requests::driver = on_channel(channel);
      exchange::expect_exit(seen([&] { return query.call(text.out()); }),
                            {0, "", trace_of_success(query.name, query.traces)});
      EXPECT_EQ(Text::holding(std::to_string(channel)), text.image());
    }
  });
}

TEST(Channel, IsGivenByADriverThatAnswersWithAPositiveResult) {
  for_each_query([](const Query& query) {
    Text text;
    requests::driver = [](const requests::Request& request, void* record) {
      return on_channel(13)(request, record) + 1;
    };
    exchange::expect_exit(seen([&] { return query.call(text.out()); }),
                          {0, "", trace_of_success(query.name, query.traces)});
    EXPECT_EQ(Text::holding("13"), text.image());
  });
}

TEST(Channel, IsSixWithoutASocket) {
  for_each_query([](const Query& query) {
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return query.call(text.out()); });
    exchange::expect_exit(seen, {query.on_failure, query.no_socket, trace_of_failure(query.name, query.traces)});
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(Text::holding("6"), text.image());
  });
}

TEST(Channel, IsSixWhenTheDriverRefuses) {
  for_each_query([](const Query& query) {
    Text text;
    requests::driver = on_channel(11);
    const Seen seen = exchange::seen_with_refusal([&] { return query.call(text.out()); });
    exchange::expect_exit(seen, {query.on_failure, query.refused, trace_of_failure(query.name, query.traces)});
    EXPECT_EQ(1u, seen.requests.size());
    EXPECT_EQ(Text::holding("6"), text.image());
  });
}

TEST(Channel, IsSixForAnyNegativeResult) {
  for_each_query([](const Query& query) {
    Text text;
    requests::driver = exchange::returning(-22);
    EXPECT_EQ(query.on_failure, query.call(text.out()));
    EXPECT_EQ(Text::holding("6"), text.image());
  });
}

TEST(Channel, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_CHANNEL(band, text.out()); });
    exchange::expect_exit(
        seen,
        {1, "", {entered("wifimgr_lib_get_CHANNEL"), failed("wifimgr_lib_get_CHANNEL", "The wifi_type is wrong.")}});
    exchange::expect_silence(seen);
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(Channel, IsNotAskedForWithoutABuffer) {
  for_each_query([](const Query& query) {
    const Seen seen = exchange::seen([&] { return query.call(nullptr); });
    exchange::expect_silence(seen);
    EXPECT_EQ("", seen.printed);
    EXPECT_EQ(query.traces ? 1 : 0, seen.result);
  });
}

}  // namespace
