// Boot, driver modules and reboot: which interfaces there are, up or down, and in which bridge.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;

// Prints each interface of the radios as name, state and bridge, from the kernel's own folders.
constexpr char kShow[] =
    "show() { for i in $(ls /sys/class/net | grep -E '^(ra|wds)'); do"
    " f=$(cat /sys/class/net/$i/flags); b=$(basename \"$(readlink /sys/class/net/$i/master)\");"
    " [ $((f & 1)) = 1 ] && s=up || s=down; echo $i $s $b; done; }; "
    // Names of the radios' interfaces, on one line.
    "names() { echo $(ls /sys/class/net | grep -E '^(ra|wds)'); }; ";

constexpr char kModules[] = "M=/lib/modules/4.4.115; ";
constexpr char kWds[] = "wds0 wds1 wds2 wds3";
constexpr char kWds5[] = "wdsi0 wdsi1 wdsi2 wdsi3";

Result run_radios(const std::string& script, const Words& options = {}) {
  return run_script(std::string(kShow) + kModules + script, options);
}

class WithDatFiles : public testing::Test {
 protected:
  Words options(const std::string& dat_2_4g, const std::string& dat_5g, const std::string& chips = "7915,7916") {
    write_file(folder_ / "24.dat", dat_2_4g);
    write_file(folder_ / "5.dat", dat_5g);
    return {"--dat24", folder_ / "24.dat", "--dat5", folder_ / "5.dat", "--chips", chips};
  }

  TestFolder folder_;
};

using Boot = WithDatFiles;
using Modules = WithDatFiles;
using PowerCut = WithDatFiles;
using Reboot = WithDatFiles;

TEST_F(Modules, AreListedAsTheKernelDoes) {
  const Result result = run_radios(
      "names() { cut -d' ' -f1 /proc/modules | sort; }; names; rmmod mt7603eap; echo --; names; insmod "
      "$M/mt7603eap.ko; echo "
      "--; names",
      options(dat_text(1, "1"), dat_text(1, "1"), "7603,7612"));
  EXPECT_EQ("mt7603eap\nmt7662e_ap\n--\nmt7662e_ap\n--\nmt7603eap\nmt7662e_ap\n", result.out);
}

TEST_F(Boot, EnabledSsidsAreUpInTheLanBridge) {
  const Result result = run_radios("show", options(dat_text(3, "1;0;1"), dat_text(1, "0")));
  EXPECT_EQ(result.out,
            "ra0 up br-lan\nra1 down\nra2 up br-lan\nrai0 down\n"
            "wds0 down\nwds1 down\nwds2 down\nwds3 down\nwdsi0 down\nwdsi1 down\nwdsi2 down\nwdsi3 down\n");
}

TEST_F(Boot, SsidCountOutOfRangeCountsAsOne) {
  for (const char* count : {"0", "9", "-1", "", "x"}) {
    const std::string dat = std::string("Default\nBssidNum=") + count + "\nEnableSSID=1\n";
    EXPECT_EQ(run_radios("names", options(dat, dat)).out, std::string("ra0 rai0 ") + kWds + " " + kWds5 + "\n")
        << count;
  }
  EXPECT_EQ(run_radios("names", options(dat_text(8, "1"), "")).out,
            std::string("ra0 ra1 ra2 ra3 ra4 ra5 ra6 ra7 rai0 ") + kWds + " " + kWds5 + "\n");
}

TEST_F(Boot, BridgesAndLoopbackAreUp) {
  const Result result = run_script("for i in br-lan br0 lo; do ifconfig $i; done");
  for (const char* text :
       {"br-lan: flags=4163<UP", "inet addr:192.168.1.1  Bcast:192.168.1.255  Mask:255.255.255.0",
        "br0: flags=", "inet addr:192.168.2.1  Bcast:192.168.2.255  Mask:255.255.255.0", "lo: flags=73<UP"}) {
    EXPECT_THAT(result.out, HasSubstr(text));
  }
}

struct ModuleCase {
  const char* chips;
  const char* module;
  bool takes_2_4g;
  bool takes_5g;
};

class ModuleBands : public testing::TestWithParam<ModuleCase> {};

// Unloading and loading a module takes the interfaces of its bands away and brings them back.
TEST_P(ModuleBands, FollowTheChips) {
  const ModuleCase& given = GetParam();
  const std::string name = given.module;
  const Result result = run_radios("rmmod " + name + "; echo $?; names; insmod $M/" + name + ".ko; echo $?; names",
                                   {"--chips", given.chips});
  const auto names = [](bool with_2_4g, bool with_5g) {
    std::string text;
    const auto add = [&](const std::string& more) { text += (text.empty() ? "" : " ") + more; };
    if (with_2_4g) add("ra0 ra1");
    if (with_5g) add("rai0 rai1");
    if (with_2_4g) add(kWds);
    if (with_5g) add(kWds5);
    return text + "\n";
  };
  EXPECT_EQ(result.out, "0\n" + names(!given.takes_2_4g, !given.takes_5g) + "0\n" + names(true, true)) << result.err;
}

INSTANTIATE_TEST_SUITE_P(Chips, ModuleBands,
                         testing::Values(ModuleCase{"7603", "mt7603eap", true, false},
                                         ModuleCase{"7612", "mt7662e_ap", false, true},
                                         ModuleCase{"7663", "mt7663_ap", false, true},
                                         ModuleCase{"7615", "mt7615_ap", true, true},
                                         ModuleCase{"7603,7615", "mt7615_ap", false, true},
                                         ModuleCase{"7603,7615", "mt7603eap", true, false},
                                         ModuleCase{"7612,7615", "mt7615_ap", true, false},
                                         ModuleCase{"7663,7615", "mt7615_ap", true, false},
                                         ModuleCase{"7603,7612", "mt7662e_ap", false, true}),
                         [](const auto& test) {
                           std::string name = std::string(test.param.chips) + "_" + test.param.module;
                           for (char& c : name) c = c == ',' ? '_' : c;
                           return name;
                         });

TEST_F(Modules, LoadingReadsTheDatFileAsItThenIs) {
  const Result result = run_radios(
      "sed -i s/BssidNum=2/BssidNum=3/ /etc/Wireless/RT2860AP/RT2860AP.dat; names;"
      "rmmod mt7603eap.ko; insmod $M/mt7603eap.ko; show",
      options(dat_text(2, "1;1"), dat_text(1, "1"), "7603,7612"));
  EXPECT_EQ(result.out, std::string("ra0 ra1 rai0 ") + kWds + " " + kWds5 +
                            "\nra0 down\nra1 down\nra2 down\nrai0 up br-lan\n"
                            "wds0 down\nwds1 down\nwds2 down\nwds3 down\n"
                            "wdsi0 down\nwdsi1 down\nwdsi2 down\nwdsi3 down\n");
}

TEST_F(Modules, FailLikeTheRealTools) {
  const Result result = run_radios(
      "rmmod mt7663_ap; echo $?; rmmod nonsense.ko; echo $?; insmod $M/mt7603eap.ko; echo $?;"
      "insmod $M/nonsense.ko; echo $?; echo x > other.ko; insmod other.ko; echo $?; rmmod; echo $?; insmod; echo $?",
      {"--chips", "7603"});
  EXPECT_EQ(result.out, "1\n1\n1\n1\n1\n1\n1\n");
  for (const char* text : {"rmmod: ERROR: Module mt7663_ap is not currently loaded",
                           "rmmod: ERROR: Module nonsense is not currently loaded",
                           "insmod: ERROR: could not insert module /lib/modules/4.4.115/mt7603eap.ko: File exists",
                           "insmod: ERROR: could not load module /lib/modules/4.4.115/nonsense.ko: No such file",
                           "insmod: ERROR: could not insert module other.ko: Invalid module format"}) {
    EXPECT_THAT(result.err, HasSubstr(text));
  }
}

TEST_F(Modules, ModuleWithoutItsChipMakesNoInterfaces) {
  const Result result =
      run_radios("names; rmmod mt7615_ap; insmod $M/mt7615_ap.ko; echo $?; names; rmmod mt7615_ap; names");
  const std::string all = std::string("ra0 ra1 rai0 rai1 ") + kWds + " " + kWds5 + "\n";
  EXPECT_EQ(result.out, all + "0\n" + all + all);
}

TEST_F(Reboot, BringsBothRadiosBackFromTheDatFiles) {
  const Result result = run_radios(
      "ifconfig ra0 down; brctl delif br-lan rai0; ifconfig wds0 up; brctl addif br0 wds0; brctl addbr other;"
      "sed -i s/BssidNum=1/BssidNum=2/ /etc/Wireless/RT2860AP_AC/RT2860AP.dat; reboot; show",
      options(dat_text(1, "1"), dat_text(1, "1;1")));
  EXPECT_EQ(result.out,
            "ra0 up br-lan\nrai0 up br-lan\nrai1 up br-lan\n"
            "wds0 down\nwds1 down\nwds2 down\nwds3 down\nwdsi0 down\nwdsi1 down\nwdsi2 down\nwdsi3 down\n");
}

TEST_F(Reboot, EmptiesWhatDoesNotOutliveABoot) {
  const Result result = run_in("/", {"--", "sh", "-c",
                                     "ipcmk -M 4096 >/dev/null; ipcmk -S 1 >/dev/null; ipcmk -Q >/dev/null;"
                                     "mkdir -p /tmp/a/b /run/c; echo x > /tmp/a/b/f; echo 5 > /var/run/wlan_svc.pid;"
                                     "echo 1 > /proc/zq2810/wps_button; echo kept > /etc/kept; wscd; reboot; echo $?;"
                                     "ls -d /tmp/a /run/* 2>&1; cat /proc/zq2810/wps_button /etc/kept;"
                                     "tail -qn +2 /proc/sysvipc/*; pidof wscd"});
  EXPECT_EQ(result.out, "0\nls: cannot access '/tmp/a': No such file or directory\n/run/gateway-sim\nkept\n");
}

// Says when it is told to end, and then ends or not; a file tells when it is ready.
constexpr char kDaemon[] =
    "daemon() { sh -c \"trap 'echo told >>/etc/told; $2' TERM; echo x >$1; while :; do sleep 1000 & wait; done\" & "
    "until [ -s $1 ]; do :; done; };";

TEST_F(Reboot, EndsTheProcesses) {
  const Result result = run_script(std::string(kDaemon) +
                                   "daemon a 'exit 5'; one=$!; daemon b; two=$!; reboot; wait $one; echo $?; wait $two;"
                                   "echo $?; cat /etc/told; pgrep -c sleep");
  EXPECT_EQ(result.out, "5\n137\ntold\ntold\n0\n");
}

TEST_F(Reboot, SparesWhoWaitsForIt) {
  EXPECT_EQ(run_script("sh -c 'sh -c reboot; echo inner $?'; echo outer $?").out, "inner 0\nouter 0\n");
}

TEST_F(Reboot, GivesANewBootId) {
  const Result result = run_script(
      "id() { cat /proc/sys/kernel/random/boot_id; }; id; reboot; id; id; simctl power-cut; id; simctl reset; id");
  const Words ids = lines_of(result.out);
  ASSERT_EQ(5U, ids.size());
  for (const std::string& id : ids) {
    EXPECT_THAT(id, testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-8[0-9a-f]{3}-[0-9a-f]{12}"));
  }
  EXPECT_NE(ids[0], ids[1]);
  EXPECT_EQ(ids[1], ids[2]);
  EXPECT_NE(ids[2], ids[3]);
  EXPECT_EQ(ids[3], ids[4]);
  EXPECT_NE(ids[0] + "\n", run_script("cat /proc/sys/kernel/random/boot_id").out);
}

TEST_F(PowerCut, EndsTheProcessesUnasked) {
  const Result result = run_script(std::string(kDaemon) +
                                   "daemon a 'exit 5'; simctl power-cut; wait $!; echo $?; ls /etc/told 2>&1;"
                                   "pgrep -c sleep");
  EXPECT_EQ(result.out, "137\nls: cannot access '/etc/told': No such file or directory\n0\n");
}

// One reacts to the other's end, which comes long before its own where processes are ended one after the other.
TEST_F(PowerCut, LetsNobodySeeTheOthersEnd) {
  const Result result = run_script(
      "mkfifo life; sh -c 'exec 3<>life; echo x >held; exec sleep 1000' & until [ -s held ]; do :; done;"
      "n=0; while [ $n -lt 200 ]; do sleep 1000 & n=$((n + 1)); done;"
      "sh -c 'exec <life; echo x >there; read line; echo reacted >/etc/reacted' & until [ -s there ]; do :; done;"
      "simctl power-cut; cat /etc/reacted; pgrep -c sleep");
  EXPECT_EQ(result.out, "0\n");
}

TEST_F(PowerCut, LeavesWhatABootWould) {
  const Result result = run_radios(
      "ipcmk -M 4096 >/dev/null; echo x >/tmp/f; echo x >/run/f; echo kept >/etc/kept; ifconfig ra0 down;"
      "simctl power-cut; ls /tmp/f 2>/dev/null; ls /run; cat /etc/kept; show | head -n 1;"
      "tail -n 1 /run/gateway-sim/journal | cut -f2-",
      options(dat_text(1, "1"), dat_text(1, "1")));
  EXPECT_EQ(result.out,
            "gateway-sim\nkept\nra0 up br-lan\n"
            "simctl power-cut\tpower cut; 1 shared memory segments removed; 0 semaphores removed; ra0: down -> up\n");
}

TEST_F(Reboot, CountsWhatItRemovedInTheJournal) {
  const Result result = run_script(
      "ipcmk -M 4096 >/dev/null; ipcmk -M 4096 >/dev/null; ipcmk -S 1 >/dev/null; reboot;"
      "cut -f2- /run/gateway-sim/journal");
  EXPECT_EQ(result.out, "reboot\trebooted; 2 shared memory segments removed; 1 semaphores removed\n");
}

}  // namespace
}  // namespace sim_test
