// The driver's AP count record.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "driver/allocation.h"
#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::rubbish;
using exchange::Seen;
using exchange::zeros;

constexpr size_t kSize = 80;

// The caller's record with marked surroundings.
class Record {
 public:
  Record() : bytes_(kSize + 32, 'Z') {}
  wifimgr_ap_count* out() { return reinterpret_cast<wifimgr_ap_count*>(bytes_.data() + 16); }
  // The record; empty when something around it was touched.
  std::string bytes() const {
    const std::string margin(16, 'Z');
    if (bytes_.substr(0, 16) != margin || bytes_.substr(16 + kSize) != margin) return "";
    return bytes_.substr(16, kSize);
  }

 private:
  std::string bytes_;
};

const std::string kUntouched(kSize, 'Z');

struct Band {
  int wifi_type;
  const char* interface;
};
constexpr Band kBands[] = {{0, "ra0"},    {1, "rai0"},     {2, "rai0"},       {-1, "rai0"},
                           {256, "rai0"}, {65536, "rai0"}, {INT_MAX, "rai0"}, {INT_MIN, "rai0"}};

TEST(ApCount, IsAskedOfTheRadioWith1024BytesAnyBandButZeroBeing5G) {
  for (const Band& band : kBands) {
    SCOPED_TRACE(band.wifi_type);
    Record record;
    const Seen seen = exchange::seen([&] { return getAPCount(band.wifi_type, record.out()); });
    exchange::expect_requests(seen, {exchange::request(0x8BFC, band.interface, 1024, 0, zeros(1024))});
    exchange::expect_exit(seen, {0, "", {}});
    EXPECT_EQ(zeros(kSize), record.bytes());
  }
}

TEST(ApCount, IsTheFirst80BytesOfTheReplyWithTwoPartsCleared) {
  requests::driver = requests::answering(rubbish(1024));
  std::string expected = rubbish(kSize);
  expected.replace(40, 8, zeros(8));
  expected.replace(56, 8, zeros(8));
  for (const int band : {0, 1}) {
    Record record;
    EXPECT_EQ(0, getAPCount(band, record.out()));
    EXPECT_EQ(expected, record.bytes());
  }
}

TEST(ApCount, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  Record record;
  EXPECT_EQ(0, getAPCount(0, record.out()));
  EXPECT_EQ(zeros(kSize), record.bytes());
}

TEST(ApCount, FailsSilentlyWithoutMemory) {
  allocation::fails = true;
  for (const int band : {0, 1}) {
    Record record;
    const Seen seen = exchange::seen([&] { return getAPCount(band, record.out()); });
    exchange::expect_exit(seen, {-1, "", {}});
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(kUntouched, record.bytes());
  }
}

TEST(ApCount, FailsWithoutASocket) {
  for (const int band : {0, 1}) {
    Record record;
    const Seen seen = exchange::seen_without_socket([&] { return getAPCount(band, record.out()); });
    exchange::expect_exit(seen, {-1, "==>getAPCount(): XXXXXX socket open fail\n", {}});
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(kUntouched, record.bytes());
  }
}

TEST(ApCount, FailsWhenTheDriverRefuses) {
  for (const int band : {0, 1}) {
    Record record;
    const Seen seen = exchange::seen_with_refusal([&] { return getAPCount(band, record.out()); });
    exchange::expect_exit(seen, {-1, "==>getAPCount(): XXXXXX ioctl open fail\n", {}});
    EXPECT_EQ(1u, seen.requests.size());
    EXPECT_EQ(kUntouched, record.bytes());
  }
}

TEST(ApCount, IsNotAskedForWithoutAnOutput) {
  const Seen seen = exchange::seen([] { return getAPCount(0, nullptr); });
  exchange::expect_exit(seen, {-1, "", {}});
  exchange::expect_silence(seen);
}

}  // namespace
