// A BSS's WPS session as the driver keeps it. Its state: 0 WPS is off, 1 idle, 2 open and waiting for a station, 3 a
// station is enrolling, 4 done, 5 failed. Whatever is above 2, as a signed number, has a peer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace gateway {

// The peer's MAC when there is none.
inline constexpr char kNobody[] = "00:00:00:00:00:00";

// Moves the session; `peer` is the station's MAC, empty to keep the one there is. Returns what changed, for the journal.
std::vector<std::string> set_wps_state(const std::string& interface, uint32_t state, const std::string& peer = {});

// Throws std::invalid_argument when the driver refuses the value of a private command of WPS; all other keys pass.
void check_wps(const std::string& key, const std::string& value);

// Carries out a private command of WPS: what it sets beside its own key. Nothing for other keys.
std::vector<std::string> carry_out_wps(const std::string& interface, const std::string& key, const std::string& value);

}  // namespace gateway
