// The WLAN driver's settings: one file of Key=Value lines for each interface, kept while the interface exists. The
// preloaded library answers requests from them.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "sim/base/band.h"
#include "sim/records/dat_file.h"

namespace gateway {

using DriverSettings = std::map<std::string, std::string>;

// What a BSS starts with when the driver reads the dat file; `ssid` counts from 1.
DriverSettings settings_from_dat(const DatFile& dat, Band band, int ssid);

// None when the driver has no such interface.
std::optional<DriverSettings> load_settings(const std::string& interface);
void store_settings(const std::string& interface, const DriverSettings& settings);
void forget_settings(Band band);

// Whether a key belongs to the radio, so that setting it on one interface sets it on all of them.
bool is_radio_wide(const std::string& key);

// Changes a setting of the interface, or of its whole radio; returns what that changed, in words for the journal. Throws
// std::invalid_argument when the driver refuses.
std::vector<std::string> change_setting(const std::string& interface, const std::string& key, const std::string& value);

// The driver reads the band's dat file again, for the interfaces that it has. What the radio reports of itself stays.
// Returns what changed, in words for the journal.
std::vector<std::string> read_dat_file_anew(Band band);

// Interfaces of the radio whose driver is loaded; none when it is not.
std::vector<std::string> driver_interfaces(Band band);

// The channel that the radio tunes to when it is told `wanted`: itself, or the driver's own choice for 0.
int channel_for(Band band, int wanted);

}  // namespace gateway
