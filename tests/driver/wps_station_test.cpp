// The station that is in a WPS session with a radio.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "driver/allocation.h"
#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::entered;
using exchange::failed;
using exchange::Seen;
using exchange::seen;
using exchange::succeeded;
using exchange::Text;

constexpr char kGetter[] = "wifimgr_lib_get_WPS_STA_MAC";

TEST(WpsStation, IsAskedOfTheRadioWith32Bytes) {
  for (const int band : {0, 1}) {
    Text text;
    const Seen seen = exchange::seen([&] { return wifimgr_lib_get_WPS_STA_MAC(band, text.out()); });
    exchange::expect_requests(seen, {exchange::oid_request(0x2044, band == 0 ? "ra0" : "rai0", exchange::zeros(32))});
    exchange::expect_exit(seen, {0, "", {entered(kGetter), succeeded(kGetter)}});
    EXPECT_EQ(Text::holding("00:00:00:00:00:00"), text.image());
  }
}

TEST(WpsStation, IsWrittenInSmallLetters) {
  requests::driver = requests::answering(std::string("\x0a\xb1\x00\xd3\xe4\xff", 6) + exchange::rubbish(26));
  for (const int band : {0, 1}) {
    Text text;
    EXPECT_EQ(0, wifimgr_lib_get_WPS_STA_MAC(band, text.out()));
    EXPECT_EQ(Text::holding("0a:b1:00:d3:e4:ff"), text.image());
  }
}

TEST(WpsStation, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  Text text;
  EXPECT_EQ(0, wifimgr_lib_get_WPS_STA_MAC(0, text.out()));
  EXPECT_EQ(Text::holding("00:00:00:00:00:00"), text.image());
}

TEST(WpsStation, FailsWith4WithoutMemory) {
  allocation::fails = true;
  for (const int band : {0, 1}) {
    Text text;
    const Seen seen = exchange::seen([&] { return wifimgr_lib_get_WPS_STA_MAC(band, text.out()); });
    exchange::expect_exit(seen, {4, "malloc failed.\n", {entered(kGetter)}});
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(WpsStation, FailsWithoutASocket) {
  for (const int band : {0, 1}) {
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_WPS_STA_MAC(band, text.out()); });
    exchange::expect_exit(
        seen, {1, "", {entered(kGetter), failed(kGetter, "wifimgr_lib_get_WPS_STA_MAC: Create socket fail")}});
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(WpsStation, FailsWhenTheDriverRefuses) {
  for (const int band : {0, 1}) {
    Text text;
    const Seen seen = exchange::seen_with_refusal([&] { return wifimgr_lib_get_WPS_STA_MAC(band, text.out()); });
    exchange::expect_exit(seen,
                          {1, "", {entered(kGetter), failed(kGetter, "wifimgr_lib_get_WPS_STA_MAC: ioctl open fail")}});
    EXPECT_EQ(1u, seen.requests.size());
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(WpsStation, OfAnUnknownBandIsRefusedBeforeAnythingIsTried) {
  allocation::fails = true;
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_WPS_STA_MAC(band, text.out()); });
    exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter, "The wifi_type is wrong.")}});
    exchange::expect_silence(seen);
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(WpsStation, IsNotAskedForWithoutABuffer) {
  const Seen seen = exchange::seen([] { return wifimgr_lib_get_WPS_STA_MAC(0, nullptr); });
  exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter)}});
  exchange::expect_silence(seen);
}

}  // namespace
