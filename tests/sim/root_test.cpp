// The root file system: what is private, what stays real, and the gateway's own files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(Root, EverythingWrittenIsPrivate) {
  for (const char* folder : {"/etc", "/tmp", "/run", "/var/run", "/var/tmp", "/usr/bin", "/dev/shm", "/"}) {
    const std::string file = std::string(folder) + "/sim-test-private";
    EXPECT_EQ(run({"--", "sh", "-c", "echo x > " + file + " && cat " + file}).out, "x\n") << folder;
    EXPECT_FALSE(std::filesystem::exists(file)) << folder;
  }
}

TEST(Root, TmpAndRunAreFresh) {
  EXPECT_EQ(run_in("/", {"--", "sh", "-c", "ls /run; readlink -f /var/run"}).out, "gateway-sim\n/run\n");
  const TestFolder outside;
  EXPECT_EQ(run_in("/", {"--", "ls", outside.path()}).status, 2);
}

TEST(Root, CurrentDirectoryStaysReal) {
  const TestFolder folder;
  write_file(folder / "before", "there\n");
  const Result result = run_in(folder.path(), {"--", "sh", "-c", "pwd; cat before; echo written > after"});
  EXPECT_EQ(result.out, folder.path() + "\nthere\n");
  EXPECT_EQ(read_file(folder / "after"), "written\n");
}

TEST(Root, TheMachinesKernelSettingsCanOnlyBeRead) {
  EXPECT_EQ(run_script("cat /proc/sys/kernel/ostype; echo x > /proc/sys/kernel/hostname || echo refused;"
                       " touch /sys/new 2>/dev/null || echo refused")
                .out,
            "Linux\nrefused\nrefused\n");
}

TEST(Root, CurrentDirectoryInTmpSurvivesAReboot) {
  const TestFolder folder;
  write_file(folder / "kept", "there\n");
  EXPECT_EQ(run_in(folder.path(), {"--", "sh", "-c", "echo x > /tmp/gone; reboot; ls /tmp/gone; cat kept"}).out,
            "there\n");
  EXPECT_EQ(read_file(folder / "kept"), "there\n");
}

TEST(Root, DevicesAreThoseThatAGatewayHas) {
  const Result result = run_script(
      "ls -A /dev | grep -vxE 'net|ptmx|console' | tr '\\n' ' '; echo x >/dev/null; echo y >/dev/stdout;"
      "head -c 4 /dev/zero | wc -c; head -c 4 /dev/urandom | wc -c; echo z >/dev/sim-test; cat /dev/sim-test");
  EXPECT_EQ("fd full log mqueue null pts random shm stderr stdin stdout tty urandom zero y\n4\n4\nz\n", result.out);
  EXPECT_FALSE(std::filesystem::exists("/dev/sim-test"));
}

constexpr char kLog[] = "L=/run/gateway-sim/syslog; log() { logger -t test -p user.err -- \"$1\"; };";

TEST(Devices, HaveTerminalsToRecordIn) {
  const Result result = run_script("script -qec 'tty; test -t 0 && echo terminal' /dev/null </dev/null | tr -d '\\r'");
  EXPECT_EQ("/dev/pts/0\nterminal\n", result.out) << result.err;
}

TEST(SystemLog, IsAFileInside) {
  const Result result =
      run_script(std::string(kLog) + "log one; log two; until grep -q two $L; do :; done; cut -c17- $L");
  EXPECT_THAT(result.out, testing::MatchesRegex("[^<]*test[^<]*: one\n[^<]*test[^<]*: two\n"));
}

TEST(SystemLog, KeepsAMessageOnItsLine) {
  const Result result = run_script(
      "python3 -c 'import socket; s = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM); s.connect(\"/dev/log\");"
      "s.send(b\"<11>a\\nb\\x1b[0m\\n\\0\"); s.send(b\"plain\")';"
      "until grep -q plain /run/gateway-sim/syslog; do :; done; cat /run/gateway-sim/syslog");
  EXPECT_EQ("a b [0m\nplain\n", result.out);
}

TEST(SystemLog, OutlivesAReboot) {
  const Result result = run_script(std::string(kLog) +
                                   "log one; until grep -q one $L; do :; done; reboot; log two;"
                                   "until grep -q two $L; do :; done; wc -l <$L");
  EXPECT_EQ("2\n", result.out);
}

TEST(SystemLog, IsOpenToEveryUser) {
  EXPECT_EQ("666\n", run_script("stat -c %a /dev/log").out);
}

TEST(Root, SystemFoldersNeverStayReal) {
  for (const char* folder : {"/", "/etc", "/tmp", "/usr/bin", "/run"}) {
    const Result result = run_in(folder, {"--", "sh", "-c", "pwd; echo x > sim-test-private"});
    EXPECT_EQ(result.out, std::string(folder) + "\n");
    EXPECT_FALSE(std::filesystem::exists(std::string(folder) + "/sim-test-private")) << folder;
  }
}

TEST(Root, WorksWithTheProgramUnderTmp) {
  const TestFolder prefix;
  const std::filesystem::path tree = std::filesystem::path(gateway_sim_program()).parent_path().parent_path();
  for (const char* part :
       {"bin/gateway-sim", "libexec/gateway-sim/gateway-tools", "libexec/gateway-sim/libgateway_driver.so",
        "share/gateway-sim/dat/RT2860AP.dat", "share/gateway-sim/dat/RT2860AP_AC.dat"}) {
    const std::filesystem::path target = std::filesystem::path(prefix.path()) / part;
    std::filesystem::create_directories(target.parent_path());
    std::filesystem::copy_file(tree / part, target);
  }
  const std::string program = prefix / "bin/gateway-sim";
  // As an installed program it leaves nothing of itself in the private /tmp; as a build tree it stays reachable.
  EXPECT_EQ(shell("cd / && " + program + " -- sh -c 'iwpriv ra0 set TxPower=9 && ls /tmp'").out, "");
  write_file(prefix / "CMakeCache.txt", "CMAKE_HOME_DIRECTORY:INTERNAL=" + prefix.path() + "\n");
  EXPECT_THAT(shell("cd / && " + program + " -- ls " + prefix.path()).out, HasSubstr("CMakeCache.txt"));
}

TEST(Root, MissingPartIsNamed) {
  const TestFolder prefix;
  std::filesystem::create_directory(prefix / "bin");
  std::filesystem::copy_file(gateway_sim_program(), prefix / "bin/gateway-sim");
  const Result result = shell(prefix / "bin/gateway-sim" + " -- true 2>&1");
  EXPECT_EQ(result.status, 125);
  EXPECT_THAT(result.out, HasSubstr("libexec/gateway-sim/gateway-tools"));
}

TEST(Root, SuppliedDatFilesHaveEveryFamily) {
  const Result result = run_script("cd /etc/Wireless; head -qn1 */RT2860AP.dat; cat RT2860AP/RT2860AP.dat");
  const Words lines = lines_of(result.out);
  ASSERT_GT(lines.size(), 200U);
  EXPECT_EQ(lines[0], "Default");
  EXPECT_EQ(lines[1], "Default");
  for (const std::string& line : lines) EXPECT_LE(line.size(), 185U) << line;
  for (const char* key : {"BssidNum=2", "SSID8=", "WPAPSK8=", "Key4Str8=", "RADIUS_Key8=", "AccessControlList7=",
                          "WSC_UUID_Str8=", "Wds3Key=", "ReloadFlag=0", "MboSupport8=", "MapMode="}) {
    EXPECT_THAT(result.out, HasSubstr(std::string("\n") + key));
  }
}

TEST(Root, OwnDatFilesReplaceTheSuppliedOnes) {
  const TestFolder folder;
  write_file(folder / "a.dat", dat_text(1, "1", "Mark=two\n"));
  write_file(folder / "b.dat", dat_text(1, "1", "Mark=five\n"));
  const Result result = run({"--dat24", folder / "a.dat", "--dat5", folder / "b.dat", "--", "grep", "-h", "Mark",
                             "/etc/Wireless/RT2860AP/RT2860AP.dat", "/etc/Wireless/RT2860AP_AC/RT2860AP.dat"});
  EXPECT_EQ(result.out, "Mark=two\nMark=five\n");
}

TEST(Root, ModuleFilesAndToolsAreThere) {
  EXPECT_EQ(run_script("ls /lib/modules/4.4.115").out, "mt7603eap.ko\nmt7615_ap.ko\nmt7662e_ap.ko\nmt7663_ap.ko\n");
  EXPECT_EQ(
      run_script("for t in iwpriv mtd insmod rmmod reboot sys killall ifconfig brctl; do"
                 " test \"$(command -v $t)\" = /userfs/bin/$t || echo $t; done; test -x /usr/bin/wscd || echo wscd")
          .out,
      "");
}

TEST(Proc, BehavesLikeTheKernels) {
  const Result result = run_script(
      "sed -n 's/^Name:.//p' /proc/self/status; cat /proc/$$/comm; grep -c ra0: /proc/net/dev;"
      "grep -c ' /proc tmpfs ' /proc/mounts; ls /proc/sysvipc; tr '\\0' ' ' </proc/1/cmdline | cut -d' ' -f1");
  EXPECT_THAT(lines_of(result.out), ElementsAre("sed", "sh", "1", "1", "msg", "sem", "shm", gateway_sim_program()));
}

TEST(Proc, NewProcessesHaveTheirFolder) {
  // The second time there have been more processes than there were links at the start.
  const Result result = run_script(
      "look() { sleep 100 & until grep -q sleep /proc/$!/comm; do :; done; echo found; };"
      "look; i=0; while [ $i -lt 2500 ]; do (:); i=$((i+1)); done; look");
  EXPECT_EQ(result.out, "found\nfound\n");
  EXPECT_EQ(result.err, "");
}

TEST(Proc, ShowsTheSimulationsProcessesOnly) {
  EXPECT_EQ(run({"--", "sh", "-c", "cd /run/gateway-sim/proc; echo [0-9]*"}).out, "1 2\n");
}

TEST(Proc, PlatformFolderTakesWrites) {
  const Result result = run_script(
      "cd /proc/zq2810; ls; cat chip_id; echo 1 > wps_button; cat wps_button; echo hello > dbg_msg; cat dbg_msg");
  EXPECT_THAT(lines_of(result.out),
              ElementsAre("ahb_status", "chip_id", "dbg_msg", "led_wlan", "wlan11ac_button", "wlan_button",
                          "wlan_wps_button", "wlanshare", "wps_5g_button", "wps_button", "24", "1", "hello"));
}

// As machines have it that keep /lib, /usr or a single file on a file system of its own.
TEST(Root, GatewaysFilesAreThereBelowMountPointsToo) {
  const Result result = shell(
      std::string(geteuid() == 0 ? "unshare -m" : "unshare -U -r -m") +
      " sh -c '"
      "mount --bind /usr/lib /usr/lib && mount --bind /usr/bin /usr/bin && mount --bind /bin/true /usr/bin/killall;"
      "exec " +
      gateway_sim_program() +
      " -- sh -c \"ls /lib/modules/4.4.115; touch /usr/lib/new; ls /usr/lib/new; readlink /usr/bin/killall\"'");
  EXPECT_EQ(result.out,
            "mt7603eap.ko\nmt7615_ap.ko\nmt7662e_ap.ko\nmt7663_ap.ko\n/usr/lib/new\n/userfs/bin/gateway-tools\n");
  EXPECT_FALSE(std::filesystem::exists("/usr/lib/new"));
}

class ChipList : public testing::TestWithParam<const char*> {};

// Programs look for a chip's number anywhere in a line of the list.
TEST_P(ChipList, NamesTheChosenChipOnly) {
  const std::string list = run({"--chips", GetParam(), "--", "cat", "/proc/bus/pci/devices"}).out;
  for (const char* chip : {"7603", "7612", "7615", "7663", "7915", "7916", "7905"}) {
    if (chip == std::string(GetParam())) {
      EXPECT_THAT(list, HasSubstr("\t14c3" + std::string(chip) + "\t"));
    } else {
      EXPECT_THAT(list, Not(HasSubstr(chip)));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Chips, ChipList, testing::Values("7603", "7612", "7615", "7663", "7915", "7916", "7905"));

TEST(ChipList, DefaultIsThePairOfBuiltInChips) {
  const std::string list = run({"--", "cat", "/proc/bus/pci/devices"}).out;
  EXPECT_EQ(lines_of(list).size(), 3U);
  EXPECT_THAT(list, HasSubstr("14c37915"));
  EXPECT_THAT(list, HasSubstr("14c37916"));
}

}  // namespace
}  // namespace sim_test
