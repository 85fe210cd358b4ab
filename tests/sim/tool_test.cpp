// The stand-ins, the recorders and the journal.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <regex>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

// Prints the journal's command lines and changes.
constexpr char kJournal[] = "; cut -f2- /run/gateway-sim/journal";

std::string journal_after(const std::string& script, const Words& options = {}) {
  return run_script("{ " + script + "; } >/dev/null 2>&1" + kJournal, options).out;
}

TEST(Journal, HasOneStampedLineForEachCallInOrder) {
  const TestFolder folder;
  const std::string path = folder / "calls";
  write_file(path, "old content\n");
  run_script("ifconfig ra1 down; brctl delif br-lan ra1; iwpriv ra1 set HideSSID=1; ifconfig ra1 up",
             {"--journal", path});
  const std::vector<Words> journal = journal_of(path);
  ASSERT_EQ(journal.size(), 4U);
  const std::regex stamp("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}Z");
  for (const Words& line : journal) {
    ASSERT_THAT(line, SizeIs(3));
    EXPECT_TRUE(std::regex_match(line[0], stamp)) << line[0];
  }
  EXPECT_EQ(journal[0][1], "ifconfig ra1 down");
  EXPECT_EQ(journal[0][2], "ra1: up -> down");
  EXPECT_EQ(journal[1][1], "brctl delif br-lan ra1");
  EXPECT_EQ(journal[1][2], "ra1: left br-lan");
  EXPECT_EQ(journal[2][2], "ra1: HideSSID 0 -> 1");
  EXPECT_EQ(journal[3][2], "ra1: down -> up");
  struct stat status;
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0644U);
}

TEST(Journal, IsInsideUnderBothNames) {
  const TestFolder folder;
  const std::string path = folder / "calls";
  const Result result =
      run_in("/", {"--journal", path, "--", "sh", "-c",
                   "ifconfig lo >/dev/null; cmp " + path + " /run/gateway-sim/journal && cut -f2 " + path});
  EXPECT_EQ(result.out, "ifconfig lo\n");
}

TEST(Journal, QuotesWhatAShellWouldSplit) {
  EXPECT_EQ(journal_after(R"(iwpriv ra1 set "SSID=a b'c"; iwpriv ra1 set 'WPAPSK=$x;"'; iwpriv ra1 "")"),
            "iwpriv ra1 set 'SSID=a b'\\''c'\tra1: SSID Gateway-Guest -> a b'c\n"
            "iwpriv ra1 set 'WPAPSK=$x;\"'\tra1: WPAPSK sample-passphrase-2 -> $x;\"\n"
            "iwpriv ra1 ''\t-\n");
  EXPECT_EQ(journal_after("iwpriv ra1 set \"$(printf 'SSID=a\\tb\\nc')\""),
            "iwpriv ra1 set $'SSID=a\\x09b\\x0ac'\tra1: SSID Gateway-Guest -> $'a\\x09b\\x0ac'\n");
}

TEST(Journal, KeepsConcurrentCallsWhole) {
  const Result result = run_script(
      "for i in 1 2 3 4 5 6 7 8; do (for j in 1 2 3 4 5; do iwpriv ra0 set K$i=$j; done) & done; wait;"
      "awk -F '\\t' 'NF != 3' /run/gateway-sim/journal; wc -l </run/gateway-sim/journal;"
      "iwpriv ra0 show | grep -c '^K[1-8]=5'");
  EXPECT_EQ(result.out, "40\n8\n");
}

TEST(Recorder, PassesTheRealToolsAnswerThrough) {
  const Result result = run_script(
      "brctl delif br0 ra0; echo $?; ifconfig nosuch; echo $?; ifconfig lo | head -1; /sbin/ifconfig ra0 up; echo $?");
  EXPECT_EQ(result.out, "1\n1\nlo: flags=73<UP,LOOPBACK,RUNNING>  mtu 65536\n0\n");
  EXPECT_THAT(result.err, HasSubstr("device ra0 is not a port of br0"));
  EXPECT_THAT(result.err, HasSubstr("nosuch"));
}

TEST(Recorder, TellsWhatTheKernelChanged) {
  EXPECT_EQ(journal_after("/sbin/ifconfig wds0 up; brctl addif br0 wds0; brctl addif br0 wds0;"
                          "ifconfig ra1 10.0.0.1; brctl addbr br9; brctl delbr br9; ifconfig -a"),
            "/sbin/ifconfig wds0 up\twds0: down -> up\n"
            "brctl addif br0 wds0\twds0: joined br0\n"
            "brctl addif br0 wds0\t-\n"
            "ifconfig ra1 10.0.0.1\tra1: address none -> 10.0.0.1/8\n"
            "brctl addbr br9\tbr9: created\n"
            "brctl delbr br9\tbr9: gone\n"
            "ifconfig -a\t-\n");
}

// The kernel leaves the queue length to the machine's own root, whatever the user is inside.
TEST(Recorder, TellsOfAQueueLengthWhereTheKernelChangesIt) {
  EXPECT_EQ(journal_after("ifconfig ra0 txqueuelen 5"), is_machines_root()
                                                            ? "ifconfig ra0 txqueuelen 5\tra0: txqueuelen 1000 -> 5\n"
                                                            : "ifconfig ra0 txqueuelen 5\t-\n");
}

TEST(Iwpriv, KeepsSettingsPerInterface) {
  const Result result = run_script(
      "iwpriv ra0 set AuthMode=OPEN; iwpriv ra0 set New=x=y; iwpriv ra0 set WscStop;"
      "iwpriv ra0 show | grep -E '^(AuthMode|New|WscStop)'; iwpriv ra1 show | grep -E '^(AuthMode|SSID|New)'");
  EXPECT_EQ(result.out, "AuthMode=OPEN\nNew=x=y\nWscStop=\nAuthMode=WPA2PSK\nSSID=Gateway-Guest\n");
}

TEST(Iwpriv, TakesAValueByteForByte) {
  for (const char* value :
       {"a\nb", "a\r\nb\r", "\n", "\\", "\\n", "\\\\n\n\\", " a  b ", "\t", "a=b;c", "\"$`'*", "\x80\xff\xc3\xa4"}) {
    SCOPED_TRACE(testing::PrintToString(value));
    std::string word = std::string("SSID=") + value;
    for (size_t at = 0; (at = word.find('\'', at)) != std::string::npos; at += 4) word.replace(at, 1, "'\\''");
    const Result result =
        run_script("iwpriv ra1 set '" + word + "'; iwpriv ra1 set Other=1; iwpriv ra1 show; iwpriv ra0 show");
    EXPECT_EQ("", result.err);
    EXPECT_THAT(result.out, HasSubstr(std::string("\nSSID=") + value + "\n"));
    EXPECT_THAT(result.out, HasSubstr("\nSSID=Gateway-Home\n"));
  }
}

TEST(Iwpriv, RefusesAKeyWithALineEnd) {
  EXPECT_EQ(run_script("iwpriv ra0 set 'New\nKey=1'; echo $?; iwpriv ra0 show | grep -c New").out, "255\n0\n");
}

TEST(Iwpriv, ChannelMovesTheRadio) {
  const Result result = run_script(
      "iwpriv ra0 set Channel=11; iwpriv ra1 show | grep Channel=; iwpriv rai0 show | grep Channel=;"
      "iwpriv ra1 set Channel=0; iwpriv ra0 show | grep Channel=; iwpriv rai1 set Channel=0;"
      "iwpriv rai0 show | grep Channel=; grep Channel= /run/gateway-sim/driver/rai1");
  EXPECT_EQ(result.out, "Channel=11\nChannel=36\nChannel=6\nChannel=36\nChannel=36\n");
}

TEST(Iwpriv, RefusesWhatTheDriverWould) {
  const Result result = run_script(
      "for c in 'ra5 set Channel=1' 'nosuch show' 'br-lan show' 'wds0 show' 'ra0 set Channel=x' 'ra0 set Channel='"
      " 'ra0 set =x' 'ra0 frob' 'ra0 set' 'nosuch'; do iwpriv $c; echo $?; done; iwpriv ra0 show | grep Channel=");
  EXPECT_EQ(result.out, "255\n255\n255\n255\n255\n255\n255\n255\n255\n255\nChannel=6\n");
  EXPECT_THAT(result.err, HasSubstr("ra5       no private ioctls.\n"));
  EXPECT_THAT(result.err, HasSubstr("br-lan    no private ioctls.\n"));
  EXPECT_THAT(result.err, HasSubstr("Interface doesn't accept private ioctl...\nset (8BE2): Invalid argument\n"));
}

TEST(Iwpriv, NamesACommandThatItDoesNotKnow) {
  const Result result = run_script("iwpriv ra0 frob; echo $?; iwpriv ra0 ''; iwpriv ra0 Set Channel=1");
  EXPECT_EQ("255\n", result.out);
  EXPECT_EQ("Invalid command : frob\nInvalid command : \nInvalid command : Set\n", result.err);
}

TEST(Iwpriv, ListsItsCommands) {
  const Result result = run_script("iwpriv rai1; echo $?");
  EXPECT_EQ(
      "rai1      Available private ioctls :\n"
      "          set              (8BE2) : set 1024 char  & get   0      \n"
      "          stat             (8BE9) : set   0       & get  56 byte \n"
      "          get_site_survey  (8BED) : set   0       & get 2047 char \n"
      "          show             (8BF1) : set   0       & get 2047 char \n"
      "\n0\n",
      result.out);
}

TEST(Iwpriv, ListsTheCommandsOfAllInterfaces) {
  const Result result = run_script("iwpriv; echo $?");
  for (const char* name : {"ra0 ", "ra1 ", "rai0", "rai1"})
    EXPECT_THAT(result.out, HasSubstr(std::string(name) + "      Av"));
  EXPECT_THAT(result.out, testing::EndsWith("\n0\n"));
  for (const char* name : {"lo    ", "br-lan", "wds0  "}) {
    EXPECT_THAT(result.err, HasSubstr(std::string(name) + "    no private ioctls.\n"));
  }
}

TEST(Iwpriv, SetsWithThePermissionToAdministerTheNetworkAlone) {
  const Result result = run_script(
      "without='setpriv --bounding-set=-net_admin --inh-caps=-net_admin'; $without iwpriv ra0 set Channel=3; echo $?;"
      "iwpriv ra0 show | grep Channel=; $without iwpriv ra0 show | grep Channel=; $without iwpriv ra0 stat | head -n 1;"
      "simctl fail 0x8be2 EBUSY 1; iwpriv ra0 set Channel=3; echo $?");
  EXPECT_EQ("255\nChannel=6\nChannel=6\nStations        = 2\n255\n", result.out);
  EXPECT_THAT(result.err, HasSubstr("set (8BE2): Operation not permitted\n"));
  EXPECT_THAT(result.err, HasSubstr("set (8BE2): Device or resource busy\n"));
}

// In a user namespace there is only one user.
TEST(Tools, WorkForAnotherUserWithThePermissionToAdministerTheNetwork) {
  const std::string other = is_machines_root() ? "setpriv --reuid=65534 --regid=65534 --clear-groups"
                                                 " --inh-caps=+net_admin --ambient-caps=+net_admin "
                                               : "";
  EXPECT_EQ(journal_after(other + "iwpriv ra1 set Channel=3; " + other + "ifconfig ra1 down; " + other +
                          "brctl delif br-lan ra1"),
            "iwpriv ra1 set Channel=3\t2.4G radio: Channel 6 -> 3\n"
            "ifconfig ra1 down\tra1: up -> down\n"
            "brctl delif br-lan ra1\tra1: left br-lan\n");
}

// The user's own journal keeps its mode.
TEST(Tools, DoWithoutTheJournalThatTheyMayNotWrite) {
  const TestFolder folder;
  const std::string as_other = is_machines_root() ? "setpriv --reuid=65534 --regid=65534 --clear-groups" : "";
  const Result result = run_script(as_other + " ifconfig ra1 >/dev/null; echo $?", {"--journal", folder / "calls"});
  EXPECT_EQ("0\n", result.out);
  EXPECT_EQ(is_machines_root() ? "" : "ifconfig ra1\t-\n", shell("cut -f2- " + folder.path() + "/calls").out);
}

TEST(Driver, AnswersWirelessRequests) {
  const std::string probe = wireless_probe_program();
  const Result result = run_script(probe + " ra0; iwpriv ra1 set Channel=13; " + probe + " ra0; " + probe + " rai1");
  EXPECT_EQ(result.out, "IEEE 802.11\n6\nIEEE 802.11\n13\nIEEE 802.11\n36\n");
}

TEST(Driver, AnswersForItsInterfacesAlone) {
  const std::string probe = wireless_probe_program();
  const Result result = run_script("for i in ra7 br-lan lo wds0 ra ra0x nosuch; do " + probe + " $i; done");
  const Words lines = lines_of(result.out);
  ASSERT_THAT(lines, SizeIs(7));
  for (const std::string& line : lines) EXPECT_THAT(line, testing::StartsWith("E"));
  EXPECT_EQ(run_script("rmmod mt7603eap; " + probe + " ra0; " + probe + " rai0", {"--chips", "7603"}).out.substr(0, 1),
            "E");
}

TEST(Driver, StartsFromTheDatFile) {
  const TestFolder folder;
  write_file(folder / "24.dat", dat_text(2, "1;0", "Channel=9\nSSID2=second\nAuthMode=OPEN;WPAPSK\r\n"));
  write_file(folder / "5.dat", dat_text(1, "1", "Channel=0\n"));
  const Result result = run_script(wireless_probe_program() + " ra0; " + wireless_probe_program() +
                                       " rai0; iwpriv ra1 show | grep -vE '^(Noise|ChannelLoad|Temperature|Wps)'",
                                   {"--dat24", folder / "24.dat", "--dat5", folder / "5.dat"});
  EXPECT_EQ(result.out, "IEEE 802.11\n9\nIEEE 802.11\n36\nAuthMode=WPAPSK\nChannel=9\nEnableSSID=0\nSSID=second\n");
}

TEST(Wscd, StaysUntilItIsKilled) {
  const Result result = run_script(
      "/usr/bin/wscd -i ra0 -a 192.168.2.1 -m 1; tr '\\0' ' ' </proc/$(pidof wscd)/cmdline; echo;"
      "pid=$(pidof wscd); killall -9 wscd; echo $?; while [ -e /proc/$pid/stat ]; do :; done; killall wscd; echo "
      "$?");
  EXPECT_EQ(result.out, "/usr/bin/wscd -i ra0 -a 192.168.2.1 -m 1 \n0\n1\n");
  EXPECT_EQ(result.err, "wscd: no process found\n");
}

TEST(Killall, TakesSignalsInEverySpelling) {
  for (const char* option : {"-9", "-KILL", "-SIGKILL", "-s KILL", ""}) {
    const Result result =
        run_script(std::string("sleep 1000 & until grep -q sleep /proc/$!/comm; do :; done; killall ") + option +
                   " sleep; echo $?; wait $!; echo $?");
    const std::string expected = *option == '\0' ? "0\n143\n" : "0\n137\n";
    EXPECT_EQ(result.out, expected) << option;
  }
}

TEST(Killall, StaysInsideTheSimulation) {
  Simulation outside({"--", "sh", "-c", "echo ready; exec sleep 1000"});
  outside.wait_for_output("ready");
  EXPECT_EQ(run_script("killall -9 sleep; echo $?").out, "1\n");
  EXPECT_EQ(kill(outside.pid(), 0), 0);
}

TEST(Killall, RefusesNonsense) {
  EXPECT_EQ(run_script("killall; echo $?; killall -NONSENSE x; echo $?; killall -q nobody-home; echo $?").out,
            "1\n1\n1\n");
  EXPECT_EQ(journal_after("killall -9 nobody-home"), "killall -9 nobody-home\t-\n");
}

TEST(Mtd, RoundTrip) {
  const Result result = run_script(
      "printf abcdef > f; mtd writeflash f 4 0x280000 reservearea; mtd readflash /tmp/o 6 2621440 reservearea;"
      "od -An -c /tmp/o; mtd readflash /tmp/o 2 0x27fffe reservearea; od -An -tx1 /tmp/o;"
      "reboot; mtd readflash /tmp/o 2 2621441 reservearea; cat /tmp/o");
  EXPECT_EQ(result.out, "   a   b   c   d 377 377\n ff ff\nbc");
}

TEST(Mtd, RefusesNonsense) {
  const Result result = run_script(
      "for c in '' 'readflash /tmp/o 1 2' 'readflash /tmp/o x 0 p' 'erase p' 'readflash /tmp/o 1 0 ../p'"
      " 'readflash /tmp/o 1 0x400000 p' 'readflash /tmp/o 0xffffffffffffffff 1 p' 'writeflash /tmp/none 1 0 p';"
      " do mtd $c; echo $?; done; ls /run/gateway-sim/flash");
  EXPECT_EQ(result.out, "2\n2\n2\n2\n2\n1\n1\n1\n");
}

TEST(Sys, RecordsRegisterWrites) {
  EXPECT_EQ(journal_after("sys memwl bfac030c 80000000; sys memwl bfac080c 0; sys memwl x y; sys"),
            "sys memwl bfac030c 80000000\tregister bfac030c: written 80000000\n"
            "sys memwl bfac080c 0\tregister bfac080c: written 00000000\n"
            "sys memwl x y\t-\n"
            "sys\t-\n");
}

}  // namespace
}  // namespace sim_test
