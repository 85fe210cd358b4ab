// gateway-sim without root's permissions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;

// A user namespace of its own lets a test switch user namespaces off without touching the machine's setting.
TEST(Refusal, NamesTheMissingPermission) {
  const std::string script =
      "echo 0 >/proc/sys/user/max_user_namespaces && "
      "exec setpriv --bounding-set=-all --inh-caps=-all " GATEWAY_SIM_PROGRAM " -- true";
  const Result result = shell("unshare -U -r sh -c '" + script + "' 2>&1");
  if (result.out.find("unshare") != std::string::npos) GTEST_SKIP() << result.out;
  EXPECT_EQ(result.status, 125);
  EXPECT_THAT(result.out, HasSubstr("user namespaces are switched off here"));
  EXPECT_THAT(result.out, HasSubstr("sysctl user.max_user_namespaces"));
}

class AsUser : public testing::Test {
 protected:
  void SetUp() override {
    if (geteuid() == 0 && run_as_user({"--version"}).status != 0) {
      GTEST_SKIP() << "the build tree is out of reach of other users";
    }
    const Result result = run_as_user({"--", "true"});
    if (result.status == 125) GTEST_SKIP() << result.err;
  }

  Result run_as_user(const Words& arguments) {
    return Simulation(arguments, {folder_.path(), geteuid() == 0}).finish();
  }
  Result script(const std::string& text) { return run_as_user({"--", "sh", "-c", text}); }

  TestFolder folder_;
};

TEST_F(AsUser, IsRootInside) {
  EXPECT_EQ(script("id -u; id -g").out, "0\n0\n");
}

TEST_F(AsUser, RadiosBridgesAndToolsWork) {
  const Result result =
      script("brctl show | grep -c ra; ifconfig ra0 down; iwpriv ra0 set Channel=3; " WIRELESS_PROBE_PROGRAM
             " ra1; reboot; cut -f2- /run/gateway-sim/journal");
  EXPECT_THAT(result.out, HasSubstr("4\nIEEE 802.11\n3\n"));
  EXPECT_THAT(result.out, HasSubstr("ifconfig ra0 down\tra0: up -> down\n"));
  EXPECT_THAT(result.out,
              HasSubstr("reboot\trebooted; 0 shared memory segments removed; 0 semaphores removed; ra0: down -> up\n"));
}

TEST_F(AsUser, ModulesReloadTheRadio) {
  const Result result =
      run_as_user({"--chips", "7615", "--", "sh", "-c",
                   "rmmod mt7615_ap && insmod /lib/modules/4.4.115/mt7615_ap.ko && ls /sys/class/net | grep -c ra"});
  EXPECT_EQ(result.out, "4\n");
}

TEST_F(AsUser, GatewaysFoldersTakeWrites) {
  const Result result = script(
      "for f in /etc/new /etc/Wireless/RT2860AP/new /tmp/new /run/new /userfs/new /proc/zq2810/led_wlan; do"
      " echo x > $f && cat $f; done; sed -i s/BssidNum=2/BssidNum=3/ /etc/Wireless/RT2860AP/RT2860AP.dat");
  EXPECT_EQ(result.out, "x\nx\nx\nx\nx\nx\n");
  EXPECT_EQ(result.err, "");
  EXPECT_FALSE(std::filesystem::exists("/etc/new"));
}

TEST_F(AsUser, CurrentDirectoryAndJournalStayReal) {
  EXPECT_EQ(run_as_user({"--journal", "calls", "--", "sh", "-c", "ifconfig lo > address"}).status, 0);
  EXPECT_THAT(read_file(folder_ / "address"), HasSubstr("127.0.0.1"));
  EXPECT_EQ(journal_of(folder_ / "calls").size(), 1U);
}

}  // namespace
}  // namespace sim_test
