// The driver's lists, as the tools change them. The preloaded library answers requests from the same files.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sim/base/band.h"
#include "sim/driver/lists.h"

namespace gateway {

std::vector<Station> load_stations(Band band);
void store_stations(Band band, const std::vector<Station>& stations);

std::vector<Neighbour> load_neighbours(Band band);
void store_neighbours(Band band, const std::vector<Neighbour>& neighbours);

std::vector<DriverProcess> load_processes();
void store_processes(const std::vector<DriverProcess>& processes);

std::vector<Fault> load_faults();

// Changes the faults while the driver uses none up.
void change_faults(const std::function<void(std::vector<Fault>* faults)>& change);

// What callers have handed the driver for an interface: kind ("OuiFilter") and bytes in hexadecimal.
std::vector<std::pair<std::string, std::string>> kept_payloads(const std::string& interface);

// Stations, neighbours and payloads go with their radio.
void forget_lists(Band band);

std::string mac_text(const uint8_t* mac);

}  // namespace gateway
