// Numbers among a band's settings.
#pragma once

#include <cstdint>

#include "store/band.h"

namespace apply {

using BandGetter = int (*)(int wifi_type, int index, char* buf, unsigned len);
using SsidGetter = uint64_t (*)(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);

// Reads a band-wide number; false when the getter fails.
bool read_number(BandGetter getter, store::Band band, int32_t& number);

// The same; a failure counts as 0, and is reported on standard output when there are words for it.
int32_t read_number_or_report(BandGetter getter, store::Band band, const char* failure);

inline constexpr char kSsidCountFailed[] = "write_wlan_config:wifimgr_lib_get_bssidnum fail.";
inline constexpr char kWirelessModeFailed[] = "write_wlan_config:wifimgr_lib_get_wirelessMode fail.";
inline constexpr char kWmmCapableFailed[] = "write_wlan_config:wifimgr_lib_get_wmmCapable fail.";

}  // namespace apply
