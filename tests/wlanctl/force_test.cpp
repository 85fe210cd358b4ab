// --force insists on whatever there is to insist on: each danger is named, when it is refused as well as when it is forced.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr char kShell[] = "a shell acts on $ and ` when the driver's script runs";
constexpr char kLost[] = "in the dat file, value 1 is empty, and a save loses all behind it, from value 2 on";

TEST(Force, EachDangerOfTheValuesIsNamedWhenTheyAreRefused) {
  const auto steps = run_steps({"wlanctl set 2.4g 'SSID:1=$(reboot)' HideSSID:1=", "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, AllOf(HasSubstr(std::string("SSID:1 cannot be \"$(reboot)\": ") + kShell),
                                  HasSubstr(std::string("HideSSID:1 cannot be \"\": ") + kLost)));
  EXPECT_EQ("Gateway-Home\n", steps[1].out);
}

TEST(Force, EachDangerOfTheValuesIsNamedWhenTheyAreForced) {
  const auto steps = run_steps({"wlanctl set 2.4g --force 'SSID:1=$(reboot)' HideSSID:1=", "wlanctl get 2.4g SSID:1",
                                "wlanctl export 2.4g >all.json; wlanctl revert 2.4g; wlanctl import all.json --force",
                                "wlanctl set 2.4g SSID:1=Kitchen"});
  EXPECT_EQ(0, steps[0].status);
  EXPECT_THAT(steps[0].err, AllOf(HasSubstr(std::string("SSID:1 is taken all the same: ") + kShell),
                                  HasSubstr(std::string("HideSSID:1 is taken all the same: ") + kLost)));
  EXPECT_EQ("$(reboot)\n", steps[1].out);
  EXPECT_THAT(steps[2].err, HasSubstr(std::string("SSID:1 is taken all the same: ") + kShell));
  EXPECT_THAT(steps[3].err, Not(HasSubstr("all the same")));
}

// What a shell acts on may be too long, too.
TEST(Force, BothDangersOfOneValueAreNamed) {
  const std::string name = "'SSID:1=$" + std::string(40, 'x') + "'";
  const auto steps = run_steps({"wlanctl set 2.4g " + name, "wlanctl set 2.4g --force " + name});
  for (const Result& step : steps) EXPECT_THAT(step.err, AllOf(HasSubstr(kShell), HasSubstr("32 bytes")));
}

TEST(Force, EachDangerOfAnApplyIsNamedWhenItIsForced) {
  const auto steps = run_steps({"wlanctl set 2.4g --force 'SSID:1=$(true)' HideSSID:1=", "wlanctl apply 2.4g",
                                "wlanctl apply 2.4g --force", "wlanctl set 2.4g Channel=1; wlanctl save 2.4g --force"});
  for (const size_t i : {1u, 2u}) {
    EXPECT_THAT(steps[i].err, AllOf(HasSubstr("SSID:1 of 2.4g is dangerous: a shell acts on"),
                                    HasSubstr("the store of 2.4g: HideSSID: value 1 is empty")))
        << i;
  }
  EXPECT_EQ(1, steps[1].status);
  EXPECT_EQ(0, steps[2].status) << steps[2].err;
  EXPECT_THAT(steps[2].err, HasSubstr("note: all the same, by --force: SSID:1 of 2.4g is dangerous"));
  EXPECT_THAT(steps[3].err, HasSubstr("note: all the same, by --force: the store of 2.4g: HideSSID"));
}

// A dry run stores nothing.
TEST(Force, OfADryRunSaysOfNothingThatItIsStored) {
  const auto steps =
      run_steps({"wlanctl set 2.4g --force 'SSID:1=$(reboot)'; wlanctl export 2.4g >all.json; wlanctl revert 2.4g",
                 "wlanctl import all.json --dry-run --force", "wlanctl get 2.4g SSID:1"});
  EXPECT_THAT(steps[1].err,
              AllOf(HasSubstr(std::string("SSID:1 is taken all the same: ") + kShell), Not(HasSubstr("is stored"))));
  EXPECT_EQ("Gateway-Home\n", steps[2].out);
}

TEST(Force, InsistsOnNothingOfWhatIsNotStored) {
  const auto steps =
      run_steps({"wlanctl set 2.4g --force 'SSID:1=$(reboot)' WPAPSK:1=short Channel=999", "wlanctl get 2.4g SSID:1"});
  EXPECT_EQ(1, steps[0].status);
  EXPECT_THAT(steps[0].err, AllOf(HasSubstr("Channel"), Not(HasSubstr("all the same"))));
  EXPECT_EQ("Gateway-Home\n", steps[1].out);
}

}  // namespace
}  // namespace wlanctl_test
