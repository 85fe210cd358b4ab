// An interface that a restart leaves up keeps the driver from reading the dat file: that is told until the next restart.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

// However its state is mended: the driver has not read the file, and reads it at the next restart alone.
constexpr struct {
  const char* change;
  const char* fault;
  const char* cure;
} kLeftUp[] = {
    {"EnableSSID:2=0 BeaconPeriod=200", "simctl fail ifconfig exit=1 ra1 down 1", "ifconfig ra1 down"},
    {"BeaconPeriod=200", "simctl fail ifconfig exit=0 ra1 down 1", "ifconfig ra1 down; ifconfig ra1 up"},
    {"BeaconPeriod=200", "brctl delif br-lan ra0; brctl addif br0 ra0; simctl fail ifconfig exit=1 ra0 down 1",
     "brctl delif br0 ra0; brctl addif br-lan ra0"},
    {"BeaconPeriod=200", "simctl fail ifconfig exit=1 ra1 down",
     "simctl fail none; simctl fail ifconfig exit=1 ra0 down; wlanctl radio off 2.4g; simctl fail none; wlanctl radio "
     "on "
     "2.4g"},
};

TEST(MissingRestart, IsToldUntilTheNextRestart) {
  for (const auto& row : kLeftUp) {
    const auto steps = run_steps(
        {std::string("wlanctl apply 2.4g --again; wlanctl set 2.4g ") + row.change + "; " + row.fault,
         "wlanctl apply 2.4g --confirm 600 --keep", std::string(row.cure) + "; simctl fail none", "wlanctl status 2.4g",
         "wlanctl diff 2.4g", "wlanctl confirm 2.4g", "wlanctl confirm 2.4g --force; wlanctl apply 2.4g",
         "wlanctl status 2.4g; grep ^BeaconPeriod /run/gateway-sim/driver/ra0"});
    for (const size_t i : {1u, 3u, 4u, 5u}) {
      EXPECT_EQ(6, steps[i].status) << row.cure << i;
      EXPECT_THAT(steps[i].err, HasSubstr(" was not restarted, so the driver has not read all of it")) << row.cure << i;
    }
    EXPECT_EQ(0, steps[6].status) << steps[6].err;
    EXPECT_THAT(steps[7].out, HasSubstr("BeaconPeriod=200\n"));
    EXPECT_THAT(steps[7].err, Not(HasSubstr("was not restarted")));
  }
}

TEST(MissingRestart, EndsWhereTheWholeRadioIsSwitchedOffAndOn) {
  const auto steps =
      run_steps({"wlanctl apply 2.4g --again; wlanctl set 2.4g BeaconPeriod=200; simctl fail ifconfig exit=1 "
                 "ra1 down 1; wlanctl apply 2.4g",
                 "simctl fail none; wlanctl radio off 2.4g; wlanctl radio on 2.4g", "wlanctl status 2.4g",
                 "grep ^BeaconPeriod /run/gateway-sim/driver/ra0"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_EQ("BeaconPeriod=200\n", steps[3].out);
}

TEST(MissingRestart, IsLookedForWhereTheModuleIsLoadedAnew) {
  for (const char* const unload : {"exit=0", "exit=1"}) {
    const auto steps =
        run_steps({"wlanctl ssid add 2.4g Third --security open; wlanctl apply 2.4g",
                   std::string("wlanctl ssid remove 2.4g 3 --yes; wlanctl set 2.4g BeaconPeriod=214; simctl fail "
                               "rmmod ") +
                       unload + "; simctl fail ifconfig exit=0 ra0 down; wlanctl apply 2.4g --force",
                   "simctl fail none; wlanctl status 2.4g", "wlanctl apply 2.4g",
                   "grep ^BeaconPeriod /run/gateway-sim/driver/ra0"},
                  {"--chips", "7603,7612"});
    EXPECT_EQ(0, steps[0].status) << steps[0].err;
    for (const size_t i : {1u, 2u}) {
      EXPECT_EQ(6, steps[i].status) << unload;
      EXPECT_THAT(steps[i].err, HasSubstr("ra0 was not restarted")) << unload;
    }
    EXPECT_EQ(0, steps[3].status) << steps[3].err;
    EXPECT_EQ("BeaconPeriod=214\n", steps[4].out);
  }
}

TEST(MissingRestart, OfALinkIsTold) {
  const auto steps =
      run_steps({"wlanctl set 2.4g WdsEnable=1; wlanctl apply 2.4g; wlanctl set 2.4g Channel=11; simctl fail "
                 "ifconfig exit=0 wds0 down; wlanctl apply 2.4g"});
  EXPECT_EQ(6, steps[0].status);
  EXPECT_THAT(steps[0].err, HasSubstr("wds0 was not restarted"));
}

}  // namespace
}  // namespace wlanctl_test
