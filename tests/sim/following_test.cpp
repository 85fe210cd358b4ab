// What the driver does when its interfaces come up and go down, and when a BSS changes under its stations.
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

constexpr char kHelpers[] =
    "dat() { sed -i \"$1\" /etc/Wireless/RT2860AP/RT2860AP.dat; };"
    "of() { iwpriv $1 show | grep -E \"^($2)=\"; };"
    "stations() { simctl show $1 | grep -c station; };";

std::string after(const std::string& script) {
  return run_script(kHelpers + script).out;
}

TEST(FirstBssUp, ReadsTheDatFile) {
  EXPECT_EQ("Channel=6\nChannel=6\nChannel=11\nSSID=Fresh\nChannel=11\nSSID=Gateway-Guest\n",
            after("dat 's/^Channel=.*/Channel=11/; s/^SSID1=.*/SSID1=Fresh/'; of ra0 Channel; ifconfig ra0 down;"
                  "ifconfig ra1 down; of ra0 Channel; ifconfig ra1 up; of ra0 'Channel|SSID'; of ra1 'Channel|SSID'"));
}

TEST(FirstBssUp, ReadsNothingWhileAnotherIsUp) {
  EXPECT_EQ("Channel=6\n",
            after("dat 's/^Channel=.*/Channel=11/'; ifconfig ra0 down; ifconfig ra0 up; of ra0 Channel"));
}

TEST(FirstBssUp, LeavesTheOtherRadioAlone) {
  EXPECT_EQ("Channel=100\n", after("iwpriv rai0 set Channel=100; ifconfig ra0 down; ifconfig ra1 down; ifconfig ra0 up;"
                                   "of rai0 Channel"));
}

TEST(FirstBssUp, IsNoWdsLink) {
  EXPECT_EQ("Channel=6\n", after("dat 's/^Channel=.*/Channel=11/'; ifconfig ra0 down; ifconfig ra1 down;"
                                 "ifconfig wds0 up; of ra0 Channel"));
}

TEST(FirstBssUp, ForgetsWhatWasSetButNotWhatIsMeasured) {
  EXPECT_EQ(
      "Channel=6\nNoise=-70\nWpsPin=12345670\nWpsState=1\n",
      after("iwpriv ra0 set Channel=3; iwpriv ra0 set New=1; simctl noise 2.4G -70; iwpriv ra0 set WscPinCode=12345670;"
            "iwpriv ra0 set WscGetConf=1; ifconfig ra0 down; ifconfig ra1 down; ifconfig ra0 up;"
            "of ra0 'Channel|Noise|New|WpsPin|WpsState|WscGetConf'"));
}

TEST(FirstBssUp, IsToldInTheJournal) {
  EXPECT_EQ("ra1: down -> up; 2.4G radio: Channel 6 -> 11; ra0: SSID Gateway-Home -> Fresh; ra1: New 1 -> none\n",
            after("iwpriv ra1 set New=1; dat 's/^Channel=.*/Channel=11/; s/^SSID1=.*/SSID1=Fresh/'; ifconfig ra0 down;"
                  "ifconfig ra1 down; ifconfig ra1 up; tail -n 1 /run/gateway-sim/journal | cut -f3"));
}

TEST(Stations, LeaveAnInterfaceThatGoesDown) {
  EXPECT_EQ(
      "2\n1\n0\n1\nra0: up -> down; ra0: station 02:5a:10:24:00:11 left; ra0: station 02:5a:10:24:00:12 left\n0\n",
      after("stations ra0; stations rai0; ifconfig ra0 down; stations ra0; stations rai0;"
            "grep 'ifconfig ra0' /run/gateway-sim/journal | cut -f3; ifconfig ra0 up; stations ra0"));
}

TEST(Stations, StayWhileTheirInterfaceStaysUp) {
  EXPECT_EQ("2\n",
            after("ifconfig ra1 down; ifconfig ra0 up; ifconfig ra0 mtu 1400; brctl delif br-lan ra0; stations ra0"));
}

TEST(Stations, LeaveABssThatIsAnotherNetworkNow) {
  for (const char* change : {"SSID=x", "AuthMode=WPA3PSK", "EncrypType=TKIP", "WPAPSK=another-one", "IEEE8021X=1",
                             "DefaultKeyID=3", "Key1=aaaaa", "Key4=aaaaa"}) {
    EXPECT_EQ("0\n1\n", after("simctl station add ra1 02:aa:bb:cc:dd:01; iwpriv ra0 set " + std::string(change) +
                              "; stations ra0; stations ra1"))
        << change;
  }
}

TEST(Stations, StayWhereNothingOfThatChanges) {
  EXPECT_EQ("2\n", after("iwpriv ra0 set SSID=Gateway-Home; iwpriv ra0 set HideSSID=1; iwpriv ra0 set Channel=3;"
                         "iwpriv ra1 set SSID=x; stations ra0"));
}

TEST(Stations, AreOnlyOnInterfacesThatAreUp) {
  EXPECT_EQ("0\n1\n2\n",
            after("ifconfig ra0 down; simctl reset; stations ra0; stations rai0; ifconfig ra0 up; simctl reset;"
                  "stations ra0"));
}

TEST(Stations, AreNotThereRightAfterADriverWasLoaded) {
  EXPECT_EQ("0\n3\n", run_script(std::string(kHelpers) +
                                     "rmmod mt7603eap; insmod /lib/modules/4.4.115/mt7603eap.ko; stations ra0;"
                                     "simctl show 2.4G | grep -c neighbour",
                                 {"--chips", "7603"})
                          .out);
}

}  // namespace
}  // namespace sim_test
