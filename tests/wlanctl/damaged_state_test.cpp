// What is damaged is named by whoever meets it: the tool's own files, and a count of SSIDs that no band has.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr struct {
  const char* file;
  const char* meaning;
} kFiles[] = {{"applied", "what was last applied is not known"},
              {"lacking", "not all of what was not in force can be asked of the system"},
              {"bridges", "where the interfaces were put is not known"},
              {"unread", "what the driver has not read yet is not known"}};

TEST(DamagedState, IsNamedByWhoLooksAndGoneWithARestart) {
  for (const auto& [file, meaning] : kFiles) {
    const std::string path = std::string("/var/run/wlanctl-") + file + "-2.4g";
    const auto steps = run_steps({"wlanctl apply 2.4g --again; head -c 20 /dev/urandom >" + path, "wlanctl diff 2.4g",
                                  "wlanctl status 2.4g", "wlanctl apply 2.4g --again", "wlanctl diff 2.4g"});
    const std::string told =
        path + " is damaged: " + meaning + "; an apply that restarts the interfaces writes it anew";
    for (const size_t i : {1u, 2u, 3u}) EXPECT_THAT(steps[i].err, HasSubstr(told)) << i;
    EXPECT_THAT(steps[4].err, Not(HasSubstr("is damaged"))) << file;
  }
}

// It may have said that the driver has not read the file.
TEST(DamagedState, OfWhatIsNotInForceIsAppliedAnew) {
  for (const char* const harm : {": >", "ln -sf /nowhere "}) {
    const auto steps =
        run_steps({"wlanctl apply 2.4g --again; wlanctl set 2.4g BeaconPeriod=200; simctl fail ifconfig exit=0 "
                   "ra0 down 1; wlanctl apply 2.4g; " +
                       std::string(harm) + "/var/run/wlanctl-lacking-2.4g",
                   "wlanctl diff 2.4g", "wlanctl apply 2.4g",
                   "wlanctl diff 2.4g; grep ^BeaconPeriod /run/gateway-sim/driver/ra0"});
    EXPECT_THAT(steps[1].out, HasSubstr("an apply would mean: radio")) << harm;
    EXPECT_EQ(0, steps[2].status) << steps[2].err;
    EXPECT_THAT(steps[2].out, HasSubstr("interfaces restarted")) << harm;
    EXPECT_THAT(steps[3].out, HasSubstr("BeaconPeriod=200\n")) << harm;
    EXPECT_THAT(steps[3].err, Not(HasSubstr("is damaged"))) << harm;
  }
}

// Nobody can tell whether they are well.
TEST(DamagedState, IsNotSaidByWhoMayNotReadIt) {
  const auto steps = run_steps({"wlanctl apply 2.4g --again", "setpriv --reuid 1000 --clear-groups wlanctl diff 2.4g"});
  EXPECT_THAT(steps[1].err, Not(HasSubstr("is damaged")));
}

TEST(SenselessCount, IsNamedByWhoeverShowsTheSsids) {
  const std::string senseless = "library_probe init 0 put BssidNum 0 -1 2147483647 >/dev/null;";
  for (const char* const verb : {"status 2.4g", "show 2.4g", "stations 2.4g", "ssid list 2.4g", "diff 2.4g"}) {
    const auto steps = run_steps({senseless + "wlanctl " + verb});
    EXPECT_THAT(steps[0].err,
                HasSubstr("BssidNum of 2.4g is \"2147483647\" in the store, and no band has so many SSIDs; "
                          "wlanctl set 2.4g BssidNum=2, or wlanctl revert 2.4g"))
        << verb;
    EXPECT_THAT(steps[0].err, Not(HasSubstr("not on the air"))) << verb;
  }
  EXPECT_EQ(1, run_steps({senseless + "wlanctl status 2.4g"})[0].status);
}

TEST(SenselessCount, IsNotMendedByTheFileThatHasItToo) {
  const auto steps =
      run_steps({"sed -i s/^BssidNum=.*/BssidNum=2147483647/ " + std::string(kDat) + "; wlanctl status 2.4g"});
  EXPECT_THAT(steps[0].err, HasSubstr("wlanctl set 2.4g BssidNum=2\n"));
}

}  // namespace
}  // namespace wlanctl_test
