// SSIDs that come on the air without what an SSID needs: a save leaves out what those behind the count have.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

// Those that are served and on, by the store.
std::vector<int> ssids_switched_on(Band band);

// What it lacks of that which SSID 1 has, its name or how it is secured; "" when nothing.
std::string reason_against_air(Band band, int ssid);

}  // namespace wlanctl
