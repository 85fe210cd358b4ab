// The WPS PIN of one of the band's SSIDs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "driver/exchange.h"
#include "support/sandbox.h"
#include "wifimgr_lib.h"

namespace {

using exchange::bytes_of;
using exchange::entered;
using exchange::failed;
using exchange::Seen;
using exchange::succeeded;
using exchange::Text;
using testing::Contains;
using testing::ElementsAre;

constexpr char kGetter[] = "wifimgr_lib_get_wscPinCode";

void load(const std::string& ssid_count) {
  for (const int band : {0, 1}) {
    sandbox::load(band, sandbox::full_dat_with(band, "BssidNum", ssid_count));
  }
}

std::string out_of_range(const std::string& count) {
  return failed(kGetter, "The ssid index should be from 1 to BssidNum:" + count + ".");
}

// The getter's own lines.
std::vector<std::string> own_trace(const Seen& seen) {
  std::vector<std::string> lines;
  for (const std::string& line : seen.trace) {
    if (line.starts_with("[wifimgr_lib_get_wscPinCode]")) lines.push_back(line);
  }
  return lines;
}

TEST(SsidPin, IsAskedOfTheSsidsInterfaceWithSixteenBytes) {
  load("8");
  for (int index = 1; index <= 8; ++index) {
    for (const int band : {0, 1}) {
      Text text;
      const Seen seen = exchange::seen([&] { return wifimgr_lib_get_wscPinCode(band, index, text.out()); });
      exchange::expect_requests(
          seen,
          {exchange::oid_request(0x0752, (band == 0 ? "ra" : "rai") + std::to_string(index - 1), exchange::zeros(16))});
      EXPECT_EQ(0, seen.result);
      EXPECT_EQ("", seen.printed);
      EXPECT_THAT(own_trace(seen), ElementsAre(entered(kGetter), succeeded(kGetter)));
    }
  }
}

TEST(SsidPin, HasEightDigitsOrMore) {
  struct Row {
    uint32_t pin;
    const char* text;
  };
  load("2");
  for (const Row& row : {Row{0, "00000000"},
                         {1234, "00001234"},
                         {99999999, "99999999"},
                         {100000000, "100000000"},
                         {4294967295, "4294967295"}}) {
    for (const int band : {0, 1}) {
      Text text;
      requests::driver = requests::answering(bytes_of(row.pin) + exchange::rubbish(12));
      EXPECT_EQ(0, wifimgr_lib_get_wscPinCode(band, 2, text.out()));
      EXPECT_EQ(Text::holding(row.text), text.image());
    }
  }
}

TEST(SsidPin, TakesAPositiveResultForSuccess) {
  load("1");
  requests::driver = exchange::returning(7);
  Text text;
  EXPECT_EQ(0, wifimgr_lib_get_wscPinCode(0, 1, text.out()));
  EXPECT_EQ(Text::holding("00000000"), text.image());
}

TEST(SsidPin, IsRefusedForAnIndexThatTheBandDoesNotHave) {
  for (const std::string count : {"1", "2", "8"}) {
    load(count);
    for (const int index : {0, std::stoi(count) + 1, -1, INT_MAX, INT_MIN}) {
      for (const int band : {0, 1}) {
        SCOPED_TRACE(index);
        Text text;
        const Seen seen =
            exchange::seen_without_socket([&] { return wifimgr_lib_get_wscPinCode(band, index, text.out()); });
        exchange::expect_silence(seen);
        EXPECT_EQ(1, seen.result);
        EXPECT_EQ("", seen.printed);
        EXPECT_THAT(own_trace(seen), ElementsAre(entered(kGetter), out_of_range(count)));
        EXPECT_EQ(Text::untouched(), text.image());
      }
    }
  }
}

TEST(SsidPin, CountsTheSsidsOfItsOwnBand) {
  sandbox::load(0, sandbox::full_dat_with(0, "BssidNum", "1"));
  sandbox::load(1, sandbox::full_dat_with(1, "BssidNum", "3"));
  Text text;
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_wscPinCode(0, 2, text.out())); }),
              ElementsAre(out_of_range("1")));
  EXPECT_EQ(0, wifimgr_lib_get_wscPinCode(1, 3, text.out()));
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_wscPinCode(1, 4, text.out())); }),
              ElementsAre(out_of_range("3")));
}

TEST(SsidPin, IsRefusedWithoutAnSsidCount) {
  for (const int band : {0, 1}) {
    sandbox::write_file(sandbox::dat_path(band), sandbox::full_dat_without(band, "BssidNum"));
    ASSERT_EQ(0, creat_shm_from_datafile(band));
  }
  for (const int band : {0, 1}) {
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_wscPinCode(band, 1, text.out()); });
    exchange::expect_silence(seen);
    EXPECT_EQ(1, seen.result);
    EXPECT_THAT(own_trace(seen), ElementsAre(entered(kGetter), failed(kGetter, "get_bssidnum err.")));
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(SsidPin, OfAnUnknownBandHasNoSsidCount) {
  load("8");
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_wscPinCode(band, 1, text.out()); });
    exchange::expect_silence(seen);
    EXPECT_EQ(1, seen.result);
    EXPECT_THAT(own_trace(seen), ElementsAre(entered(kGetter), failed(kGetter, "get_bssidnum err.")));
    EXPECT_THAT(seen.trace, Contains(failed("read_attr", "The wifi_type is wrong.")));
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(SsidPin, FailsWithoutASocketInTheNameOfAnotherFunctionOnBothBands) {
  load("2");
  for (const int band : {0, 1}) {
    Text text;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_wscPinCode(band, 1, text.out()); });
    EXPECT_EQ(1, seen.result);
    EXPECT_EQ("", seen.printed);
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(0, seen.left_open);
    EXPECT_THAT(own_trace(seen), ElementsAre(entered(kGetter), failed(kGetter, "UpdatePinCodeAC: Create socket fail")));
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(SsidPin, FailsWhenTheDriverRefusesInTheNameOfAnotherFunctionOnBothBands) {
  load("2");
  for (const int band : {0, 1}) {
    Text text;
    const Seen seen = exchange::seen_with_refusal([&] { return wifimgr_lib_get_wscPinCode(band, 2, text.out()); });
    EXPECT_EQ(1, seen.result);
    EXPECT_EQ("", seen.printed);
    EXPECT_EQ(1u, seen.requests.size());
    EXPECT_EQ(0, seen.left_open);
    EXPECT_THAT(own_trace(seen), ElementsAre(entered(kGetter), failed(kGetter, "UpdatePinCode: ioctl open fail")));
    EXPECT_EQ(Text::untouched(), text.image());
  }
}

TEST(SsidPin, IsNotAskedForWithoutABuffer) {
  load("2");
  for (const int index : {0, 1}) {
    const Seen seen = exchange::seen([&] { return wifimgr_lib_get_wscPinCode(0, index, nullptr); });
    exchange::expect_silence(seen);
    exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter)}});
  }
}

TEST(SsidPin, LeavesTheStoreAsItWas) {
  load("2");
  const std::string before[] = {sandbox::segment_bytes(0), sandbox::segment_bytes(1)};
  for (const int band : {0, 1}) {
    Text text;
    EXPECT_EQ(0, wifimgr_lib_get_wscPinCode(band, 1, text.out()));
    EXPECT_EQ(1, wifimgr_lib_get_wscPinCode(band, 3, text.out()));
  }
  EXPECT_EQ(before[0], sandbox::segment_bytes(0));
  EXPECT_EQ(before[1], sandbox::segment_bytes(1));
}

}  // namespace
