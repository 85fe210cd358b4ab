// What a driver that has just been loaded answers: a quiet home with a few devices.
#pragma once

#include "sim/base/band.h"
#include "sim/state/driver_state.h"

namespace gateway {

// Adds what the dat file has no word of: readings, WPS. `number` counts BSSs from 0.
void add_default_readings(DriverSettings* settings, Band band, int number);

// The radio's stations and neighbours.
void store_default_lists(Band band);

// The driver's helpers, and no faults.
void store_default_helpers();

}  // namespace gateway
