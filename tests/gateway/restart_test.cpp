// The narrow restarts and the radio switch inside the simulated gateway: the commands that ran, and what the kernel says
// of the interfaces afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gateway.h"

namespace sim_test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsSupersetOf;
using Restart = Gateway;
using Radio = Gateway;

std::string dat(int ssids, const std::string& enabled, const std::string& wds = "0") {
  return dat_text(ssids, enabled, "ReloadFlag=1\nWdsEnable=" + wds + "\n");
}

const std::string kOther = dat(1, "1");

// The lines of an outcome that are about one kind of interface.
Words of(const std::string& prefix, const Words& lines) {
  Words found;
  for (const std::string& line : lines) {
    if (line.rfind(prefix, 0) == 0 && line[prefix.size()] >= '0' && line[prefix.size()] <= '9') found.push_back(line);
  }
  return found;
}

TEST_F(Restart, SameCountOf2_4GCyclesTheBssesOfTheMask) {
  const Outcome outcome = apply("init 0 restart 0 3 3 5 0 get ReloadFlag 0 -1", dat(3, "1;1;1"), kOther);
  EXPECT_THAT(outcome.steps, ElementsAre("init 0", "restart 0", "ReloadFlag 0 1"));
  EXPECT_THAT(outcome.interfaces, ElementsAreArray({"ra0 up br-lan", "ra1 down -", "ra2 up br-lan", "rai0 up br-lan",
                                                    "wds0 down -", "wds1 down -", "wds2 down -", "wds3 down -",
                                                    "wdsi0 down -", "wdsi1 down -", "wdsi2 down -", "wdsi3 down -"}));
  EXPECT_THAT(
      outcome.calls,
      ElementsAreArray({"ifconfig ra0 down", "brctl delif br-lan ra0", "ifconfig ra1 down", "brctl delif br-lan ra1",
                        "ifconfig ra2 down", "brctl delif br-lan ra2", "ifconfig wds0 down", "brctl delif br-lan wds0",
                        "ifconfig wds1 down", "brctl delif br-lan wds1", "ifconfig wds2 down",
                        "brctl delif br-lan wds2", "ifconfig wds3 down", "brctl delif br-lan wds3", "ifconfig ra0 up",
                        "brctl addif br-lan ra0", "ifconfig ra2 up", "brctl addif br-lan ra2"}));
}

TEST_F(Restart, EveryBitOfAMaskIsAnInterfaceAndNoneBeyondTheEighth) {
  for (const int band : {0, 1}) {
    for (const int mask : {0, 1, 0b101, 0xff, 0x1ff}) {
      SCOPED_TRACE("mask " + std::to_string(mask) + " on band " + std::to_string(band));
      const std::string eight = dat(8, "1;1;1;1;1;1;1;1");
      const std::string number = std::to_string(band);
      const std::string prefix = band == 0 ? "ra" : "rai";
      const Outcome outcome = apply("restart " + number + " 8 8 " + std::to_string(mask) + " 0",
                                    band == 0 ? eight : kOther, band == 0 ? kOther : eight);
      Words expected;
      for (int i = 0; i < 8; ++i) {
        expected.push_back(prefix + std::to_string(i) + ((mask >> i & 1) != 0 ? " up br-lan" : " down -"));
      }
      EXPECT_EQ(expected, of(prefix, outcome.interfaces));
      EXPECT_THAT(outcome.interfaces, Contains(band == 0 ? "rai0 up br-lan" : "ra0 up br-lan"));
    }
  }
}

TEST_F(Restart, WdsLinksJoinTheLanBridgeThoughTheTextNamesBr0) {
  for (const std::string band : {"0", "1"}) {
    const std::string prefix = band == "0" ? "wds" : "wdsi";
    for (const std::string counts : {" 1 1 ", " 1 2 "}) {
      const Outcome outcome = apply("init " + band + " restart " + band + counts + "1 1", kOther, kOther);
      EXPECT_THAT(outcome.steps,
                  ElementsAre("init 0", "addif " + prefix + "0 to br0", "addif " + prefix + "1 to br0",
                              "addif " + prefix + "2 to br0", "addif " + prefix + "3 to br0", "restart 0"));
      EXPECT_THAT(of(prefix, outcome.interfaces), ElementsAre(prefix + "0 up br-lan", prefix + "1 up br-lan",
                                                              prefix + "2 up br-lan", prefix + "3 up br-lan"));
    }
  }
}

// With links that are up: what a second restart without them does.
TEST_F(Restart, OnlyTheSameCountOn5GLeavesTheLinksUp) {
  struct {
    const char* band;
    const char* counts;
    const char* link;
  } const kRows[] = {{"0", " 1 1 ", "wds3 down -"},
                     {"0", " 1 2 ", "wds3 down -"},
                     {"1", " 1 1 ", "wdsi3 up br-lan"},
                     {"1", " 1 2 ", "wdsi3 down -"}};
  for (const auto& row : kRows) {
    const std::string band = row.band;
    const Outcome outcome =
        apply("init " + band + " restart " + band + " 1 1 1 1 restart " + band + row.counts + "1 0", kOther, kOther);
    EXPECT_THAT(outcome.interfaces, Contains(row.link)) << row.band << row.counts;
  }
}

TEST_F(Restart, AnotherCountClearsTheFlagAndReloadsNoModule) {
  for (const std::string band : {"0", "1"}) {
    const std::string prefix = band == "0" ? "ra" : "rai";
    const Outcome outcome = apply("init " + band + " restart " + band + " 2 1 1 0 get ReloadFlag " + band + " -1",
                                  dat(2, "1;1"), dat(2, "1;1"), "7603,7612,7615,7663");
    EXPECT_EQ("ReloadFlag 0 0", outcome.steps.back());
    EXPECT_THAT(of(prefix, outcome.interfaces), ElementsAre(prefix + "0 up br-lan", prefix + "1 down -"));
    EXPECT_THAT(outcome.calls, testing::Not(Contains(testing::HasSubstr("mod "))));
  }
}

TEST_F(Restart, FailureToClearTheFlagLeavesTheInterfacesDown) {
  const std::string no_flag = dat_text(2, "1;1", "WdsEnable=0\n");
  const Outcome outcome = apply("init 0 restart 0 2 1 3 1", no_flag, kOther);
  EXPECT_EQ("restart 1", outcome.steps.back());
  EXPECT_THAT(outcome.interfaces, IsSupersetOf({"ra0 down -", "ra1 down -", "wds0 down -", "rai0 up br-lan"}));
}

// Takes both BSSs out of br-lan, which they are in after a boot.
std::string out_of_the_lan(const std::string& band) {
  return "init " + band + " restart " + band + " 2 2 0 0 ";
}

TEST_F(Radio, OnPutsEnabledSsidsIntoBr0) {
  for (const std::string band : {"0", "1"}) {
    const std::string bss = band == "0" ? "ra" : "rai";
    const std::string wds = band == "0" ? "wds" : "wdsi";
    const Outcome outcome =
        apply(out_of_the_lan(band) + "radio " + band + " 1", dat(2, "0;1", "1"), dat(2, "0;1", "1"));
    EXPECT_THAT(outcome.steps, ElementsAre("init 0", "restart 0", "add " + bss + "1 to br0",
                                           "addif " + wds + "0 to br0", "addif " + wds + "1 to br0",
                                           "addif " + wds + "2 to br0", "addif " + wds + "3 to br0", "radio 0"));
    EXPECT_THAT(of(bss, outcome.interfaces), ElementsAre(bss + "0 down -", bss + "1 up br0"));
    EXPECT_THAT(of(wds, outcome.interfaces),
                ElementsAre(wds + "0 up br0", wds + "1 up br0", wds + "2 up br0", wds + "3 up br0"));
  }
}

TEST_F(Radio, OffTakesThemDownAndOutOfBr0) {
  for (const std::string band : {"0", "1"}) {
    const std::string bss = band == "0" ? "ra" : "rai";
    const std::string wds = band == "0" ? "wds" : "wdsi";
    for (const char* off : {"radio ", "downup "}) {
      const Outcome outcome = apply(out_of_the_lan(band) + "radio " + band + " 1 " + off + band + " 0",
                                    dat(2, "1;1", "1"), dat(2, "1;1", "1"));
      EXPECT_THAT(of(bss, outcome.interfaces), ElementsAre(bss + "0 down -", bss + "1 down -"));
      EXPECT_THAT(of(wds, outcome.interfaces),
                  ElementsAre(wds + "0 down -", wds + "1 down -", wds + "2 down -", wds + "3 down -"));
      const std::string other = band == "0" ? "rai" : "ra";
      EXPECT_THAT(of(other, outcome.interfaces), ElementsAre(other + "0 up br-lan", other + "1 up br-lan"));
    }
  }
}

// br0's operations cannot move what is in br-lan: it goes down and up and stays a member there.
TEST_F(Radio, SwitchLeavesInterfacesInTheLanBridge) {
  const Outcome off = apply("init 0 radio 0 0", dat(2, "1;1"), kOther);
  EXPECT_THAT(of("ra", off.interfaces), ElementsAre("ra0 down br-lan", "ra1 down br-lan"));
  const Outcome on = apply("init 0 radio 0 0 radio 0 1", dat(2, "1;1"), kOther);
  EXPECT_THAT(of("ra", on.interfaces), ElementsAre("ra0 up br-lan", "ra1 up br-lan"));
}

TEST_F(Radio, ExecuteLeavesItsInterfacesInBr0) {
  for (const std::string band : {"0", "1"}) {
    const std::string bss = band == "0" ? "ra" : "rai";
    const std::string text = dat(2, "1;1", "1");
    for (const std::string oper : {"1", "2"}) {
      const Outcome outcome = apply(out_of_the_lan(band) + "execute " + band + " " + oper, text, text);
      EXPECT_THAT(of(bss, outcome.interfaces), ElementsAre(bss + "0 up br0", bss + "1 up br0"));
    }
    const Outcome down = apply(out_of_the_lan(band) + "execute " + band + " 1 execute " + band + " 0", text, text);
    EXPECT_THAT(of(bss, down.interfaces), ElementsAre(bss + "0 down -", bss + "1 down -"));
  }
}

// The difference to the radio switch: a disabled SSID is not taken down, but for the first of 2.4G.
TEST_F(Radio, UpInitialisesADisabledFirstSsidOf2_4GAndLeavesItDown) {
  const Outcome first = apply("init 0 radio 0 0 downup 0 1", dat(1, "0"), kOther);
  EXPECT_THAT(of("ra", first.interfaces), ElementsAre("ra0 down -"));
  ASSERT_LE(2U, first.calls.size());
  EXPECT_THAT(Words(first.calls.end() - 2, first.calls.end()), ElementsAre("ifconfig ra0 up", "ifconfig ra0 down"));
  const Outcome second =
      apply(out_of_the_lan("1") + "radio 1 1 set wifimgr_lib_set_enableSsid 1 1 0 downup 1 1", kOther, dat(2, "1;1"));
  EXPECT_THAT(of("rai", second.interfaces), ElementsAre("rai0 up br0", "rai1 up br0"));
}

TEST_F(Radio, DispatcherTakesTheWlanOutOfBr0) {
  const std::string text = dat(2, "1;1", "1");
  struct {
    const char* what;
    const char* dispatch;
    Words bss;
    Words wds;
  } const kRows[] = {
      {"2.4G leaves its links", "0 2 0 2", {"ra0 down -", "ra1 down -"}, {"wds0 up br0", "wds3 up br0"}},
      {"only as many as counted", "0 1 0 2", {"ra0 down -", "ra1 up br0"}, {"wds0 up br0", "wds3 up br0"}},
      {"5G and its links", "1 2 0 2", {"rai0 down -", "rai1 down -"}, {"wdsi0 down -", "wdsi3 down -"}},
      {"5G whatever the value", "1 1 0 3", {"rai0 down -", "rai1 up br0"}, {"wdsi0 down -", "wdsi3 down -"}},
      {"2.4G only answers", "0 2 1 3", {"ra0 up br0", "ra1 up br0"}, {"wds0 up br0", "wds3 up br0"}},
      {"for one", "0 2 1 4", {"ra0 down -", "ra1 down -"}, {"wds0 up br0", "wds3 up br0"}},
      {"not for zero", "1 2 0 4", {"rai0 up br0", "rai1 up br0"}, {"wdsi0 up br0", "wdsi3 up br0"}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.what);
    const std::string band(1, row.dispatch[0]);
    const Outcome outcome = apply(out_of_the_lan(band) + "radio " + band + " 1 dispatch " + row.dispatch, text, text);
    EXPECT_THAT(outcome.interfaces, IsSupersetOf(row.bss));
    EXPECT_THAT(outcome.interfaces, IsSupersetOf(row.wds));
  }
}

TEST_F(Radio, DispatchedRestartWorksOnTheLanBridge) {
  const Outcome outcome = apply("init 0 radio 0 0 dispatch 0 2 0 1", dat(2, "1;1"), kOther);
  // The probe's request has no BSS that is up and an empty mask: only the links go down.
  EXPECT_THAT(Words(outcome.calls.end() - 2, outcome.calls.end()), testing::Not(Contains(testing::HasSubstr("br0"))));
}

TEST_F(Radio, RebootTakesBothBandsDownAndStartsAgain) {
  const Outcome outcome = apply("init 0 restart 0 2 2 0 0 reboot 0 2 3 1 1 TxPower", dat(2, "1;1"), kOther);
  EXPECT_EQ("reboot 0 3", outcome.steps.back());
  ASSERT_LE(6U, outcome.calls.size());
  EXPECT_THAT(Words(outcome.calls.end() - 6, outcome.calls.end()),
              ElementsAre("/sbin/ifconfig wds0 down", "/sbin/ifconfig wdsi0 down", "/sbin/ifconfig ra0 down",
                          "/sbin/ifconfig ra1 down", "/sbin/ifconfig rai0 down", "reboot"));
  EXPECT_THAT(outcome.interfaces, IsSupersetOf({"ra0 up br-lan", "ra1 up br-lan", "rai0 up br-lan"}));
}

TEST_F(Radio, NoRebootForTheSsidCount) {
  const Outcome outcome = apply("reboot 0 2 3 1 1 BssidNum", dat(2, "1;1"), kOther);
  EXPECT_THAT(outcome.steps, ElementsAre("reboot 0 2"));
  EXPECT_THAT(outcome.calls, testing::IsEmpty());
}

// Which leaves the queue length to the machine's own root, whatever the user is inside.
TEST(TxQueue, ReachesTheKernel) {
  const Result result = run_script(
      library_probe_program() + " txqueue 1 77; cat /sys/class/net/ra0/tx_queue_len /sys/class/net/ra1/tx_queue_len");
  EXPECT_EQ(is_machines_root() ? "txqueue 0\n77\n1000\n" : "txqueue 0\n1000\n1000\n", result.out);
}

}  // namespace
}  // namespace sim_test
