// What the normalisation reports, and that no failure stops it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply/calls.h"
#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using testing::IsEmpty;
using Lines = std::vector<std::string>;

std::string printed_by(uint32_t band) {
  return sandbox::stdout_of([band] { EXPECT_EQ(0, wifimgr_lib_check_wifi_value_befor_write_dat(band)); });
}

TEST(NormaliseFailure, UnreadableWirelessModeIsReportedAndCountsAsZero) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    sandbox::load(band, sandbox::full_dat_without(band, "WirelessMode"));
    dat::put(band, -1, "BasicRate", "1");
    dat::put(band, -1, "HT_OpMode", "x");
    EXPECT_EQ("write_wlan_config:wifimgr_lib_get_wirelessMode fail.\n", printed_by(static_cast<uint32_t>(band)));
    EXPECT_EQ(band == 0 ? "15" : "1", sandbox::field(band, "BasicRate", 1));
    EXPECT_EQ(band == 0 ? "1" : "0", sandbox::field(band, "HT_OpMode", 1));
    EXPECT_EQ(band == 0 ? "1" : "0;0", sandbox::field(band, "VHT_BW", 1));
  }
}

TEST(NormaliseFailure, UnreadableSsidCountIsReportedAndCountsAsZero) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load_text(band, sandbox::full_dat_without(band, "BssidNum"));
    EXPECT_EQ("write_wlan_config:wifimgr_lib_get_bssidnum fail.\n", printed_by(static_cast<uint32_t>(band)));
    EXPECT_EQ("1\n", sandbox::field(band, "DefaultKeyID", 2));
    EXPECT_EQ("1", sandbox::field(band, "TxBurst", 1));
  }
}

TEST(NormaliseFailure, TheWirelessModeIsReadBeforeTheSsidCount) {
  for (const uint32_t band : {0U, 1U}) {
    const std::string expected =
        "write_wlan_config:wifimgr_lib_get_wirelessMode fail.\nwrite_wlan_config:wifimgr_lib_get_bssidnum fail.\n";
    EXPECT_EQ(expected, printed_by(band)) << "a band that is not loaded";
  }
}

TEST(NormaliseFailure, UnreadableWmmIsReportedForEverySsidOf2_4G) {
  dat::load(0, {{"BssidNum", "3"}});
  calls::refuse("get_wmmCapable");
  const std::string line = "write_wlan_config:wifimgr_lib_get_wmmCapable fail.\n";
  EXPECT_EQ(line + line + line, printed_by(0));
  EXPECT_EQ("1", sandbox::field(0, "TxBurst", 1));
}

TEST(NormaliseFailure, UnreadableWmmOf5GIsNotReported) {
  dat::load(1, {{"BssidNum", "3"}});
  calls::refuse("get_wmmCapable");
  EXPECT_THAT(printed_by(1), IsEmpty());
  EXPECT_EQ("1", sandbox::field(1, "TxBurst", 1));
}

TEST(NormaliseFailure, OtherGettersFailSilently) {
  for (const char* getter : {"get_channel", "get_HT_BW", "get_txPower", "get_fixedTxMode"}) {
    for (const int band : {0, 1}) {
      SCOPED_TRACE(getter);
      dat::load(band, {{"TxPower", "3"}});
      calls::refuse(getter);
      EXPECT_THAT(printed_by(static_cast<uint32_t>(band)), IsEmpty());
      calls::allow(getter);
    }
  }
}

TEST(NormaliseFailure, UnreadableTxPowerIsNotWritten) {
  dat::load(0, {{"TxPower", "3"}});
  calls::refuse("get_txPower");
  printed_by(0);
  EXPECT_EQ("3\n", sandbox::field(0, "TxPower", 1));
}

// Setters outside the security part fail without a word, and everything after them is done all the same.
TEST(NormaliseFailure, SettersFailSilentlyAndStopNothing) {
  for (const int band : {0, 1}) {
    const uint32_t number = static_cast<uint32_t>(band);
    for (const char* mode : {"2", "9", "14"}) {
      dat::load(band, {{"WirelessMode", mode}, {"TxPower", "3"}, {"HT_BW", "0"}});
      const Lines all = calls::made_by([=] { printed_by(number); });
      for (const char* setter :
           {"set_wmmCapable", "set_fixedTxMode", "set_txBurst", "set_HT_BW", "set_VHT_BW", "set_VHT_SGI",
            "set_HT_OpMode", "set_autoChannelSelect", "set_basicRate", "set_txPower"}) {
        SCOPED_TRACE(std::string(setter) + " in mode " + mode);
        dat::load(band, {{"WirelessMode", mode}, {"TxPower", "3"}, {"HT_BW", "0"}});
        calls::refuse(setter);
        EXPECT_EQ(all, calls::made_by([=] { EXPECT_THAT(printed_by(number), IsEmpty()); }));
        calls::allow(setter);
      }
    }
  }
}

TEST(NormaliseFailure, OfSecurityIsReportedForTheSsidAndTheOthersAreServed) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {{"AuthMode", "WPA2;OPEN"}});
    calls::refuse("set_ieee8021x");
    EXPECT_EQ("write_wlan_config:wifimgr_lib_set_ieee8021x fail.\n", printed_by(static_cast<uint32_t>(band)));
    EXPECT_EQ("OPEN", sandbox::field(band, "AuthMode", 2));
    calls::allow("set_ieee8021x");
  }
}

TEST(NormaliseFailure, NothingIsPrintedWhenThereIsNone) {
  for (const int band : {0, 1}) {
    dat::load(band, {});
    EXPECT_THAT(printed_by(static_cast<uint32_t>(band)), IsEmpty());
  }
}

TEST(NormaliseStore, HoldsTheNormalisedValuesOf2_4G) {
  dat::load(0, {{"WmmCapable", "1;1"}, {"FixedTxMode", "2;2"}, {"Channel", "0"}, {"BasicRate", "1"}, {"TxPower", "3"}});
  printed_by(0);
  for (const int ssid : {1, 2}) {
    EXPECT_EQ("0", sandbox::field(0, "WmmCapable", ssid));
    EXPECT_EQ("0", sandbox::field(0, "FixedTxMode", ssid));
    EXPECT_EQ("2", sandbox::field(0, "DefaultKeyID", ssid));
  }
  EXPECT_EQ("WPA2PSK", sandbox::field(0, "AuthMode", 1));
  EXPECT_EQ("passphrase1\n", sandbox::field(0, "WPAPSK1", 1));
  for (const char* key : {"Key1Str1", "Key2Str1", "Key3Str1", "Key4Str1"}) EXPECT_EQ("0", sandbox::field(0, key, 1));
  EXPECT_EQ("1\n", sandbox::field(0, "HT_BW", 1));
  EXPECT_EQ("15", sandbox::field(0, "BasicRate", 1));
  EXPECT_EQ("1", sandbox::field(0, "HT_OpMode", 1));
  EXPECT_EQ("1", sandbox::field(0, "TxBurst", 1));
  EXPECT_EQ("3", sandbox::field(0, "AutoChannelSelect", 1));
  EXPECT_EQ("25", sandbox::field(0, "TxPower", 1));
}

TEST(NormaliseStore, HoldsTheNormalisedValuesOf5G) {
  dat::load(1, {{"WirelessMode", "11"}, {"WmmCapable", "0;0"}, {"FixedTxMode", "2;2"}, {"HT_OpMode", "1"}});
  printed_by(1);
  for (const int ssid : {1, 2}) EXPECT_EQ("0", sandbox::field(1, "FixedTxMode", ssid));
  EXPECT_EQ("0", sandbox::field(1, "WmmCapable", 1));
  EXPECT_EQ("0;0", sandbox::field(1, "VHT_BW", 1));
  EXPECT_EQ("1;1", sandbox::field(1, "VHT_SGI", 1));
  EXPECT_EQ("0", sandbox::field(1, "HT_OpMode", 1));
  dat::put(1, -1, "WirelessMode", "14");
  printed_by(1);
  EXPECT_EQ("1", sandbox::field(1, "WmmCapable", 1));
}

}  // namespace
