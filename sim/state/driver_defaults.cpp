#include "sim/state/driver_defaults.h"

#include <algorithm>

#include "sim/driver/reading.h"
#include "sim/state/driver_lists.h"
#include "sim/state/tool_faults.h"
#include "sim/state/wps_pin.h"

namespace gateway {
namespace {

struct Readings {
  const char* noise;
  const char* load;
  const char* temperature;
};
constexpr Readings kReadings[] = {{"~-92", "~38", "~54"}, {"~-95", "~12", "~58"}};

// Seven digits of the first BSS's PIN; the others follow.
constexpr unsigned kFirstPin[] = {2810240, 2810500};

constexpr const char* kStations[] = {
    "ra0 02:5a:10:24:00:11 8 1 8 ~-48 144 7300000000000000 01 0",
    "ra0 02:5a:10:24:00:12 9 1 9 ~-67 72 0000000000000000 00 0",
    "rai0 02:5a:10:50:00:21 8 1 8 ~-55 866 7300000000000000 01 0",
};

constexpr const char* kNeighbours2_4G[] = {
    "02:6e:40:24:00:01 1 ~-71 WPA2PSK/AES 1 0 Corner%20Bakery",
    "02:6e:40:24:00:02 6 ~-64 WPA1PSKWPA2PSK/TKIPAES 0 0 Neighbour-Two",
    "02:6e:40:24:00:03 11 ~-83 OPEN/NONE 0 0 Station-Square",
};
constexpr const char* kNeighbours5G[] = {
    "02:6e:40:50:00:01 36 ~-77 WPA2PSK/AES 1 0 Corner%20Bakery-5G",
    "02:6e:40:50:00:02 44 ~-69 WPA3PSK/AES 0 0 Neighbour-Two",
    "02:6e:40:50:00:03 100 ~-88 WPA2/AES 0 0 %",
};

constexpr const char* kProcesses[] = {"steerd 412 1", "dot1xd 418 1", "scand 0 0"};

}  // namespace

void add_default_readings(DriverSettings* settings, Band band, int number) {
  const auto index = static_cast<size_t>(band);
  const Readings& readings = kReadings[index];
  (*settings)["Noise"] = readings.noise;
  (*settings)["ChannelLoad"] = readings.load;
  (*settings)["Temperature"] = readings.temperature;
  (*settings)["WpsStatus"] = std::string("0");
  (*settings)["WpsPin"] = pin_from(kFirstPin[index] + static_cast<unsigned>(number));
}

void store_default_neighbours(Band band) {
  const int64_t now = monotonic_ms();
  std::vector<Neighbour> neighbours;
  for (const char* line : band == Band::k2_4G ? kNeighbours2_4G : kNeighbours5G) {
    Neighbour neighbour;
    if (!parse_neighbour(line, &neighbour)) continue;
    neighbour.seen_ms = now;
    neighbours.push_back(neighbour);
  }
  store_neighbours(band, neighbours);
}

void store_default_stations(Band band, const std::vector<std::string>& interfaces) {
  const int64_t now = monotonic_ms();
  std::vector<Station> stations;
  for (const char* line : kStations) {
    Station station;
    if (!parse_station(line, &station)) continue;
    if (std::find(interfaces.begin(), interfaces.end(), station.interface) == interfaces.end()) continue;
    station.joined_ms = now;
    stations.push_back(station);
  }
  store_stations(band, stations);
}

void store_default_helpers() {
  std::vector<DriverProcess> processes;
  for (const char* line : kProcesses) {
    DriverProcess process;
    if (parse_process(line, &process)) processes.push_back(process);
  }
  store_processes(processes);
  change_faults([](std::vector<Fault>* faults) { faults->clear(); });
  change_tool_faults([](std::vector<ToolFault>* faults) { faults->clear(); });
}

}  // namespace gateway
