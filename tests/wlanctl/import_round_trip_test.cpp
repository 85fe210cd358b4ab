// export and import: what one gateway has, another gets.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "live_steps.h"

namespace wlanctl_test {
namespace {

using testing::HasSubstr;

struct DatText {
  const char* text;
  const char* refused;  // the first setting that no gateway takes anew; "" where all are taken
};

class RoundTrip : public testing::TestWithParam<DatText> {
 protected:
  static Words options(const TestFolder& folder) {
    write_file(folder / "radio.dat", GetParam().text);
    return {"--dat24", folder / "radio.dat", "--dat5", folder / "radio.dat"};
  }
};

// Whatever a setting was meanwhile: what is there already needs no setter.
TEST_P(RoundTrip, GivesTheSameTextAgain) {
  const TestFolder folder;
  const auto steps =
      run_live({"wlanctl export >before.json; wlanctl export 2.4g --format dat >before.dat",
                "wlanctl import before.json; wlanctl export | cmp - before.json && echo same",
                "for i in TxPower=7 HideSSID:1=1 SSID:1=Other BeaconPeriod=30; do wlanctl set 2.4g $i --force; done "
                ">/dev/null 2>&1; wlanctl import before.json --force; wlanctl export | cmp - before.json && echo same",
                "wlanctl import before.dat 2.4g; wlanctl export 2.4g --format dat | cmp - before.dat && echo same"},
               options(folder));
  for (const size_t at : {1u, 2u, 3u}) {
    EXPECT_THAT(steps[at].out, testing::EndsWith("same\n")) << at << steps[at].err;
  }
}

// Into a gateway with the dat files that it is supplied with. Those have keys that the text lacks.
TEST_P(RoundTrip, GoesOverIntoASuppliedGateway) {
  const TestFolder folder;
  const std::string exported = run_live({"wlanctl export 2.4g"}, options(folder))[0].out;
  const auto steps = run_live({into("f.json", exported) + "wlanctl export 2.4g >before; wlanctl import f.json --force",
                               "wlanctl export 2.4g", "wlanctl export 2.4g | cmp - before && echo same"});
  if (GetParam().refused[0] != '\0') {
    EXPECT_EQ(1, steps[0].status);
    EXPECT_THAT(steps[0].err, HasSubstr(std::string(GetParam().refused) + " cannot be "));
    EXPECT_EQ("same\n", steps[2].out);
    return;
  }
  EXPECT_EQ(0, steps[0].status) << steps[0].err;
  const Json wanted = document_in(exported)["bands"]["2.4g"]["settings"];
  const Json now = document_in(steps[1].out)["bands"]["2.4g"]["settings"];
  for (const auto& [name, value] : wanted.items()) {
    // Nothing sets these.
    if (name == "MacAddress" || name.starts_with("ApCliMacManual:")) continue;
    EXPECT_EQ(value, now[name]) << name;
  }
}

// Into a gateway whose dat files have no settings yet, and whose store is made of what was imported.
TEST_P(RoundTrip, GivesTheSameTextInAnEmptyGateway) {
  const TestFolder folder;
  const auto first = run_live({"wlanctl export", "wlanctl export 2.4g --format dat"}, options(folder));
  write_file(folder / "empty.dat", "Default\n");
  const auto second = run_steps({into("f.json", first[0].out) + "wlanctl import f.json --to-file --force",
                                 "library_probe init 0 init 1 >/dev/null; wlanctl export",
                                 "echo Default >" + std::string(kDat) + "; ipcrm -M 0x12345; " +
                                     into("f.dat", first[1].out) + "wlanctl import f.dat 2.4g --to-file --force",
                                 "library_probe init 0 >/dev/null; wlanctl export 2.4g --format dat"},
                                {"--dat24", folder / "empty.dat", "--dat5", folder / "empty.dat"});
  EXPECT_EQ(0, second[0].status) << second[0].err;
  EXPECT_EQ(first[0].out, second[1].out);
  EXPECT_EQ(0, second[2].status) << second[2].err;
  const bool has_flag = first[1].out.find("\nReloadFlag=") != std::string::npos;
  EXPECT_EQ(first[1].out + (has_flag ? "" : "ReloadFlag=0\n"), second[3].out);
}

constexpr DatText kDatTexts[] = {
    {"Default\nBssidNum=1\n", ""},
    {"Default\nBssidNum=2\nHideSSID=0;1\nSSID1=One\nNobodyKnows=x\nEmpty=\n", ""},
    {"Default\nBssidNum=2\nHideSSID=0;1\n", ""},
    {"Default\n# comment\n\nBssidNum=2\nWirelessMode=16\nReloadFlag=0\nWdsEncrypType=AES;AES;AES;WEP\n", ""},
    {"Default\nBssidNum=3\nChannel=6\nHT_TxStream=1;22;333;4;5;6;7;8\nSSID1=home\nSSID3=a guest\nWPAPSK2=secret pass\n",
     ""},
    {"BssidNum=8\nChannel=6\nHT_TxStream=1;1;1;1;1;1;1;1\nSSID1=home\nWPAPSK1=secret\n", ""},
    {"Default\n#comment\n\nBssidNum=2\nSSID1=a\nSSID2=b\nSSID3=c\nAccessPolicy0=0\nAccessPolicy1=1\nAccessPolicy2=2\n"
     "AccessControlList0=02:00:00:00:01:00;02:00:00:00:01:01\n",
     ""},
    {"Default\nBssidNum=2\nDfsDedicatedZeroWait=0\nDfsZeroWaitDefault=0\nMapMode=1\nMboSupport1=0\nMboSupport2=1\n",
     ""},
    {"BssidNum=2\nWHNAT=102\nChannel=103\nCountryRegion=104\nCountryRegionABand=105\nBeaconPeriod=106\n", "WHNAT"},
    {"Default\nBssidNum=2\nSSID1=Kitchen\nSSID2=Guest\nHideSSID=0;1\nAuthMode=OPEN;WPA2PSK\nKey1Str1=12345\nVHT_BW=1;"
     "1\n",
     ""},
    {"Default\nBssidNum=8\nHideSSID=0;1;2;3;4;5;6;7\nWdsList=02:00:00:00:00:01\nAPAifsn=3;7;1;1\nRADIUS_Key1=k\n"
     "AutoChannelSkipList=52;56;60;64\n",
     "HideSSID:3"},
    {"BssidNum=8\nSSID1=\xff\xfe\nSSID2= blanks \nSSID3=caf\xc3\xa9\n", ""},
    {"Default\nBssidNum=2\nHT_TxStream=1;2\n", ""},
    {"Default\nBssidNum=4\nAuthMode=OPEN\n", ""},
    {"Default\nBssidNum=2\nReloadFlag=0\nCountryRegion=5\nWirelessMode=9\nChannel=6\n"
     "AutoChannelSkipList=12;13\nCountryCode=DE\nMacAddress=02:00:00:00:00:01\nBeaconPeriod=100\n"
     "DtimPeriod=1\nRTSThreshold=2347\nFragThreshold=2346\nTxPower=100\nPERCENTAGEenable=0\n"
     "BGProtection=0\nDisableOLBC=0\nTxPreamble=0\nTxBurst=0\nPktAggregate=0\nTurboRate=0\n"
     "NoForwardingBTNBSSID=0\nShortSlot=0\nWirelessEvent=0\nPMKCachePeriod=10\nBasicRate=15\n"
     "DLSCapable=0\nEfuseBufferMode=0\nAMSDU_NUM=8\nDscpPriMapEnable=0\nHT_BW=1\nHT_GI=1\n"
     "HT_OpMode=0\nHT_TxStream=2\nHT_RxStream=2\nHT_LDPC=0\nHT_EXTCHA=0\nHT_BSSCoexistence=0\n"
     "HT_AutoBA=0\nHT_RDG=0\nHT_MpduDensity=0\nHT_BAWinSize=64\nHT_HTC=0\nHT_LinkAdapt=0\n"
     "HT_AMSDU=0\nHT_STBC=0\nIEEE80211H=0\nG_BAND_256QAM=0\nWHNAT=0\nWOEOFF=0\nProbeHideSSID=0\n"
     "SHORTGIFLAG=0\nITxBfEn=0\nETxBfEnCond=0\nETxBfIncapable=0\nMUTxRxEnable=0\nStaNumDetect=0\n"
     "VHT_BW=1;1\nVHT_SGI=1;1\nVHT_LDPC=0\nVHT_STBC=0\nVHT_BW_SIGNAL=0\nVht1024QamSupport=0\n"
     "MuOfdmaDlEnable=0\nMuOfdmaUlEnable=0\nMuMimoDlEnable=0\nMuMimoUlEnable=0\nSREnable=0\n"
     "SRMode=0\nSRSDEnable=0\nPPEnable=0\nTWTSupport=0\nHeraStbcPriority=0\nMaxRuOfdma=8\n"
     "MaxDLMuMimo=4\nMaxULMuMimo=4\nDisable160RuMu=0\nown_ip_addr=192.168.1.1\n"
     "session_timeout_interval=0\nEAPifname=br-lan\nPreAuthifname=br-lan\nEnableSSID=1;1\n"
     "HideSSID=0;0\nNoForwarding=0;0\nMaxStaNum=32;32\nMbssMaxStaNum=32;32\nWmmCapable=1;1\n"
     "APSDCapable=1;1\nIgmpSnEnable=1;1\nFixedTxMode=0;0\nTxRate=0;0\nHT_MCS=33;33\n"
     "FtSupport=0;0\nFtOtd=0;0\nRRMEnable=1;1\nWNMEnable=1;1\nApCliMacManual_Flag=0;0\n"
     "ApCliMacManual=02:00:00:00:00:03;02:00:00:00:00:04\nAuthMode=WPA2PSK;WPA2PSK\n"
     "EncrypType=AES;AES\nWEPAuthType=OPEN;OPEN\nIEEE8021X=0;0\nDefaultKeyID=1;1\nKey1Type=0;0\n"
     "Key2Type=0;0\nKey3Type=0;0\nKey4Type=0;0\nRekeyMethod=TIME;TIME\nRekeyInterval=3600;3600\n"
     "PreAuth=0;0\nPMFMFPC=0;0\nPMFMFPR=0;0\nPMFSHA256=0;0\n"
     "RADIUS_Server=192.168.1.2;192.168.1.2\nRADIUS_Port=1812;1812\nWscConfMode=7;7\n"
     "WscConfStatus=2;2\nWscV2Support=1;1\nWdsEnable=0\nWdsEncrypType=NONE;NONE;NONE;NONE\n"
     "WdsPhyMode=HTMIX;HTMIX;HTMIX;HTMIX\n"
     "WdsList=00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00\n"
     "Wds0Key=linkkey0\nWds1Key=linkkey1\nWds2Key=linkkey2\nWds3Key=linkkey3\nAPAifsn=3;7;1;1\n"
     "APCwmin=4;4;3;2\nAPCwmax=6;10;4;3\nAPTxop=0;0;94;47\nAPACM=0;0;0;0\nBSSAifsn=3;7;2;2\n"
     "BSSCwmin=4;4;3;2\nBSSCwmax=10;10;4;3\nBSSTxop=0;0;94;47\nBSSACM=0;0;0;0\nAckPolicy=0;0;0;0\n"
     "SSID1=Net0-1\nSSID2=Net0-2\nWPAPSK1=passphrase1\nRADIUS_Key1=secret-of-1\nKey1Str1=key1-1\n"
     "WscDefaultSSID1=Default-1\nAccessPolicy0=0\nAccessControlList0=02:00:00:00:01:00\n",
     ""},
    {"Default\n# soaked\nBssidNum=8\nReloadFlag=0\nWirelessMode=9\nChannel=6\n"
     "HideSSID=0;1;0;1;0;1;0;1\nAuthMode=OPEN;WPA2PSK;WPA2PSK;OPEN;OPEN;OPEN;OPEN;OPEN\n"
     "EncrypType=NONE;AES;AES;NONE;NONE;NONE;NONE;NONE\nBeaconPeriod=100\nTxPower=100\nHT_BW=1\n"
     "WmmCapable=1;1;1;1;1;1;1;1\nEnableSSID=1;1;0;0;0;0;0;0\nAPAifsn=3;7;1;1\nWdsEnable=0\n"
     "WdsList=02:00:00:00:00:01\nNoForwarding=0;0;0;0;0;0;0;0\nSSID1=Network-1\nSSID2=Network-2\n"
     "SSID3=Network-3\nSSID4=Network-4\nSSID5=Network-5\nSSID6=Network-6\nSSID7=Network-7\n"
     "SSID8=Network-8\n"
     "WPAPSK1="
     "11111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111111"
     "111111111111111111111111111\n",
     "WPAPSK:1"},
};

INSTANTIATE_TEST_SUITE_P(DatTexts, RoundTrip, testing::ValuesIn(kDatTexts));

TEST(Import, BringsASuppliedGatewayToAnother) {
  const auto first =
      run_live({"wlanctl set 2.4g BssidNum=4 SSID:1=Attic SSID:4=Cellar HideSSID:3=1 WPAPSK:1=one-of-mine "
                "AuthMode:2=OPEN EncrypType:2=NONE Channel=11 WirelessMode=9 HT_BW=0 AccessPolicy:1=1 "
                "'AccessControlList:1=02:00:00:00:01:00;02:00:00:00:01:01' 'AutoChannelSkipList=1;2;3;4;5' "
                ">/dev/null; wlanctl set 5g Channel=100 VHT_BW=0 WdsEnable=1 WdsKey:1=12345678 >/dev/null; "
                "wlanctl export",
                "wlanctl export 5g --format dat"});
  const auto second =
      run_steps({into("all.json", first[0].out) + "wlanctl import all.json >/dev/null", "wlanctl export"});
  EXPECT_EQ(0, second[0].status) << second[0].err;
  EXPECT_EQ(first[0].out, second[1].out);
  const auto third = run_steps({into("radio.dat", first[1].out) + "wlanctl import radio.dat 5g --replace >/dev/null",
                                "wlanctl export 5g --format dat"});
  EXPECT_EQ(0, third[0].status) << third[0].err;
  EXPECT_EQ(first[1].out, third[1].out);
}

// A line for each setting that takes one of several values, with the last of them.
std::string lines_of_other_values(const std::string& band) {
  std::string lines;
  const Json document = json_of("keys " + band);
  for (const Json& key : document["data"]["keys"]) {
    if (key["choices"].empty() || key["key"] == "BssidNum" || key["key"] == "AuthMode") continue;
    const std::string value = key["choices"].back();
    if (key["scope"] == "band") {
      lines += key["key"].get<std::string>() + "=" + value + "\n";
    } else {
      for (const char* const index : {":1=", ":2="}) lines += key["key"].get<std::string>() + index + value + "\n";
    }
  }
  return lines;
}

// Whatever the setters make of each other's values.
TEST(Import, BringsEverySettingToAnotherGateway) {
  for (const char* const band : {"2.4g", "5g"}) {
    const std::string lines = lines_of_other_values(band);
    EXPECT_GT(lines_of(lines).size(), 80u);
    const auto first =
        run_live({into("f", lines) + "while read -r line; do \"$WLANCTL_PROGRAM\" set " + band +
                      " --force \"$line\"; done <f >/dev/null 2>&1",
                  std::string("wlanctl export ") + band, std::string("wlanctl export --format dat ") + band});
    const auto second =
        run_live({into("f.json", first[1].out) + "wlanctl export >before; wlanctl import --force f.json >/dev/null",
                  std::string("wlanctl export ") + band, "wlanctl import before --force >/dev/null",
                  into("f.dat", first[2].out) + "wlanctl import --force f.dat " + band + " >/dev/null",
                  std::string("wlanctl export ") + band});
    EXPECT_EQ(0, second[0].status) << second[0].err;
    EXPECT_EQ(first[1].out, second[1].out);
    EXPECT_EQ(0, second[2].status) << second[2].err;
    EXPECT_EQ(0, second[3].status) << second[3].err;
    EXPECT_EQ(first[1].out, second[4].out);
  }
}

}  // namespace
}  // namespace wlanctl_test
