#include "wlanctl/keys/trap.h"

#include <cstring>

#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/key.h"

namespace wlanctl {
namespace {

constexpr struct {
  const char* key;
  const char* trap;
} kOwn[] = {
    {"AccessControlList", kOnlyFirstAddress},
    {"AccessControlList", "eight addresses fill its 149 characters; what stands behind is cut"},
    {"ApCliMacManual", "the library refuses every MAC address; only the dat file changes it"},
    {"AuthMode", "an apply opens the network where the mode is none that the library knows"},
    {"AuthMode", "OPEN loses the passphrase and the WEP keys at the apply"},
    {"AuthMode", "WPA3-192Bit is written as WPA3-192, which a second normalisation would open; wlanctl prevents that"},
    {"AuthMode",
     "WPA, WPA2, WPA1WPA2, WPA3 and WPA3-192Bit ask a RADIUS server; with a passphrase it is a mode with PSK"},
    {"AutoChannelSelect", "an apply overwrites it by Channel: 3 where that is 0, else 0"},
    {"AutoChannelSkipList", "a save keeps as many of its values as the band has SSIDs"},
    {"BasicRate", "on 2.4g an apply overwrites it by WirelessMode: 15 in modes 0, 6, 9 and 16, 3 in 1, 351 in 4 and 7"},
    {"BssidNum", "a save leaves out the keys of SSIDs behind the count: their names, passphrases and keys"},
    {"BssidNum", "the driver makes the interfaces when it is loaded: at the apply on some chips, else at a reboot"},
    {"DefaultKeyID", "an apply overwrites it by AuthMode: 2 in WPA modes, 0 where the SSID is open"},
    {"EncrypType", "the library's refusal does not name GCMP256, which it takes"},
    {"FixedTxMode",
     "an apply overwrites it: on 2.4g by WirelessMode, 1 in mode 1, 2 in 4, by the rate in 0, else 0; on 5g 0"},
    {"HT_BW", "an apply makes it 0 where WirelessMode has no such width: on 2.4g but in 6, 7, 9 and 16, on 5g in 2"},
    {"HT_OpMode", "an apply overwrites it by WirelessMode: on 2.4g 1 in modes 0, 1, 7, 9 and 16, 0 in others; on 5g 0"},
    {"IEEE8021X", "an apply overwrites it by AuthMode, but in the PSK modes and where the SSID is open"},
    {"Key1Str", "an apply clears the WEP keys of an SSID that does not use WEP"},
    {"Key1Type", "an apply overwrites it: by the key's length where the SSID uses WEP, else 0"},
    {"Key2Str", "an apply clears the WEP keys of an SSID that does not use WEP"},
    {"Key2Type", "an apply overwrites it: by the key's length where the SSID uses WEP, else 0"},
    {"Key3Str", "an apply clears the WEP keys of an SSID that does not use WEP"},
    {"Key3Type", "an apply overwrites it: by the key's length where the SSID uses WEP, else 0"},
    {"Key4Str", "an apply clears the WEP keys of an SSID that does not use WEP"},
    {"Key4Type", "an apply overwrites it: by the key's length where the SSID uses WEP, else 0"},
    {"MacAddress", "the library refuses every MAC address; only the dat file changes it"},
    {"MboSupport", "a save writes the values of all SSIDs, also of those behind the count"},
    {"RADIUS_Key", "it stands unquoted in the driver's script: a shell acts on blanks, $, & and the like"},
    {"SSID", "on the air a name has 32 bytes at most, though the library takes more"},
    {"SSID", "a shell acts on $ and ` in it when the driver's script runs"},
    {"TxBurst", "an apply makes it 1 on both bands, whatever is set"},
    {"TxPower", "on 2.4g an apply takes 1 to 6 for levels: 75, 50, 25, 15, 9 and 100 percent"},
    {"VHT_BW", "an apply makes it 0 in a WirelessMode without VHT: all but 14, 15 and 17"},
    {"VHT_SGI", "an apply makes it 1 in a WirelessMode without VHT, all but 14, 15 and 17, or where HT_BW is not 1"},
    {"WmmCapable",
     "an apply overwrites it by WirelessMode: on 2.4g 0 in modes 6, 9 and 16; on 5g 1 in modes 8, 14, 15 and 17"},
    {"WPAPSK", "64 characters must be hexadecimal digits; a passphrase has 63 at most"},
    {"WPAPSK", "a shell acts on $ and ` in it when the driver's script runs"},
    {"WPAPSK", "an apply makes it 0 where the SSID is OPEN"},
    {"WscV2Support", "the setter tells the driver at once; neither a revert nor a roll back takes that back"},
};

}  // namespace

std::vector<std::string> traps_of(const Key& key) {
  std::vector<std::string> traps;
  for (const auto& row : kOwn) {
    if (std::strcmp(row.key, key.name) == 0) traps.emplace_back(row.trap);
  }
  if (key.effect == Effect::kAtOnce) {
    traps.emplace_back("neither a revert nor a roll back takes it back from the driver");
  }
  if (key.scope == Scope::kSsid && key.numbering == Numbering::kShared) {
    traps.emplace_back("an SSID's empty value ends the list at a save, and those of the SSIDs behind it are lost");
    traps.emplace_back("a value is cut behind 149 characters, and a list whose line has more than 184 is not saved");
    traps.emplace_back("a ; in a value begins that of the next SSID");
  }
  if (key.scope == Scope::kSsid && is_numbered_dat_key(dat_key_of(key, 1))) {
    traps.emplace_back("a save leaves it out for SSIDs behind BssidNum, and their values are gone with a boot");
  }
  if (key.scope == Scope::kBand && keeps_list_whole(key.dat_key)) {
    traps.emplace_back("the list is one value, which is cut behind 149 characters");
  }
  return traps;
}

}  // namespace wlanctl
