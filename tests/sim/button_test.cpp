// The board's files under /proc/zq2810.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

constexpr char kInBoard[] = "cd /proc/zq2810; B=/proc/zq2810; ";

TEST(Button, IsEmptyUntilItIsPressed) {
  EXPECT_EQ("0\n", run_script(std::string(kInBoard) + "cat $B/*_button | wc -c").out);
}

TEST(Button, GivesAPressToTheFirstReader) {
  struct {
    const char* name;
    const char* file;
  } const kRows[] = {{"wlan", "wlan_button"},
                     {"wps", "wps_button"},
                     {"wps5g", "wps_5g_button"},
                     {"wlan11ac", "wlan11ac_button"},
                     {"wlan-wps", "wlan_wps_button"}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    const std::string read = std::string("cat $B/") + row.file + "; ";
    EXPECT_EQ("0 1 0 long press 0 ",
              run_script(std::string(kInBoard) +
                         "count() { printf '%s ' $(cat $B/*_button | wc -c); }; count; simctl press " + row.name +
                         "; " + read + "echo -n ' '; count; simctl press " + row.name + " 'long press'; " + read +
                         "echo -n ' '; count")
                  .out);
  }
}

TEST(Button, KeepsThePressForALaterReader) {
  EXPECT_EQ("1\n1\n", run_script("simctl press wps; ls -l /proc/zq2810/wps_button | awk '{print $5}';"
                                 "sh -c 'cat /proc/zq2810/wps_button'; echo")
                          .out);
}

TEST(Button, TwoPressesAreOne) {
  EXPECT_EQ("second\n", run_script("simctl press wps first-and-longer; simctl press wps second;"
                                   "cat /proc/zq2810/wps_button; echo")
                            .out);
}

TEST(Button, OneOfManyReadersGetsThePress) {
  EXPECT_EQ("5\n", run_script("simctl press wps press; for i in $(seq 20); do cat /proc/zq2810/wps_button & done >got;"
                              "wait; wc -c <got")
                       .out);
}

// The kernel lists who waits for a lock with an arrow.
TEST(Button, IsReadUnderALock) {
  EXPECT_EQ(
      "0\npress\n",
      run_script("simctl press wps press; " + button_probe_program() +
                 " locked /proc/zq2810/wps_button"
                 " 'cat /proc/zq2810/wps_button >got & until grep -q -e \"->\" /proc/locks || [ -s got ]; do :; done;"
                 " wc -c <got'; until [ -s got ]; do :; done; cat got; echo")
          .out);
}

TEST(Button, TakesWhatTheSoftwareWrites) {
  EXPECT_EQ("on\noff\n",
            run_script(std::string(kInBoard) + "echo on >$B/wps_button; cat $B/wps_button;"
                                               "echo long >$B/wps_button; echo off >$B/wps_button; cat $B/wps_button;"
                                               "cat $B/wps_button")
                .out);
}

TEST(Button, IsTakenByEveryWayToOpen) {
  struct {
    const char* function;
    const char* flags;
  } const kRows[] = {{"open", ""},           {"open-nonblocking", "nonblocking cloexec "},
                     {"open64", "cloexec "}, {"openat", ""},
                     {"openat64", ""},       {"fortified", ""}};
  for (const auto& row : kRows) {
    const std::string read = button_probe_program() + " " + row.function + " /proc/zq2810/wlan_button; ";
    EXPECT_EQ(std::string(row.flags) + "press\n" + row.flags + "\n",
              run_script("simctl press wlan press; " + read + read).out)
        << row.function;
  }
}

TEST(Button, IsLeftByThoseWhoWrite) {
  const std::string probe = button_probe_program();
  EXPECT_EQ("press\n?\npress\n",
            run_script("simctl press wlan press; " + probe + " read-write /proc/zq2810/wlan_button; " + probe +
                       " append /proc/zq2810/wlan_button; " + probe + " open /proc/zq2810/wlan_button")
                .out);
}

TEST(Button, FailsToOpenAsTheKernelSays) {
  const std::string probe = button_probe_program();
  EXPECT_EQ("ENOENT\nENOTDIR\nENOENT\n",
            run_script("rm /proc/zq2810/wlan_button; " + probe + " open /proc/zq2810/wlan_button; " + probe +
                       " open64 /proc/zq2810/wps_button/x; " + probe + " openat ''")
                .out);
}

TEST(Button, IsEmptyAfterABoot) {
  EXPECT_EQ("0\n", run_script("simctl press wps; reboot; cat /proc/zq2810/wps_button | wc -c").out);
}

TEST(Board, OtherFilesKeepWhatIsWritten) {
  for (const char* file : {"led_wlan", "ahb_status", "chip_id", "wlanshare", "dbg_msg"}) {
    EXPECT_EQ("x\nx\n", run_script(std::string("echo x >/proc/zq2810/") + file + "; cat /proc/zq2810/" + file +
                                   "; cat /proc/zq2810/" + file)
                            .out)
        << file;
  }
}

TEST(Board, StartsWithBelievableValues) {
  EXPECT_EQ("1\n1\n24\n0 0 none none\n", run_script("cd /proc/zq2810; cat led_wlan ahb_status chip_id wlanshare").out);
}

// Opening goes through the driver's library, for every file there is.
TEST(Open, IsTheKernelsForEverythingElse) {
  const Result result = run_script(
      "umask 022; : >new; stat -c %a new; cat /proc/zq2810/none; cat .; echo x >/proc/nope/x; cat /etc/hostname "
      ">/dev/null;"
      "echo abc >f; cat f; dd if=f bs=1 skip=1 count=1 status=none; echo; : >f; cat f; ln -s nowhere l; cat l; ls");
  EXPECT_EQ("644\nabc\nb\nf\nl\nnew\n", result.out);
  for (const char* text : {"/proc/zq2810/none: No such file or directory", ".: Is a directory", "l: No such file"}) {
    EXPECT_THAT(result.err, testing::HasSubstr(text));
  }
}

}  // namespace
}  // namespace sim_test
