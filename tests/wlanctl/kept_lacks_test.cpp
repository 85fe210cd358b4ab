// What is not in force of an apply stays so until it is as the apply wanted it, whatever a switch of the radio wants.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

// An apply that finds ra1 in another bridge, from where brctl does not take it.
const std::string kElsewhere =
    "wlanctl apply 2.4g >/dev/null 2>&1; ip link set ra1 nomaster; ip link set ra1 master br0;"
    "wlanctl set 2.4g Channel=4 >/dev/null; wlanctl apply 2.4g >/dev/null 2>&1;";
constexpr char kLack[] = "2.4g: not in force: ra1 is in br0 instead of br-lan";
const std::string kStatus = "wlanctl status 2.4g";
const std::string kQuiet = " >/dev/null 2>&1;";

TEST(KeptLack, OfABridgeStaysWhereTheRadioIsSwitchedOn) {
  const auto steps = run_steps({kElsewhere + "wlanctl radio on 2.4g", kStatus, "wlanctl radio on 2.4g",
                                "wlanctl apply 2.4g", "brctl delif br0 ra1; wlanctl apply 2.4g >/dev/null", kStatus});
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(6, steps[i].status) << i;
    EXPECT_THAT(steps[i].err, HasSubstr(kLack)) << i;
  }
  EXPECT_THAT(steps[0].out, HasSubstr("2.4g: radio on, but not in force\n"));
  EXPECT_THAT(steps[0].err, HasSubstr("\"brctl addif br-lan ra1\" ended with status 1")) << "why, as the apply said";
  EXPECT_THAT(steps[0].err, HasSubstr("brctl delif br0 ra1 takes it out; when that is mended, wlanctl apply 2.4g"));
  EXPECT_THAT(steps[1].out, Not(HasSubstr("agree")));
  EXPECT_THAT(steps[3].out, HasSubstr("applied, but not in force"));
  EXPECT_EQ(0, steps[4].status) << steps[4].err;
  EXPECT_EQ(0, steps[5].status) << steps[5].err;
}

// Off the air it is nobody's loss, nor is it of an SSID that is switched off.
TEST(KeptLack, OfABridgeIsSilentWhileItsInterfaceIsMeantToBeDown) {
  const auto steps = run_steps({kElsewhere + "wlanctl radio off 2.4g", kStatus, "wlanctl radio on 2.4g", kStatus,
                                "wlanctl set 2.4g EnableSSID:2=0" + kQuiet + "wlanctl radio on 2.4g",
                                "wlanctl set 2.4g EnableSSID:2=1" + kQuiet + "wlanctl radio on 2.4g"});
  for (const size_t silent : {size_t{0}, size_t{1}, size_t{4}}) {
    EXPECT_EQ(0, steps[silent].status) << silent << steps[silent].err;
    EXPECT_THAT(steps[silent].err, Not(HasSubstr("not in force"))) << silent;
  }
  for (const size_t told : {size_t{2}, size_t{3}, size_t{5}}) {
    EXPECT_EQ(6, steps[told].status) << told;
    EXPECT_THAT(steps[told].err, HasSubstr(kLack)) << told;
  }
}

TEST(KeptLack, OfABridgeIsMendedByHand) {
  const auto steps = run_steps({kElsewhere + "wlanctl radio off 2.4g" + kQuiet + "wlanctl radio on 2.4g" + kQuiet +
                                    "brctl delif br0 ra1; brctl addif br-lan ra1; wlanctl radio on 2.4g",
                                kStatus});
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  EXPECT_EQ(0, steps[1].status) << steps[1].err;
}

// One complaint, with what failed last.
TEST(KeptLack, OfABridgeIsToldOnceWhereTheInterfaceDoesNotComeUpEither) {
  const auto steps = run_steps({kElsewhere + "wlanctl radio off 2.4g" + kQuiet +
                                    "simctl fail ifconfig exit=4 ra1 up 1 >/dev/null; wlanctl radio on 2.4g",
                                "wlanctl radio on 2.4g"});
  EXPECT_EQ(6, steps[0].status);
  const size_t told = steps[0].err.find("not in force: ra1 is down: \"ifconfig ra1 up\" ended with status 4");
  ASSERT_NE(std::string::npos, told) << steps[0].err;
  EXPECT_EQ(std::string::npos, steps[0].err.find("not in force: ra1", told + 1)) << steps[0].err;
  EXPECT_EQ(6, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr(kLack));
}

TEST(KeptLack, OfABridgeOutlivesAnApplyWithoutARestart) {
  const auto steps = run_steps(
      {kElsewhere + "wlanctl radio off 2.4g" + kQuiet + "wlanctl set 2.4g HideSSID:1=1" + kQuiet + "wlanctl apply 2.4g",
       "wlanctl radio on 2.4g"});
  EXPECT_THAT(steps[0].out, HasSubstr("2.4g: applied, but not in force\n")) << "the radio is off";
  EXPECT_EQ(6, steps[1].status);
  EXPECT_THAT(steps[1].err, HasSubstr(kLack));
}

// What the driver has not made, the switch does not look for.
TEST(KeptLack, OfAnInterfaceThatIsGoneStaysWhereTheRadioIsSwitchedOn) {
  const auto steps =
      run_steps({kElsewhere + "ip link set ra1 down; ip link set ra1 name gone; wlanctl radio on 2.4g", kStatus});
  for (const Result& step : steps) {
    EXPECT_EQ(6, step.status);
    EXPECT_THAT(step.err, HasSubstr("2.4g: not in force: ra1 is absent"));
  }
}

}  // namespace
}  // namespace wlanctl_test
