// unlock: the lock of a store whose holder is gone.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

TEST(Unlock, FreesTheLockOfAProcessThatIsGone) {
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 >/dev/null 2>&1; hold_store 0x12348 for-ever & echo $!; wait",
                 "wlanctl set 2.4g Channel=1", "wlanctl unlock 2.4g", "wlanctl set 2.4g Channel=1",
                 "wlanctl unlock 2.4g --json"});
  const std::string holder = steps[0].out.substr(0, steps[0].out.find('\n'));
  EXPECT_EQ(3, steps[1].status);
  EXPECT_EQ("wlanctl: the store of 2.4g is held, last by process " + holder +
                ", which is gone and cannot let go; wlanctl unlock 2.4g frees it\n",
            steps[1].err);
  EXPECT_EQ("2.4g: freed; the lock was held by process " + holder + ", which is gone\n", steps[2].out);
  EXPECT_EQ(0, steps[2].status);
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
  EXPECT_EQ(false, document_in(steps[4].out)["data"]["freed"]);
}

// It lets nothing go any more, though its parent has not waited for it.
TEST(Unlock, FreesTheLockOfAProcessThatHasEnded) {
  const Result result = run(
      "library_probe init 0 >/dev/null 2>&1; sh -c 'hold_store 0x12348 for-ever & echo $! >ended; exec sleep 60' & "
      "parent=$!; until grep -qs 'State:.Z' /proc/$(cat ended 2>/dev/null)/status; do sleep 0.02; done; wlanctl unlock "
      "2.4g; kill $parent");
  EXPECT_THAT(result.out,
              testing::ContainsRegex("2.4g: freed; the lock was held by process [0-9]+ .hold_store., which is"));
}

TEST(Unlock, LeavesTheLockOfAProcessThatLives) {
  const Result result =
      run("on_one_line() { tr -s '\\n ' ' ' <$1; }; library_probe init 0 >/dev/null 2>&1; hold_store 0x12348 & "
          "holder=$!; until [ -e held ]; do sleep 0.02; done\n"
          "wlanctl unlock 2.4g 2>err; echo $?; on_one_line err | grep -c \"is held by process $holder (hold_store), "
          "which is alive\"\n"
          "kill -STOP $holder; until grep -q 'State:.T' /proc/$holder/status; do sleep 0.02; done; wlanctl unlock 2.4g "
          "--force 2>err; echo $?; on_one_line err | grep -c 'kill -CONT'; kill -CONT $holder\n"
          "wlanctl unlock 5g; touch done; wait $holder");
  EXPECT_EQ("1\n1\n1\n1\n5g: there is no store yet, and no lock that anybody could hold\n", result.out) << result.err;
}

TEST(Unlock, FreesALockThatNobodyIsKnownToHoldWhenThatIsInsistedOn) {
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 >/dev/null 2>&1; damage_store unnamed 0x12348", "wlanctl set 2.4g Channel=1",
                 "wlanctl unlock 2.4g", "wlanctl unlock 2.4g --force && wlanctl set 2.4g Channel=1"});
  EXPECT_EQ(3, steps[1].status);
  EXPECT_EQ(
      "wlanctl: the store of 2.4g is held by a process that the kernel does not name, which does not let go; wlanctl "
      "unlock 2.4g --force frees it\n",
      steps[1].err);
  EXPECT_THAT(steps[2].err, HasSubstr("stop the management processes, and insist with --force"));
  EXPECT_EQ(0, steps[3].status) << steps[3].err;
}

TEST(Unlock, SaysThatTheLockIsFree) {
  EXPECT_EQ("2.4g: the lock is free\n", run("library_probe init 0 >/dev/null 2>&1; wlanctl unlock 2.4g").out);
}

TEST(Unlock, SaysThatThereIsNoStoreYet) {
  const std::vector<Result> steps = run_steps({"wlanctl unlock 2.4g", "wlanctl unlock 2.4g --json"});
  EXPECT_EQ("2.4g: there is no store yet, and no lock that anybody could hold\n", steps[0].out);
  EXPECT_EQ(0, steps[0].status);
  EXPECT_EQ(false, document_in(steps[1].out)["data"]["freed"]);
}

TEST(Unlock, TakesALockThatIsGoneForNoneThatIsFree) {
  const std::vector<Result> steps =
      run_steps({"library_probe init 0 >/dev/null 2>&1; ipcrm -S 0x12348", "wlanctl unlock 2.4g",
                 "wlanctl unlock 2.4g --force", "wlanctl unlock 2.4g --json"});
  EXPECT_EQ(1, steps[1].status);
  EXPECT_EQ("", steps[1].out);
  EXPECT_EQ(
      "wlanctl: there is no lock of 2.4g to be freed: its semaphore is gone, and the store goes on without; start the "
      "process that makes the store, by init_shm and init, anew\n",
      steps[1].err);
  EXPECT_EQ(1, steps[2].status);
  EXPECT_EQ(1, document_in(steps[3].out)["exit_code"]);
}

TEST(Unlock, NeedsItsBand) {
  EXPECT_EQ(2, run("wlanctl unlock").status);
}

}  // namespace
}  // namespace wlanctl_test
