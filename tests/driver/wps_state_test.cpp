// The state of a WPS session, and its peer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <string>

#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::bytes_of;
using exchange::entered;
using exchange::failed;
using exchange::oid_request;
using exchange::Seen;
using exchange::seen;
using exchange::Text;
using exchange::trace_of_failure;
using exchange::trace_of_success;
using exchange::zeros;

constexpr char kGetter[] = "wifimgr_lib_get_WpsStatus";
constexpr uint32_t kCanary = 0xCAFEF00D;

struct Query {
  const char* name;
  int (*call)(uint32_t* state, char* peer, int index);
  const char* prefix;
  int on_failure;
  bool traces;
};

const Query kQueries[] = {
    {"UpdateWpsStatus", [](uint32_t* state, char* peer, int index) { return UpdateWpsStatus(state, peer, index), 0; },
     "ra", 0, false},
    {"UpdateWpsStatusAC",
     [](uint32_t* state, char* peer, int index) { return UpdateWpsStatusAC(state, peer, index), 0; }, "rai", 0, false},
    {kGetter, [](uint32_t* state, char* peer, int index) { return wifimgr_lib_get_WpsStatus(0, state, peer, index); },
     "ra", -1, true},
    {kGetter, [](uint32_t* state, char* peer, int index) { return wifimgr_lib_get_WpsStatus(1, state, peer, index); },
     "rai", -1, true},
};

template <typename Check>
void for_each_query(Check check) {
  for (const Query& query : kQueries) {
    SCOPED_TRACE(std::string(query.name) + " of " + query.prefix);
    check(query);
  }
}

// A driver in a session: `result` is that of the second request.
auto in_state(uint32_t state, int result = 0) {
  return [state, result](const requests::Request& request, void* record) {
    if (request.flags == 0x0751) return requests::answering(bytes_of(state) + exchange::rubbish(16))(request, record);
    return requests::answering(exchange::rubbish(192) + std::string("\x0a\xb1\x00\xd3\xe4\xff", 6))(request, record) +
           result;
  };
}

constexpr char kPeer[] = "0A:B1:00:D3:E4:FF";

// What one call left in the caller's variables.
struct Caller {
  uint32_t before = kCanary;
  uint32_t state = kCanary;
  uint32_t after = kCanary;
  Text peer;
};

void expect_outputs(const Caller& caller, uint32_t state, const std::string& peer_image) {
  EXPECT_EQ(state, caller.state);
  EXPECT_EQ(kCanary, caller.before);
  EXPECT_EQ(kCanary, caller.after);
  EXPECT_EQ(peer_image, caller.peer.image());
}

TEST(WpsState, UpTo2HasNoPeerAndIsReadWithOneRequest) {
  for_each_query([](const Query& query) {
    for (const uint32_t state : {0u, 1u, 2u, 0x80000000u, 0x80000003u, 0xFFFFFFFFu}) {
      SCOPED_TRACE(state);
      Caller caller;
      requests::driver = in_state(state);
      const Seen seen = exchange::seen([&] { return query.call(&caller.state, caller.peer.out(), 0); });
      exchange::expect_requests(seen, {oid_request(0x0751, query.prefix + std::string("0"), zeros(20))});
      exchange::expect_exit(seen, {0, "", trace_of_success(query.name, query.traces)});
      expect_outputs(caller, state, Text::untouched());
    }
  });
}

TEST(WpsState, Above2HasAPeerWhichIsAskedForOnTheSameSocket) {
  for_each_query([](const Query& query) {
    for (const uint32_t state : {3u, 4u, 5u, 0x7FFFFFFFu}) {
      SCOPED_TRACE(state);
      Caller caller;
      requests::driver = in_state(state);
      const Seen seen = exchange::seen([&] { return query.call(&caller.state, caller.peer.out(), 5); });
      const std::string interface = query.prefix + std::string("5");
      exchange::expect_requests(
          seen, {oid_request(0x0751, interface, zeros(20)), oid_request(0x075C, interface, zeros(198))});
      exchange::expect_exit(seen, {0, "", trace_of_success(query.name, query.traces)});
      expect_outputs(caller, state, Text::holding(kPeer));
    }
  });
}

TEST(WpsState, IsGivenByADriverThatAnswersWithPositiveResults) {
  for_each_query([](const Query& query) {
    Caller caller;
    requests::driver = [](const requests::Request& request, void* record) { return in_state(3)(request, record) + 7; };
    EXPECT_EQ(0, query.call(&caller.state, caller.peer.out(), 0));
    expect_outputs(caller, 3, Text::holding(kPeer));
  });
}

TEST(WpsState, IsClearedWithoutASocket) {
  for_each_query([](const Query& query) {
    Caller caller;
    const Seen seen = exchange::seen_without_socket([&] { return query.call(&caller.state, caller.peer.out(), 0); });
    exchange::expect_exit(seen, {query.on_failure, "==>UpdateWpsStatus: Create socket fail\n",
                                 trace_of_failure(query.name, query.traces)});
    EXPECT_TRUE(seen.requests.empty());
    expect_outputs(caller, 0, Text::holding(""));
  });
}

TEST(WpsState, IsClearedWhenTheDriverRefuses) {
  for_each_query([](const Query& query) {
    Caller caller;
    requests::driver = in_state(3);
    const Seen seen = exchange::seen_with_refusal([&] { return query.call(&caller.state, caller.peer.out(), 0); });
    exchange::expect_exit(
        seen, {query.on_failure, "==>UpdateWpsStatus: ioctl open fail\n", trace_of_failure(query.name, query.traces)});
    EXPECT_EQ(1u, seen.requests.size());
    expect_outputs(caller, 0, Text::holding(""));
  });
}

TEST(WpsState, StaysWhenItsPeerIsRefused) {
  for_each_query([](const Query& query) {
    Caller caller;
    requests::driver = in_state(4);
    const Seen seen = exchange::seen_with_refusal([&] { return query.call(&caller.state, caller.peer.out(), 0); }, 2);
    exchange::expect_exit(
        seen, {query.on_failure, "==>UpdateWpsMac: ioctl open fail:-1\n", trace_of_failure(query.name, query.traces)});
    EXPECT_EQ(2u, seen.requests.size());
    EXPECT_EQ(1u, seen.sockets.size());
    expect_outputs(caller, 4, Text::holding(""));
  });
}

TEST(WpsState, PrintsTheResultOfTheRefusedPeer) {
  for_each_query([](const Query& query) {
    Caller caller;
    requests::driver = in_state(3, -22);
    EXPECT_EQ("==>UpdateWpsMac: ioctl open fail:-22\n",
              seen([&] { return query.call(&caller.state, caller.peer.out(), 0); }).printed);
    expect_outputs(caller, 3, Text::holding(""));
  });
}

TEST(WpsState, TakesTheIndexForTheInterfaceNumberUnchecked) {
  for_each_query([](const Query& query) {
    for (const int index : {0, 1, 7, 8, 255, -1, INT_MAX, INT_MIN}) {
      Caller caller;
      exchange::expect_requests(seen([&] { return query.call(&caller.state, caller.peer.out(), index); }),
                                {oid_request(0x0751, query.prefix + std::to_string(index), zeros(20))});
    }
  });
}

TEST(WpsState, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    Caller caller;
    const Seen seen = exchange::seen_without_socket(
        [&] { return wifimgr_lib_get_WpsStatus(band, &caller.state, caller.peer.out(), 0); });
    exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter, "The wifi_type is wrong.")}});
    exchange::expect_silence(seen);
    expect_outputs(caller, kCanary, Text::untouched());
  }
}

TEST(WpsState, IsNotAskedForWithoutBothOutputs) {
  for_each_query([](const Query& query) {
    Caller caller;
    for (const Seen& seen : {exchange::seen([&] { return query.call(nullptr, caller.peer.out(), 0); }),
                             exchange::seen([&] { return query.call(&caller.state, nullptr, 0); })}) {
      exchange::expect_silence(seen);
      EXPECT_EQ("", seen.printed);
      EXPECT_EQ(query.traces ? 1 : 0, seen.result);
    }
    expect_outputs(caller, kCanary, Text::untouched());
  });
}

}  // namespace
