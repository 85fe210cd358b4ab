/* The settings of both radios, one row each: what a management process wants to know to list, explain or check them by
 * itself. The library's own getters and setters are made of these rows.
 *
 * Define the macros that you want and include this file, as often as you like; it undefines them at its end. Those left
 * undefined are empty. For a list of all keys:
 *
 *   #define WIFIMGR_SETTING(key, ...) key,
 *   static const char* const keys[] = {
 *   #include <wifimgr_settings.h>
 *   };
 *
 * WIFIMGR_SETTING_GROUP(heading)   what the settings that follow are about
 * WIFIMGR_DAT_KEY(key, meaning, on_2_4g, on_5g)   a key of the dat files for the driver, without a setter of the common
 *                                                  type
 * WIFIMGR_SETTING(key, scope, numbering, bands, reads, getter, writes, setter, accepts, low, high, words, refusal,
 *                 meaning, unit, on_2_4g, on_5g, secrecy, effect)
 *
 * Columns in capitals are bare words: paste them (SCOPE_##scope) or make texts of them (#scope). They and their words:
 *
 * key        in the dat file; "%d" is the number of a key per SSID or link
 * scope      BAND, SSID or LINK: what the setter's index counts (-1 for BAND)
 * numbering  SHARED: one key (with a field per SSID, when the scope is SSID); FROM_ONE: "%d" is the SSID's or link's
 *            number; FROM_ZERO: that number minus one
 * bands      BOTH, ONLY_2_4G or ONLY_5G: where the setter accepts values
 * getter     the exported function, of the type that `reads` names; NULL where there is none
 * reads      BAND: int (int, int, char*, unsigned). SSID: uint64_t (uint32_t, int32_t, char*, uint32_t). WMM, and
 *            WMM_INVALID and WMM_MISSPELT, which refuse an index in words of their own: int (uint32_t, int32_t, char*,
 *            uint32_t). OWN: a function by itself, of the type in wifimgr_lib.h. NONE: no getter
 * setter     the exported function, a wifimgr_setter_t
 * writes     how it was made: BAND, HT_GROUP, SSID, WMM, WPS (a family each, see wifimgr_lib.h) or OWN, by itself
 * accepts    TEXT            any text
 *            DIGITS          digits, however many
 *            NUMBER          digits, `low` to `high`
 *            TEN_DIGITS      the same, ten digits at most
 *            ONE_DIGIT       exactly one digit, `low` to `high`
 *            LEADING_NUMBER  a text whose leading number is `low` to `high`; one without a number is 0
 *            LENGTH          at most `high` characters
 *            WORDS           one of `words`, which blanks separate
 *            ADDRESS, PASSPHRASE, KEY_FORMAT, LIST, RULE   what `words` says
 *            NOTHING         nothing: every value is refused
 * refusal    the setter's message, or the first of several; one that names 2.4G names 5G there, "%d" prints the number
 *            refused. "" where nothing is refused or no words are said
 * meaning    one line, `unit` left out; unit  "" where there is none
 * on_2_4g, on_5g   the values in the dat files of the simulated gateway; NULL when the key is not in the band's file.
 *            Of an SSID or link: a value for each, joined by ";", the last for all that follow; "%d" is its number
 * secrecy    OPEN; SECRET: a key or passphrase, not to be shown
 * effect     what wifimgr_lib_wifi_config_oper answers after a change: SAVED 0, it takes effect with the next commit;
 *            RADIO 1, a restart of the radio (of SSID or link settings those of number 1 are watched); RADIO_ON_5G 1 on
 *            5G, 0 on 2.4G; RADIO_WITH_WDS 1 while WdsEnable is not 0 (WEP keys: and SSID 1 uses WEP), else 0; REBOOT 2.
 *            AT_ONCE: 0, the setter itself sends the value to the driver. WscV2Support is sent at once, too
 */
/* clang-format off */

#ifndef WIFIMGR_SETTING_GROUP
#define WIFIMGR_SETTING_GROUP(heading)
#endif
#ifndef WIFIMGR_DAT_KEY
#define WIFIMGR_DAT_KEY(key, meaning, on_2_4g, on_5g)
#endif
#ifndef WIFIMGR_SETTING
#define WIFIMGR_SETTING(key, scope, numbering, bands, reads, getter, writes, setter, accepts, low, high, words, refusal, meaning, unit, on_2_4g, on_5g, secrecy, effect)
#endif

WIFIMGR_SETTING_GROUP("Country and channel")
WIFIMGR_SETTING("CountryRegion", BAND, SHARED, ONLY_2_4G, OWN, wifimgr_lib_get_countryRegion, OWN, wifimgr_lib_set_countryRegion, RULE, 0, 0, "0 to 7, 31, 32, 33", "The input parameter is invalid.", "Regulatory region", "", "5", "5", OPEN, RADIO)
WIFIMGR_SETTING("CountryRegionABand", BAND, SHARED, ONLY_5G, OWN, wifimgr_lib_get_countryRegionABand, OWN, wifimgr_lib_set_countryRegionABand, NUMBER, 0, 14, "", "The input parameter is invalid.", "Regulatory region", "", "7", "7", OPEN, RADIO)
WIFIMGR_SETTING("CountryCode", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_countryCode, BAND, wifimgr_lib_set_countryCode, TEXT, 0, 0, "", "", "Two-letter country code", "", "DE", "DE", OPEN, SAVED)
WIFIMGR_SETTING("WirelessMode", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_wirelessMode, OWN, wifimgr_lib_set_wirelessMode, RULE, 0, 0, "2.4g 0, 1, 3 to 10, 16; 5g 2, 3, 5, 8, 10, 11, 14, 15, 17", "The WirelessMode value for 2.4G is invalid.", "Wireless mode", "", "16", "17", OPEN, RADIO)
WIFIMGR_SETTING("Channel", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_channel, BAND, wifimgr_lib_set_channel, NUMBER, 0, 180, "", "The input channel is invalid.Please input from 0 to 180", "Channel number; 0 lets the driver choose", "", "6", "36", OPEN, RADIO)
/* The next refusal says "channel" too; kept, as callers match the text. */
WIFIMGR_SETTING("AutoChannelSelect", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_autoChannelSelect, BAND, wifimgr_lib_set_autoChannelSelect, NUMBER, 0, 3, "", "The input channel is invalid.Please input from 0 to 3", "Automatic channel selection", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("AutoChannelSkipList", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_AutoChannelSkipList, TEXT, 0, 0, "", "", "Channels that the automatic selection leaves out, joined by ;", "", "12;13;14", "52;56;60;64", OPEN, SAVED)
WIFIMGR_SETTING("BssidNum", BAND, SHARED, BOTH, OWN, wifimgr_lib_get_bssidnum, OWN, wifimgr_lib_set_bssidNum, TEXT, 0, 0, "", "", "How many SSIDs the band serves", "", "2", "2", OPEN, REBOOT)
WIFIMGR_SETTING("MacAddress", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_macAddress, BAND, wifimgr_lib_set_MacAddress, NOTHING, 0, 0, "", "Please input correct MacAddress, such as 00:1a:22:aa:dc:a1.", "The radio's MAC address", "", "02:28:10:24:00:00", "02:28:10:50:00:00", OPEN, SAVED)
WIFIMGR_DAT_KEY("ReloadFlag", "1 when the next commit must reload the driver module", "0", "0")
WIFIMGR_SETTING("EfuseBufferMode", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_EfuseBufferMode, BAND, wifimgr_lib_set_EfuseBufferMode, NUMBER, 0, 1, "", "The EfuseBufferMode value should be 0 or 1.", "Calibration from the buffer instead of the fuses", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("IEEE80211H", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_IEEE80211H, NUMBER, 0, 1, "", "The IEEE80211H value is invalid.", "802.11h spectrum management", "", "0", "1", OPEN, SAVED)
WIFIMGR_SETTING("WirelessEvent", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_wirelessEvent, BAND, wifimgr_lib_set_wirelessEvent, NUMBER, 0, 1, "", "The WirelessEvent value is invalid.", "Wireless events to user space", "", "1", "1", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("SSIDs")
WIFIMGR_SETTING("SSID%d", SSID, FROM_ONE, BOTH, SSID, wifimgr_lib_get_ssid, SSID, wifimgr_lib_set_ssid, TEXT, 0, 0, "", "", "Network name", "", "Gateway-Home;Gateway-Guest;Gateway-%d", "Gateway-Home-5G;Gateway-Guest-5G;Gateway-%d-5G", OPEN, SAVED)
WIFIMGR_SETTING("EnableSSID", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_enableSsid, SSID, wifimgr_lib_set_enableSsid, TEXT, 0, 0, "", "", "Whether the SSID is served", "", "1", "1", OPEN, RADIO)
WIFIMGR_SETTING("HideSSID", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_hideSSID, SSID, wifimgr_lib_set_hideSSID, NUMBER, 0, 1, "", "The HideSSID value should be 0 or 1.", "Beacons without the network name", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("MaxStaNum", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_maxStaNum, SSID, wifimgr_lib_set_maxStaNum, NUMBER, 0, 45, "", "The MaxStaNum value is invalid.", "Most stations", "", "32", "32", OPEN, SAVED)
WIFIMGR_SETTING("MbssMaxStaNum", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_mbssMaxStaNum, SSID, wifimgr_lib_set_mbssMaxStaNum, NUMBER, 0, 64, "", "The MbssMaxStaNum value is invalid,%d.", "Most stations of the SSID among several", "", "32", "32", OPEN, SAVED)
WIFIMGR_SETTING("NoForwarding", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_noForwarding, SSID, wifimgr_lib_set_noForwarding, NUMBER, 0, 1, "", "The NoForwarding value is invalid.", "No forwarding between stations of the SSID", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("NoForwardingBTNBSSID", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_noForwardingBTNBSSID, BAND, wifimgr_lib_set_noForwardingBTNBSSID, NUMBER, 0, 1, "", "The NoForwardingBTNBSSID value is invalid.", "No forwarding between BSSs", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("IgmpSnEnable", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_igmpSnEnable, SSID, wifimgr_lib_set_igmpSnEnable, NUMBER, 0, 1, "", "The IgmpSnEnable value should be 0 or 1.", "IGMP snooping", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("ProbeHideSSID", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_ProbeHideSSID, NUMBER, 0, 1, "", "The ProbeHideSSID value is invalid.", "Probe responses for a hidden SSID", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("StaNumDetect", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_StaNumDetect, NUMBER, 0, 2147483647, "", "The StaNumDetect value is invalid.", "Station count detection", "", "0", "0", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("Rates, beacons and power")
WIFIMGR_SETTING("BasicRate", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_basicRate, BAND, wifimgr_lib_set_basicRate, NUMBER, 0, 4095, "", "The BasicRate value is invalid.", "Basic rate set as a bit mask", "", "15", "15", OPEN, SAVED)
WIFIMGR_SETTING("TxRate", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_txRate, SSID, wifimgr_lib_set_txRate, NUMBER, 0, 2147483647, "", "The TxRate value is invalid.", "Fixed TX rate", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("FixedTxMode", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_fixedTxMode, SSID, wifimgr_lib_set_fixedTxMode, NUMBER, 0, 2, "", "The FixedTxMode value should be between 0 and 2.", "Fixed TX mode", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("BeaconPeriod", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_beaconPeriod, BAND, wifimgr_lib_set_beaconPeriod, NUMBER, 20, 1024, "", "The BeaconPeriod value is invalid.", "Beacon interval", "time units of 1.024 ms", "100", "100", OPEN, RADIO)
WIFIMGR_SETTING("DtimPeriod", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_dtimPeriod, BAND, wifimgr_lib_set_dtimPeriod, NUMBER, 1, 255, "", "The DtimPeriod value is invalid.", "DTIM interval", "beacons", "1", "1", OPEN, RADIO)
WIFIMGR_SETTING("TxPower", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_txPower, BAND, wifimgr_lib_set_txPower, NUMBER, 0, 100, "", "The TxPower value is invalid.", "TX power; on 2.4G the normalisation takes 1 to 6 for levels", "percent", "100", "100", OPEN, RADIO)
WIFIMGR_SETTING("PERCENTAGEenable", BAND, SHARED, BOTH, NONE, NULL, BAND, wifimgr_lib_set_PERCENTAGEenable, NUMBER, 0, 1, "", "The PERCENTAGEenable value is invalid.", "Whether TxPower counts as a percentage", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("DisableOLBC", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_disableOLBC, BAND, wifimgr_lib_set_disableOLBC, NUMBER, 0, 1, "", "The DisableOLBC value is invalid.", "Disables overlapping legacy BSS detection", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("BGProtection", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_bgProtection, BAND, wifimgr_lib_set_bgProtection, NUMBER, 0, 2, "", "The BGProtection value is invalid.", "802.11b/g protection", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("TxPreamble", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_txPreamble, BAND, wifimgr_lib_set_txPreamble, NUMBER, 0, 1, "", "The TxPreamble value is invalid.", "Short preamble", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("RTSThreshold", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_rtsThreshold, BAND, wifimgr_lib_set_rtsThreshold, NUMBER, 1, 2347, "", "The RTSThreshold value is invalid.", "RTS threshold", "bytes", "2347", "2347", OPEN, SAVED)
WIFIMGR_SETTING("FragThreshold", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_fragThreshold, BAND, wifimgr_lib_set_fragThreshold, NUMBER, 256, 2346, "", "The FragThreshold value is invalid.", "Fragmentation threshold", "bytes", "2346", "2346", OPEN, RADIO)
WIFIMGR_SETTING("TxBurst", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_txBurst, BAND, wifimgr_lib_set_txBurst, NUMBER, 0, 1, "", "The TxBurst value is invalid.", "TX burst", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("PktAggregate", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_pktAggregate, BAND, wifimgr_lib_set_pktAggregate, NUMBER, 0, 1, "", "The PktAggregate value is invalid.", "Packet aggregation", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("TurboRate", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_turboRate, BAND, wifimgr_lib_set_turboRate, NUMBER, 0, 2147483647, "", "The TurboRate value is invalid.", "Turbo rate", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("ShortSlot", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_shortSlot, BAND, wifimgr_lib_set_shortSlot, NUMBER, 0, 1, "", "The ShortSlot value is invalid.", "Short slot time", "", "1", "1", OPEN, SAVED)
WIFIMGR_DAT_KEY("IdleTimeout", "Idle time-out of stations", "300", "300")
WIFIMGR_SETTING("DLSCapable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_dlsCapable, BAND, wifimgr_lib_set_dlsCapable, NUMBER, 0, 1, "", "The DLSCapable value should be 0 or 1.", "Direct link set-up", "", "0", "0", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("WMM")
WIFIMGR_SETTING("WmmCapable", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_wmmCapable, SSID, wifimgr_lib_set_wmmCapable, NUMBER, 0, 1, "", "The WmmCapable value should be 0 or 1.", "WMM", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("APSDCapable", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_apsdCapable, SSID, wifimgr_lib_set_apsdCapable, NUMBER, 0, 1, "", "The APSDCapable value should be 0 or 1.", "U-APSD", "", "0", "0", OPEN, RADIO)
WIFIMGR_SETTING("APAifsn", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_apAifsn, WMM, wifimgr_lib_set_apAifsn, LIST, 0, 0, "four numbers joined by ;", "", "The access point's AIFSN", "", "3;7;1;1", "3;7;1;1", OPEN, SAVED)
WIFIMGR_SETTING("APCwmin", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_apCwmin, WMM, wifimgr_lib_set_apCwmin, LIST, 0, 0, "four numbers joined by ;", "", "The access point's CWmin", "", "4;4;3;2", "4;4;3;2", OPEN, SAVED)
WIFIMGR_SETTING("APCwmax", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_apCwmax, WMM, wifimgr_lib_set_apCwmax, LIST, 0, 0, "four numbers joined by ;", "", "The access point's CWmax", "", "6;10;4;3", "6;10;4;3", OPEN, SAVED)
WIFIMGR_SETTING("APTxop", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_apTxop, WMM, wifimgr_lib_set_apTxop, LIST, 0, 0, "four numbers joined by ;", "", "The access point's TXOP", "", "0;0;94;47", "0;0;94;47", OPEN, SAVED)
WIFIMGR_SETTING("APACM", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_apACM, WMM, wifimgr_lib_set_apACM, LIST, 0, 0, "four numbers joined by ;", "", "The access point's admission control", "", "0;0;0;0", "0;0;0;0", OPEN, SAVED)
WIFIMGR_SETTING("BSSAifsn", BAND, SHARED, BOTH, WMM_INVALID, wifimgr_lib_get_bssAifsn, WMM, wifimgr_lib_set_bssAifsn, LIST, 0, 0, "four numbers joined by ;", "", "The stations' AIFSN", "", "3;7;2;2", "3;7;2;2", OPEN, SAVED)
WIFIMGR_SETTING("BSSCwmin", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_bssCwmin, WMM, wifimgr_lib_set_bssCwmin, LIST, 0, 0, "four numbers joined by ;", "", "The stations' CWmin", "", "4;4;3;2", "4;4;3;2", OPEN, SAVED)
WIFIMGR_SETTING("BSSCwmax", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_bssCwmax, WMM, wifimgr_lib_set_bssCwmax, LIST, 0, 0, "four numbers joined by ;", "", "The stations' CWmax", "", "10;10;4;3", "10;10;4;3", OPEN, SAVED)
WIFIMGR_SETTING("BSSTxop", BAND, SHARED, BOTH, WMM_MISSPELT, wifimgr_lib_get_bssTxop, WMM, wifimgr_lib_set_bssTxop, LIST, 0, 0, "four numbers joined by ;", "", "The stations' TXOP", "", "0;0;94;47", "0;0;94;47", OPEN, SAVED)
WIFIMGR_SETTING("BSSACM", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_bssACM, WMM, wifimgr_lib_set_bssACM, LIST, 0, 0, "four numbers joined by ;", "", "The stations' admission control", "", "0;0;0;0", "0;0;0;0", OPEN, SAVED)
WIFIMGR_SETTING("AckPolicy", BAND, SHARED, BOTH, WMM, wifimgr_lib_get_ackPolicy, WMM, wifimgr_lib_set_ackPolicy, LIST, 0, 0, "four numbers joined by ;", "", "The acknowledgement policy", "", "0;0;0;0", "0;0;0;0", OPEN, SAVED)
WIFIMGR_SETTING("DscpPriMapEnable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_DscpPriMapEnable, BAND, wifimgr_lib_set_DscpPriMapEnable, DIGITS, 0, 0, "", "The DscpPriMapEnable value should be number.", "DSCP to priority map", "", "0", "0", OPEN, SAVED)
WIFIMGR_DAT_KEY("WMMFLAG", "WMM flag", NULL, "1")

WIFIMGR_SETTING_GROUP("Security")
WIFIMGR_SETTING("AuthMode", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_authMode, SSID, wifimgr_lib_set_authMode, TEXT, 0, 0, "", "", "Authentication mode: OPEN, WPA2PSK, WPA3PSK, WPA2PSKWPA3PSK ...", "", "WPA2PSK", "WPA2PSK", OPEN, SAVED)
/* The next refusal leaves out GCMP256, which is accepted; kept, spelling included. */
WIFIMGR_SETTING("EncrypType", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_encrypType, SSID, wifimgr_lib_set_encrypType, WORDS, 0, 0, "NONE WEP TKIP AES TKIPAES GCMP256", "The EncrypType value should be chosed from NONE,WEP,TKIP,AES,TKIPAES.", "Cipher", "", "AES", "AES", OPEN, SAVED)
WIFIMGR_SETTING("WEPAuthType", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_wepAuthType, SSID, wifimgr_lib_set_wepAuthType, TEXT, 0, 0, "", "", "WEP authentication type", "", "OpenSystem", "OpenSystem", OPEN, SAVED)
WIFIMGR_SETTING("DefaultKeyID", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_defaultKeyID, SSID, wifimgr_lib_set_defaultKeyID, NUMBER, 0, 4, "", "The DefaultKeyID value is invalid.", "WEP key in use", "", "2", "2", OPEN, SAVED)
WIFIMGR_SETTING("PreAuth", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_preAuth, SSID, wifimgr_lib_set_preAuth, NUMBER, 0, 1, "", "The PreAuth value should be 0 or 1.", "WPA2 pre-authentication", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("RekeyMethod", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_rekeyMethod, SSID, wifimgr_lib_set_rekeyMethod, WORDS, 0, 0, "TIME PKT DISABLE", "The RekeyMethod value is invalid.", "Group key renewal", "", "TIME", "TIME", OPEN, SAVED)
WIFIMGR_SETTING("RekeyInterval", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_rekeyInterval, SSID, wifimgr_lib_set_rekeyInterval, NUMBER, 0, 4194303, "", "The RekeyInterval value is invalid.", "Group key renewal interval", "", "3600", "3600", OPEN, SAVED)
WIFIMGR_SETTING("PMKCachePeriod", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_pmkCachePeriod, BAND, wifimgr_lib_set_pmkCachePeriod, NUMBER, 0, 65535, "", "The PMKCachePeriod value is invalid.", "PMK cache period", "", "10", "10", OPEN, SAVED)
WIFIMGR_SETTING("PMFMFPC", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_PMFMFPC, SSID, wifimgr_lib_set_PMFMFPC, NUMBER, 0, 1, "", "The PMFMFPC value is invalid.", "PMF capable", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("PMFMFPR", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_PMFMFPR, SSID, wifimgr_lib_set_PMFMFPR, NUMBER, 0, 1, "", "The PMFMFPR value is invalid.", "PMF required", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("PMFSHA256", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_PMFSHA256, SSID, wifimgr_lib_set_PMFSHA256, NUMBER, 0, 1, "", "The PMFSHA256 value is invalid.", "PMF with SHA-256", "", "0", "0", OPEN, SAVED)
/* Only a key that is too long is refused; kept, the RADIUS secret below is checked harder. */
WIFIMGR_SETTING("WPAPSK%d", SSID, FROM_ONE, BOTH, SSID, wifimgr_lib_get_WPAPSK, SSID, wifimgr_lib_set_WPAPSK, LENGTH, 0, 64, "", "The WPAPSK value is invalid.", "WPA passphrase or pre-shared key", "", "sample-passphrase-%d", "sample-passphrase-%d", SECRET, SAVED)

WIFIMGR_SETTING_GROUP("WEP keys, four for each SSID")
WIFIMGR_SETTING("Key1Type", SSID, SHARED, BOTH, OWN, wifimgr_lib_get_key1Type, OWN, wifimgr_lib_set_key1Type, ONE_DIGIT, 0, 1, "", "The KeyType value is invalid.", "Form of WEP key 1: 0 hexadecimal, 1 characters", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("Key1Str%d", SSID, FROM_ONE, BOTH, OWN, wifimgr_lib_get_key1Str, OWN, wifimgr_lib_set_key1Str, TEXT, 0, 0, "", "", "WEP key 1", "", "0", "0", SECRET, RADIO_WITH_WDS)
WIFIMGR_SETTING("Key2Type", SSID, SHARED, BOTH, OWN, wifimgr_lib_get_key2Type, OWN, wifimgr_lib_set_key2Type, ONE_DIGIT, 0, 1, "", "The KeyType value is invalid.", "Form of WEP key 2: 0 hexadecimal, 1 characters", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("Key2Str%d", SSID, FROM_ONE, BOTH, OWN, wifimgr_lib_get_key2Str, OWN, wifimgr_lib_set_key2Str, TEXT, 0, 0, "", "", "WEP key 2", "", "0", "0", SECRET, RADIO_WITH_WDS)
WIFIMGR_SETTING("Key3Type", SSID, SHARED, BOTH, OWN, wifimgr_lib_get_key3Type, OWN, wifimgr_lib_set_key3Type, ONE_DIGIT, 0, 1, "", "The KeyType value is invalid.", "Form of WEP key 3: 0 hexadecimal, 1 characters", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("Key3Str%d", SSID, FROM_ONE, BOTH, OWN, wifimgr_lib_get_key3Str, OWN, wifimgr_lib_set_key3Str, TEXT, 0, 0, "", "", "WEP key 3", "", "0", "0", SECRET, RADIO_WITH_WDS)
WIFIMGR_SETTING("Key4Type", SSID, SHARED, BOTH, OWN, wifimgr_lib_get_key4Type, OWN, wifimgr_lib_set_key4Type, ONE_DIGIT, 0, 1, "", "The KeyType value is invalid.", "Form of WEP key 4: 0 hexadecimal, 1 characters", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("Key4Str%d", SSID, FROM_ONE, BOTH, OWN, wifimgr_lib_get_key4Str, OWN, wifimgr_lib_set_key4Str, TEXT, 0, 0, "", "", "WEP key 4", "", "0", "0", SECRET, RADIO_WITH_WDS)

WIFIMGR_SETTING_GROUP("802.1X and RADIUS")
WIFIMGR_SETTING("IEEE8021X", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_ieee8021x, SSID, wifimgr_lib_set_ieee8021x, ONE_DIGIT, 0, 1, "", "The IEEE8021X value is invalid.\nPlease input 0 or 1.", "802.1X", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("RADIUS_Server", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_radiusserver, SSID, wifimgr_lib_set_radiusserver, ADDRESS, 0, 0, "an IPv4 address", "The RADIUS_Server IP value is invalid.Please input from 0.0.0.0 to 255.255.255.255", "RADIUS server, IPv4", "", "192.168.1.2", "192.168.1.2", OPEN, SAVED)
WIFIMGR_SETTING("RADIUS_Port", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_radiusport, SSID, wifimgr_lib_set_radiusport, NUMBER, 1, 65535, "", "The RADIUS_Port value is invalid.\nPlease input DecNum from 1 - 65535", "RADIUS port", "", "1812", "1812", OPEN, SAVED)
WIFIMGR_SETTING("RADIUS_Key%d", SSID, FROM_ONE, BOTH, SSID, wifimgr_lib_get_radiuskey, SSID, wifimgr_lib_set_radiuskey, PASSPHRASE, 0, 0, "8 to 63 characters, or 64 hexadecimal digits", "The RADIUS_Key is invalid.\nPlease input 8-63 characters or 64 Hex string.", "RADIUS shared secret", "", "sample-secret-%d", "sample-secret-%d", SECRET, SAVED)
WIFIMGR_SETTING("own_ip_addr", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_ownip, BAND, wifimgr_lib_set_ownip, ADDRESS, 0, 0, "an IPv4 address", "The own IP is invalid.\nPlease input from 0.0.0.0 to 255.255.255.255", "The 802.1X authenticator's own IPv4 address", "", "192.168.1.1", "192.168.1.1", OPEN, SAVED)
WIFIMGR_SETTING("EAPifname", BAND, SHARED, BOTH, NONE, NULL, BAND, wifimgr_lib_set_EAPifname, TEXT, 0, 0, "", "", "Interface that carries EAP", "", "br-lan", "br-lan", OPEN, SAVED)
WIFIMGR_SETTING("PreAuthifname", BAND, SHARED, BOTH, NONE, NULL, BAND, wifimgr_lib_set_PreAuthifname, TEXT, 0, 0, "", "", "Interface that carries pre-authentication", "", "br-lan", "br-lan", OPEN, SAVED)
WIFIMGR_SETTING("session_timeout_interval", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_session_timeout_interval, BAND, wifimgr_lib_set_session_timeout_interval, TEN_DIGITS, 0, 2147483647, "", "The timeout value is invalid.\nPlease input from 0 to 2147483647.", "802.1X session time-out", "seconds", "0", "0", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("Access control, numbered from 0")
/* Numbered from 0: "AccessPolicy0" is SSID 1's. */
WIFIMGR_SETTING("AccessPolicy%d", SSID, FROM_ZERO, BOTH, OWN, wifimgr_lib_get_accessPolicy, SSID, wifimgr_lib_set_accessPolicy, NUMBER, 0, 2, "", "The AccessPolicy value is invalid.", "MAC access policy", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("AccessControlList%d", SSID, FROM_ZERO, BOTH, SSID, wifimgr_lib_get_accessControlList, SSID, wifimgr_lib_set_accessControlList, TEXT, 0, 0, "", "", "MAC addresses of the access policy, joined by ;", "", "", "", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("HT")
WIFIMGR_SETTING("HT_HTC", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_HTC, HT_GROUP, wifimgr_lib_set_HT_HTC, NUMBER, 0, 1, "", "The HT_HTC value is invalid.", "HT control field", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("HT_LinkAdapt", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_LinkAdapt, HT_GROUP, wifimgr_lib_set_HT_LinkAdapt, NUMBER, 0, 1, "", "The HT_LinkAdapt value is invalid.", "HT link adaptation", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("HT_OpMode", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_OpMode, BAND, wifimgr_lib_set_HT_OpMode, NUMBER, 0, 1, "", "The HT_OpMode value is invalid.", "HT operating mode", "", "0", "0", OPEN, SAVED)
/* 0 and 1 only, like the switches around it; kept. */
WIFIMGR_SETTING("HT_MpduDensity", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_MpduDensity, HT_GROUP, wifimgr_lib_set_HT_MpduDensity, NUMBER, 0, 1, "", "The HT_MpduDensity value is invalid.", "MPDU density", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("HT_EXTCHA", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_EXTCHA, HT_GROUP, wifimgr_lib_set_HT_EXTCHA, NUMBER, 0, 1, "", "The HT_EXTCHA value is invalid.", "HT extension channel", "", "0", "1", OPEN, RADIO)
WIFIMGR_SETTING("HT_BW", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_BW, OWN, wifimgr_lib_set_HT_BW, NUMBER, 0, 1, "", "The HT_BW value should be 0 or 1.", "HT bandwidth: 0 is 20 MHz, 1 is 40 MHz", "", "1", "1", OPEN, RADIO)
WIFIMGR_SETTING("HT_AutoBA", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_AutoBA, HT_GROUP, wifimgr_lib_set_HT_AutoBA, NUMBER, 0, 1, "", "The HT_AutoBA value is invalid.", "Automatic block ack", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("HT_AMSDU", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_AMSDU, HT_GROUP, wifimgr_lib_set_HT_AMSDU, NUMBER, 0, 1, "", "The HT_AMSDU value is invalid.", "A-MSDU", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("AMSDU_NUM", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_AMSDU_NUM, BAND, wifimgr_lib_set_AMSDU_NUM, DIGITS, 0, 0, "", "The AMSDU_NUM value should be Digital.", "Number of MSDUs in an A-MSDU", "", "4", "4", OPEN, SAVED)
/* Up to and including 256; kept. */
WIFIMGR_SETTING("HT_BAWinSize", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_BAWinSize, HT_GROUP, wifimgr_lib_set_HT_BAWinSize, NUMBER, 0, 256, "", "The HT_BAWinSize value is invalid.", "Block ack window size", "frames", "64", "64", OPEN, SAVED)
WIFIMGR_SETTING("HT_GI", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_GI, OWN, wifimgr_lib_set_HT_GI, NUMBER, 0, 1, "", "The HT_GI value is invalid.", "HT guard interval", "", "1", "1", OPEN, RADIO)
WIFIMGR_SETTING("HT_STBC", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_HT_STBC, NUMBER, 0, 1, "", "The HT_STBC value is invalid.", "HT space-time block coding", "", "1", "1", OPEN, SAVED)
/* The next refusal names VHT_LDPC; kept, as callers match the text. */
WIFIMGR_SETTING("HT_LDPC", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_LDPC, BAND, wifimgr_lib_set_HT_LDPC, NUMBER, 0, 1, "", "The VHT_LDPC value should be between 0 to 1.", "HT LDPC coding", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("HT_MCS", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_HT_MCS, OWN, wifimgr_lib_set_HT_MCS, RULE, 0, 0, "0 to 15, 32, 33", "The HT_MCS value is invalid.", "Fixed HT rate (MCS)", "", "33", "33", OPEN, SAVED)
WIFIMGR_SETTING("HT_RDG", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_RDG, HT_GROUP, wifimgr_lib_set_HT_RDG, NUMBER, 0, 1, "", "The HT_RDG value is invalid.", "Reverse direction grant", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("HT_BSSCoexistence", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_BSSCoexistence, HT_GROUP, wifimgr_lib_set_HT_BSSCoexistence, NUMBER, 0, 1, "", "The HT_BSSCoexistence value is invalid.", "20/40 MHz BSS coexistence", "", "1", "0", OPEN, RADIO)
WIFIMGR_SETTING("HT_TxStream", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_TxStream, HT_GROUP, wifimgr_lib_set_HT_TxStream, LEADING_NUMBER, 0, 4, "", "The HT_TxStream value is invalid.", "TX stream count", "", "2", "4", OPEN, RADIO)
WIFIMGR_SETTING("HT_RxStream", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HT_RxStream, HT_GROUP, wifimgr_lib_set_HT_RxStream, LEADING_NUMBER, 0, 4, "", "The HT_RxStream value is invalid.", "RX stream count", "", "2", "4", OPEN, RADIO)
WIFIMGR_SETTING("SHORTGIFLAG", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_SHORTGIFLAG, NUMBER, 0, 1, "", "The SHORTGIFLAG value is invalid.", "Short guard interval flag", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("G_BAND_256QAM", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_G_BAND_256QAM, NUMBER, 0, 1, "", "The G_BAND_256QAM value is invalid.", "256-QAM on 2.4 GHz", "", "1", "0", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("VHT")
WIFIMGR_SETTING("VHT_BW", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_VHT_BW, OWN, wifimgr_lib_set_VHT_BW, NUMBER, 0, 3, "", "The VHT_BW value should be from 0 to 3.", "VHT bandwidth", "", "0", "1", OPEN, RADIO_ON_5G)
WIFIMGR_SETTING("VHT_SGI", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_VHT_SGI, OWN, wifimgr_lib_set_VHT_SGI, NUMBER, 0, 1, "", "The VHT_SGI value should be between 0 to 1.", "VHT short guard interval", "", "1", "1", OPEN, RADIO_ON_5G)
WIFIMGR_SETTING("VHT_STBC", BAND, SHARED, BOTH, NONE, NULL, BAND, wifimgr_lib_set_VHT_STBC, NUMBER, 0, 1, "", "The VHT_STBC value should be between 0 to 1.", "VHT space-time block coding", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("VHT_LDPC", BAND, SHARED, BOTH, NONE, NULL, BAND, wifimgr_lib_set_VHT_LDPC, NUMBER, 0, 1, "", "The VHT_LDPC value should be between 0 to 1.", "VHT LDPC coding", "", "1", "1", OPEN, SAVED)
WIFIMGR_SETTING("VHT_BW_SIGNAL", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_VHT_BW_SIGNAL, BAND, wifimgr_lib_set_VHT_BW_SIGNAL, NUMBER, 0, 1, "", "The VHT_BW_SIGNAL value is invalid.", "VHT bandwidth signalling", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("Vht1024QamSupport", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_Vht1024QamSupport, BAND, wifimgr_lib_set_Vht1024QamSupport, DIGITS, 0, 0, "", "The Vht1024QamSupport value should be number.", "1024-QAM", "", "0", "0", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("HE")
WIFIMGR_SETTING("MuOfdmaDlEnable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_MuOfdmaDlEnable, BAND, wifimgr_lib_set_MuOfdmaDlEnable, NUMBER, 0, 1, "", "The muofdmadl value should be between 0 to 1.", "Downlink MU-OFDMA", "", "1", "1", OPEN, RADIO)
WIFIMGR_SETTING("MuOfdmaUlEnable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_MuOfdmaUlEnable, BAND, wifimgr_lib_set_MuOfdmaUlEnable, NUMBER, 0, 1, "", "The muofdma value should be between 0 to 1.", "Uplink MU-OFDMA", "", "0", "0", OPEN, RADIO)
WIFIMGR_SETTING("MuMimoDlEnable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_MuMimoDlEnable, BAND, wifimgr_lib_set_MuMimoDlEnable, NUMBER, 0, 1, "", "The mumimodl value should be between 0 to 1.", "Downlink MU-MIMO", "", "0", "1", OPEN, RADIO)
WIFIMGR_SETTING("MuMimoUlEnable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_MuMimoUlEnable, BAND, wifimgr_lib_set_MuMimoUlEnable, NUMBER, 0, 1, "", "The mumimoul value should be between 0 to 1.", "Uplink MU-MIMO", "", "0", "0", OPEN, RADIO)
WIFIMGR_SETTING("MaxRuOfdma", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_MaxRuOfdma, BAND, wifimgr_lib_set_MaxRuOfdma, DIGITS, 0, 0, "", "The MaxRuOfdma value should be number.", "Most OFDMA users", "", "8", "8", OPEN, SAVED)
WIFIMGR_SETTING("MaxDLMuMimo", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_MaxDLMuMimo, BAND, wifimgr_lib_set_MaxDLMuMimo, DIGITS, 0, 0, "", "The MaxDLMuMimo value should be number.", "Most downlink MU-MIMO users", "", "2", "4", OPEN, SAVED)
WIFIMGR_SETTING("MaxULMuMimo", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_MaxULMuMimo, BAND, wifimgr_lib_set_MaxULMuMimo, DIGITS, 0, 0, "", "The MaxULMuMimo value should be number.", "Most uplink MU-MIMO users", "", "2", "4", OPEN, SAVED)
WIFIMGR_SETTING("Disable160RuMu", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_Disable160RuMu, BAND, wifimgr_lib_set_Disable160RuMu, DIGITS, 0, 0, "", "The Disable160RuMu value should be number.", "No multi-user RU at 160 MHz", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("HeraStbcPriority", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_HeraStbcPriority, BAND, wifimgr_lib_set_HeraStbcPriority, DIGITS, 0, 0, "", "The HeraStbcPriority value should be number.", "HE STBC priority", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("TWTSupport", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_TWTSupport, BAND, wifimgr_lib_set_TWTSupport, NUMBER, 0, 2, "", "The twtsupport value should be between 0 ~2.", "Target wake time", "", "0", "0", OPEN, RADIO)
WIFIMGR_SETTING("SREnable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_SREnable, BAND, wifimgr_lib_set_SREnable, NUMBER, 0, 1, "", "The SREnable value should be between 0 to 1.", "Spatial reuse", "", "0", "0", OPEN, RADIO)
WIFIMGR_SETTING("SRMode", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_SRMode, BAND, wifimgr_lib_set_SRMode, NUMBER, 0, 1, "", "The SRMode value should be between 0 to 1.", "Spatial reuse mode", "", "0", "0", OPEN, RADIO)
WIFIMGR_SETTING("SRSDEnable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_SRSDEnable, BAND, wifimgr_lib_set_SRSDEnable, NUMBER, 0, 1, "", "The SRSDEnable value should be between 0 to 1.", "Spatial reuse SD", "", "0", "0", OPEN, RADIO)
WIFIMGR_SETTING("PPEnable", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_PPEnable, BAND, wifimgr_lib_set_PPEnable, NUMBER, 0, 1, "", "The PPEnable value should be between 0 to 1.", "Preamble puncturing", "", "0", "0", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("Beamforming and airtime")
WIFIMGR_SETTING("ITxBfEn", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_ITxBfEn, NUMBER, 0, 1, "", "The ITxBfEn value is invalid.", "Implicit TX beamforming", "", "0", "1", OPEN, SAVED)
WIFIMGR_SETTING("ETxBfEnCond", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_ETxBfEnCond, NUMBER, 0, 1, "", "The ETxBfEnCond value is invalid.", "Explicit TX beamforming", "", "0", "1", OPEN, SAVED)
WIFIMGR_SETTING("ETxBfIncapable", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_ETxBfIncapable, NUMBER, 0, 1, "", "The ETxBfIncapable value is invalid.", "No explicit TX beamforming capability", "", "0", "0", OPEN, SAVED)
WIFIMGR_DAT_KEY("ITxBfTimeout", "Implicit TX beamforming time-out", "0", "0")
WIFIMGR_DAT_KEY("ETxBfTimeout", "Explicit TX beamforming time-out", "0", "0")
WIFIMGR_DAT_KEY("ETxBfNoncompress", "Explicit TX beamforming without compression", "0", "0")
WIFIMGR_SETTING("MUTxRxEnable", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_MUTxRxEnable, NUMBER, 0, 1, "", "The MUTxRxEnable value is invalid.", "Multi-user TX and RX", "", "0", "1", OPEN, SAVED)
WIFIMGR_DAT_KEY("VOW_Airtime_Fairness_En", "Airtime fairness", "0", "0")
WIFIMGR_DAT_KEY("RED_Enable", "Random early detection", "1", "1")
WIFIMGR_DAT_KEY("BandSteering", "Band steering", "0", "0")
WIFIMGR_SETTING("WHNAT", BAND, SHARED, BOTH, BAND, wifimgr_lib_get_WHNAT, HT_GROUP, wifimgr_lib_set_WHNAT, NUMBER, 0, 1, "", "The WHNAT value is invalid.", "WLAN hardware NAT", "", "1", "1", OPEN, REBOOT)
WIFIMGR_SETTING("WOEOFF", BAND, SHARED, BOTH, NONE, NULL, HT_GROUP, wifimgr_lib_set_WOEOFF, NUMBER, 0, 1, "", "The WOEOFF value is invalid.", "WLAN offload engine off", "", "0", "0", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("DFS")
WIFIMGR_SETTING("DfsDedicatedZeroWait", BAND, SHARED, ONLY_5G, OWN, wifimgr_lib_get_DfsDedicatedZeroWait, OWN, wifimgr_lib_set_DfsDedicatedZeroWait, NUMBER, 0, 1, "", "The DfsDedicatedZeroWait value is invalid.", "DFS zero-wait with a dedicated radio", "", NULL, "0", OPEN, SAVED)
WIFIMGR_SETTING("DfsZeroWaitDefault", BAND, SHARED, ONLY_5G, OWN, wifimgr_lib_get_DfsZeroWaitDefault, OWN, wifimgr_lib_set_DfsZeroWaitDefault, NUMBER, 0, 1, "", "The DfsZeroWaitDefault value is invalid.", "DFS zero-wait by default", "", NULL, "0", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("Roaming and multi-AP")
WIFIMGR_SETTING("RRMEnable", SSID, SHARED, BOTH, NONE, NULL, SSID, wifimgr_lib_set_rrmEnable, NUMBER, 0, 1, "", "The rrmEnable value should be 0 or 1.", "Radio measurement (802.11k)", "", "1", "1", OPEN, SAVED)
/* The next refusal says rrmEnable; kept, as callers match the text. */
WIFIMGR_SETTING("WNMEnable", SSID, SHARED, BOTH, NONE, NULL, SSID, wifimgr_lib_set_wnmEnable, NUMBER, 0, 1, "", "The rrmEnable value should be 0 or 1.", "Network management (802.11v)", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("FtSupport", SSID, SHARED, BOTH, NONE, NULL, SSID, wifimgr_lib_set_ftSupport, NUMBER, 0, 1, "", "The FtSupport value should be 0 or 1.", "Fast transition (802.11r)", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("FtOtd", SSID, SHARED, BOTH, NONE, NULL, SSID, wifimgr_lib_set_ftotd, NUMBER, 0, 1, "", "The FtOtd value should be 0 or 1.", "Fast transition over the distribution system", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("MboSupport%d", SSID, FROM_ONE, BOTH, OWN, wifimgr_lib_get_MboSupport, OWN, wifimgr_lib_set_MboSupport, LEADING_NUMBER, 0, 1, "", "The MboSupport value is invalid.", "Multi-band operation", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("MapMode", BAND, SHARED, BOTH, OWN, wifimgr_lib_get_MapMode, OWN, wifimgr_lib_set_MapMode, LEADING_NUMBER, 0, 2, "", "The MapMode value is invalid.", "Multi-AP mode", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("ApCliMacManual_Flag", SSID, SHARED, BOTH, NONE, NULL, SSID, wifimgr_lib_set_ApCliMac_Manual_Flag, NUMBER, 0, 1, "", "The ApCliMac_Manual_Flag value should be 0 or 1.", "Whether the client interface has a MAC address of its own", "", "0", "0", OPEN, SAVED)
WIFIMGR_SETTING("ApCliMacManual", SSID, SHARED, BOTH, NONE, NULL, SSID, wifimgr_lib_set_ApCliMac_Manual, NOTHING, 0, 0, "", "Please input correct MacAddress, such as 00:1a:22:aa:dc:a1.", "MAC address of the client interface", "", "00:00:00:00:00:00", "00:00:00:00:00:00", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("WPS")
WIFIMGR_SETTING("WscConfMode", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_wscConfMode, WPS, wifimgr_lib_set_wscConfMode, NUMBER, 0, 7, "", "The input parameter is invalid.", "WPS mode", "", "7", "7", OPEN, AT_ONCE)
WIFIMGR_SETTING("WscConfStatus", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_WscConfStatus, WPS, wifimgr_lib_set_wscConfStatus, NUMBER, 1, 2, "", "The input parameter is invalid.", "WPS configuration state: 1 is unconfigured, 2 configured", "", "2", "2", OPEN, AT_ONCE)
WIFIMGR_SETTING("WscV2Support", SSID, SHARED, BOTH, SSID, wifimgr_lib_get_wscV2Support, WPS, wifimgr_lib_set_wscV2Support, NUMBER, 0, 1, "", "The input parameter is invalid.", "WPS 2.0", "", "1", "1", OPEN, RADIO)
WIFIMGR_SETTING("WscKeyASCII", SSID, SHARED, BOTH, NONE, NULL, WPS, wifimgr_lib_set_wscKeyASCII, KEY_FORMAT, 0, 0, "0, 1, 8 to 63", "The input parameter is invalid.", "Form of the key that WPS makes", "", "8", "8", OPEN, AT_ONCE)
WIFIMGR_SETTING("WscMaxPinAttack", SSID, SHARED, BOTH, NONE, NULL, WPS, wifimgr_lib_set_wscMaxPinAttack, NUMBER, 0, 10, "", "The input parameter is invalid.", "WPS PIN attempts before it locks", "", "10", "10", OPEN, AT_ONCE)
WIFIMGR_SETTING("WscSetupLockTime", SSID, SHARED, BOTH, NONE, NULL, WPS, wifimgr_lib_set_wscSetupLockTime, NUMBER, 0, 2147483647, "", "The input parameter is invalid.", "How long WPS stays locked", "", "10", "10", OPEN, AT_ONCE)
WIFIMGR_SETTING("WscDefaultSSID%d", SSID, FROM_ONE, BOTH, SSID, wifimgr_lib_get_wscDefaultSSID, SSID, wifimgr_lib_set_wscDefaultSSID, LENGTH, 0, 32, "", "The input value is invalid.", "Network name of unconfigured WPS", "", "Gateway-Home;Gateway-Guest;Gateway-%d", "Gateway-Home-5G;Gateway-Guest-5G;Gateway-%d-5G", OPEN, SAVED)
WIFIMGR_SETTING("WSC_UUID_E%d", SSID, FROM_ONE, BOTH, NONE, NULL, OWN, wifimgr_lib_set_WscUUIDE, TEXT, 0, 0, "", "", "WPS UUID, binary", "", "28102400aaaa4bbb8ccc02281000000%d", "28105000aaaa4bbb8ccc02281000000%d", OPEN, SAVED)
WIFIMGR_SETTING("WSC_UUID_Str%d", SSID, FROM_ONE, BOTH, NONE, NULL, OWN, wifimgr_lib_set_WscUUIDStr, TEXT, 0, 0, "", "", "WPS UUID, as text", "", "28102400-aaaa-4bbb-8ccc-02281000000%d", "28105000-aaaa-4bbb-8ccc-02281000000%d", OPEN, SAVED)

WIFIMGR_SETTING_GROUP("WDS links")
WIFIMGR_SETTING("WdsEnable", BAND, SHARED, BOTH, OWN, wifimgr_lib_get_wdsenable, OWN, wifimgr_lib_set_wdsenable, ONE_DIGIT, 0, 4, "", "Please input value from 0 to 4(0:disable;1-4:diffrent modes,recommend 1).", "WDS: 0 is off, 1 to 4 the mode", "", "0", "0", OPEN, RADIO)
WIFIMGR_SETTING("WdsList", BAND, SHARED, BOTH, OWN, wifimgr_lib_get_wdslist, OWN, wifimgr_lib_set_wdslist, RULE, 0, 0, "four MAC addresses joined by ;", "Please input acceptable Mac address.", "The four WDS peers", "", "00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00", "00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00", OPEN, RADIO_WITH_WDS)
WIFIMGR_SETTING("WdsEncrypType", BAND, SHARED, BOTH, OWN, wifimgr_lib_get_wdsencryptype, OWN, wifimgr_lib_set_wdsencryptype, RULE, 0, 0, "four of NONE, WEP, TKIP, AES joined by ;", "Please input value from NONE,WEP,TKIP,AES.", "The four WDS links' ciphers", "", "AES;AES;AES;AES", "AES;AES;AES;AES", OPEN, RADIO_WITH_WDS)
WIFIMGR_SETTING("WdsPhyMode", BAND, SHARED, BOTH, OWN, wifimgr_lib_get_wdsphymode, OWN, wifimgr_lib_set_wdsphymode, RULE, 0, 0, "four of CCK, OFDM, HTMIX, GREENFIELD joined by ;", "Please input value from CCK,OFDM,HTMIX,GREENFIELD.", "The four WDS links' PHY modes", "", "HTMIX;HTMIX;HTMIX;HTMIX", "HTMIX;HTMIX;HTMIX;HTMIX", OPEN, SAVED)
WIFIMGR_SETTING("Wds%dKey", LINK, FROM_ZERO, BOTH, OWN, wifimgr_lib_get_wdskey, OWN, wifimgr_lib_set_wdskey, RULE, 0, 0, "a WEP or WPA key, by the link's cipher", "Please input 8 to 64 hexadecimal characters!", "Key of a WDS link", "", "sample-link-%d", "sample-link-%d", SECRET, RADIO_WITH_WDS)

/* clang-format on */

#undef WIFIMGR_SETTING_GROUP
#undef WIFIMGR_DAT_KEY
#undef WIFIMGR_SETTING
