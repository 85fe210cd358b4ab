// A dat text with every key that the tests use, for two SSIDs; keys of SSIDs are there for all eight. The values are the
// tests' own; a setting without a line here, whose functions its row makes, has those of its row.
#pragma once

#include <string>

#include "support/settings_table.h"

namespace sandbox {

struct FullDatBand {
  const char* name;  // in SSIDs
  const char* country_region;
  const char* mode_and_channel;
  const char* mac_address;
};

inline constexpr FullDatBand kFullDatBands[] = {
    {"Net0", "CountryRegion=5\n", "WirelessMode=9\nChannel=6\nAutoChannelSelect=0\nAutoChannelSkipList=12;13\n",
     "02:00:00:00:00:01"},
    {"Net1", "CountryRegionABand=7\n", "WirelessMode=14\nChannel=36\nAutoChannelSelect=0\nAutoChannelSkipList=52\n",
     "02:00:00:00:00:02"},
};

inline constexpr char kFullDatStart[] =
    "Default\n"
    "#The tests' dat file\n"
    "\n"
    "BssidNum=2\n"
    "ReloadFlag=0\n";

// From the beacon to the security of the SSIDs.
inline constexpr char kFullDatSettings[] =
    "BeaconPeriod=100\n"
    "DtimPeriod=1\n"
    "RTSThreshold=2347\n"
    "FragThreshold=2346\n"
    "TxPower=100\n"
    "PERCENTAGEenable=0\n"
    "BGProtection=0\n"
    "DisableOLBC=0\n"
    "TxPreamble=0\n"
    "TxBurst=0\n"
    "PktAggregate=0\n"
    "TurboRate=0\n"
    "NoForwardingBTNBSSID=0\n"
    "ShortSlot=0\n"
    "WirelessEvent=0\n"
    "PMKCachePeriod=10\n"
    "BasicRate=15\n"
    "DLSCapable=0\n"
    "EfuseBufferMode=0\n"
    "AMSDU_NUM=8\n"
    "DscpPriMapEnable=0\n"
    "HT_BW=1\n"
    "HT_GI=1\n"
    "HT_OpMode=0\n"
    "HT_TxStream=2\n"
    "HT_RxStream=2\n"
    "HT_LDPC=0\n"
    "HT_EXTCHA=0\n"
    "HT_BSSCoexistence=0\n"
    "HT_AutoBA=0\n"
    "HT_RDG=0\n"
    "HT_MpduDensity=0\n"
    "HT_BAWinSize=64\n"
    "HT_HTC=0\n"
    "HT_LinkAdapt=0\n"
    "HT_AMSDU=0\n"
    "HT_STBC=0\n"
    "IEEE80211H=0\n"
    "G_BAND_256QAM=0\n"
    "WHNAT=0\n"
    "WOEOFF=0\n"
    "ProbeHideSSID=0\n"
    "SHORTGIFLAG=0\n"
    "ITxBfEn=0\n"
    "ETxBfEnCond=0\n"
    "ETxBfIncapable=0\n"
    "MUTxRxEnable=0\n"
    "StaNumDetect=0\n"
    "VHT_BW=1;1\n"
    "VHT_SGI=1;1\n"
    "VHT_LDPC=0\n"
    "VHT_STBC=0\n"
    "VHT_BW_SIGNAL=0\n"
    "Vht1024QamSupport=0\n"
    "MuOfdmaDlEnable=0\n"
    "MuOfdmaUlEnable=0\n"
    "MuMimoDlEnable=0\n"
    "MuMimoUlEnable=0\n"
    "SREnable=0\n"
    "SRMode=0\n"
    "SRSDEnable=0\n"
    "PPEnable=0\n"
    "TWTSupport=0\n"
    "HeraStbcPriority=0\n"
    "MaxRuOfdma=8\n"
    "MaxDLMuMimo=4\n"
    "MaxULMuMimo=4\n"
    "Disable160RuMu=0\n"
    "own_ip_addr=192.168.1.1\n"
    "session_timeout_interval=0\n"
    "EAPifname=br-lan\n"
    "PreAuthifname=br-lan\n"
    "EnableSSID=1;1\n"
    "HideSSID=0;0\n"
    "NoForwarding=0;0\n"
    "MaxStaNum=32;32\n"
    "MbssMaxStaNum=32;32\n"
    "WmmCapable=1;1\n"
    "APSDCapable=1;1\n"
    "IgmpSnEnable=1;1\n"
    "FixedTxMode=0;0\n"
    "TxRate=0;0\n"
    "HT_MCS=33;33\n"
    "FtSupport=0;0\n"
    "FtOtd=0;0\n"
    "RRMEnable=1;1\n"
    "WNMEnable=1;1\n"
    "ApCliMacManual_Flag=0;0\n"
    "ApCliMacManual=02:00:00:00:00:03;02:00:00:00:00:04\n"
    "AuthMode=WPA2PSK;WPA2PSK\n"
    "EncrypType=AES;AES\n"
    "WEPAuthType=OPEN;OPEN\n"
    "IEEE8021X=0;0\n"
    "DefaultKeyID=1;1\n"
    "Key1Type=0;0\n"
    "Key2Type=0;0\n"
    "Key3Type=0;0\n"
    "Key4Type=0;0\n"
    "RekeyMethod=TIME;TIME\n"
    "RekeyInterval=3600;3600\n"
    "PreAuth=0;0\n"
    "PMFMFPC=0;0\n"
    "PMFMFPR=0;0\n"
    "PMFSHA256=0;0\n"
    "RADIUS_Server=192.168.1.2;192.168.1.2\n"
    "RADIUS_Port=1812;1812\n"
    "WscConfMode=7;7\n"
    "WscConfStatus=2;2\n"
    "WscV2Support=1;1\n";

// WDS and WMM.
inline constexpr char kFullDatEnd[] =
    "WdsEnable=0\n"
    "WdsEncrypType=NONE;NONE;NONE;NONE\n"
    "WdsPhyMode=HTMIX;HTMIX;HTMIX;HTMIX\n"
    "WdsList=00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00\n"
    "Wds0Key=linkkey0\n"
    "Wds1Key=linkkey1\n"
    "Wds2Key=linkkey2\n"
    "Wds3Key=linkkey3\n"
    "APAifsn=3;7;1;1\n"
    "APCwmin=4;4;3;2\n"
    "APCwmax=6;10;4;3\n"
    "APTxop=0;0;94;47\n"
    "APACM=0;0;0;0\n"
    "BSSAifsn=3;7;2;2\n"
    "BSSCwmin=4;4;3;2\n"
    "BSSCwmax=10;10;4;3\n"
    "BSSTxop=0;0;94;47\n"
    "BSSACM=0;0;0;0\n"
    "AckPolicy=0;0;0;0\n";

// The lines of the rows that `text` does not have.
inline std::string other_default_lines(const std::string& text, int band) {
  std::string lines;
  for (const SettingRow& row : kSettings) {
    const bool is_made = row.writes == "BAND" || row.writes == "HT_GROUP" || row.writes == "SSID";
    if (!is_made || row.defaults[band] == nullptr) continue;
    if (text.find("\n" + dat_key_of(row, 1) + "=") == std::string::npos) lines += default_lines(row, band);
  }
  return lines;
}

inline std::string full_dat_text(const FullDatBand& band) {
  std::string text = std::string(kFullDatStart) + band.country_region + band.mode_and_channel + "CountryCode=DE\n" +
                     "MacAddress=" + band.mac_address + "\n" + kFullDatSettings;
  for (const char ssid : {'1', '2', '3', '4', '5', '6', '7', '8'}) {
    text = text + "SSID" + ssid + "=" + band.name + "-" + ssid + "\n";
    text = text + "WPAPSK" + ssid + "=passphrase" + ssid + "\n";
    text = text + "RADIUS_Key" + ssid + "=secret-of-" + ssid + "\n";
    text = text + "WscDefaultSSID" + ssid + "=Default-" + ssid + "\n";
    for (const char key : {'1', '2', '3', '4'}) {
      text = text + "Key" + key + "Str" + ssid + "=key" + key + "-" + ssid + "\n";
    }
  }
  for (const char list : {'0', '1', '2', '3', '4', '5', '6', '7'}) {
    text = text + "AccessPolicy" + list + "=0\n";
    text = text + "AccessControlList" + list + "=02:00:00:00:01:0" + list + "\n";
  }
  text += kFullDatEnd;
  return text + other_default_lines(text, &band == &kFullDatBands[0] ? 0 : 1);
}

}  // namespace sandbox
