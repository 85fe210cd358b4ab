// Entries of the driver's probe-response filter.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <string>
#include <vector>

#include "driver/exchange.h"
#include "support/sandbox.h"
#include "wifimgr_lib.h"

namespace {

using exchange::entered;
using exchange::failed;
using exchange::oid_request;
using exchange::rubbish;
using exchange::Seen;
using exchange::seen;
using exchange::succeeded;

constexpr char kExecute[] = "wifimgr_lib_proberesp_execute";
constexpr char kDelete[] = "wifimgr_lib_proberesp_delete";

struct Band {
  int wifi_type;
  const char* prefix;
};
constexpr Band kBands[] = {{0, "ra"}, {1, "rai"}, {2, "rai"}};

const std::vector<int> kWrongBands = {3, -1, 256, 65536, INT_MAX, INT_MIN};

// As the kernel does, refuses what has no interface.
int refuse_no_name(const requests::Request& request, void* /*record*/) {
  if (request.interface[0] != '\0') return 0;
  errno = ENODEV;
  return -1;
}

Seen execute(int band, int mask) {
  std::string data = rubbish(33);
  return seen([&] { return wifimgr_lib_proberesp_execute(band, data.data(), 33, mask); });
}

// The requests to SSIDs 0 to `last`, those outside the mask to no interface.
std::vector<std::string> requests_to(const char* prefix, unsigned mask, int last) {
  std::vector<std::string> expected;
  for (int i = 0; i <= last; ++i) {
    const bool selected = (mask >> i & 1U) != 0;
    expected.push_back(oid_request(0x9204, selected ? prefix + std::to_string(i) : "", rubbish(33)));
  }
  return expected;
}

TEST(ProbeResponse, GoesToAllEightSsidsOfAFullMask) {
  requests::driver = refuse_no_name;
  for (const Band& band : kBands) {
    SCOPED_TRACE(band.wifi_type);
    const Seen seen = execute(band.wifi_type, 0xFF);
    exchange::expect_requests(seen, requests_to(band.prefix, 0xFF, 7));
    exchange::expect_exit(seen, {0, "", {entered(kExecute), succeeded(kExecute)}});
  }
}

TEST(ProbeResponse, EndsAtTheFirstSsidThatIsNotSelected) {
  struct Row {
    unsigned mask;
    int last;
  };
  requests::driver = refuse_no_name;
  for (const Row& row : {Row{0x00, 0}, {0x01, 1}, {0x03, 2}, {0x05, 1}, {0x7F, 7}, {0x80, 0}, {0xFE, 0}, {0xF7, 3}}) {
    for (const Band& band : kBands) {
      SCOPED_TRACE(row.mask);
      const Seen seen = execute(band.wifi_type, static_cast<int>(row.mask));
      exchange::expect_requests(seen, requests_to(band.prefix, row.mask, row.last));
      exchange::expect_exit(seen, {-1, "", {entered(kExecute), failed(kExecute)}});
    }
  }
}

TEST(ProbeResponse, LooksAtTheLowestEightBitsOfTheMask) {
  requests::driver = refuse_no_name;
  for (const int mask : {-1, INT_MAX, 0x1FF, INT_MIN | 0xFF}) {
    const Seen seen = execute(0, mask);
    exchange::expect_requests(seen, requests_to("ra", 0xFF, 7));
    EXPECT_EQ(0, seen.result);
  }
  EXPECT_EQ(1u, execute(0, 0x7FFFFF00).requests.size());
}

TEST(ProbeResponse, ClearsTheNameOfAnSsidThatIsNotSelected) {
  const Seen seen = execute(1, 0xA5);
  exchange::expect_requests(seen, requests_to("rai", 0xA5, 7));
  EXPECT_EQ(0, seen.result);
}

TEST(ProbeResponse, EndsAtTheFirstRequestThatFails) {
  for (int nth = 1; nth <= 8; ++nth) {
    SCOPED_TRACE(nth);
    std::string data = rubbish(33);
    const Seen seen =
        exchange::seen_with_refusal([&] { return wifimgr_lib_proberesp_execute(0, data.data(), 33, 0xFF); }, nth);
    exchange::expect_requests(seen, requests_to("ra", 0xFF, nth - 1));
    exchange::expect_exit(seen, {-1, "", {entered(kExecute), failed(kExecute)}});
  }
}

TEST(ProbeResponse, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  const Seen executed = execute(0, 0xFF);
  EXPECT_EQ(8u, executed.requests.size());
  EXPECT_EQ(0, executed.result);
  EXPECT_EQ(0, seen([] { return wifimgr_lib_proberesp_delete(0, nullptr, 0); }).result);
}

TEST(ProbeResponse, TakesAnyPayloadWhoseReplyTheCallerSees) {
  std::string data = exchange::zeros(8);
  requests::driver = requests::answering("reply");
  EXPECT_EQ(0, wifimgr_lib_proberesp_execute(0, data.data(), 5, 0xFF));
  EXPECT_EQ("reply" + exchange::zeros(3), data);
  data = exchange::zeros(8);
  EXPECT_EQ(0, seen([&] { return wifimgr_lib_proberesp_delete(0, data.data(), 5); }).result);
  EXPECT_EQ("reply" + exchange::zeros(3), data);
}

TEST(ProbeResponse, TakesNoPayloadToo) {
  EXPECT_EQ(exchange::bare_request(0x8BE1, "rai7", 0, 0x9204),
            seen([] { return wifimgr_lib_proberesp_execute(1, nullptr, 0, 0xFF); }).requests.back());
  exchange::expect_requests(seen([] { return wifimgr_lib_proberesp_delete(1, nullptr, 0); }),
                            {exchange::bare_request(0x8BE1, "rai0", 0, 0x9205)});
}

std::string line(int number) {
  return "function ==> [wifimgr_lib_proberesp_delete]  line ==> [" + std::to_string(number) + "]\n";
}

TEST(ProbeResponseDelete, GoesToTheRadioAndTellsItsWay) {
  for (const Band& band : kBands) {
    for (const size_t length : {size_t{1}, size_t{40}, size_t{65535}}) {
      std::string data = rubbish(length);
      const Seen seen = exchange::seen(
          [&] { return wifimgr_lib_proberesp_delete(band.wifi_type, data.data(), static_cast<uint16_t>(length)); });
      exchange::expect_requests(seen, {oid_request(0x9205, band.prefix + std::string("0"), rubbish(length))});
      exchange::expect_exit(seen, {0, line(2599) + line(2612) + line(2622), {entered(kDelete), succeeded(kDelete)}});
    }
  }
}

TEST(ProbeResponseDelete, DoesNotTellTheEndOfARequestThatFails) {
  for (const Band& band : kBands) {
    const Seen seen =
        exchange::seen_with_refusal([&] { return wifimgr_lib_proberesp_delete(band.wifi_type, nullptr, 0); });
    EXPECT_EQ(1u, seen.requests.size());
    exchange::expect_exit(seen, {-1, line(2599) + line(2612), {entered(kDelete), failed(kDelete)}});
  }
}

TEST(ProbeResponseDelete, IssuesTheRequestBetweenItsSecondAndThirdLine) {
  sandbox::StdoutCapture capture;
  std::string before_the_request;
  requests::driver = [&](const requests::Request&, void*) {
    before_the_request = capture.take();
    return 0;
  };
  EXPECT_EQ(0, wifimgr_lib_proberesp_delete(0, nullptr, 0));
  EXPECT_EQ(line(2599) + line(2612), before_the_request);
}

TEST(ProbeResponseDelete, TellsItsFirstLineToAWrongBand) {
  for (const int band : kWrongBands) {
    SCOPED_TRACE(band);
    const Seen seen = exchange::seen([&] { return wifimgr_lib_proberesp_delete(band, nullptr, 0); });
    EXPECT_EQ(1, seen.result);
    EXPECT_EQ(line(2599), seen.printed);
    EXPECT_EQ((std::vector<std::string>{entered(kDelete), failed(kDelete, "The wifi_type is wrong.")}), seen.trace);
  }
}

// Both, with the same arguments.
struct Function {
  const char* name;
  int (*call)(int band);
};
const Function kFunctions[] = {
    {kExecute, [](int band) { return wifimgr_lib_proberesp_execute(band, nullptr, 0, 0xFF); }},
    {kDelete, [](int band) { return wifimgr_lib_proberesp_delete(band, nullptr, 0); }},
};

TEST(ProbeResponsePair, RefusesAnUnknownBandWithoutARequest) {
  for (const Function& function : kFunctions) {
    for (const int band : kWrongBands) {
      SCOPED_TRACE(band);
      const Seen seen = exchange::seen([&] { return function.call(band); });
      EXPECT_EQ(1, seen.result);
      EXPECT_TRUE(seen.requests.empty());
      EXPECT_EQ((std::vector<std::string>{entered(function.name), failed(function.name, "The wifi_type is wrong.")}),
                seen.trace);
    }
  }
}

TEST(ProbeResponsePair, LeavesTheSocketOfAWrongBandOpen) {
  for (const Function& function : kFunctions) {
    for (const int band : kWrongBands) {
      SCOPED_TRACE(band);
      const Seen seen = exchange::seen([&] { return function.call(band); });
      EXPECT_EQ(1u, seen.sockets.size());
      EXPECT_EQ(1, seen.left_open);
    }
    const Seen many = seen([&] { return function.call(3) + function.call(3) + function.call(3); });
    EXPECT_EQ(3, many.left_open);
  }
}

TEST(ProbeResponsePair, FailsWithoutASocketBeforeItLooksAtTheBand) {
  for (const Function& function : kFunctions) {
    for (const int band : {0, 1, 2, 3, -1}) {
      const Seen seen = exchange::seen_without_socket([&] { return function.call(band); });
      EXPECT_TRUE(seen.requests.empty());
      exchange::expect_exit(seen, {-1, "", {entered(function.name), failed(function.name)}});
    }
  }
}

}  // namespace
