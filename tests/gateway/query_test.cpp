// The driver's queries through the library, against the simulated driver.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string probe(const std::string& steps) {
  return library_probe_program() + " " + steps + "; ";
}

Words answers(const std::string& script) {
  return lines_of(run_script(script).out);
}

TEST(Query, ChannelIsWhereTheRadioWasMoved) {
  EXPECT_THAT(answers("iwpriv ra0 set Channel=11; iwpriv rai1 set Channel=149; " +
                      probe("text UpdateChannel text UpdateChannelAC band-text wifimgr_lib_get_CHANNEL 0 "
                            "band-text wifimgr_lib_get_CHANNEL 1")),
              ElementsAre("UpdateChannel 11", "UpdateChannelAC 149", "wifimgr_lib_get_CHANNEL 0 11",
                          "wifimgr_lib_get_CHANNEL 0 149"));
}

TEST(Query, ChannelIs6WhenTheDriverFails) {
  EXPECT_THAT(answers("iwpriv rai0 set Channel=149; simctl fail channel EIO; " +
                      probe("text UpdateChannel text UpdateChannelAC band-text wifimgr_lib_get_CHANNEL 1")),
              ElementsAre("==>UpdateChannel: ioctl open fail", "UpdateChannel 6", "==>UpdateChannelAC: ioctl open fail",
                          "UpdateChannelAC 6", "==>UpdateChannel: ioctl open fail", "wifimgr_lib_get_CHANNEL -1 6"));
}

TEST(Query, ChannelComesBackAfterTheFault) {
  EXPECT_THAT(answers("simctl fail channel EIO ra0 1; " + probe("text UpdateChannel text UpdateChannel")),
              ElementsAre("==>UpdateChannel: ioctl open fail", "UpdateChannel 6", "UpdateChannel 6"));
}

TEST(Query, ChannelIsWaitedFor) {
  EXPECT_THAT(answers("iwpriv rai0 set Channel=149; simctl fail channel slow=0.05; " +
                      probe("text UpdateChannelAC band-text wifimgr_lib_get_CHANNEL 1")),
              ElementsAre("UpdateChannelAC 149", "wifimgr_lib_get_CHANNEL 0 149"));
}

TEST(Query, ChannelIs6WhenTheDriverFailsLate) {
  EXPECT_THAT(answers("iwpriv rai0 set Channel=149; simctl fail channel EIO slow=0.05; " +
                      probe("band-text wifimgr_lib_get_CHANNEL 1")),
              ElementsAre("==>UpdateChannel: ioctl open fail", "wifimgr_lib_get_CHANNEL -1 6"));
}

TEST(Query, ReadingsAreTheRadios) {
  EXPECT_THAT(answers("simctl noise 2.4G -90; simctl noise 5G -101; simctl load 2.4G 71; simctl load 5G 9;"
                      "simctl temperature 2.4G 61; simctl temperature 5G 4294967295; " +
                      probe("index-text wifimgr_lib_get_Noise 0 -1 index-text wifimgr_lib_get_Noise 1 -1 "
                            "index-text wifimgr_lib_get_chanLoad 0 -1 index-text wifimgr_lib_get_chanLoad 1 -1 "
                            "sized-text wifimgr_lib_get_BndstrgChanLoad 1 1 8 temperature 0 temperature 1")),
              ElementsAre("wifimgr_lib_get_Noise 0 -90", "wifimgr_lib_get_Noise 0 -101",
                          "wifimgr_lib_get_chanLoad 0 71", "wifimgr_lib_get_chanLoad 0 9",
                          "wifimgr_lib_get_BndstrgChanLoad 0 9", "temperature 0 61", "temperature 0 4294967295"));
}

TEST(Query, ReadingsFailWithTheDriver) {
  EXPECT_THAT(answers("simctl fail noise EIO; simctl fail load EIO; simctl fail temperature EIO; " +
                      probe("index-text wifimgr_lib_get_Noise 0 -1 index-text wifimgr_lib_get_chanLoad 1 -1 "
                            "sized-text wifimgr_lib_get_BndstrgChanLoad 1 1 8 temperature 0")),
              ElementsAre("wifimgr_lib_get_Noise 1 untouched", "wifimgr_lib_get_chanLoad 1 untouched",
                          "wifimgr_lib_get_BndstrgChanLoad 1 untouched", "temperature 1 99"));
}

TEST(Query, StationsAreListedPerSsid) {
  EXPECT_THAT(answers("simctl station add ra1 02:00:00:00:00:01; simctl station add rai0 02:00:00:00:00:02; " +
                      probe("stations 0 stations 1 stations 8 stations 9 stations 16")),
              ElementsAre("stations 2 025a10240011 025a10240012", "stations 1 020000000001",
                          "stations 2 025a10500021 020000000002", "stations 0", "stations 99"));
}

// The library asks on ra2, which the radio does not have.
TEST(Query, StationsOfAMissingSsidAreARefusal) {
  EXPECT_THAT(answers(probe("stations 2")),
              ElementsAre("==>getMacEntryByIndex(): XXXXXX ioctl open fail", "stations 99"));
}

TEST(Query, NoStationsLeaveTheListAlone) {
  EXPECT_THAT(answers("simctl station remove ra0 all; " + probe("stations 0")),
              ElementsAre("==>getMacEntryByIndex(): 7915 no sta existance", "stations 99"));
}

// The table says two stations; a list has those whose entries have come.
TEST(Query, StationsOfACutTableAreThoseInIt) {
  EXPECT_THAT(answers("for n in 88 57 48 8; do simctl fail stations cut=$n; " + probe("stations 0") + "done"),
              ElementsAre("stations 2 025a10240011 025a10240012", "stations 2 025a10240011 025a10240012",
                          "stations 1 025a10240011", "stations 0"));
}

TEST(Query, StationsOfAnEmptyAnswerAreNone) {
  EXPECT_THAT(answers("simctl fail stations cut=0; " + probe("stations 0")),
              ElementsAre("==>getMacEntryByIndex(): 7915 no sta existance", "stations 99"));
}

// What has not come reads as zero.
TEST(Query, CutAnswersAreReadAsFarAsTheyGo) {
  const Words lines = answers(
      "simctl noise 2.4G -90; simctl load 2.4G 71; simctl temperature 2.4G 61; simctl wps ra0 state 4 peer "
      "02:aa:bb:cc:dd:01; simctl wps ra0 access 02:11:22:33:44:55;"
      "for request in noise load temperature; do simctl fail $request cut=0; done; simctl fail wps-pin cut=1;"
      "simctl fail wps-peer cut=195; simctl fail wps-access cut=19; simctl fail processes cut=4; simctl fail 11v cut=0;"
      "simctl fail ap-count cut=0; simctl fail wps-status cut=0; simctl fail neighbours cut=4; " +
      probe("index-text wifimgr_lib_get_Noise 0 -1 index-text wifimgr_lib_get_chanLoad 0 -1 temperature 0 "
            "text UpdatePinCode session-of 0 0 access 0 0 aps 0 status 0 processes neighbours 0 "
            "station wifimgr_lib_get_Sta11vCap 0 1 025a10240011"));
  const std::string zeros(160, '0');
  EXPECT_THAT(lines,
              ElementsAre("wifimgr_lib_get_Noise 0 0", "wifimgr_lib_get_chanLoad 0 0", "temperature 0 0",
                          "UpdatePinCode 00000003", "session 0 4 02:AA:BB:00:00:00",
                          "access 0 00000000010000000000000000000000 021122000000=0 000000000000=0 000000000000=0",
                          "aps 0 " + zeros, "status 0 0", "processes 0 4",
                          "neighbours 0 3 000000000000 000000000000 000000000000", "wifimgr_lib_get_Sta11vCap 0 00"));
}

TEST(Query, StationTableFailsWithTheDriver) {
  EXPECT_THAT(answers("simctl fail stations EIO; " + probe("stations 8")),
              ElementsAre("==>getMacEntryByIndex(): XXXXXX ioctl open fail", "stations 99"));
}

TEST(Query, MarkersShowAStationTwiceOn2_4GAlone) {
  EXPECT_THAT(
      answers("for i in ra1 rai1; do simctl station add $i 02:00:00:00:00:01 marker=0x0101; " +
              probe("stations 1 stations 9") + "done"),
      ElementsAre("stations 2 020000000001 020000000001", "stations 0", "stations 0", "stations 1 020000000001"));
}

TEST(Query, MarkersStopTheList) {
  EXPECT_THAT(
      answers("simctl station add rai0 02:00:00:00:00:01 marker=0; simctl station add rai0 02:00:00:00:00:02; " +
              probe("stations 8")),
      ElementsAre("stations 1 025a10500021"));
}

TEST(Query, CapabilitiesAreTheStations) {
  EXPECT_THAT(
      answers("simctl station add rai1 02:00:00:00:00:01 rrm=0000000000000001 btm=5a; " +
              probe("station wifimgr_lib_get_Sta11kCap 1 2 020000000001 "
                    "station wifimgr_lib_get_Sta11vCap 1 2 020000000001 "
                    "station wifimgr_lib_get_Sta11kCap 0 1 025a10240012 "
                    "station wifimgr_lib_get_Sta11kCap 0 2 025a10240012 "
                    "station wifimgr_lib_get_Sta11vCap 0 1 020000000001")),
      ElementsAre("wifimgr_lib_get_Sta11kCap 0 01", "wifimgr_lib_get_Sta11vCap 0 5a", "wifimgr_lib_get_Sta11kCap 0 00",
                  "wifimgr_lib_get_Sta11kCap 1 ee", "wifimgr_lib_get_Sta11vCap 1 ee"));
}

TEST(Query, ApCountHidesTheDriversOwn) {
  const Words lines = answers("simctl neighbour add 5G 02:6e:40:50:00:02 signal=-60; " + probe("aps 1"));
  ASSERT_EQ(1U, lines.size());
  const std::string zeros20(40, '0');
  EXPECT_EQ("aps 0 0300000001000000c4ffffff2c00026e40500002" + zeros20 + std::string(80, '0'), lines[0]);
  EXPECT_THAT(answers("simctl fail ap-count EIO; " + probe("aps 0")),
              ElementsAre("==>getAPCount(): XXXXXX ioctl open fail", "aps -1 " + std::string(160, '0')));
}

TEST(Query, SurveyReportsNoNeighbours) {
  const std::string zeros(2 * 94, '0');
  const std::string label = "352e3247";
  EXPECT_THAT(answers(probe("survey 0 survey 1") + "cat /tmp/site_survey_ra0 | wc -l"),
              ElementsAre("survey 0 0 " + zeros, "survey 0 0 " + zeros, "6"));
  const Words empty =
      answers("simctl neighbour remove 2.4G all; simctl neighbour remove 5G all; " + probe("survey 0 survey 1"));
  ASSERT_EQ(2U, empty.size());
  EXPECT_THAT(empty[0], testing::StartsWith("survey 0 0 322e344700ee"));
  EXPECT_THAT(empty[1], testing::StartsWith("survey 0 0 354700eeee"));
}

TEST(Query, NeighbourTableIsTheBands) {
  EXPECT_THAT(answers("simctl neighbour add 2.4G 02:00:00:00:00:01; " + probe("neighbours 0 neighbours 1")),
              ElementsAre("neighbours 0 4 026e40240001 026e40240002 026e40240003 020000000001",
                          "neighbours 0 3 026e40500001 026e40500002 026e40500003"));
  EXPECT_THAT(answers("simctl fail neighbours EIO; " + probe("neighbours 0")), ElementsAre("neighbours 1 0"));
}

TEST(Query, PartialScanReachesTheDriver) {
  const Words lines =
      answers(probe("band wifimgr_lib_set_PartialScan 1") +
              "until grep -q heard /run/gateway-sim/journal; do :; done; cut -f2- /run/gateway-sim/journal");
  EXPECT_THAT(lines,
              ElementsAre("wifimgr_lib_set_PartialScan 0",
                          "/userfs/bin/iwpriv rai0 set PartialScan=1\trai0: PartialScan none -> 1; 5G radio: heard "
                          "3 neighbours"));
}

TEST(Query, ProcessesAreTheDriversAndTheService) {
  EXPECT_THAT(answers(probe("processes") + "echo $$ >/var/run/wlan_svc.pid; " + probe("processes") + "echo $$"),
              ElementsAre("processes 0 4 steerd=412/1 dot1xd=418/1 scand=0/0", HasSubstr("processes 0 4 wlan.svc="),
                          testing::_));
  EXPECT_THAT(
      answers("simctl process remove all; " + probe("processes") + "simctl fail processes EIO; " + probe("processes")),
      ElementsAre("processes 0 1", "processes 1 238"));
}

TEST(Query, StatisticsAndRequestsOfTheCallersOwn) {
  const Words lines = answers("simctl noise 2.4G -80; " +
                              probe("statistics ra1 56 ioctl 0x8BF2 ra0 768 oid 0x069C ra0 4 oid 0x0001 ra0 4 "
                                    "ioctl 0x8BFC wds0 80 statistics nosuch 56"));
  ASSERT_EQ(7U, lines.size());
  EXPECT_THAT(lines[0], testing::StartsWith("statistics 0 00000000b0ffffff"));
  EXPECT_EQ("ioctl 0 " + std::string(2 * 768, '0'), lines[1]);
  EXPECT_EQ("oid 0 b0ffffff", lines[2]);
  EXPECT_EQ("@@@ioctl fail\r", lines[3]);
  EXPECT_EQ("oid -1 00000000", lines[4]);
  EXPECT_EQ("ioctl -1 " + std::string(160, '0'), lines[5]);
  EXPECT_EQ("statistics -1 " + std::string(112, '0'), lines[6]);
}

TEST(Query, PayloadsReachTheDriver) {
  const Words lines =
      answers(probe("oui 0 00aaff probe-response 1 0102 0x03 probe-response 0 07 0x02") +
              "for i in ra0 ra1 rai0 rai1; do iwpriv $i show | grep -E 'Oui|Probe' | sed s/^/$i:/; done; " +
              probe("probe-response-delete 2 01") + "iwpriv rai1 show | grep -c Probe");
  EXPECT_THAT(
      lines,
      ElementsAre("oui 0", "probe-response -1", "probe-response -1", "ra0:OuiFilter=00aaff", "rai0:ProbeResponse=0102",
                  "rai1:ProbeResponse=0102", "function ==> [wifimgr_lib_proberesp_delete]  line ==> [2599]",
                  "function ==> [wifimgr_lib_proberesp_delete]  line ==> [2612]",
                  "function ==> [wifimgr_lib_proberesp_delete]  line ==> [2622]", "probe-response-delete 0", "0"));
}

// All eight SSIDs have to be there for that.
TEST(Query, ProbeResponseReachesAllEightSsids) {
  const TestFolder folder;
  write_file(folder / "24.dat", dat_text(8, "1;1;1;1;1;1;1;1"));
  const Result result = run_script(
      probe("probe-response 0 0a 0xff") + "for i in 0 1 2 3 4 5 6 7; do iwpriv ra$i show | grep Probe; done | uniq -c",
      {"--dat24", folder / "24.dat"});
  EXPECT_EQ("probe-response 0\n      8 ProbeResponse=0a\n", result.out);
}

TEST(Query, CommandTextsWorkOnTheRadio) {
  const Words lines = answers("eval \"$(" + probe("command ra 0 Channel=9 0 | cut -d' ' -f3-") + ")\"; " +
                              "printf \"$(" + probe("template 1 | cut -d' ' -f3-") + ")\\n\" 0 Channel 44 | sh; " +
                              probe("text UpdateChannel text UpdateChannelAC command rai -1 show 1 command ra 0 x 2"));
  EXPECT_THAT(lines, ElementsAre("UpdateChannel 9", "UpdateChannelAC 44", "command 0 /userfs/bin/iwpriv rai show",
                                 "command 0 untouched"));
}

TEST(Query, ADriverThatIsGoneAnswersNothing) {
  const Result result =
      run_script("rmmod mt7603eap; " + probe("text UpdateChannel index-text wifimgr_lib_get_Noise 0 -1 "
                                             "neighbours 0 session-of 0 0"),
                 {"--chips", "7603"});
  EXPECT_EQ(
      "==>UpdateChannel: ioctl open fail\nUpdateChannel 6\nwifimgr_lib_get_Noise 1 untouched\nneighbours 1 0\n"
      "==>UpdateWpsStatus: ioctl open fail\nsession -1 0 \n",
      result.out);
}

}  // namespace
}  // namespace sim_test
