// What is due from an apply that somebody else began.
#pragma once

#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// Opens the band's live store, as open_store does, for a verb that takes things as they are meant to be: where a pending
// apply has lost its guardian, it is rolled back, or gets a new one.
bool open_band(Band band, Report& report);

// The same for a verb that changes the radio and leaves the store alone: where there is none, the owner is to make it.
bool open_band_if_there(Band band, Report& report);

// The same for a verb that only looks: makes no store, and tells what is due without doing it.
bool look_at_band(Band band, Report& report);

// Those of the bands that could be looked at; where one could not, the exit code says so.
std::vector<Band> look_at_bands(const std::vector<Band>& bands, int* code, Report& report);

}  // namespace wlanctl
