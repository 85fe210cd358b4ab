// The board through the library: buttons, LED, package id, flash, addresses.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(BoardLive, ButtonIsReadOnce) {
  EXPECT_THAT(answers("simctl press wps pressed; simctl press wlan11ac on; " +
                      probe("read wifimgr_lib_get_WPS_BUTTON 32 read wifimgr_lib_get_WPS_BUTTON 32 "
                            "read wifimgr_lib_get_WLAN11AC_BUTTON 32 read wifimgr_lib_get_WLAN11AC_BUTTON 32")),
              ElementsAre("wifimgr_lib_get_WPS_BUTTON 0 7 pressed", "wifimgr_lib_get_WPS_BUTTON 0 0 ",
                          "wifimgr_lib_get_WLAN11AC_BUTTON 0 2 on", "wifimgr_lib_get_WLAN11AC_BUTTON 0 0 "));
}

TEST(BoardLive, ButtonStateTellsOfAPressOnce) {
  EXPECT_THAT(
      answers("simctl press wlan go; " + probe("button 0 /proc/zq2810/wlan_button button 0 /proc/zq2810/wlan_button") +
              "simctl press wps5g; " +
              probe("button 1 /proc/zq2810/wps_5g_button button 1 /proc/zq2810/wps_5g_button "
                    "button 0 /proc/zq2810/none button 1 /proc/zq2810/none")),
      ElementsAre("button 2 go", "button 0 ", "button 1 1", "button 0 ", "button -2 ", "button -1 "));
}

TEST(BoardLive, ButtonsTakeWhatTheLibraryWrites) {
  EXPECT_THAT(answers(probe("write wifimgr_lib_set_WPS_BUTTON a write wifimgr_lib_set_WPS_5G_BUTTON b "
                            "write wifimgr_lib_set_WLAN_WPS_BUTTON c read wifimgr_lib_get_WPS_BUTTON 8") +
                      "cd /proc/zq2810; cat wps_5g_button wlan_wps_button; echo"),
              ElementsAre("wifimgr_lib_set_WPS_BUTTON 0", "wifimgr_lib_set_WPS_5G_BUTTON 0",
                          "wifimgr_lib_set_WLAN_WPS_BUTTON 0", "wifimgr_lib_get_WPS_BUTTON 0 1 a", "bc"));
}

TEST(BoardLive, AhbStatusAndLedKeepTheirValue) {
  EXPECT_THAT(answers(probe("read wifimgr_lib_get_AHB_STATUS 8 write wifimgr_lib_set_AHB_STATUS 7 "
                            "read wifimgr_lib_get_AHB_STATUS 8 read wifimgr_lib_get_AHB_STATUS 8 "
                            "write wifimgr_lib_set_LED_WLAN 0") +
                      "cat /proc/zq2810/led_wlan /proc/zq2810/led_wlan"),
              ElementsAre("wifimgr_lib_get_AHB_STATUS 0 2 1", "wifimgr_lib_set_AHB_STATUS 0",
                          "wifimgr_lib_get_AHB_STATUS 0 1 7", "wifimgr_lib_get_AHB_STATUS 0 1 7",
                          "wifimgr_lib_set_LED_WLAN 0", "0", "0"));
}

TEST(BoardLive, ShareCommandWorksOnTheBoard) {
  EXPECT_THAT(answers("eval \"$(" + probe("share 1 2 on off | cut -d' ' -f3-") + ")\"; cat /proc/zq2810/wlanshare"),
              ElementsAre("1 2 on off"));
}

TEST(BoardLive, PackageIdChoosesThePcieRegister) {
  EXPECT_THAT(answers(probe("chip-id pcie 0") + "simctl chip-id 29; " + probe("chip-id pcie 1") +
                      "simctl chip-id 26; " + probe("pcie 1") + "cat /run/gateway-sim/registers"),
              ElementsAre("chip-id 0 24", "pcie 0", "chip-id 0 29", "pcie 0", "2810", "unknow package", "pcie 1",
                          "bfac030c 80000000", "bfac080c 40000000"));
}

TEST(BoardLive, ConstantsNameWhatTheBoardHas) {
  EXPECT_THAT(
      answers(probe("constant wifimgr_lib_get_WLAN_BUTTON_PATH constant wifimgr_lib_get_WPS_BUTTON_PATH "
                    "constant wifimgr_lib_get_WPS_5G_BUTTON_PATH constant wifimgr_lib_get_WLAN11AC_BUTTON_PATH") +
              "for f in $(" +
              probe("constant wifimgr_lib_get_WLAN_BUTTON_PATH constant wifimgr_lib_get_WPS_BUTTON_PATH "
                    "constant wifimgr_lib_get_WPS_5G_BUTTON_PATH constant wifimgr_lib_get_WLAN11AC_BUTTON_PATH | "
                    "cut -d' ' -f3") +
              "); do test -f $f && echo there; done"),
      ElementsAre("wifimgr_lib_get_WLAN_BUTTON_PATH 0 /proc/zq2810/wlan_button",
                  "wifimgr_lib_get_WPS_BUTTON_PATH 0 /proc/zq2810/wps_button",
                  "wifimgr_lib_get_WPS_5G_BUTTON_PATH 0 /proc/zq2810/wps_5g_button",
                  "wifimgr_lib_get_WLAN11AC_BUTTON_PATH 0 /proc/zq2810/wlan11ac_button", "there", "there", "there",
                  "there"));
  EXPECT_THAT(
      answers(probe("band-constant wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME 0 "
                    "constant wifimgr_lib_get_CHANNEL_SELECT_DEF constant wifimgr_lib_get_IEEE8021X_VAL "
                    "number wifimgr_lib_get_MESH_TRIGGER_WAIT number wifimgr_lib_get_img_boot_flag_offset "
                    "number wifimgr_lib_get_img_commit_flag_offset nothing wifimgr_lib_set_ixia5gflag "
                    "nothing wifimgr_lib_get_ixia5gflag")),
      ElementsAre("wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME 0 MbssMaxStaNum", "wifimgr_lib_get_CHANNEL_SELECT_DEF 0 3",
                  "wifimgr_lib_get_IEEE8021X_VAL 0 0", "wifimgr_lib_get_MESH_TRIGGER_WAIT 0 15000",
                  "wifimgr_lib_get_img_boot_flag_offset 0 3407872", "wifimgr_lib_get_img_commit_flag_offset 0 3407873",
                  "wifimgr_lib_set_ixia5gflag 0", "wifimgr_lib_get_ixia5gflag -1"));
}

TEST(BoardLive, CalibrationComesOutOfFlash) {
  EXPECT_THAT(
      answers("simctl calibration 2.4G chip=7915; simctl calibration 5G chip=7663; " +
              probe("band wifimgr_lib_get_wifi_calibration 0 band wifimgr_lib_get_wifi_calibration 1") +
              "od -An -tx1 -N10 /etc/RT30xxEEPROM.bin; od -An -tx1 -N10 /etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin;"
              "ls /tmp/*EEPROM.bin 2>/dev/null | wc -l"),
      ElementsAre("wifimgr_lib_get_wifi_calibration 0", "wifimgr_lib_get_wifi_calibration 0",
                  " 15 79 01 00 02 28 10 24 00 00", " 63 76 01 00 02 28 10 50 00 00", "0"));
}

TEST(BoardLive, CalibrationOfAnUnknownChipKeepsTheDefault) {
  EXPECT_THAT(
      answers("echo default >/etc/RT30xxEEPROM.bin; echo default5 >/etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin; " +
              probe("band wifimgr_lib_get_wifi_calibration 0") + "simctl calibration 5G chip=7603; " +
              probe("band wifimgr_lib_get_wifi_calibration 1") +
              "cat /etc/RT30xxEEPROM.bin /etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin"),
      ElementsAre("use default RT30xxEEPROM.bin", "wifimgr_lib_get_wifi_calibration 0",
                  "use default etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin", "wifimgr_lib_get_wifi_calibration 0",
                  "default", "default5"));
}

TEST(BoardLive, CalibrationGoesIntoFlashAndBack) {
  EXPECT_THAT(answers("printf '\\026\\171first' >/etc/RT30xxEEPROM.bin; "
                      "printf '\\142\\166other' >/etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin; " +
                      probe("band wifimgr_lib_set_wifi_calibration 0 band wifimgr_lib_set_wifi_calibration 1") +
                      "rm /etc/RT30xxEEPROM.bin; echo >/etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin; reboot; " +
                      probe("band wifimgr_lib_get_wifi_calibration 0 band wifimgr_lib_get_wifi_calibration 1") +
                      "head -c 7 /etc/RT30xxEEPROM.bin | tail -c 5; head -c 7 "
                      "/etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin | tail -c 5"),
              ElementsAre("wifimgr_lib_set_wifi_calibration 0", "wifimgr_lib_set_wifi_calibration 0",
                          "wifimgr_lib_get_wifi_calibration 0", "wifimgr_lib_get_wifi_calibration 0", "firstother"));
}

TEST(BoardLive, HardwareAddressesAreTheInterfaces) {
  EXPECT_THAT(
      answers(probe("address wifimgr_lib_get_itf_hwaddr ra1 address wifimgr_lib_get_interface_mac0 rai0 mac ra0 "
                    "mac nosuch bridge-macs ipv6 address wifimgr_lib_get_itf_hwaddr nosuch "
                    "address wifimgr_lib_get_interface_mac0 nosuch")),
      ElementsAre("wifimgr_lib_get_itf_hwaddr 0 02:28:10:24:00:01",
                  "wifimgr_lib_get_interface_mac0 0 02:28:10:50:00:00", "mac 0 022810240000", "mac 0 eeeeeeeeeeee",
                  "ethaddr 0 022810000002", "ifaddr 0 022810000002", "ipv6 0 eeee001028e300ef002810fffe000002",
                  "wifimgr_lib_get_itf_hwaddr 2033: ioctl open fail", "wifimgr_lib_get_itf_hwaddr -1 untouched",
                  "wifimgr_lib_get_interface_mac0 -1 untouched"));
}

TEST(BoardLive, InterfaceFlagsFollowTheInterface) {
  EXPECT_THAT(
      answers(probe("flags ra0 1") + "ifconfig ra0 down; " + probe("flags ra0 1 flags ra0 0xffff flags nosuch 0xffff")),
      ElementsAre("flags 1", "flags 0", "flags 1", "flags 0"));
}

TEST(BoardLive, DfsMboAndMapModeAreInTheStore) {
  EXPECT_THAT(
      answers(
          probe("init 0 init 1 set wifimgr_lib_set_DfsDedicatedZeroWait 1 -1 1 "
                "sized-text wifimgr_lib_get_DfsDedicatedZeroWait 1 -1 160 "
                "set wifimgr_lib_set_DfsZeroWaitDefault 1 -1 1 sized-text wifimgr_lib_get_DfsZeroWaitDefault 1 -1 160 "
                "set wifimgr_lib_set_MboSupport 1 2 1 sized-text wifimgr_lib_get_MboSupport 1 2 160 "
                "set wifimgr_lib_set_MapMode 0 -1 2 sized-text wifimgr_lib_get_MapMode 1 1 160 save 0 save 1") +
          "grep -h -E '^(Dfs|MapMode)' /etc/Wireless/RT2860AP*/RT2860AP.dat | sort"),
      testing::IsSupersetOf({"wifimgr_lib_get_DfsDedicatedZeroWait 0 1", "wifimgr_lib_get_DfsZeroWaitDefault 0 1",
                             "wifimgr_lib_get_MboSupport 0 1", "wifimgr_lib_get_MapMode 0 2", "save 0",
                             "DfsDedicatedZeroWait=1", "DfsZeroWaitDefault=1", "MapMode=2"}));
}

}  // namespace
}  // namespace sim_test
