// What the library makes of a key of a dat file; asked of the library itself.
#pragma once

#include <string>

#include "wlanctl/keys/key.h"

namespace wlanctl {

// Of a list of several addresses.
inline constexpr char kOnlyFirstAddress[] =
    "of several addresses the driver gets the first one only, at an apply as well as at a boot";

// Names that more than a row of the table knows.
inline constexpr char kSsidCount[] = "BssidNum";
inline constexpr char kAddressList[] = "AccessControlList";

// The library's note to itself that the next commit reloads the driver: no setting of anybody's.
inline constexpr char kReloadFlag[] = "ReloadFlag";

// Whether the library has a use for the key: it can set or read it, or hands it on to its callers.
bool is_known_dat_key(const std::string& dat_key);

// Whether ';' belongs to the value, which is then one for the whole band.
bool keeps_list_whole(const std::string& dat_key);

// The settings of the band whose setter may store the value once for each SSID, as one text: VHT_BW=1 becomes "1;1".
bool is_repeated_for_ssids(const Key& key);
std::string without_repetition(const std::string& value);

// Whether every SSID has a key of its own: one value, and all behind a ';' is lost.
bool is_numbered_dat_key(const std::string& dat_key);

// Whether a save leaves the key out when the band serves `ssids` SSIDs.
bool is_left_out(const std::string& dat_key, int ssids);

// The settings whose value is a list, though the loader splits it at each ; as if it were of several SSIDs.
bool is_split_list(const Key& key);

// Those of them that are one list for the whole band: a save keeps as many of its values as there are SSIDs.
bool is_list_of_band(const std::string& dat_key);

}  // namespace wlanctl
