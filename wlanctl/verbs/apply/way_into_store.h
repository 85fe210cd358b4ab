// How settings that only the dat file has come into the live store and into force.
#pragma once

#include <string>

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// Where the store has no room for them. `what` the file has: "SSID 3".
void tell_restart(Band band, const std::string& what, Report& report);

// Whatever there is in the place of the store, of a file with so many records. The next command; "" where it takes more.
std::string tell_way_into_store(Band band, const std::string& what, size_t records, Report& report);

}  // namespace wlanctl
