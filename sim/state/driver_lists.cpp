#include "sim/state/driver_lists.h"

#include <fcntl.h>
#include <unistd.h>

#include <fstream>

#include "sim/base/file.h"
#include "sim/base/places.h"

namespace gateway {
namespace {

constexpr char kProcessList[] = "processes";
constexpr char kFaultList[] = "faults";

std::string path_of(const std::string& list) {
  return std::string(place::kLists) + "/" + list;
}

std::string stations_of(Band band) {
  return std::string("stations-") + traits(band).bss_prefix;
}

std::string neighbours_of(Band band) {
  return std::string("neighbours-") + traits(band).bss_prefix;
}

template <typename Entry>
std::vector<Entry> load(const std::string& list, bool (*parse)(const char* line, Entry* entry)) {
  std::vector<Entry> entries;
  std::ifstream stream(path_of(list));
  Entry entry;
  for (std::string line; std::getline(stream, line);) {
    if (parse(line.c_str(), &entry)) entries.push_back(entry);
  }
  return entries;
}

template <typename Entry>
void store(const std::string& list, const std::vector<Entry>& entries, void (*format)(const Entry* entry, char* line)) {
  std::string text;
  for (const Entry& entry : entries) {
    char line[kMostListLine];
    format(&entry, line);
    text += std::string(line) + "\n";
  }
  // The driver reads it at any time.
  swap_in(path_of(list + ".new"), path_of(list), text);
}

}  // namespace

std::vector<Station> load_stations(Band band) {
  return load<Station>(stations_of(band), parse_station);
}

void store_stations(Band band, const std::vector<Station>& stations) {
  store<Station>(stations_of(band), stations, format_station);
}

std::vector<Neighbour> load_neighbours(Band band) {
  return load<Neighbour>(neighbours_of(band), parse_neighbour);
}

void store_neighbours(Band band, const std::vector<Neighbour>& neighbours) {
  store<Neighbour>(neighbours_of(band), neighbours, format_neighbour);
}

std::vector<DriverProcess> load_processes() {
  return load<DriverProcess>(kProcessList, parse_process);
}

void store_processes(const std::vector<DriverProcess>& processes) {
  store<DriverProcess>(kProcessList, processes, format_process);
}

std::vector<Fault> load_faults() {
  return load<Fault>(kFaultList, parse_fault);
}

void change_faults(const std::function<void(std::vector<Fault>* faults)>& change) {
  const UniqueFd lock = open_file(place::kFaultsLock, O_RDWR | O_CREAT, 0666);
  lock_file(lock.get(), place::kFaultsLock);
  std::vector<Fault> faults = load_faults();
  change(&faults);
  store<Fault>(kFaultList, faults, format_fault);
}

std::vector<std::pair<std::string, std::string>> kept_payloads(const std::string& interface) {
  std::vector<std::pair<std::string, std::string>> payloads;
  for (const char* kind : {"OuiFilter", "ProbeResponse"}) {
    std::ifstream stream(std::string(place::kPayloads) + "/" + interface + "." + kind);
    std::string text;
    if (std::getline(stream, text)) payloads.emplace_back(kind, text);
  }
  return payloads;
}

void forget_lists(Band band) {
  unlink(path_of(stations_of(band)).c_str());
  unlink(path_of(neighbours_of(band)).c_str());
  for (const std::string& name : names_in(place::kPayloads)) {
    if (band_of(name.substr(0, name.find('.'))) == band) unlink((std::string(place::kPayloads) + "/" + name).c_str());
  }
}

std::string mac_text(const uint8_t* mac) {
  char text[kMacTextSize];
  format_mac(mac, text);
  return text;
}

}  // namespace gateway
