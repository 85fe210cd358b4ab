// Two wlanctl at once wait for each other.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;
using testing::Not;

// Holds the tool's lock until the file "done" is there; "held" says that it does.
constexpr char kHold[] =
    "flock -o /var/run/wlanctl.lock sh -c 'touch held; until [ -e done ]; do sleep 0.02; done' &\n"
    "until [ -e held ]; do sleep 0.02; done\n";

TEST(Lock, AChangeWaitsForAnotherAndSaysSo) {
  const Result result = run(std::string(kHold) +
                            "wlanctl set 2.4g Channel=11 2>err & waiting=$!\n"
                            "until grep -q 'waiting for another wlanctl' err; do sleep 0.02; done\n"
                            "wlanctl get 2.4g Channel; touch done; wait $waiting; echo $?; wlanctl get 2.4g Channel");
  EXPECT_EQ("6\n2.4g Channel = 11  (was 6)\n0\n11\n", result.out) << result.err;
}

TEST(Lock, AWaitEndsWithTheTimeGiven) {
  const std::vector<Result> steps =
      run_steps({std::string(kHold) + "for call in 'set 2.4g Channel=11' 'save 2.4g' 'revert 2.4g'; do\n"
                                      "wlanctl $call --wait 0 --json 2>>err; echo \"$call $?\" >>codes; done >json\n"
                                      "wlanctl set 2.4g Channel=11 --wait 1; touch done; wait; cat codes",
                 "cat json", "wlanctl get 2.4g Channel"});
  EXPECT_EQ("set 2.4g Channel=11 4\nsave 2.4g 4\nrevert 2.4g 4\n", steps[0].out);
  EXPECT_THAT(steps[0].err, HasSubstr("wlanctl: another wlanctl did not end within 1 seconds; "
                                      "try again, or give it longer with --wait"));
  EXPECT_EQ("6\n", steps[2].out);
}

TEST(Lock, LookingDoesNotWait) {
  const Result result = run(std::string(kHold) +
                            "for verb in show diff keys 'get 2.4g Channel' 'check /dev/null'; do\n"
                            "wlanctl $verb >/dev/null 2>>err; done; touch done; wait; cat err");
  EXPECT_THAT(result.out, Not(HasSubstr("waiting")));
}

TEST(Lock, AHolderThatIsKilledLetsGo) {
  const Result result =
      run(std::string(kHold) + "kill -9 $!; wlanctl set 2.4g Channel=11 >/dev/null; code=$?; touch done; exit $code");
  EXPECT_EQ(0, result.status);
}

TEST(Lock, ManyAtOnceAllSucceed) {
  const Result result =
      run("library_probe init 0 init 1 >/dev/null; for i in 1 2 3 4 5 6; do wlanctl set 2.4g Channel=$i "
          "HideSSID:1=$((i%2)) --wait 120 "
          ">/dev/null 2>&1 || echo failed & done; wait; wlanctl diff 2.4g >/dev/null 2>&1; echo $?");
  EXPECT_EQ("0\n", result.out);
}

TEST(Lock, NeedsTheRightToTakeIt) {
  const Result result =
      run("rm -f /var/run/wlanctl.lock; ln -s /tmp/elsewhere /var/run/wlanctl.lock\n"
          "wlanctl set 2.4g Channel=11");
  EXPECT_EQ(1, result.status);
  EXPECT_THAT(result.err, HasSubstr("cannot open /var/run/wlanctl.lock"));
}

}  // namespace
}  // namespace wlanctl_test
