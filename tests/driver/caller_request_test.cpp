// Requests with a payload of the caller's: any request, any OID, statistics, the OUI filter.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::entered;
using exchange::failed;
using exchange::rubbish;
using exchange::Seen;
using exchange::seen;
using exchange::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kIoctl[] = "wifimgr_lib_ioctl";
constexpr char kOid[] = "wifimgr_lib_OidQueryInformation";
constexpr char kStatistics[] = "wifimgr_lib_get_WIFI_STATS";
constexpr char kOuiFilter[] = "wifimgr_lib_set_OUI_FILTER";

struct Sender {
  const char* name;
  int (*send)(void* data, uint16_t length);
  unsigned long number;
  const char* interface;
  uint16_t flags;
};

const Sender kSenders[] = {
    {kIoctl, [](void* data, uint16_t length) { return wifimgr_lib_ioctl(0x8BF7, data, "ra2", length); }, 0x8BF7, "ra2",
     0},
    {kOid, [](void* data, uint16_t length) { return wifimgr_lib_OidQueryInformation(0xF69C, "rai3", data, length); },
     0x8BE1, "rai3", 0xF69C},
    {kStatistics, [](void* data, uint16_t length) { return wifimgr_lib_get_WIFI_STATS("ra1", data, length); }, 0x8BE9,
     "ra1", 0},
    {kOuiFilter, [](void* data, uint16_t length) { return wifimgr_lib_set_OUI_FILTER(0, data, length); }, 0x8BE1, "ra0",
     0x9220},
    {kOuiFilter, [](void* data, uint16_t length) { return wifimgr_lib_set_OUI_FILTER(1, data, length); }, 0x8BE1,
     "rai0", 0x9220},
};

template <typename Check>
void for_each_sender(Check check) {
  for (const Sender& sender : kSenders) {
    SCOPED_TRACE(std::string(sender.name) + " to " + sender.interface);
    check(sender);
  }
}

TEST(CallerRequest, GoesOutWithTheCallersPayload) {
  for_each_sender([](const Sender& sender) {
    for (const size_t length : {size_t{1}, size_t{19}, size_t{256}, size_t{65535}}) {
      std::string data = rubbish(length);
      const auto size = static_cast<uint16_t>(length);
      const Seen seen = exchange::seen([&] { return sender.send(data.data(), size); });
      exchange::expect_requests(
          seen, {exchange::request(sender.number, sender.interface, size, sender.flags, rubbish(length))});
      exchange::expect_exit(seen, {0, "", {entered(sender.name), succeeded(sender.name)}});
    }
  });
}

TEST(CallerRequest, LetsTheDriverWriteIntoTheCallersBuffer) {
  for_each_sender([](const Sender& sender) {
    std::string data = exchange::zeros(24);
    requests::driver = requests::answering(rubbish(20));
    EXPECT_EQ(0, sender.send(data.data(), 20));
    EXPECT_EQ(rubbish(20) + exchange::zeros(4), data);
  });
}

TEST(CallerRequest, TakesNoPayloadToo) {
  for_each_sender([](const Sender& sender) {
    const Seen seen = exchange::seen([&] { return sender.send(nullptr, 0); });
    exchange::expect_requests(seen, {exchange::bare_request(sender.number, sender.interface, 0, sender.flags)});
    EXPECT_EQ(0, seen.result);
  });
}

// The three that take an interface name.
struct Named {
  const char* name;
  int (*send)(const char* interface);
  unsigned long number;
  uint16_t flags;
};

const Named kNamed[] = {
    {kIoctl, [](const char* interface) { return wifimgr_lib_ioctl(0x8B01, nullptr, interface, 5); }, 0x8B01, 0},
    {kOid, [](const char* interface) { return wifimgr_lib_OidQueryInformation(1, interface, nullptr, 5); }, 0x8BE1, 1},
    {kStatistics, [](const char* interface) { return wifimgr_lib_get_WIFI_STATS(interface, nullptr, 5); }, 0x8BE9, 0},
};

TEST(CallerRequest, CutsTheInterfaceNameTo15Characters) {
  for (const Named& named : kNamed) {
    SCOPED_TRACE(named.name);
    for (const std::string name : {"", "x", "abcdefghijklmn", "abcdefghijklmno", "abcdefghijklmnop",
                                   "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz"}) {
      exchange::expect_requests(seen([&] { return named.send(name.c_str()); }),
                                {exchange::bare_request(named.number, name.substr(0, 15), 5, named.flags)});
    }
  }
}

TEST(CallerRequest, TakesNoNameForTheEmptyOne) {
  for (const Named& named : kNamed) {
    SCOPED_TRACE(named.name);
    exchange::expect_requests(seen([&] { return named.send(nullptr); }),
                              {exchange::bare_request(named.number, "", 5, named.flags)});
  }
}

TEST(CallerRequest, PrintsNothingForTheNameOfNoInterface) {
  EXPECT_EQ("==>wifimgr_lib_get_WIFI_STATS: Create  socket fail\n",
            exchange::seen_without_socket([] { return wifimgr_lib_get_WIFI_STATS(nullptr, nullptr, 0); }).printed);
}

TEST(CallerRequest, TakesAnyNumberAndOid) {
  for (const int number : {0x8B00, 0x8B05, 0x8BE1, 0x8BFF}) {
    const auto sent = static_cast<unsigned long>(number);
    EXPECT_THAT(seen([&] { return wifimgr_lib_ioctl(number, nullptr, "ra0", 0); }).requests,
                ElementsAre(exchange::bare_request(sent, "ra0", 0)));
  }
  for (const uint16_t oid : {uint16_t{0}, uint16_t{0x0752}, uint16_t{0x8000}, uint16_t{0xFFFF}}) {
    EXPECT_THAT(seen([&] { return wifimgr_lib_OidQueryInformation(oid, "ra0", nullptr, 0); }).requests,
                ElementsAre(exchange::bare_request(0x8BE1, "ra0", 0, oid)));
  }
}

TEST(CallerRequest, HandsAPositiveResultOn) {
  for (const int result : {1, 7, 0x7FFFFFFF}) {
    requests::driver = exchange::returning(result);
    exchange::expect_exit(seen([] { return wifimgr_lib_ioctl(0x8BE1, nullptr, "ra0", 0); }),
                          {result, "", {entered(kIoctl), succeeded(kIoctl)}});
    exchange::expect_exit(seen([] { return wifimgr_lib_OidQueryInformation(1, "ra0", nullptr, 0); }),
                          {result, "", {entered(kOid), succeeded(kOid)}});
  }
}

TEST(CallerRequest, OfStatisticsAndTheFilterTakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  exchange::expect_exit(seen([] { return wifimgr_lib_get_WIFI_STATS("ra0", nullptr, 0); }),
                        {0, "", {entered(kStatistics), succeeded(kStatistics)}});
  exchange::expect_exit(seen([] { return wifimgr_lib_set_OUI_FILTER(0, nullptr, 0); }),
                        {0, "", {entered(kOuiFilter), succeeded(kOuiFilter)}});
}

struct Failure {
  int (*send)();
  exchange::Exit no_socket;
  exchange::Exit refused;
};

const Failure kFailures[] = {
    {[] { return wifimgr_lib_ioctl(0x8BE1, nullptr, "ra0", 0); },
     {-1, "", {entered(kIoctl), "[wifimgr_lib_ioctl]:\n===  create socket fail ===\n"}},
     {-1, "", {entered(kIoctl), "[wifimgr_lib_ioctl]:\n===  ioctl open fail ===\n"}}},
    {[] { return wifimgr_lib_OidQueryInformation(1, "ra0", nullptr, 0); },
     {-1, "wifimgr_lib_OidQueryInformation 2229: socket open fail\n", {entered(kOid)}},
     {-1, "@@@ioctl fail\r\n", {entered(kOid)}}},
    {[] { return wifimgr_lib_get_WIFI_STATS("rai4", nullptr, 0); },
     {-1, "==>wifimgr_lib_get_WIFI_STATS: Create rai4 socket fail\n", {entered(kStatistics)}},
     {-1, "", {entered(kStatistics), failed(kStatistics)}}},
    {[] { return wifimgr_lib_set_OUI_FILTER(0, nullptr, 0); },
     {-1, "[wifimgr_lib_set_OUI_FILTER]Create socket fail\n", {entered(kOuiFilter)}},
     {-1, "[wifimgr_lib_set_OUI_FILTER]:ioctl open fail\n", {entered(kOuiFilter)}}},
    {[] { return wifimgr_lib_set_OUI_FILTER(1, nullptr, 0); },
     {-1, "[wifimgr_lib_set_OUI_FILTER]Create socket fail\n", {entered(kOuiFilter)}},
     {-1, "[wifimgr_lib_set_OUI_FILTER]:ioctl open fail\n", {entered(kOuiFilter)}}},
};

TEST(CallerRequest, FailsWithoutASocket) {
  for (const Failure& failure : kFailures) {
    const Seen seen = exchange::seen_without_socket(failure.send);
    exchange::expect_exit(seen, failure.no_socket);
    EXPECT_THAT(seen.requests, IsEmpty());
  }
}

TEST(CallerRequest, FailsWhenTheDriverRefuses) {
  for (const Failure& failure : kFailures) {
    const Seen seen = exchange::seen_with_refusal(failure.send);
    exchange::expect_exit(seen, failure.refused);
    EXPECT_EQ(1u, seen.requests.size());
  }
}

TEST(CallerRequest, OfAnOidHandsANegativeResultOn) {
  requests::driver = exchange::returning(-22);
  exchange::expect_exit(seen([] { return wifimgr_lib_OidQueryInformation(1, "ra0", nullptr, 0); }),
                        {-22, "@@@ioctl fail\r\n", {entered(kOid)}});
}

TEST(CallerRequest, OfAnotherKindGivesMinusOneForAnyNegativeResult) {
  requests::driver = exchange::returning(-22);
  EXPECT_EQ(-1, wifimgr_lib_ioctl(0x8BE1, nullptr, "ra0", 0));
  EXPECT_EQ(-1, wifimgr_lib_get_WIFI_STATS("ra0", nullptr, 0));
  EXPECT_EQ(-1, wifimgr_lib_set_OUI_FILTER(0, nullptr, 0));
}

TEST(CallerRequest, TracesItsTroubleAsAnError) {
  const auto send = [] { (void)wifimgr_lib_ioctl(0x8BE1, nullptr, "ra0", 0); };
  seams::fail(requests::socket_fault, 1, EMFILE);
  EXPECT_THAT(seams::errors_of(send), ElementsAre("[wifimgr_lib_ioctl]:\n===  create socket fail ===\n"));
  seams::fail(requests::ioctl_fault, 1, EIO);
  EXPECT_THAT(seams::errors_of(send), ElementsAre("[wifimgr_lib_ioctl]:\n===  ioctl open fail ===\n"));
}

TEST(CallerRequest, TakesDescriptor0ForASocketLikeAnother) {
  close(STDIN_FILENO);
  EXPECT_EQ(0, wifimgr_lib_ioctl(0x8BE1, nullptr, "ra0", 0));
  EXPECT_EQ(1u, requests::sent.size());
  EXPECT_EQ(-1, close(STDIN_FILENO));
}

TEST(OuiFilter, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_set_OUI_FILTER(band, nullptr, 0); });
    exchange::expect_exit(seen, {1, "", {entered(kOuiFilter), failed(kOuiFilter, "The wifi_type is wrong.")}});
    exchange::expect_silence(seen);
  }
}

}  // namespace
