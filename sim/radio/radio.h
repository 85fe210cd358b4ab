// A radio under its driver: interfaces that come and go with it.
#pragma once

#include <string>

#include "sim/base/band.h"
#include "sim/radio/chip.h"

namespace gateway {

// The driver reads the band's dat file and makes one interface for each SSID and four for WDS links, all down and in no
// bridge.
void load_radio(Band band);

// The driver's state as it is after loading, for the interfaces that the radio has.
void start_driver(Band band);

// The home's devices join the radio's interfaces that are up.
void start_stations(Band band);

// The radio's interfaces disappear, whatever state they are in.
void unload_radio(Band band);

bool is_loaded(Band band);

// Loadable modules that are in the kernel now.
bool is_module_loaded(const std::string& name);
void mark_module(const std::string& name, bool loaded);

// The chips this gateway was given.
Chips present_chips();

}  // namespace gateway
