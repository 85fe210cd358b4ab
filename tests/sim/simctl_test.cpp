// simctl: its words, its refusals, its journal.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "driver_probe.h"
#include "sim/driver/reading.h"

namespace sim_test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Result after(const std::string& command) {
  return run_script("simctl " + command);
}

TEST(Reading, StaysNearWhatItIsSetTo) {
  for (const unsigned which : {0U, 1U, 5U, 255U}) {
    std::set<long> seen;
    for (int64_t time = 0; time < 217000; time += 100) seen.insert(reading_at("~-92", time, which));
    EXPECT_GE(*seen.begin(), -95);
    EXPECT_LE(*seen.rbegin(), -89);
    EXPECT_GE(seen.size(), 5U);
  }
}

TEST(Reading, IsExactWithoutATilde) {
  for (int64_t time = 0; time < 40000; time += 700) EXPECT_EQ(-92, reading_at("-92", time, 3));
}

TEST(Reading, IsTheSameForAllWhoLookAtOnce) {
  EXPECT_EQ(reading_at("~50", 123456, 2), reading_at("~50", 123456, 2));
}

TEST(Simctl, HelpFitsATerminal) {
  for (const std::string& line : lines_of(after("--help").out)) EXPECT_LE(line.size(), 80U) << line;
}

TEST(Simctl, TakesABandInEitherSpelling) {
  const Result result = run_script(
      "for b in 2.4G 2.4g 2.4 5G 5g 5; do simctl show $b | head -n 1 | cut -c1-5; done; simctl show 24g; echo $?");
  EXPECT_EQ("2.4G \n2.4G \n2.4G \n5G ra\n5G ra\n5G ra\n2\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("no band is called 24g: 2.4g or 5g"));
}

TEST(Simctl, ShowsAPeerOnlyWhereThereIsOne) {
  const Result result = run_script(
      "peer() { simctl show ra0 | grep -o 'peer .*'; }; peer; iwpriv ra0 set WscConfMode=7; simctl wps ra0 state 3 "
      "peer "
      "02:aa:bb:cc:dd:01; peer; simctl wps ra0 state 1; peer");
  EXPECT_EQ("peer -\npeer 02:aa:bb:cc:dd:01\npeer -\n", result.out);
}

TEST(Simctl, HelpNamesEveryCommandAndRequest) {
  const Result result = after("--help");
  EXPECT_EQ(0, result.status);
  for (const char* text : {"show [BAND|IF]",
                           "channel BAND",
                           "noise|load|temperature BAND",
                           "station add IF",
                           "station remove IF",
                           "wps IF state N",
                           "wps IF pin N",
                           "wps IF status N",
                           "wps IF access",
                           "neighbour add BAND",
                           "neighbour remove BAND",
                           "process add NAME",
                           "process remove",
                           "press BUTTON",
                           "calibration BAND",
                           "chip-id N",
                           "fail REQUEST HOW",
                           "fail TOOL HOW",
                           "power-cut",
                           "fail none",
                           "reset",
                           "Examples:",
                           " stations,",
                           " probe-response-delete\n"}) {
    EXPECT_THAT(result.out, HasSubstr(text));
  }
  for (const std::string& line : lines_of(result.out)) EXPECT_LE(line.size(), 90U) << line;
}

TEST(Simctl, WorksInsideOnly) {
  const std::string tools =
      std::filesystem::path(gateway_sim_program()).parent_path().parent_path() / "libexec/gateway-sim/gateway-tools";
  const TestFolder folder;
  std::filesystem::create_symlink(tools, folder / "simctl");
  const Result outside = shell(folder / "simctl" + " show 2>&1");
  EXPECT_EQ(1, outside.status);
  EXPECT_EQ("simctl: works inside a simulated gateway only; gateway-sim starts one\n", outside.out);
  EXPECT_THAT(shell(folder / "simctl" + " --help").out, StartsWith("usage: simctl"));
}

TEST(Simctl, SaysWhatMakesNoSense) {
  struct {
    const char* words;
    const char* reason;
  } const kRows[] = {
      {"", "a command is missing"},
      {"frob", "no command frob"},
      {"channel 2.4G", "channel: a word is missing"},
      {"channel 2.4G 1 2", "channel: one word too many: 2"},
      {"channel 3G 1", "channel: no band is called 3G: 2.4g or 5g"},
      {"noise 5G", "noise: a word is missing"},
      {"noise 5G loud", "noise: not a noise level: loud (a number, or one after ~ to let it wander)"},
      {"noise 5G '~'", "noise: not a noise level: ~ (a number, or one after ~ to let it wander)"},
      {"noise 5G 4294967296", "noise: not a noise level: 4294967296 (a number, or one after ~ to let it wander)"},
      {"noise 5G ' 1'", "noise: not a noise level:  1 (a number, or one after ~ to let it wander)"},
      {"load 5G 1x", "load: not a channel load: 1x (a number, or one after ~ to let it wander)"},
      {"temperature 5G ''", "temperature: not a temperature:  (a number, or one after ~ to let it wander)"},
      {"station", "station: a word is missing"},
      {"station frob", "station: unknown: frob (known: add, remove)"},
      {"station add ra0", "station: a word is missing"},
      {"station add eth0 02:00:00:00:00:01", "station: no radio has an interface eth0: ra0 to ra7, rai0 to rai7"},
      {"station add ra0 02:00:00:00:00", "station: not a hardware address: 02:00:00:00:00"},
      {"station add ra0 02:00:00:00:00:0g", "station: not a hardware address: 02:00:00:00:00:0g"},
      {"station add ra0 01:00:00:00:00:01", "station: no station can have that address: 01:00:00:00:00:01"},
      {"station add ra0 00:00:00:00:00:00", "station: no station can have that address: 00:00:00:00:00:00"},
      {"station add ra0 02:00:00:00:00:01 x=1",
       "station: unknown: x=1 (known: aid=, signal=, rate=, rrm=, btm=, valid=, marker=)"},
      {"station add ra0 02:00:00:00:00:01 aid",
       "station: unknown: aid (known: aid=, signal=, rate=, rrm=, btm=, valid=, marker=)"},
      {"station add ra0 02:00:00:00:00:01 aid=2008", "station: not a aid from 0 to 2007: 2008"},
      {"station add ra0 02:00:00:00:00:01 rrm=12", "station: rrm takes 16 hexadecimal digits: 12"},
      {"station add ra0 02:00:00:00:00:01 btm=1", "station: btm takes 2 hexadecimal digits: 1"},
      {"station remove ra0 02:00:00:00:00:01 x", "station: one word too many: x"},
      {"wps ra0 state", "wps: a word is missing"},
      {"wps ra0 frob 1", "wps: unknown: frob (known: state, pin, status, access)"},
      {"wps ra0 state -1", "wps: not a state from 0 to 4294967295: -1"},
      {"wps ra0 state 3 peer", "wps: a word is missing"},
      {"wps ra0 state 3 friend 02:00:00:00:00:01", "wps: unknown: friend"},
      {"wps ra0 pin 4294967296", "wps: not a PIN from 0 to 4294967295: 4294967296"},
      {"wps ra0 status 65536", "wps: not a status from 0 to 65535: 65536"},
      {"wps ra0 access ''", "wps: an access list is missing"},
      {"wps ra0 access x", "wps: not a hardware address: x"},
      {"neighbour add 5G 02:00:00:00:00:01 channel=197", "neighbour: not a channel from 0 to 196: 197"},
      {"neighbour add 5G 02:00:00:00:00:01 wps=2", "neighbour: not a wps from 0 to 1: 2"},
      {"neighbour add 5G 02:00:00:00:00:01 security='a b'", "neighbour: a security is one word: a b"},
      {"neighbour add 5G 02:00:00:00:00:01 ssid=abcdefghijklmnopqrstuvwxyz0123456",
       "neighbour: an SSID has at most 32 bytes: abcdefghijklmnopqrstuvwxyz0123456"},
      {"process add 12345678901234567 1",
       "process: a process's name is one word of at most 16 characters: 12345678901234567"},
      {"process add p x", "process: not a process id from 0 to 4294967295: x"},
      {"process add p 1 running=256", "process: not a running from 0 to 255: 256"},
      {"press nose", "press: no button nose (known: wlan, wps, wps5g, wlan11ac, wlan-wps)"},
      {"press wps ''", "press: a press leaves 1 to 4095 bytes"},
      {"calibration 5G", "calibration: a word is missing"},
      {"calibration 5G chip=", "calibration: not a chip id from 0 to 65535: 0x"},
      {"calibration 5G chip=17915", "calibration: not a chip id from 0 to 65535: 0x17915"},
      {"chip-id x", "chip-id: not a package id from 0 to 2147483647: x"},
      {"fail", "fail: a word is missing"},
      {"fail frob EIO", "fail: no request is called frob"},
      {"fail channel", "fail: a word is missing"},
      {"fail channel EFROB", "fail: no error is called EFROB"},
      {"fail channel slow=x", "fail: not a time in seconds: x"},
      {"fail channel slow=60.1", "fail: a time has at most 60 seconds: 60.1"},
      {"fail channel slow=0", "fail: a wait of no time changes nothing"},
      {"fail noise cut=65536", "fail: not a number of bytes from 0 to 65535: 65536"},
      {"fail noise EIO cut=1", "fail: what fails has no answer to cut"},
      {"fail noise frob=1", "fail: unknown: frob= (known: slow=, cut=)"},
      {"fail noise slow=1 EIO", "fail: no radio has an interface EIO"},
      {"fail channel 0", "fail: no error is called 0"},
      {"fail channel EIO eth0", "fail: no radio has an interface eth0"},
      {"fail channel EIO 0", "fail: the count comes last, from 1 on: 0"},
      {"fail channel EIO 1 ra0", "fail: the count comes last, from 1 on: 1"},
      {"fail channel EIO ra0 x", "fail: not a count: x"},
      {"fail oid:65536 EIO", "fail: not a OID from 0 to 65535: 65536"},
      {"fail none EIO", "fail: one word too many: EIO"},
      {"reset all", "reset: one word too many: all"},
      {"show ra0 ra1", "show: one word too many: ra1"},
      {"show all", "show: no band is called all: 2.4g or 5g"},
  };
  std::string script;
  for (const auto& row : kRows) script += std::string("simctl ") + row.words + " 2>&1; echo $?; ";
  const Words lines = lines_of(run_script(script).out);
  ASSERT_EQ(3 * std::size(kRows), lines.size());
  for (size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(std::string("simctl: ") + kRows[i].reason, lines[3 * i]) << kRows[i].words;
    EXPECT_EQ("Try 'simctl --help'.", lines[3 * i + 1]);
    EXPECT_EQ("2", lines[3 * i + 2]) << kRows[i].words;
  }
}

TEST(Simctl, SaysWhatTheGatewayCannotHave) {
  struct {
    const char* words;
    const char* reason;
  } const kRows[] = {
      {"channel 2.4G 197", "channel: the driver says: invalid argument"},
      {"channel 2.4G x", "channel: the driver says: invalid argument"},
      {"station add ra7 02:00:00:00:00:01", "station: the 2.4G radio has no ra7, only ra0 ra1"},
      {"station add wds0 02:00:00:00:00:01", "station: the 2.4G radio has no wds0, only ra0 ra1"},
      {"station remove ra0 02:00:00:00:00:01", "station: ra0 has no station 02:00:00:00:00:01"},
      {"neighbour remove 5G 02:00:00:00:00:01", "neighbour: no neighbour 02:00:00:00:00:01"},
      {"process remove p", "process: the driver has no process p"},
      {"calibration 5G /none", "calibration: cannot open /none: No such file or directory"},
      {"fail channel cut=1", "fail: that answer lies in the request itself and cannot be cut"},
      {"fail 0x8b06 EIO", "fail: the driver does not answer 0x8b06: 0x8B01, 0x8B05, 0x8BE0 to 0x8BFF"},
  };
  std::string script;
  for (const auto& row : kRows) script += std::string("simctl ") + row.words + " 2>&1; echo $?; ";
  const Words lines = lines_of(run_script(script).out);
  ASSERT_EQ(2 * std::size(kRows), lines.size());
  for (size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(std::string("simctl: ") + kRows[i].reason, lines[2 * i]);
    EXPECT_EQ("1", lines[2 * i + 1]) << kRows[i].words;
  }
}

TEST(Simctl, NeedsTheDriver) {
  const Result result = run_script(
      "rmmod mt7603eap; for c in 'noise 2.4G 1' 'station add ra0 02:00:00:00:00:01' 'neighbour remove 2.4G all'; do"
      " simctl $c 2>&1; echo $?; done; simctl show | head -n 1; simctl noise 5G 1; echo $?",
      {"--chips", "7603"});
  EXPECT_EQ(
      "simctl: noise: the 2.4G driver is not loaded\n1\nsimctl: station: the 2.4G driver is not loaded\n1\n"
      "simctl: neighbour: the 2.4G driver is not loaded\n1\n2.4G radio: no driver\n0\n",
      result.out);
}

TEST(Simctl, ShowsEverything) {
  const Result result = after("show");
  EXPECT_EQ(0, result.status);
  for (const char* text : {"2.4G radio: channel 6, noise ~-92 dBm, load ~38 %, temperature ~54 C, WPS status 0\n",
                           "  ra0: \"Gateway-Home\", WPS state 1, PIN 28102403, peer -\n",
                           "  station 02:5a:10:24:00:11 on ra0: aid 8, signal -",
                           "5G radio: channel 36, noise ~-95 dBm, load ~12 %, temperature ~58 C, WPS status 0\n",
                           "  neighbour 02:6e:40:50:00:03: channel 100, signal -", "process steerd: 412, running\n",
                           "process scand: 0, not running\n", "package id: 24\n"}) {
    EXPECT_THAT(result.out, HasSubstr(text));
  }
}

TEST(Simctl, ShowsOneBandOrInterface) {
  const Result band = run_script("simctl show 5G; simctl show 5");
  EXPECT_THAT(band.out, StartsWith("5G radio"));
  EXPECT_THAT(band.out, testing::Not(HasSubstr("2.4G radio")));
  EXPECT_THAT(band.out, testing::Not(HasSubstr("process")));
  const Result interface = run_script(
      "simctl station add ra1 02:00:00:00:00:01 signal=-50 marker=0x100; simctl wps ra1 access 02:00:00:00:00:02;"
      "simctl show ra1 | sed 's/for [0-9]* s/for a while/'");
  EXPECT_EQ(
      "2.4G radio: channel 6, noise ~-92 dBm, load ~38 %, temperature ~54 C, WPS status 0\n"
      "  ra1: \"Gateway-Guest\", WPS state 1, PIN 28102410, peer -\n    WPS access list 02:00:00:00:00:02\n"
      "  station 02:00:00:00:00:01 on ra1: aid 10, signal -50 (-50) dBm, 144 Mbit/s, for a while, valid 1, marker "
      "0x0100\n",
      interface.out);
}

TEST(Simctl, JournalsWhatItChanges) {
  const Result result = run_script(
      "{ simctl channel 2.4G 11; simctl channel 2.4G 11; simctl noise 5G -88; simctl load 5G ~20; simctl temperature "
      "5G 70;"
      "simctl station add ra1 02:00:00:00:00:01; simctl station add ra1 02:00:00:00:00:01 rate=1;"
      "simctl station remove ra1 all; simctl station remove ra1 all; simctl wps ra0 state 2; simctl wps ra0 pin 1;"
      "simctl wps ra0 status 3; simctl wps ra0 access 02:00:00:00:00:01; simctl wps ra0 access none;"
      "simctl neighbour add 5G 02:00:00:00:00:01; simctl neighbour add 5G 02:00:00:00:00:01;"
      "simctl neighbour remove 5G 02:00:00:00:00:01; simctl process add p 1; simctl process add p 2; simctl process "
      "remove p;"
      "simctl press wps; simctl calibration 5G chip=7916; simctl chip-id -3; simctl show; simctl frob; simctl reset; }"
      " >/dev/null 2>&1; cut -f3 /run/gateway-sim/journal");
  EXPECT_EQ(
      "2.4G radio: Channel 6 -> 11\n-\n5G radio: Noise ~-95 -> -88\n5G radio: ChannelLoad ~12 -> ~20\n"
      "5G radio: Temperature ~58 -> 70\nra1: station 02:00:00:00:00:01 associated\n"
      "ra1: station 02:00:00:00:00:01 changed\nra1: station 02:00:00:00:00:01 left\n-\nra0: WpsState 1 -> 2\n"
      "ra0: WpsPin 28102403 -> 1\n2.4G radio: WpsStatus 0 -> 3\nra0: WpsAccessList none -> 02:00:00:00:00:01\n"
      "ra0: WpsAccessList 02:00:00:00:00:01 -> empty\n5G radio: neighbour 02:00:00:00:00:01 appeared\n"
      "5G radio: neighbour 02:00:00:00:00:01 changed\n5G radio: neighbour 02:00:00:00:00:01 gone\n"
      "driver: process p added\ndriver: process p changed\ndriver: process p removed\nwps button: pressed, 1\n"
      "reservearea: calibration image of the 5G radio written\nchip_id: -3\n-\n-\ndriver and board as after a boot\n",
      result.out);
}

TEST(Simctl, ResetBringsEverythingBack) {
  const Result result = run_script(
      "simctl show | sed 's/for [0-9]* s//; s/signal -[0-9]*//' >before; simctl channel 2.4G 3; simctl noise 2.4G 1;"
      "simctl station remove ra0 all; simctl neighbour remove 5G all; simctl process remove all; simctl wps ra0 state "
      "4;"
      "simctl fail noise EIO; simctl press wps; simctl chip-id 7; iwpriv rai0 set SSID=other; " +
      ask_oid("ra0", "9220", 1, "01 0") +
      "simctl reset; simctl show | sed 's/for [0-9]* s//; s/signal -[0-9]*//' >after; cmp before after && echo same;"
      "cat /proc/zq2810/wps_button; ifconfig ra0 | grep -c UP");
  EXPECT_EQ("\nsame\n1\n", result.out);
}

TEST(Simctl, StateOfARadioGoesWithItsDriver) {
  const Result result = run_script(
      "simctl noise 2.4G 1; simctl noise 5G 1; rmmod mt7603eap;"
      "ls /run/gateway-sim/lists /run/gateway-sim/driver; insmod /lib/modules/4.4.115/mt7603eap.ko;"
      "simctl show | grep -E '^[25]|on ra0'|cut -c1-38",
      {"--chips", "7603"});
  EXPECT_THAT(result.out, testing::Not(HasSubstr("stations-ra\n")));
  EXPECT_THAT(result.out, HasSubstr("2.4G radio: channel 6, noise ~-92 dBm,"));
  EXPECT_THAT(result.out, HasSubstr("5G radio: channel 36, noise 1 dBm"));
  EXPECT_THAT(result.out, testing::Not(HasSubstr("on ra0")));
}

TEST(Calibration, PutsAnImageWhereTheGatewayReadsIt) {
  const Result result = run_script(
      "simctl calibration 2.4G chip=7915; simctl calibration 5G chip=7663;"
      "mtd readflash a 131072 2621440 reservearea; mtd readflash b 131072 131072 reservearea;"
      "od -An -tx1 -N12 a; od -An -tx1 -N12 b; wc -c <a; mtd readflash c 4 0x2a0000 reservearea; od -An -tx1 c");
  EXPECT_EQ(" 15 79 01 00 02 28 10 24 00 00 ff ff\n 63 76 01 00 02 28 10 50 00 00 ff ff\n131072\n ff ff ff ff\n",
            result.out);
}

TEST(Calibration, TakesAFileAndNothingOfAnOlderOne) {
  const Result result = run_script(
      "printf 'abcdefgh' >new; simctl calibration 5G new; printf xyz >new; simctl calibration 5G new;"
      "mtd readflash a 9 131072 reservearea; od -An -c a; head -c 131072 /dev/zero >large; simctl calibration 5G large;"
      "echo $?; echo >>large; simctl calibration 5G large; echo $?; reboot; mtd readflash a 2 131072 reservearea;"
      "od -An -tx1 a; : >empty; simctl calibration 5G empty; mtd readflash a 2 131072 reservearea; od -An -tx1 a");
  EXPECT_EQ("   x   y   z 377 377 377 377 377 377\n0\n1\n 00 00\n ff ff\n", result.out);
}

TEST(ChipId, ReplacesThePackageId) {
  EXPECT_EQ("29\n-1\n0\n",
            run_script("cd /proc/zq2810; for i in 29 -1 0; do simctl chip-id $i; cat chip_id; done").out);
}

}  // namespace
}  // namespace sim_test
