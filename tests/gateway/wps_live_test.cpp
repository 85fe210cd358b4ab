// WPS through the library, against the simulated driver and daemon.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/state/wps_pin.h"
#include "simulation.h"

namespace sim_test {
namespace {

using testing::ElementsAre;

std::string probe(const std::string& steps) {
  return library_probe_program() + " " + steps + "; ";
}

Words answers(const std::string& script) {
  return lines_of(run_script(script).out);
}

TEST(WpsLive, PinIsTheOneThatTheDriverMade) {
  const std::string pins =
      "text UpdatePinCode index-text wifimgr_lib_get_WPS_PIN_CODE 0 0 index-text wifimgr_lib_get_wscPinCode 0 1";
  const Words lines = answers(probe("init 0 " + pins + " set wifimgr_lib_set_wscGenPinCode 0 1 1 " + pins));
  ASSERT_EQ(8U, lines.size());
  const auto pin = [&](size_t line) { return lines[line].substr(lines[line].rfind(' ') + 1); };
  EXPECT_TRUE(gateway::is_valid_pin(pin(5))) << pin(5);
  EXPECT_NE(pin(1), pin(5));
  EXPECT_EQ("UpdatePinCode " + pin(5), lines[5]);
  EXPECT_EQ("wifimgr_lib_get_WPS_PIN_CODE 0 " + pin(5), lines[6]);
  EXPECT_EQ("wifimgr_lib_get_wscPinCode 0 " + pin(5), lines[7]);
}

TEST(WpsLive, PinHasItsLeadingZeros) {
  EXPECT_THAT(answers("simctl wps rai0 pin 1234; simctl wps rai1 pin 4294967295; simctl wps ra1 pin 0; " +
                      probe("init 1 text UpdatePinCodeAC index-text wifimgr_lib_get_wscPinCode 1 2 "
                            "index-text wifimgr_lib_get_WPS_PIN_CODE 0 1")),
              ElementsAre("init 0", "UpdatePinCodeAC 00001234", "wifimgr_lib_get_wscPinCode 0 4294967295",
                          "wifimgr_lib_get_WPS_PIN_CODE 0 00000000"));
}

TEST(WpsLive, PinIs0WhenTheDriverFails) {
  EXPECT_THAT(
      answers("simctl fail wps-pin EIO; " +
              probe("init 0 text UpdatePinCode text UpdatePinCodeAC index-text wifimgr_lib_get_WPS_PIN_CODE 1 0 "
                    "index-text wifimgr_lib_get_wscPinCode 0 1")),
      ElementsAre("init 0", "==>UpdatePinCode: ioctl open fail", "UpdatePinCode 0",
                  "==>UpdatePinCodeAC: ioctl open fail", "UpdatePinCodeAC 0", "==>UpdatePinCode: ioctl open fail",
                  "wifimgr_lib_get_WPS_PIN_CODE -1 0", "wifimgr_lib_get_wscPinCode 1 untouched"));
}

TEST(WpsLive, SessionHasAPeerAboveStateTwo) {
  const Words lines =
      answers("simctl wps ra1 state 2; simctl wps rai0 state 3 peer 02:aa:bb:cc:dd:0e; " +
              probe("session UpdateWpsStatus 1 session UpdateWpsStatusAC 0 session-of 1 0 session-of 0 0 "
                    "band-text wifimgr_lib_get_WPS_STA_MAC 1 band-text wifimgr_lib_get_WPS_STA_MAC 0") +
              "simctl wps ra0 state 4294967295; " + probe("session-of 0 0"));
  EXPECT_THAT(lines, ElementsAre("UpdateWpsStatus 2 untouched", "UpdateWpsStatusAC 3 02:AA:BB:CC:DD:0E",
                                 "session 0 3 02:AA:BB:CC:DD:0E", "session 0 1 untouched",
                                 "wifimgr_lib_get_WPS_STA_MAC 0 02:aa:bb:cc:dd:0e",
                                 "wifimgr_lib_get_WPS_STA_MAC 0 00:00:00:00:00:00", "session 0 4294967295 untouched"));
}

TEST(WpsLive, StateStaysWhenThePeerCannotBeRead) {
  EXPECT_THAT(
      answers("simctl wps ra0 state 4; simctl fail wps-peer EIO; simctl fail wps-station EIO; " +
              probe("session-of 0 0 band-text wifimgr_lib_get_WPS_STA_MAC 0")),
      ElementsAre("==>UpdateWpsMac: ioctl open fail:-1", "session -1 4 ", "wifimgr_lib_get_WPS_STA_MAC 1 untouched"));
  EXPECT_THAT(answers("simctl fail wps-state EIO; " + probe("session UpdateWpsStatusAC 0")),
              ElementsAre("==>UpdateWpsStatus: ioctl open fail", "UpdateWpsStatusAC 0 "));
}

TEST(WpsLive, StatusWordAndAccessList) {
  EXPECT_THAT(
      answers("simctl wps rai1 status 513; simctl wps ra1 access 02:11:22:33:44:55,02:5a:00:24:00:11; " +
              probe("status 1 status 0 access 0 1") + "simctl fail wps-status EIO; simctl fail wps-access EIO; " +
              probe("status 1 access 0 1 | cut -c1-50")),
      ElementsAre("status 0 513", "status 0 0",
                  // What follows a zero byte of a MAC is lost.
                  "access 0 00000000020000000000000000000000 021122334455=0 025a00000000=0 000000000000=0",
                  "[wifimgr_lib_get_WPS_STATUS]:ioctl open fail", "status -1 61166",
                  "[wifimgr_lib_get_WPS_ACL_INFO]:ioctl open fail",
                  "access -1 eeeeeeeeeeeeeeeeeeeeeeeeeeeeeeee eeeeeee"));
}

TEST(WpsLive, SettersReachStoreAndDriver) {
  struct {
    const char* setter;
    const char* key;
    const char* value;
  } const kRows[] = {{"wifimgr_lib_set_wscConfMode", "WscConfMode", "1"},
                     {"wifimgr_lib_set_wscConfStatus", "WscConfStatus", "1"},
                     {"wifimgr_lib_set_wscV2Support", "WscV2Support", "0"},
                     {"wifimgr_lib_set_wscMaxPinAttack", "WscMaxPinAttack", "3"},
                     {"wifimgr_lib_set_wscKeyASCII", "WscKeyASCII", "63"},
                     {"wifimgr_lib_set_wscSetupLockTime", "WscSetupLockTime", "77"}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.setter);
    const std::string key = row.key;
    EXPECT_THAT(
        answers(probe(std::string("init 1 set ") + row.setter + " 1 2 " + row.value + " get " + key + " 1 2") +
                "iwpriv rai1 show | grep ^" + key + "=; iwpriv rai0 show | grep -c ^" + key + "=" + row.value),
        ElementsAre("init 0", std::string(row.setter) + " 0", key + " 0 " + row.value, key + "=" + row.value, "0"));
  }
}

TEST(WpsLive, CommandsReachTheDriverAlone) {
  EXPECT_THAT(answers(probe("set wifimgr_lib_set_wscMode 0 1 2 set wifimgr_lib_set_wscPinCode 0 1 12345670 "
                            "do wifimgr_lib_set_wscGetConf 0 1 session-of 0 0 text UpdatePinCode "
                            "do wifimgr_lib_set_wscStop 0 1 session-of 0 0 do wifimgr_lib_set_wscGetConf 0 1 "
                            "do wifimgr_lib_set_wscOOB 0 1 session-of 0 0") +
                      "iwpriv ra0 show | grep -E '^Wsc(Mode|ConfStatus)='"),
              ElementsAre("wifimgr_lib_set_wscMode 0", "wifimgr_lib_set_wscPinCode 0", "wifimgr_lib_set_wscGetConf 0",
                          "session 0 2 untouched", "UpdatePinCode 12345670", "wifimgr_lib_set_wscStop 0",
                          "session 0 1 untouched", "wifimgr_lib_set_wscGetConf 0", "wifimgr_lib_set_wscOOB 0",
                          "session 0 1 untouched", "WscConfStatus=1", "WscMode=2"));
}

TEST(WpsLive, UuidsStayInTheStore) {
  EXPECT_THAT(
      answers(probe("init 0 set wifimgr_lib_set_WscUUIDE 0 2 abc set wifimgr_lib_set_WscUUIDStr 0 2 def "
                    "get WSC_UUID_E2 0 -1 get WSC_UUID_Str2 0 -1") +
              "wc -l </run/gateway-sim/journal"),
      ElementsAre("init 0", "wifimgr_lib_set_WscUUIDE 0", "wifimgr_lib_set_WscUUIDStr 0", testing::_, testing::_, "0"));
}

// The scripts that the services write do on the driver what they are for.
TEST(WpsLive, ServiceScriptsRunTheSession) {
  const std::string take = "init 0 oper 0 0 init 1 oper 1 0 ";
  EXPECT_THAT(answers(probe(take + "service-start /tmp/start 1 1 0 4711") +
                      "cat /tmp/start; stat -c %a /tmp/start; /tmp/start; " +
                      probe("session-of 1 1 index-text wifimgr_lib_get_WPS_PIN_CODE 1 1") +
                      probe(take + "service wifimgr_lib_service_stop_wps /tmp/stop 1 1") + "sh /tmp/stop; " +
                      probe("session-of 1 1")),
              ElementsAre("init 0", "oper 0", "init 0", "oper 0", "service-start 0",
                          "/userfs/bin/iwpriv rai1 set WscConfMode=7", "/userfs/bin/iwpriv rai1 set WscConfStatus=2",
                          "/userfs/bin/iwpriv rai1 set WscMode=1", "/userfs/bin/iwpriv rai1 set WscPinCode=4711",
                          "/userfs/bin/iwpriv rai1 set WscGetConf=1", "700", "session 0 2 untouched",
                          "wifimgr_lib_get_WPS_PIN_CODE 0 00004711", "init 0", "oper 0", "init 0", "oper 0",
                          "wifimgr_lib_service_stop_wps 0", "session 0 1 untouched"));
}

TEST(WpsLive, ServiceScriptsMakeAPinAndReset) {
  const Words lines =
      answers(probe("init 0 oper 0 0 text UpdatePinCode service wifimgr_lib_service_genpincode /tmp/pin 0 0 "
                    "service wifimgr_lib_service_resetoob /tmp/reset 0 0") +
              "sh /tmp/pin; sh /tmp/reset; " + probe("text UpdatePinCode") + "iwpriv ra0 show | grep WscConfStatus");
  ASSERT_EQ(7U, lines.size());
  EXPECT_EQ("wifimgr_lib_service_genpincode 0", lines[3]);
  EXPECT_EQ("wifimgr_lib_service_resetoob 0", lines[4]);
  EXPECT_NE(lines[2], lines[5]);
  EXPECT_EQ("WscConfStatus=1", lines[6]);
}

// The library starts the daemon in the background: the journal says when it is there, and under which number.
TEST(WpsLive, DaemonGetsTheBridgesAddress) {
  const std::string started =
      "started() { until [ \"$(grep -c 'wscd (process .*: started' /run/gateway-sim/journal)\" = $1 ]; do :; done;"
      " pid=$(sed -n 's/.*wscd (process \\([0-9]*\\)): started.*/\\1/p' /run/gateway-sim/journal | tail -n 1); }; "
      "show() { tr '\\0' ' ' </proc/$pid/cmdline; echo; }; gone() { while [ -e /proc/$1/stat ]; do :; done; }; ";
  EXPECT_THAT(
      answers(started + probe("init 1 text get_onu_ipaddr daemon 1 2 Yes") + "started 1; show; first=$pid; " +
              probe("init 1 daemon 1 1 Yes") + "started 2; show; gone $first; " +
              probe("init 1 daemon 1 1 yes nothing wifimgr_lib_get_wps_info") + "gone $pid; pidof wscd; echo $?"),
      ElementsAre("init 0", "get_onu_ipaddr 192.168.2.1", "daemon 0", "/usr/bin/wscd -i rai1 -a 192.168.2.1 -m 1 ",
                  "init 0", "daemon 0", "/usr/bin/wscd -i rai0 -a 192.168.2.1 -m 1 ", "init 0", "daemon 0",
                  "wifimgr_lib_get_wps_info 0", "1"));
}

TEST(WpsLive, BridgeAddressFollowsTheBridge) {
  EXPECT_THAT(answers("ifconfig br0 10.20.30.40; " + probe("text get_onu_ipaddr") + "ifconfig br0 0.0.0.0; " +
                      probe("text get_onu_ipaddr")),
              ElementsAre("get_onu_ipaddr 10.20.30.40", "get_onu_ipaddr untouched"));
}

}  // namespace
}  // namespace sim_test
