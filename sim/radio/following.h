// What the driver does when the kernel brings its interfaces up and down.
#pragma once

#include <string>
#include <vector>

#include "sim/network/network_state.h"

namespace gateway {

// Stations leave a BSS that went down. With a radio's first BSS up the driver reads the dat file anew: what was set since
// it last did is gone, but for what the radio measures. Returns what that changed, in words for the journal.
std::vector<std::string> follow_interfaces(const NetworkState& before, const NetworkState& after);

}  // namespace gateway
