// The WPS PIN that the driver reports for an interface.
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
using exchange::Text;
using exchange::trace_of_failure;
using exchange::trace_of_success;

constexpr char kGetter[] = "wifimgr_lib_get_WPS_PIN_CODE";

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
    {"UpdatePinCode", [](char* out) { return UpdatePinCode(out), 0; }, "ra0", "==>UpdatePinCode: Create socket fail\n",
     "==>UpdatePinCode: ioctl open fail\n", 0, false},
    {"UpdatePinCodeAC", [](char* out) { return UpdatePinCodeAC(out), 0; }, "rai0",
     "==>UpdatePinCodeAC: Create socket fail\n", "==>UpdatePinCodeAC: ioctl open fail\n", 0, false},
    {kGetter, [](char* out) { return wifimgr_lib_get_WPS_PIN_CODE(0, 0, out); }, "ra0",
     "==>UpdatePinCode: Create socket fail\n", "==>UpdatePinCode: ioctl open fail\n", -1, true},
    {kGetter, [](char* out) { return wifimgr_lib_get_WPS_PIN_CODE(1, 3, out); }, "rai3",
     "==>UpdatePinCode: Create socket fail\n", "==>UpdatePinCode: ioctl open fail\n", -1, true},
};

template <typename Check>
void for_each_query(Check check) {
  for (const Query& query : kQueries) {
    SCOPED_TRACE(std::string(query.name) + " of " + query.interface);
    check(query);
  }
}

TEST(WpsPin, IsAskedWithSixteenBytes) {
  for_each_query([](const Query& query) {
    Text text;
    const Seen seen = exchange::seen([&] { return query.call(text.out()); });
    exchange::expect_requests(seen, {exchange::oid_request(0x0752, query.interface, exchange::zeros(16))});
    exchange::expect_exit(seen, {0, "", trace_of_success(query.name, query.traces)});
  });
}

TEST(WpsPin, HasEightDigitsOrMore) {
  struct Row {
    uint32_t pin;
    const char* text;
  };
  for_each_query([](const Query& query) {
    for (const Row& row : {Row{0, "00000000"},
                           {1, "00000001"},
                           {1234, "00001234"},
                           {99999999, "99999999"},
                           {100000000, "100000000"},
                           {2147483648, "2147483648"},
                           {4294967295, "4294967295"}}) {
      Text text;
      requests::driver = requests::answering(bytes_of(row.pin) + exchange::rubbish(12));
      EXPECT_EQ(0, query.call(text.out()));
      EXPECT_EQ(Text::holding(row.text), text.image());
    }
  });
}

TEST(WpsPin, IsGivenByADriverThatAnswersWithAPositiveResult) {
  requests::driver = exchange::returning(7);
  for_each_query([](const Query& query) {
    Text text;
    exchange::expect_exit(seen([&] { return query.call(text.out()); }),
                          {0, "", trace_of_success(query.name, query.traces)});
    EXPECT_EQ(Text::holding("00000000"), text.image());
  });
}

TEST(WpsPin, IsZeroWithoutASocket) {
  for_each_query([](const Query& query) {
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return query.call(text.out()); });
    exchange::expect_exit(seen, {query.on_failure, query.no_socket, trace_of_failure(query.name, query.traces)});
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(Text::holding("0"), text.image());
  });
}

TEST(WpsPin, IsZeroWhenTheDriverRefuses) {
  requests::driver = requests::answering(bytes_of(1234));
  for_each_query([](const Query& query) {
    Text text;
    const Seen seen = exchange::seen_with_refusal([&] { return query.call(text.out()); });
    exchange::expect_exit(seen, {query.on_failure, query.refused, trace_of_failure(query.name, query.traces)});
    EXPECT_EQ(1u, seen.requests.size());
    EXPECT_EQ(Text::holding("0"), text.image());
  });
}

TEST(WpsPin, TakesTheIndexForTheInterfaceNumberUnchecked) {
  for (const int index : {0, 1, 7, 8, 255, -1, INT_MAX, INT_MIN}) {
    for (const int band : {0, 1}) {
      SCOPED_TRACE(index);
      Text text;
      exchange::expect_requests(
          seen([&] { return wifimgr_lib_get_WPS_PIN_CODE(band, index, text.out()); }),
          {exchange::oid_request(0x0752, (band == 0 ? "ra" : "rai") + std::to_string(index), exchange::zeros(16))});
    }
  }
}

TEST(WpsPin, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_WPS_PIN_CODE(band, 0, text.out()); });
    exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter, "The wifi_type is wrong.")}});
    exchange::expect_silence(seen);
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(WpsPin, IsNotAskedForWithoutABuffer) {
  for_each_query([](const Query& query) {
    const Seen seen = exchange::seen([&] { return query.call(nullptr); });
    exchange::expect_silence(seen);
    EXPECT_EQ("", seen.printed);
    EXPECT_EQ(query.traces ? 1 : 0, seen.result);
  });
}

}  // namespace
