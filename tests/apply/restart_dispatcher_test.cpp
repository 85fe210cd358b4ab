// The restart of a band by kind, and what it hands on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "apply/calls.h"
#include "apply/command_list.h"
#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using commands::down;
using commands::down_from;
using commands::joined;
using commands::Lines;
using commands::up;
using testing::ElementsAreArray;
using testing::IsEmpty;

// The restarts that were asked for.
struct Restart {
  const wifimgr_restart_request* address;
  wifimgr_restart_request request;
};
std::vector<Restart> restarts;

Lines dispatched(const wifimgr_restart_request& request, const char* value, int32_t kind, uint64_t expected) {
  seams::commands.clear();
  restarts.clear();
  sandbox::stdout_of(
      [&] { EXPECT_EQ(expected, wifimgr_lib_restart_wlan_Interface(&request, 0xdeadbeefcafef00dU, value, kind)); });
  return seams::commands;
}

const Lines kLinksDown = {
    "/sbin/ifconfig wdsi0 down", "brctl delif br0 wdsi0", "/sbin/ifconfig wdsi1 down", "brctl delif br0 wdsi1",
    "/sbin/ifconfig wdsi2 down", "brctl delif br0 wdsi2", "/sbin/ifconfig wdsi3 down", "brctl delif br0 wdsi3",
};

// Taking `count` BSSs of a band down.
Lines wlan_down(uint32_t band, int count) {
  if (band == 0) return down_from("br0", "ra", count);
  if (band == 1) return joined({down_from("br0", "rai", count), kLinksDown});
  return down_from("br0", "", count);
}

constexpr uint32_t kBands[] = {0, 1, 2, 0xffffffff};
constexpr const char* kValues[] = {"1", "0", "", "1\n", "01", "11", " 1", "2"};

bool is_on(const char* value) {
  return std::strcmp(value, "1") == 0;
}

TEST(RestartByKind, OneRestartsTheInterfaces) {
  const wifimgr_restart_request request = {0, 2, 2, 0b10, 0, 77};
  EXPECT_THAT(dispatched(request, "0", 1, 0), ElementsAreArray(joined({down("ra", 2), down("wds", 4), up("ra", {1})})));
  ASSERT_EQ(1U, restarts.size());
  EXPECT_NE(&request, restarts[0].address);
  EXPECT_EQ(0, std::memcmp(&request, &restarts[0].request, sizeof request));
}

TEST(RestartByKind, OneAnswersZeroAlsoForARestartThatFails) {
  for (const char* value : kValues) {
    EXPECT_THAT(dispatched({2, 2, 2, 3, 1, 0}, value, 1, 0), IsEmpty());
    EXPECT_EQ(1U, restarts.size());
  }
}

TEST(RestartByKind, TwoTakesTheWlanDownWhateverTheValue) {
  for (const uint32_t band : kBands) {
    for (const int count : {INT32_MIN, -1, 0, 1, 3, 11}) {
      for (const char* value : kValues) {
        SCOPED_TRACE(std::to_string(count) + " on band " + std::to_string(band));
        EXPECT_EQ(wlan_down(band, count), dispatched({band, 5, static_cast<uint32_t>(count), 0xff, 1, 0}, value, 2, 0));
      }
    }
  }
}

TEST(RestartByKind, WholeListsOfTheWlanDown) {
  EXPECT_THAT(dispatched({0, 0, 2, 0, 0, 0}, "", 2, 0), ElementsAreArray({"ifconfig ra0 down", "brctl delif br0 ra0",
                                                                          "ifconfig ra1 down", "brctl delif br0 ra1"}));
  EXPECT_THAT(dispatched({1, 0, 1, 0, 0, 0}, "", 2, 0),
              ElementsAreArray({"ifconfig rai0 down", "brctl delif br0 rai0", "/sbin/ifconfig wdsi0 down",
                                "brctl delif br0 wdsi0", "/sbin/ifconfig wdsi1 down", "brctl delif br0 wdsi1",
                                "/sbin/ifconfig wdsi2 down", "brctl delif br0 wdsi2", "/sbin/ifconfig wdsi3 down",
                                "brctl delif br0 wdsi3"}));
  EXPECT_THAT(dispatched({7, 0, 1, 0, 0, 0}, "", 2, 0), ElementsAreArray({"ifconfig 0 down", "brctl delif br0 0"}));
}

TEST(RestartByKind, ThreeOnlyAnswersOn2_4G) {
  for (const char* value : kValues) {
    SCOPED_TRACE(testing::PrintToString(value));
    EXPECT_THAT(dispatched({0, 2, 2, 3, 1, 0}, value, 3, is_on(value) ? 0 : 1), IsEmpty());
  }
}

TEST(RestartByKind, ThreeTakes5GDownAndAnswersOne) {
  for (const char* value : kValues) {
    for (const int count : {-1, 0, 2}) {
      EXPECT_EQ(wlan_down(1, count), dispatched({1, 5, static_cast<uint32_t>(count), 3, 1, 0}, value, 3, 1));
    }
  }
}

TEST(RestartByKind, ThreeDoesNothingOnAnUnknownBand) {
  for (const uint32_t band : {2U, 0xffffffffU}) {
    for (const char* value : kValues) EXPECT_THAT(dispatched({band, 2, 2, 3, 1, 0}, value, 3, 0), IsEmpty());
  }
}

TEST(RestartByKind, FourTakesTheWlanDownForOneAlone) {
  for (const uint32_t band : kBands) {
    for (const char* value : kValues) {
      SCOPED_TRACE(testing::PrintToString(value) + " on band " + std::to_string(band));
      EXPECT_EQ(is_on(value) ? wlan_down(band, 2) : Lines(), dispatched({band, 5, 2, 3, 1, 0}, value, 4, 0));
    }
  }
}

TEST(RestartByKind, OtherKindsDoNothing) {
  for (const int32_t kind : {0, 5, -1, INT32_MIN, INT32_MAX}) {
    for (const uint32_t band : kBands) {
      EXPECT_THAT(dispatched({band, 2, 2, 3, 1, 0}, "1", kind, 0), IsEmpty());
      EXPECT_THAT(restarts, IsEmpty());
    }
  }
}

TEST(RestartByKind, OnlyOneAsksForARestart) {
  for (const int32_t kind : {2, 3, 4}) {
    dispatched({1, 2, 2, 3, 1, 0}, "1", kind, kind == 3 ? 1 : 0);
    EXPECT_THAT(restarts, IsEmpty()) << kind;
  }
}

TEST(RestartByKind, NullRequestIsRefusedWhateverTheKind) {
  for (const int32_t kind : {0, 1, 2, 3, 4, 5}) {
    EXPECT_EQ(1U, wifimgr_lib_restart_wlan_Interface(nullptr, 0, "1", kind));
  }
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_THAT(restarts, IsEmpty());
}

TEST(RestartByKind, NullValueIsRefusedByThoseThatGoByIt) {
  const wifimgr_restart_request request = {1, 2, 2, 3, 1, 0};
  for (const int32_t kind : {3, 4}) EXPECT_EQ(1U, wifimgr_lib_restart_wlan_Interface(&request, 0, nullptr, kind));
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_THAT(restarts, IsEmpty());
}

TEST(RestartByKind, TheOthersDoTheirWorkWithoutAValue) {
  const wifimgr_restart_request request = {1, 2, 2, 3, 1, 0};
  for (const int32_t kind : {0, 5}) EXPECT_EQ(0U, wifimgr_lib_restart_wlan_Interface(&request, 0, nullptr, kind));
  EXPECT_THAT(seams::commands, IsEmpty());
  EXPECT_EQ(0U, wifimgr_lib_restart_wlan_Interface(&request, 0, nullptr, 1));
  EXPECT_EQ(1U, restarts.size());
  EXPECT_EQ(0U, wifimgr_lib_restart_wlan_Interface(&request, 0, nullptr, 2));
  EXPECT_THAT(seams::commands, testing::Not(IsEmpty()));
}

TEST(RestartByKind, ChangesNoStore) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"ReloadFlag", "1"}});
    const std::string before = sandbox::segment_bytes(band);
    for (const int32_t kind : {2, 3, 4}) {
      wifimgr_restart_request request = {static_cast<uint32_t>(band), 1, 2, 3, 1, 0};
      wifimgr_lib_restart_wlan_Interface(&request, 0, "1", kind);
    }
    EXPECT_EQ(before, sandbox::segment_bytes(band));
  }
}

TEST(RestartByKind, TracesEntryAndSuccess) {
  const wifimgr_restart_request request = {0, 2, 2, 3, 1, 0};
  for (const char* value : {"1", "0"}) {
    EXPECT_THAT(seams::trace_of([&] { wifimgr_lib_restart_wlan_Interface(&request, 0, value, 3); }),
                testing::ElementsAre("[wifimgr_lib_restart_wlan_Interface]:===Enter===\n",
                                     "[wifimgr_lib_restart_wlan_Interface]:===Success Exit===\n"));
  }
}

TEST(RestartOfACopy, HandsTheSameWordsOnAndAlwaysAnswersZero) {
  for (const uint32_t band : kBands) {
    const wifimgr_restart_request request = {band, 2, 2, 1, 1, 99};
    seams::commands.clear();
    restarts.clear();
    sandbox::stdout_of([&] { EXPECT_EQ(0U, wifimgr_lib_do_restartInterface(&request)); });
    ASSERT_EQ(1U, restarts.size());
    EXPECT_NE(&request, restarts[0].address);
    EXPECT_EQ(0, std::memcmp(&request, &restarts[0].request, sizeof request));
    EXPECT_EQ(band < 2, !seams::commands.empty());
  }
}

}  // namespace

uint64_t wifimgr_lib_restartInterface(const wifimgr_restart_request* request) {
  restarts.push_back({request, *request});
  return calls::real<decltype(wifimgr_lib_restartInterface)>("wifimgr_lib_restartInterface")(request);
}
