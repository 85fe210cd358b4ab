// The demo, as a newcomer starts it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string demo_command() {
  return source_folder() + "/examples/demo.sh " + build_folder();
}

class Demo : public testing::Test {
 protected:
  // What stands under the heading that begins so.
  std::string section(const std::string& heading) const {
    const size_t start = result_.out.find("\n== " + heading);
    if (start == std::string::npos) return "";
    const size_t text = result_.out.find('\n', start + 1) + 1;
    return result_.out.substr(text, result_.out.find("\n== ", text) - text);
  }

  // The table of interfaces under a heading: name, state and bridge of each.
  Words interfaces(const std::string& heading) const {
    Words found;
    std::istringstream stream(section(heading));
    for (std::string name, state, bridge; stream >> name >> state >> bridge;) {
      found.push_back(name + " " + state + " " + bridge);
    }
    return found;
  }

  // One run serves all tests: they only read what it printed.
  static const Result& ran() {
    static const Result result = shell(demo_command());
    return result;
  }

  const Result& result_ = ran();
};

TEST_F(Demo, RunsToItsEnd) {
  EXPECT_EQ(0, result_.status);
  EXPECT_THAT(result_.out, HasSubstr("\n== Done\n"));
}

// In the order in which they are typed; the folder of gateway-sim is on the shell's path.
TEST_F(Demo, EndsWithTheCommandsToGoOnWith) {
  size_t last = 0;
  for (const char* command :
       {"/bin/gateway-sim --shell\n", "  wlanctl status ", "  wlanctl set 2.4g SSID:1=Kitchen Channel=11\n",
        "  wlanctl apply 2.4g\n", "  simctl show ", "  simctl --help ", "  cat /run/gateway-sim/journal "}) {
    const size_t at = section("Done").find(command);
    ASSERT_NE(std::string::npos, at) << command;
    EXPECT_LE(last, at) << command;
    last = at;
  }
}

TEST_F(Demo, HasNoColourOffATerminal) {
  EXPECT_THAT(result_.out, testing::Not(HasSubstr("\033[")));
}

// Each heading in bold, those of the script and those of the program that it runs.
TEST_F(Demo, HasColourOnATerminal) {
  const Result on_terminal = shell("script -qec '" + demo_command() + "' /dev/null </dev/null");
  EXPECT_EQ(0, on_terminal.status);
  int headings = 0;
  for (const std::string& line : lines_of(result_.out)) {
    if (line.rfind("== ", 0) != 0) continue;
    ++headings;
    EXPECT_THAT(on_terminal.out, HasSubstr("\033[1m" + line + "\033[0m\r\n"));
  }
  EXPECT_GT(headings, 10);
}

TEST_F(Demo, ShowsRefusalsWithTheirReasons) {
  EXPECT_THAT(result_.out, HasSubstr("The input channel is invalid.Please input from 0 to 180\n"));
  EXPECT_THAT(result_.out, HasSubstr("The WirelessMode value for 5G is invalid.\n"));
}

TEST_F(Demo, ShowsEachAnswerOfTheComparison) {
  EXPECT_THAT(result_.out, HasSubstr("before: 0:"));
  EXPECT_THAT(result_.out, HasSubstr("the answer is now 1:"));
  EXPECT_THAT(result_.out, HasSubstr("the answer is now 2:"));
}

TEST_F(Demo, ShowsTheModuleBeingReloadedAndTheNewInterfaceUp) {
  EXPECT_THAT(result_.out, HasSubstr("insmod /lib/modules/4.4.115/mt7603eap.ko"));
  EXPECT_THAT(result_.out, HasSubstr("ra2: joined br-lan"));
}

TEST_F(Demo, ShowsWhatASecondProcessSees) {
  EXPECT_THAT(result_.out, HasSubstr("2.4G  SSID 1 \"Living Room\", channel 11, beacon period 250\n"));
  EXPECT_THAT(result_.out, HasSubstr("the 2.4G dat file says BeaconPeriod=100\n"));
}

TEST_F(Demo, ShowsTheExecuteScriptAndWhatTheDriverTookUp) {
  EXPECT_THAT(result_.out, HasSubstr("  /userfs/bin/iwpriv ra2 set SSID=\"Guests\"\n"));
  EXPECT_THAT(result_.out, HasSubstr("  SSID=Guests\n"));
}

TEST_F(Demo, ShowsANarrowRestartAndTheRadioOffAndOn) {
  EXPECT_THAT(result_.out, HasSubstr("== A narrow restart of 5G"));
  EXPECT_THAT(result_.out, HasSubstr("off:\n  ra0    down"));
  EXPECT_THAT(result_.out, HasSubstr("on:\n  ra0    up"));
}

TEST_F(Demo, ShowsWhatNormalisingChanged) {
  EXPECT_THAT(result_.out, HasSubstr("2.4G  before: TxPower=3 HT_OpMode=0 AutoChannelSelect=0\n"
                                     "2.4G  after:  TxPower=25 HT_OpMode=1 AutoChannelSelect=0\n"));
  EXPECT_THAT(result_.out, HasSubstr("5G    before: TxPower=80 HT_OpMode=0 AutoChannelSelect=0\n"
                                     "5G    after:  TxPower=80 HT_OpMode=0 AutoChannelSelect=3\n"));
}

TEST_F(Demo, ShowsWhatChangedInTheDatFiles) {
  EXPECT_EQ(
      "2.4g: /etc/Wireless/RT2860AP/RT2860AP.dat\n"
      "  Channel            6 -> 11\n"
      "  BssidNum           2 -> 3\n"
      "  SSID1              Gateway-Home -> Living Room\n"
      "  SSID3              Gateway-3 -> Guests\n"
      "  TxPower            100 -> 25\n"
      "  WmmCapable         1;1;1;1;1;1;1;1 -> 0;0;0\n"
      "  AuthMode           WPA2PSK;WPA2PSK;WPA2PSK;W... -> WPA2PSKWPA3PSK;WPA2PSK;WP...\n"
      "  WPAPSK1            sample-passphrase-1 -> correct horse battery\n"
      "  HT_OpMode          0 -> 1\n"
      "  WdsEnable          0 -> 1\n"
      "  WdsList            00:00:00:00:00:00;00:00:0... -> 02:00:00:00:10:01;00:00:0...\n"
      "  WdsEncrypType      AES;AES;AES;AES -> AES;NONE;NONE;NONE\n"
      "  Wds0Key            sample-link-1 -> a shared wds key\n"
      "  and 38 lists cut to the SSID count, 60 keys of SSIDs beyond it left out\n"
      "  and 31 comments and blank lines gone: a save writes what the store holds\n"
      "5g: /etc/Wireless/RT2860AP_AC/RT2860AP.dat\n"
      "  Channel            36 -> 0\n"
      "  AutoChannelSelect  0 -> 3\n"
      "  BssidNum           2 -> 1\n"
      "  SSID1              Gateway-Home-5G -> Living Room 5G\n"
      "  TxPower            100 -> 80\n"
      "  AuthMode           WPA2PSK;WPA2PSK;WPA2PSK;W... -> WPA3PSK\n"
      "  WPAPSK1            sample-passphrase-1 -> correct horse battery\n"
      "  WdsEnable          0 -> 1\n"
      "  and 40 lists cut to the SSID count, 84 keys of SSIDs beyond it left out\n"
      "  and 33 comments and blank lines gone: a save writes what the store holds\n",
      section("What changed in the dat files"));
}

TEST_F(Demo, ShowsTheInterfacesBeforeAndAfterTheCommit) {
  EXPECT_THAT(
      interfaces("The gateway after its boot"),
      ElementsAre("ra0 up br-lan", "ra1 up br-lan", "rai0 up br-lan", "rai1 up br-lan", "wds0 down -", "wds1 down -",
                  "wds2 down -", "wds3 down -", "wdsi0 down -", "wdsi1 down -", "wdsi2 down -", "wdsi3 down -"));
  EXPECT_THAT(interfaces("The radio interfaces now"),
              ElementsAre("ra0 up br-lan", "ra1 up br-lan", "ra2 up br-lan", "rai0 up br-lan", "wds0 up br-lan",
                          "wds1 up br-lan", "wds2 up br-lan", "wds3 up br-lan", "wdsi0 up br-lan", "wdsi1 up br-lan",
                          "wdsi2 up br-lan", "wdsi3 up br-lan"));
}

}  // namespace
}  // namespace sim_test
