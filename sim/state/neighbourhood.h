// What the radios hear of others.
#pragma once

#include <cstdint>
#include <string>

#include "sim/base/band.h"
#include "sim/driver/lists.h"

namespace gateway {

// Its signal when it was last heard, in dBm.
long heard_signal(const Neighbour& neighbour);

std::string ssid_of(const Neighbour& neighbour);

// Hears every neighbour anew; returns how many there are.
size_t scan(Band band);

// The survey of the last scan: three lines of heading, then one for each neighbour.
std::string site_survey(Band band, const std::string& interface);

}  // namespace gateway
