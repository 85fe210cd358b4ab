// The temperature of a radio's chip.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

constexpr char kGetter[] = "wifimgr_lib_get_CPU_TEMPERATURE";
constexpr uint32_t kCanary = 0xCAFEF00D;

struct Caller {
  uint32_t before = kCanary;
  uint32_t value = kCanary;
  uint32_t after = kCanary;
};

void expect_value(const Caller& caller, uint32_t value) {
  EXPECT_EQ(value, caller.value);
  EXPECT_EQ(kCanary, caller.before);
  EXPECT_EQ(kCanary, caller.after);
}

TEST(Temperature, IsAskedOfTheRadioWithFourBytes) {
  for (const int band : {0, 1}) {
    Caller caller;
    const Seen seen = exchange::seen([&] { return wifimgr_lib_get_CPU_TEMPERATURE(band, &caller.value); });
    exchange::expect_requests(seen, {exchange::oid_request(0x09A1, band == 0 ? "ra0" : "rai0", exchange::zeros(4))});
    exchange::expect_exit(seen, {0, "", {entered(kGetter), succeeded(kGetter)}});
    expect_value(caller, 0);
  }
}

TEST(Temperature, IsTheDriversNumber) {
  for (const uint32_t value : {0u, 1u, 45u, 0x12345678u, 0x80000000u, 0xFFFFFFFFu}) {
    for (const int band : {0, 1}) {
      Caller caller;
      requests::driver = requests::answering(bytes_of(value));
      EXPECT_EQ(0, wifimgr_lib_get_CPU_TEMPERATURE(band, &caller.value));
      expect_value(caller, value);
    }
  }
}

TEST(Temperature, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  Caller caller;
  EXPECT_EQ(0, wifimgr_lib_get_CPU_TEMPERATURE(0, &caller.value));
  expect_value(caller, 0);
}

TEST(Temperature, FailsWithoutASocketInTheNameOfAnotherFunction) {
  for (const int band : {0, 1}) {
    Caller caller;
    const Seen seen =
        exchange::seen_without_socket([&] { return wifimgr_lib_get_CPU_TEMPERATURE(band, &caller.value); });
    exchange::expect_exit(
        seen, {1, "", {entered(kGetter), failed(kGetter, "wifimgr_lib_get_WPS_STA_MAC: Create socket fail")}});
    EXPECT_TRUE(seen.requests.empty());
    expect_value(caller, kCanary);
  }
}

TEST(Temperature, FailsWhenTheDriverRefusesInTheNameOfAnotherFunction) {
  for (const int band : {0, 1}) {
    Caller caller;
    const Seen seen = exchange::seen_with_refusal([&] { return wifimgr_lib_get_CPU_TEMPERATURE(band, &caller.value); });
    exchange::expect_exit(seen,
                          {1, "", {entered(kGetter), failed(kGetter, "wifimgr_lib_get_WPS_STA_MAC: ioctl open fail")}});
    EXPECT_EQ(1u, seen.requests.size());
    expect_value(caller, kCanary);
  }
}

TEST(Temperature, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    Caller caller;
    const Seen seen =
        exchange::seen_without_socket([&] { return wifimgr_lib_get_CPU_TEMPERATURE(band, &caller.value); });
    exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter, "The wifi_type is wrong.")}});
    exchange::expect_silence(seen);
    expect_value(caller, kCanary);
  }
}

TEST(Temperature, IsNotAskedForWithoutAnOutput) {
  const Seen seen = exchange::seen([] { return wifimgr_lib_get_CPU_TEMPERATURE(0, nullptr); });
  exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter)}});
  exchange::expect_silence(seen);
}

}  // namespace
