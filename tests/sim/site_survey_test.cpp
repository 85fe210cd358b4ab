// The site survey that iwpriv prints, and the scans behind it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "driver_probe.h"

namespace sim_test {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

TEST(SiteSurvey, HasThreeLinesOfHeadingAndOneForEachNeighbour) {
  const Result result = run_script(
      "simctl neighbour remove 2.4G 02:6e:40:24:00:03; simctl neighbour add 2.4G 02:6e:40:24:00:01 signal=-71;"
      "simctl neighbour add 2.4G 02:6e:40:24:00:02 signal=-64; iwpriv ra0 get_site_survey");
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(5));
  EXPECT_EQ("ra0  get_site_survey:", lines[0]);
  EXPECT_EQ("Total 2", lines[1]);
  EXPECT_EQ("Ch  SSID                             BSSID              Security                Signal  WPS ", lines[2]);
  EXPECT_EQ("1   Corner Bakery                    02:6e:40:24:00:01  WPA2PSK/AES             -71     YES ", lines[3]);
  EXPECT_EQ("6   Neighbour-Two                    02:6e:40:24:00:02  WPA1PSKWPA2PSK/TKIPAES  -64     NO  ", lines[4]);
}

TEST(SiteSurvey, IsTheBands) {
  EXPECT_THAT(run_script("iwpriv rai1 get_site_survey").out, HasSubstr("02:6e:40:50:00:02"));
  EXPECT_EQ("3\n", run_script("simctl neighbour remove 5G all; iwpriv rai0 get_site_survey | wc -l").out);
}

TEST(SiteSurvey, KeepsToOneLinePerNeighbour) {
  const Result result = run_script(
      "simctl neighbour add 2.4G 02:00:00:00:00:01 ssid=\"$(printf 'a\\nb\\tc')\"; iwpriv ra0 get_site_survey");
  EXPECT_THAT(lines_of(result.out), SizeIs(7));
  EXPECT_THAT(result.out, HasSubstr("a.b.c "));
}

// What a scan does not hear anew is as old as it was.
TEST(PartialScan, HearsTheNeighboursAnew) {
  const Result result = run_script(
      "cd /run/gateway-sim/lists; cut -d' ' -f6 neighbours-ra | uniq; cut -d' ' -f6 neighbours-rai | uniq;"
      "iwpriv ra0 set PartialScan=1; cut -d' ' -f6 neighbours-ra | uniq; cut -d' ' -f6 neighbours-rai | uniq;"
      "iwpriv ra0 set PartialScan=0; cut -d' ' -f6 neighbours-ra | uniq; tail -n 2 ../journal | cut -f3");
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(7));
  EXPECT_LT(std::stoll(lines[0]), std::stoll(lines[2]));
  EXPECT_EQ(lines[1], lines[3]);
  EXPECT_EQ(lines[2], lines[4]);
  EXPECT_EQ("ra0: PartialScan none -> 1; 2.4G radio: heard 3 neighbours", lines[5]);
  EXPECT_EQ("ra0: PartialScan 1 -> 0", lines[6]);
}

}  // namespace
}  // namespace sim_test
