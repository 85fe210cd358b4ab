// What an apply without a restart has saved and the driver has not read is told until the radio has started.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply_story.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string kUnread =
    "wlanctl apply 2.4g --again >/dev/null 2>&1; wlanctl set 2.4g RTSThreshold=1000 >/dev/null 2>&1; wlanctl apply "
    "2.4g";
constexpr char kNote[] =
    "2.4g: saved, and read by the driver when the radio next starts: RTSThreshold; wlanctl apply "
    "2.4g --again restarts it";

TEST(Unread, IsToldByWhoeverLooks) {
  const auto steps = run_steps({kUnread, "wlanctl status 2.4g", "wlanctl diff 2.4g", "wlanctl apply 2.4g",
                                "wlanctl set 2.4g HideSSID:1=1; wlanctl apply 2.4g; wlanctl status 2.4g"});
  for (size_t i = 0; i < steps.size(); ++i) EXPECT_THAT(steps[i].err, HasSubstr(kNote)) << i;
}

TEST(Unread, EndsWithARestart) {
  for (const char* const start : {"wlanctl apply 2.4g --again", "wlanctl radio off 2.4g; wlanctl radio on 2.4g",
                                  "simctl power-cut; wlanctl apply 2.4g --again"}) {
    const auto steps = run_steps({kUnread, start, "wlanctl status 2.4g"});
    EXPECT_THAT(steps[2].err, Not(HasSubstr("when the radio next starts"))) << start;
  }
}

TEST(Unread, EndsWhereTheDriverHasThatValue) {
  const auto steps =
      run_steps({kUnread, "wlanctl set 2.4g RTSThreshold=2347; wlanctl apply 2.4g", "wlanctl status 2.4g"});
  EXPECT_THAT(steps[2].err, Not(HasSubstr("when the radio next starts")));
}

}  // namespace
}  // namespace wlanctl_test
