// Where the last restart of a band's interfaces has put them: the settings name no bridge, and nobody else remembers it.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/apply/in_force.h"

namespace wlanctl {

// Keeps them, in place of those before.
void keep_bridges(Band band, const std::vector<Wanted>& bridges, Report& report);

// Whether they were kept and cannot be read.
bool are_bridges_damaged(Band band);

// What of the band's interfaces that are up is in another bridge than that, or in none. Where no restart is known they may
// be in any, but in the same one: stations of the one do not reach those of the other.
std::vector<Wanted> bridges_lacking(Band band);

}  // namespace wlanctl
