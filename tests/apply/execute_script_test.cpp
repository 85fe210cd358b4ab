// The execute script as a whole: its order, its interface names, its WMM part.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "apply/calls.h"
#include "apply/dat_text.h"
#include "apply/script_text.h"
#include "support/seams.h"

namespace {

using script::joined;
using script::lines;
using script::Settings;
using script::written;
using testing::ElementsAre;
using testing::IsEmpty;
using ExecuteScript = script::Script;
using ScriptWmm = script::Script;

void load(int band, std::initializer_list<std::pair<const char*, const char*>> changes) {
  dat::load(band, changes);
  script::take_snapshot(band);
}

std::string interface(int band, int number) {
  return (band == 0 ? "ra" : "rai") + std::to_string(number);
}

TEST_F(ExecuteScript, Of2_4GIsComplete) {
  load(0, {});
  EXPECT_EQ(
      "/userfs/bin/iwpriv ra0 set AccessPolicy=0\n"
      "\n"
      "/userfs/bin/iwpriv ra0 set ACLClearAll=1\n"
      "/userfs/bin/iwpriv ra0 set ACLAddEntry=02:00:00:00:01:00\n"
      "\n"
      "/userfs/bin/iwpriv ra0 set HideSSID=0\n"
      "/userfs/bin/iwpriv ra0 set AuthMode=WPA2PSK\n"
      "/userfs/bin/iwpriv ra0 set RADIUS_Server=192.168.1.2\n"
      "/userfs/bin/iwpriv ra0 set RADIUS_Port=1812\n"
      "/userfs/bin/iwpriv ra0 set RADIUS_Key=secret-of-1\n"
      "\n"
      "/userfs/bin/iwpriv ra0 set RekeyInterval=3600\n"
      "/userfs/bin/iwpriv ra0 set EncrypType=AES\n"
      "/userfs/bin/iwpriv ra0 set SSID=\"Net0-1\"\n"
      "/userfs/bin/iwpriv ra0 set WPAPSK=\"passphrase1\"\n"
      "/userfs/bin/iwpriv ra0 set DefaultKeyID=2\n"
      "/userfs/bin/iwpriv ra0 set SSID=\"Net0-1\"\n",
      written(0, 0));
}

TEST_F(ExecuteScript, Of5GIsComplete) {
  load(1, {{"AuthMode", "WPA2PSK;OPEN"}});
  EXPECT_EQ(
      "/userfs/bin/iwpriv rai1 set AccessPolicy=0\n"
      "\n"
      "/userfs/bin/iwpriv rai1 set ACLClearAll=1\n"
      "/userfs/bin/iwpriv rai1 set ACLAddEntry=02:00:00:00:01:01\n"
      "\n"
      "/userfs/bin/iwpriv rai1 set HideSSID=0\n"
      "\n"
      "/userfs/bin/iwpriv rai1 set AuthMode=OPEN\n"
      "/userfs/bin/iwpriv rai1 set EncrypType=NONE\n"
      "/userfs/bin/iwpriv rai1 set IEEE8021X=0\n"
      "/userfs/bin/iwpriv rai1 set WmmCapable=1\n"
      "/userfs/bin/iwpriv rai1 set TxBurst=1\n"
      "/userfs/bin/iwpriv rai1 set SSID=\"Net1-2\"\n",
      written(1, 1));
}

// Everything before the security part, and after the WMM part, of SSID 1 of the full dat text.
const Settings kAccess = {"AccessPolicy=0\n", "ACLClearAll=1", "ACLAddEntry=02:00:00:00:01:00\n", "HideSSID=0"};
const Settings kOpen = {"AuthMode=OPEN", "EncrypType=NONE", "IEEE8021X=0"};

TEST_F(ExecuteScript, UnreadableSettingOnlyLosesItsLine) {
  struct Row {
    const char* key;
    Settings left;
  };
  for (const int band : {0, 1}) {
    const std::string ssid = "SSID=\"Net" + std::to_string(band) + "-1\"";
    for (const Row& row : {
             Row{"AccessPolicy0",
                 {"ACLClearAll=1", "ACLAddEntry=02:00:00:00:01:00\n", "HideSSID=0", kOpen[0], kOpen[1], kOpen[2],
                  ssid}},
             Row{"AccessControlList0", {"AccessPolicy=0\n", "HideSSID=0", kOpen[0], kOpen[1], kOpen[2], ssid}},
             Row{"HideSSID", {kAccess[0], kAccess[1], kAccess[2], kOpen[0], kOpen[1], kOpen[2], ssid}},
             Row{"AuthMode", {kAccess[0], kAccess[1], kAccess[2], kAccess[3], ssid}},
             Row{"SSID1", joined({kAccess, kOpen})},
         }) {
      SCOPED_TRACE(std::string(row.key) + " on band " + std::to_string(band));
      std::string text = sandbox::full_dat_without(band, row.key);
      if (std::strcmp(row.key, "AuthMode") != 0) text = dat::with(text, "AuthMode", "OPEN;OPEN");
      sandbox::load(band, text);
      script::take_snapshot(band);
      Settings left = row.left;
      if (band == 1) {
        const auto before_ssid = left.back() == ssid ? left.end() - 1 : left.end();
        const Settings wmm = {"WmmCapable=1", "TxBurst=1"};
        left.insert(before_ssid, wmm.begin(), wmm.end());
      }
      EXPECT_EQ(lines(interface(band, 0), left), written(band, 0));
    }
  }
}

TEST_F(ExecuteScript, ListIsWrittenAsStored) {
  load(0, {{"AuthMode", "OPEN;OPEN"}});
  dat::put(0, 1, "AccessControlList0", "02:00:00:00:00:01;02:00:00:00:00:02");
  dat::put(0, 1, "AccessPolicy0", "");
  dat::put(0, 1, "HideSSID", "a b");
  EXPECT_EQ(lines("ra0", joined({{"AccessPolicy=", "ACLClearAll=1", "ACLAddEntry=02:00:00:00:00:01;02:00:00:00:00:02",
                                  "HideSSID=a b"},
                                 kOpen,
                                 {"SSID=\"Net0-1\""}})),
            written(0, 0));
}

TEST_F(ExecuteScript, OfAnotherSsidReplacesTheLastOne) {
  load(0, {{"AuthMode", "OPEN;OPEN"}});
  written(0, 0);
  EXPECT_EQ(lines("ra1", {"AccessPolicy=0\n", "ACLClearAll=1", "ACLAddEntry=02:00:00:00:01:01\n", "HideSSID=0\n",
                          kOpen[0], kOpen[1], kOpen[2], "SSID=\"Net0-2\""}),
            written(0, 1));
}

TEST_F(ExecuteScript, ReachesTheLastOfEightSsids) {
  for (const int band : {0, 1}) {
    load(band,
         {{"BssidNum", "8"}, {"HideSSID", "0;0;0;0;0;0;0;1"}, {"AuthMode", "OPEN;OPEN;OPEN;OPEN;OPEN;OPEN;OPEN;X"}});
    const std::string text = written(band, 7);
    EXPECT_THAT(text, testing::HasSubstr(lines(interface(band, 7), {"HideSSID=1\n", "AuthMode=OPEN"})));
    EXPECT_THAT(text, testing::EndsWith(lines(interface(band, 7), {"SSID=\"Net" + std::to_string(band) + "-8\""})));
  }
}

TEST_F(ExecuteScript, OfAnSsidThatIsNotThereHasNothingOfItButTheWmmPart) {
  for (const uint32_t number : {2U, 8U, 0x7ffffffeU, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
    SCOPED_TRACE(number);
    load(0, {});
    EXPECT_EQ("", written(0, number));
    load(0, {{"WirelessMode", "0"}});
    std::string text;
    EXPECT_EQ("write_wlan_config:wifimgr_lib_get_wmmCapable fail.\n",
              sandbox::stdout_of([&] { text = written(0, number); }));
    EXPECT_EQ(lines(interface(0, static_cast<int>(number)), {"WmmCapable=", "TxBurst=1"}), text);
  }
}

TEST_F(ExecuteScript, ChangesNoStore) {
  for (const int band : {0, 1}) {
    load(band, {{"AuthMode", "WEP;WPA2"}, {"WirelessMode", "0"}});
    dat::put(band, 1, "SSID1", "a\"b\\\r\n");
    const std::string before = sandbox::segment_bytes(band);
    written(band, 0);
    written(band, 1);
    EXPECT_EQ(before, sandbox::segment_bytes(band));
  }
}

TEST_F(ScriptWmm, LinesGoByTheWirelessMode) {
  for (const int band : {0, 1}) {
    for (int mode = -1; mode <= 19; ++mode) {
      for (const char* line_end : {"", "\n", "\r\n"}) {
        SCOPED_TRACE("mode " + std::to_string(mode) + " on band " + std::to_string(band));
        load(band, {{"AuthMode", "OPEN;OPEN"}, {"WmmCapable", "0;1"}});
        dat::put(band, -1, "WirelessMode", std::to_string(mode) + line_end);
        const bool silent = band == 0 && (mode == 6 || mode == 7 || mode == 9 || mode == 16);
        const bool fixed = band == 1 && (mode == 8 || mode == 14 || mode == 15 || mode == 17);
        const Settings wmm = silent  ? Settings()
                             : fixed ? Settings{"WmmCapable=1", "TxBurst=1"}
                                     : Settings{"WmmCapable=0", "TxBurst=1"};
        std::string text;
        EXPECT_EQ("", sandbox::stdout_of([&] { text = written(band, 0); }));
        EXPECT_EQ(
            lines(interface(band, 0), joined({kAccess, kOpen, wmm, {"SSID=\"Net" + std::to_string(band) + "-1\""}})),
            text);
      }
    }
  }
}

TEST_F(ScriptWmm, UnreadableModeIsReportedAndCountsAsZero) {
  for (const int band : {0, 1}) {
    sandbox::load(band, sandbox::full_dat_without(band, "WirelessMode"));
    script::take_snapshot(band);
    dat::put(band, 1, "WmmCapable", "7");
    std::string text;
    EXPECT_EQ("write_wlan_config:wifimgr_lib_get_wirelessMode fail.\n",
              sandbox::stdout_of([&] { text = written(band, 0); }));
    EXPECT_THAT(text, testing::HasSubstr(lines(interface(band, 0), {"WmmCapable=7", "TxBurst=1"})));
  }
}

TEST_F(ScriptWmm, UnreadableCapabilityIsReportedOnceAndWrittenEmpty) {
  for (const int band : {0, 1}) {
    sandbox::load(band, dat::with(sandbox::full_dat_without(band, "WmmCapable"), "WirelessMode", "0"));
    script::take_snapshot(band);
    std::string text;
    EXPECT_EQ("write_wlan_config:wifimgr_lib_get_wmmCapable fail.\n",
              sandbox::stdout_of([&] { text = written(band, 0); }));
    EXPECT_THAT(text, testing::HasSubstr(lines(interface(band, 0), {"WmmCapable=", "TxBurst=1"})));
  }
}

TEST_F(ScriptWmm, UnreadableCountIsReportedAndLeavesTheWmmPartAlone) {
  for (const int band : {0, 1}) {
    dat::load_text(band, dat::with(sandbox::full_dat_without(band, "BssidNum"), "WirelessMode", "0"));
    script::take_snapshot(band);
    std::string text;
    EXPECT_EQ(
        "write_wlan_config:wifimgr_lib_get_bssidnum fail.\n"
        "write_wlan_config:wifimgr_lib_get_wmmCapable fail.\n",
        sandbox::stdout_of([&] { text = written(band, 0); }));
    EXPECT_EQ(lines(interface(band, 0), {"WmmCapable=", "TxBurst=1"}), text);
  }
}

TEST_F(ScriptWmm, FixedAndSilentModesReadNoCapability) {
  for (const auto& [band, mode] : std::initializer_list<std::pair<int, const char*>>{{0, "9"}, {1, "14"}}) {
    sandbox::load(band, dat::with(sandbox::full_dat_without(band, "WmmCapable"), "WirelessMode", mode));
    script::take_snapshot(band);
    EXPECT_EQ("", sandbox::stdout_of([b = band] { written(b, 0); }));
  }
}

TEST_F(ScriptWmm, EverySsidsCapabilityIsReadOnceMore) {
  for (const int band : {0, 1}) {
    load(band, {{"WirelessMode", "0"}, {"BssidNum", "3"}, {"WmmCapable", "1;1;1"}});
    Settings reads;
    for (const std::string& call : calls::made_by([band] { written(band, 1); })) {
      if (call.rfind("get_wmmCapable", 0) == 0) reads.push_back(call);
    }
    const std::string call = "get_wmmCapable(" + std::to_string(band) + ",";
    EXPECT_THAT(reads, ElementsAre(call + "2)", call + "1)", call + "2)", call + "3)"));
  }
}

TEST_F(ExecuteScript, NamesItsInterfaceAsTheBandsSnapshotDoes) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"AuthMode", "OPEN;OPEN"}});
    script::take_snapshot(1 - band);
    store_global[band] = {};
    const auto first_line = [band] { return written(band, 0).substr(0, 42); };
    EXPECT_EQ("/userfs/bin/iwpriv 0 set AccessPolicy=0\n\n/", first_line());
    std::strcpy(store_global[band].prefix, "wlan");
    EXPECT_EQ("/userfs/bin/iwpriv wlan0 set AccessPolicy=", first_line());
    std::memcpy(store_global[band].prefix, "0123456789abcdef", 16);
    store_global[band].bss_count = 0x7a7a7a7a;
    EXPECT_EQ("/userfs/bin/iwpriv 0123456789abcdef0 set A", first_line());
  }
}

TEST_F(ExecuteScript, RunsNothing) {
  load(0, {});
  written(0, 0);
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace
