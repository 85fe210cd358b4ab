// show: a band or an SSID of the live store.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(Show, ShowsBothBandsWithTheirSsidsAndLinks) {
  const Json bands = json_of("show")["data"]["bands"];
  ASSERT_EQ(2u, bands.size());
  EXPECT_EQ("2.4g", bands[0]["band"]);
  EXPECT_EQ(6, bands[0]["settings"]["Channel"]);
  EXPECT_EQ(36, bands[1]["settings"]["Channel"]);
  EXPECT_EQ(2u, bands[0]["ssids"].size());
  EXPECT_EQ("rai1", bands[1]["ssids"][1]["interface"]);
  EXPECT_EQ("Gateway-Guest-5G", bands[1]["ssids"][1]["settings"]["SSID"]);
  EXPECT_EQ(4u, bands[0]["wds_links"].size());
}

TEST(Show, ShowsWhatIsLiveNotWhatIsSaved) {
  const Json bands =
      json_of("show 2.4g 1", "library_probe init 0 set wifimgr_lib_set_ssid 0 1 Unsaved")["data"]["bands"];
  EXPECT_EQ("Unsaved", bands[0]["ssids"][0]["settings"]["SSID"]);
}

TEST(Show, OfOneSsidLeavesOutTheRest) {
  const Json shown = json_of("show 5g 2")["data"]["bands"];
  ASSERT_EQ(1u, shown.size());
  EXPECT_FALSE(shown[0].contains("settings"));
  ASSERT_EQ(1u, shown[0]["ssids"].size());
  EXPECT_EQ(2, shown[0]["ssids"][0]["ssid"]);
}

TEST(Show, IsATableForPeople) {
  const Result result = run("wlanctl show 2.4g 1");
  EXPECT_EQ(0, result.status);
  EXPECT_EQ("2.4g SSID 1", lines_of(result.out)[0]);
  EXPECT_THAT(result.out, HasSubstr("\n  SSID                 Gateway-Home\n"));
  EXPECT_THAT(result.out, Not(HasSubstr("\x1b")));
}

TEST(Show, CannotShowAnSsidThatIsNotServed) {
  const std::vector<Result> steps =
      run_steps({"wlanctl show 2.4g 3 --json", "wlanctl show 2.4g 9 --json", "wlanctl show 6g --json"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_EQ("2.4g has 2 SSIDs", document_in(steps[0].out)["problems"][0]["message"]);
  EXPECT_EQ(2, steps[1].status);
  EXPECT_EQ(2, steps[2].status);
}

TEST(Show, DoesNotLetAValueActOnTheTerminal) {
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 put SSID1 0 1 \"$(printf 'a\\033[2Jb')\" >/dev/null", "wlanctl show 2.4g 1",
                 "wlanctl get 2.4g SSID:1"});
  EXPECT_THAT(steps[1].out, Not(HasSubstr("\x1b")));
  EXPECT_EQ("a?[2Jb\n", steps[2].out);
}

TEST(Show, BytesThatAreNoTextDoNotBreakTheJson) {
  const Json shown = json_of("show 2.4g 1", "library_probe init 0 put SSID1 0 1 \"$(printf 'a\\377b')\"");
  EXPECT_EQ(
      "a\xef\xbf\xbd"
      "b",
      shown["data"]["bands"][0]["ssids"][0]["settings"]["SSID"]);
}

}  // namespace
}  // namespace wlanctl_test
