// Stations and the BSS that they are associated with.
#pragma once

#include <string>
#include <vector>

namespace gateway {

// All stations leave the interface. Returns what changed, in words for the journal.
std::vector<std::string> stations_leave(const std::string& interface);

// Whether a station has to associate anew when this setting of its BSS changes.
bool is_joined_by(const std::string& key);

}  // namespace gateway
