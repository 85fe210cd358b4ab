// gateway-sim without root's permissions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;

constexpr char kAsNobody[] = "setpriv --reuid=65534 --regid=65534 --clear-groups ";

// Root tests as nobody, unless its own user namespace has only root.
bool tests_as_nobody() {
  return geteuid() == 0 && shell(std::string(kAsNobody) + "true 2>&1").status == 0;
}

// A shell command as the user that the tests of this file run gateway-sim as.
Result shell_as_user(const std::string& command) {
  return shell((tests_as_nobody() ? kAsNobody : "") + command + " 2>&1");
}

bool users_may_make_namespaces() {
  return shell_as_user("unshare -U -r true").status == 0;
}

void expect_refusal(const Result& result) {
  EXPECT_EQ(result.status, 125);
  EXPECT_THAT(result.out + result.err, HasSubstr("gateway-sim: cannot "));
  EXPECT_THAT(result.out + result.err, testing::AnyOf(HasSubstr("run 'sysctl "), HasSubstr("run gateway-sim as root")));
}

// A user namespace of its own lets a test switch user namespaces off without touching the machine's setting.
TEST(Refusal, NamesTheMissingPermission) {
  const std::string as_restricted_root =
      "setpriv --bounding-set=-all --inh-caps=-all " + gateway_sim_program() + " -- true";
  if (shell("unshare -U -r true 2>&1").status != 0) {
    // Off already, for whoever runs this.
    const std::string as_caller = gateway_sim_program() + " -- true";
    expect_refusal(shell((geteuid() == 0 ? as_restricted_root : as_caller) + " 2>&1"));
    return;
  }
  const std::string script = "echo 0 >/proc/sys/user/max_user_namespaces && exec " + as_restricted_root;
  const Result result = shell("unshare -U -r sh -c '" + script + "' 2>&1");
  expect_refusal(result);
  EXPECT_THAT(result.out, HasSubstr("user namespaces are switched off here"));
  EXPECT_THAT(result.out, HasSubstr("sysctl user.max_user_namespaces"));
}

class AsUser : public testing::Test {
 protected:
  AsUser() {
    if (shell_as_user("test -x " + gateway_sim_program()).status == 0) return;
    program_ = copied(gateway_sim_program(), "bin");
    const std::string build_folder = std::filesystem::path(gateway_sim_program()).parent_path().parent_path();
    for (const char* parts : {"libexec", "share"}) {
      std::filesystem::copy(build_folder + "/" + parts, folder_ / parts, std::filesystem::copy_options::recursive);
    }
    wireless_probe_ = copied(wireless_probe_program(), "bin");
    shell("chmod -R a+rX " + folder_.path());
  }

  // Where users may not make namespaces, gateway-sim must say so instead; true when that was so.
  bool refused() {
    if (users_may_make_namespaces()) return false;
    expect_refusal(run_as_user({"--", "true"}));
    return true;
  }

  Result run_as_user(const Words& arguments) {
    return Simulation(arguments, {folder_.path(), tests_as_nobody(), program_}).finish();
  }
  Result script(const std::string& text) { return run_as_user({"--", "sh", "-c", text}); }

  TestFolder folder_;
  std::string program_ = gateway_sim_program();
  std::string wireless_probe_ = wireless_probe_program();

 private:
  // Within the user's reach, when the build folder is not.
  std::string copied(const std::string& program, const std::string& folder) {
    std::filesystem::create_directories(folder_ / folder);
    const std::string copy = folder_ / folder + "/" + std::filesystem::path(program).filename().string();
    std::filesystem::copy_file(program, copy);
    return copy;
  }
};

TEST_F(AsUser, IsRootInside) {
  if (refused()) return;
  EXPECT_EQ(script("id -u; id -g").out, "0\n0\n");
}

TEST_F(AsUser, RadiosBridgesAndToolsWork) {
  if (refused()) return;
  const Result result = script("brctl show | grep -c ra; ifconfig ra1 down; iwpriv ra0 set Channel=3; " +
                               wireless_probe_ + " ra1; reboot; cut -f2- /run/gateway-sim/journal");
  EXPECT_THAT(result.out, HasSubstr("4\nIEEE 802.11\n3\n"));
  EXPECT_THAT(result.out, HasSubstr("ifconfig ra1 down\tra1: up -> down\n"));
  EXPECT_THAT(result.out,
              HasSubstr("reboot\trebooted; 0 shared memory segments removed; 0 semaphores removed; ra1: down -> up\n"));
}

TEST_F(AsUser, ModulesReloadTheRadio) {
  if (refused()) return;
  const Result result =
      run_as_user({"--chips", "7615", "--", "sh", "-c",
                   "rmmod mt7615_ap && insmod /lib/modules/4.4.115/mt7615_ap.ko && ls /sys/class/net | grep -c ra"});
  EXPECT_EQ(result.out, "4\n");
}

TEST_F(AsUser, GatewaysFoldersTakeWrites) {
  if (refused()) return;
  const Result result = script(
      "for f in /etc/new /etc/Wireless/RT2860AP/new /tmp/new /run/new /userfs/new /proc/zq2810/led_wlan; do"
      " echo x > $f && cat $f; done; sed -i s/BssidNum=2/BssidNum=3/ /etc/Wireless/RT2860AP/RT2860AP.dat");
  EXPECT_EQ(result.out, "x\nx\nx\nx\nx\nx\n");
  EXPECT_EQ(result.err, "");
  EXPECT_FALSE(std::filesystem::exists("/etc/new"));
}

TEST_F(AsUser, CurrentDirectoryAndJournalStayReal) {
  if (refused()) return;
  EXPECT_EQ(run_as_user({"--journal", "calls", "--", "sh", "-c", "ifconfig lo > address"}).status, 0);
  EXPECT_THAT(read_file(folder_ / "address"), HasSubstr("127.0.0.1"));
  EXPECT_EQ(journal_of(folder_ / "calls").size(), 1U);
}

}  // namespace
}  // namespace sim_test
