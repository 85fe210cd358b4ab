// What a driver that has just been loaded answers: a quiet home with a few devices.
#pragma once

#include "sim/base/band.h"
#include "sim/state/driver_state.h"

namespace gateway {

// Adds what the dat file has no word of: readings, WPS. `number` counts BSSs from 0.
void add_default_readings(DriverSettings* settings, Band band, int number);

// Whom the radio hears.
void store_default_neighbours(Band band);

// The stations of these interfaces of the radio.
void store_default_stations(Band band, const std::vector<std::string>& interfaces);

// The driver's helpers, and no faults.
void store_default_helpers();

}  // namespace gateway
