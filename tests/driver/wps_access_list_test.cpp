// The access list of a WPS session.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "driver/exchange.h"
#include "wifimgr_lib.h"

namespace {

using exchange::entered;
using exchange::failed;
using exchange::rubbish;
using exchange::Seen;
using exchange::seen;
using exchange::succeeded;
using exchange::zeros;

constexpr char kGetter[] = "wifimgr_lib_get_WPS_ACL_INFO";
constexpr size_t kHeader = 16;
constexpr size_t kEntry = 8;
constexpr size_t kList = 528;

// The caller's record with marked surroundings.
class List {
 public:
  List() : bytes_(kList + 32, 'Z') {}
  wifimgr_wps_access_list* out() { return reinterpret_cast<wifimgr_wps_access_list*>(bytes_.data() + 16); }
  // The record; empty when something around it was touched.
  std::string record() const {
    const std::string margin(16, 'Z');
    if (bytes_.substr(0, 16) != margin || bytes_.substr(16 + kList) != margin) return "";
    return bytes_.substr(16, kList);
  }

 private:
  std::string bytes_;
};

const std::string kUntouched(kList, 'Z');

TEST(WpsAccessList, IsAskedWith768Bytes) {
  for (const int band : {0, 1}) {
    List list;
    const Seen seen = exchange::seen([&] { return wifimgr_lib_get_WPS_ACL_INFO(band, 2, list.out()); });
    exchange::expect_requests(seen, {exchange::oid_request(0x052A, band == 0 ? "ra2" : "rai2", exchange::zeros(768))});
    exchange::expect_exit(seen, {0, "", {entered(kGetter), succeeded(kGetter)}});
    EXPECT_EQ(zeros(kList), list.record());
  }
}

TEST(WpsAccessList, IsThatOfTheReplyWhenNoMacHasAZeroByte) {
  requests::driver = requests::answering(rubbish(768));
  for (const int band : {0, 1}) {
    List list;
    EXPECT_EQ(0, wifimgr_lib_get_WPS_ACL_INFO(band, 0, list.out()));
    EXPECT_EQ(rubbish(768).substr(0, kList), list.record());
  }
}

TEST(WpsAccessList, LosesOfAMacWhatFollowsAZeroByte) {
  for (size_t zero = 0; zero < 6; ++zero) {
    SCOPED_TRACE(zero);
    std::string reply = rubbish(768);
    std::string expected = reply.substr(0, kList);
    for (size_t entry = kHeader; entry < kList; entry += kEntry) {
      reply[entry + zero] = '\0';
      expected.replace(entry + zero, 6 - zero, zeros(6 - zero));
    }
    requests::driver = requests::answering(reply);
    List list;
    EXPECT_EQ(0, wifimgr_lib_get_WPS_ACL_INFO(0, 0, list.out()));
    EXPECT_EQ(expected, list.record());
  }
}

TEST(WpsAccessList, ReadsAMacThatBeginsWithZeroAsSixZeros) {
  std::string reply = zeros(768);
  reply.replace(kHeader, kEntry, std::string("\x00\x11\x22\x33\x44\x55\x66\x77", 8));
  requests::driver = requests::answering(reply);
  List list;
  EXPECT_EQ(0, wifimgr_lib_get_WPS_ACL_INFO(0, 0, list.out()));
  EXPECT_EQ(zeros(6) + "\x66\x77", list.record().substr(kHeader, kEntry));
}

TEST(WpsAccessList, KeepsZeroBytesOfHeaderAndValues) {
  std::string reply = zeros(768);
  reply[5] = 'h';
  for (size_t entry = kHeader; entry < kList; entry += kEntry) reply[entry + 7] = 'v';
  requests::driver = requests::answering(reply);
  List list;
  EXPECT_EQ(0, wifimgr_lib_get_WPS_ACL_INFO(0, 0, list.out()));
  EXPECT_EQ(reply.substr(0, kList), list.record());
}

TEST(WpsAccessList, TakesAPositiveResultForSuccess) {
  requests::driver = exchange::returning(7);
  List list;
  EXPECT_EQ(0, wifimgr_lib_get_WPS_ACL_INFO(0, 0, list.out()));
  EXPECT_EQ(zeros(kList), list.record());
}

TEST(WpsAccessList, TakesTheIndexForTheInterfaceNumberUnchecked) {
  for (const int index : {0, 1, 7, 8, 255, -1, INT_MAX, INT_MIN}) {
    for (const int band : {0, 1}) {
      SCOPED_TRACE(index);
      List list;
      exchange::expect_requests(
          seen([&] { return wifimgr_lib_get_WPS_ACL_INFO(band, index, list.out()); }),
          {exchange::oid_request(0x052A, (band == 0 ? "ra" : "rai") + std::to_string(index), zeros(768))});
    }
  }
}

TEST(WpsAccessList, FailsWithoutASocket) {
  for (const int band : {0, 1}) {
    List list;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_WPS_ACL_INFO(band, 0, list.out()); });
    exchange::expect_exit(seen, {-1, "[wifimgr_lib_get_WPS_ACL_INFO]:Create ACL socket fail\n", {entered(kGetter)}});
    EXPECT_TRUE(seen.requests.empty());
    EXPECT_EQ(kUntouched, list.record());
  }
}

TEST(WpsAccessList, FailsWhenTheDriverRefuses) {
  for (const int band : {0, 1}) {
    List list;
    const Seen seen = exchange::seen_with_refusal([&] { return wifimgr_lib_get_WPS_ACL_INFO(band, 0, list.out()); });
    exchange::expect_exit(seen, {-1, "[wifimgr_lib_get_WPS_ACL_INFO]:ioctl open fail\n", {entered(kGetter)}});
    EXPECT_EQ(1u, seen.requests.size());
    EXPECT_EQ(kUntouched, list.record());
  }
}

TEST(WpsAccessList, OfAnUnknownBandIsRefusedBeforeASocketIsOpened) {
  for (const int band : exchange::wrong_bands()) {
    SCOPED_TRACE(band);
    List list;
    const Seen seen = exchange::seen_without_socket([&] { return wifimgr_lib_get_WPS_ACL_INFO(band, 0, list.out()); });
    exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter, "The wifi_type is wrong.")}});
    exchange::expect_silence(seen);
    EXPECT_EQ(kUntouched, list.record());
  }
}

TEST(WpsAccessList, IsNotAskedForWithoutAnOutput) {
  const Seen seen = exchange::seen([] { return wifimgr_lib_get_WPS_ACL_INFO(0, 0, nullptr); });
  exchange::expect_exit(seen, {1, "", {entered(kGetter), failed(kGetter)}});
  exchange::expect_silence(seen);
}

}  // namespace
