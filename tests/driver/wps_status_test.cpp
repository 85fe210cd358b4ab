// A radio's WPS status word.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::entered;
using exchange::failed;
using exchange::Seen;
using exchange::seen;
using exchange::succeeded;

constexpr char kGetter[] = "wifimgr_lib_get_WPS_STATUS";
constexpr uint16_t kCanary = 0xCAFE;

struct Caller {
  uint16_t before = kCanary;
  uint16_t status = kCanary;
  uint16_t after = kCanary;
};

void expect_status(const Caller& caller, uint16_t status) {
  EXPECT_EQ(status, caller.status);
  EXPECT_EQ(kCanary, caller.before);
  EXPECT_EQ(kCanary, caller.after);
}

TEST(WpsStatus, IsAskedOfTheRadioWith768Bytes) {
  for (const int band : {0, 1}) {
    Caller caller;
    const Seen seen = exchange::seen([&] { return wifimgr_lib_get_WPS_STATUS(band, &caller.status); });
    exchange::expect_requests(seen,
                              {exchange::request(0x8BF2, band == 0 ? "ra0" : "rai0", 768, 0, exchange::zeros(768))});
    exchange::expect_exit(seen, {0, "", {entered(kGetter), succeeded(kGetter)}});
    expect_status(caller, 0);
  }
}

TEST(WpsStatus, IsTheFirst16BitsOfTheReply) {
  for (const uint16_t status : {uint16_t{0}, uint16_t{1}, uint16_t{0x00FF}, uint16_t{0x1234}, uint16_t{0xFFFF}}) {
    for (const int band : {0, 1}) {
      Caller caller;
      requests::driver = requests::answering(exchange::bytes_of(status).substr(0, 2) + exchange::rubbish(766));
      EXPECT_EQ(0, wifimgr_lib_get_WPS_STATUS(band, &caller.status));
      expect_status(caller, status);
    }
  }
}

TEST(WpsStatus, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  Caller caller;
  EXPECT_EQ(0, wifimgr_lib_get_WPS_STATUS(0, &caller.status));
  expect_status(caller, 0);
}

TEST(WpsStatus, FailsWithoutASocket) {
  for (const int band : {0, 1}) {
    Caller caller;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_WPS_STATUS(band, &caller.status); });
    exchange::expect_exit(seen, {-1, "[wifimgr_lib_get_WPS_STATUS]Create socket fail\n", {entered(kGetter)}});
    EXPECT_TRUE(seen.requests.empty());
    expect_status(caller, kCanary);
  }
}

TEST(WpsStatus, FailsWhenTheDriverRefuses) {
  for (const int band : {0, 1}) {
    Caller caller;
    const Seen seen = exchange::seen_with_refusal([&] { return wifimgr_lib_get_WPS_STATUS(band, &caller.status); });
    exchange::expect_exit(seen, {-1, "[wifimgr_lib_get_WPS_STATUS]:ioctl open fail\n", {entered(kGetter)}});
    EXPECT_EQ(1u, seen.requests.size());
    expect_status(caller, kCanary);
  }
}

TEST(WpsStatus, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    Caller caller;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_WPS_STATUS(band, &caller.status); });
    exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter, "The wifi_type is wrong.")}});
    exchange::expect_silence(seen);
    expect_status(caller, kCanary);
  }
}

TEST(WpsStatus, IsNotAskedForWithoutAnOutput) {
  const Seen seen = exchange::seen([] { return wifimgr_lib_get_WPS_STATUS(0, nullptr); });
  exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter)}});
  exchange::expect_silence(seen);
}

}  // namespace
