// Stations, neighbours and the driver's processes: they come and go.
#include <algorithm>
#include <cstring>

#include "sim/driver/reading.h"
#include "sim/records/journal.h"
#include "sim/simctl/words.h"
#include "sim/state/association.h"
#include "sim/state/driver_lists.h"

namespace gateway::tools::simctl {
namespace {

constexpr size_t kMostStations = 32;
constexpr size_t kMostNeighbours = 128;
constexpr size_t kMostProcesses = 255;
constexpr uint32_t kMostAssociationId = 2007;
constexpr uint32_t kMostChannel = 196;

using Pairs = std::map<std::string, std::string>;

void set_number(const Pairs& pairs, const char* key, unsigned* number, uint32_t most) {
  const auto found = pairs.find(key);
  if (found != pairs.end()) *number = number_from(found->second, key, most);
}

template <size_t kSize>
void set_text(const std::string& text, char (&field)[kSize]) {
  if (text.size() >= kSize) throw UsageError("too long: " + text);
  std::memset(field, 0, kSize);
  text.copy(field, kSize - 1);
}

void set_signal(const Pairs& pairs, char (&signal)[kReadingSize]) {
  const auto found = pairs.find("signal");
  if (found != pairs.end()) set_text(reading_from(found->second, "signal"), signal);
}

void set_bytes(const Pairs& pairs, const char* key, uint8_t* bytes, size_t size) {
  const auto found = pairs.find(key);
  if (found == pairs.end()) return;
  const std::string& text = found->second;
  if (text.size() != 2 * size || text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
    throw UsageError(std::string(key) + " takes " + std::to_string(2 * size) + " hexadecimal digits: " + text);
  }
  for (size_t i = 0; i < size; ++i) bytes[i] = static_cast<uint8_t>(std::stoul(text.substr(2 * i, 2), nullptr, 16));
}

// Ids whose low byte is below 8 are left out: readers of the 2.4G table take that byte for an SSID's number.
unsigned free_association_id(const std::vector<Station>& stations) {
  const auto is_taken = [&](unsigned id) {
    return std::any_of(stations.begin(), stations.end(), [&](const Station& s) { return s.association_id == id; });
  };
  unsigned id = 8;
  while ((id & 0xff) < 8 || is_taken(id)) ++id;
  return id;
}

bool is_at(const uint8_t* one, const Mac& other) {
  return std::memcmp(one, other.data(), other.size()) == 0;
}

// A station is associated with one BSS of the gateway at a time.
Changes leave_elsewhere(const Mac& mac, const std::string& interface) {
  Changes changes;
  for (const Band band : kBands) {
    std::vector<Station> stations = load_stations(band);
    const auto gone = std::remove_if(stations.begin(), stations.end(), [&](const Station& station) {
      return is_at(station.mac, mac) && interface != station.interface;
    });
    if (gone == stations.end()) continue;
    changes.push_back(std::string(gone->interface) + ": station " + mac_text(mac.data()) + " left");
    stations.erase(gone, stations.end());
    store_stations(band, stations);
  }
  return changes;
}

Changes add_station(const Words& words) {
  expect_words(words, 3, words.size());
  const std::string interface = interface_from(words[1]);
  const Band band = band_of(interface).value();
  const Mac mac = mac_from(words[2]);
  if ((mac[0] & 1) != 0 || mac == Mac()) throw UsageError("no station can have that address: " + words[2]);
  const Pairs pairs = pairs_from(words, 3, {"aid", "signal", "rate", "rrm", "btm", "valid", "marker"});

  std::vector<Station> stations = load_stations(band);
  const auto known = std::find_if(stations.begin(), stations.end(), [&](const Station& station) {
    return is_at(station.mac, mac) && interface == station.interface;
  });
  Station station = {};
  if (known != stations.end()) {
    station = *known;
  } else {
    set_text(interface, station.interface);
    std::copy(mac.begin(), mac.end(), station.mac);
    station.association_id = station.marker = free_association_id(stations);
    station.valid = 1;
    set_text("~-60", station.signal);
    station.rate = 144;
    station.joined_ms = monotonic_ms();
  }
  set_number(pairs, "aid", &station.association_id, kMostAssociationId);
  if (pairs.count("aid") != 0) station.marker = station.association_id;
  set_number(pairs, "valid", &station.valid, UINT8_MAX);
  set_number(pairs, "marker", &station.marker, UINT16_MAX);
  set_number(pairs, "rate", &station.rate, UINT16_MAX);
  set_signal(pairs, station.signal);
  set_bytes(pairs, "rrm", station.capability_11k, kCapabilities11k);
  set_bytes(pairs, "btm", &station.capability_11v, 1);

  Changes changes = leave_elsewhere(mac, interface);
  stations = load_stations(band);
  const auto own =
      std::find_if(stations.begin(), stations.end(), [&](const Station& each) { return is_at(each.mac, mac); });
  const std::string name = interface + ": station " + mac_text(mac.data());
  if (own != stations.end()) {
    *own = station;
    changes.push_back(name + " changed");
  } else {
    if (stations.size() >= kMostStations) throw Refusal("the radio's table has room for 32 stations");
    stations.push_back(station);
    changes.push_back(name + " associated");
  }
  store_stations(band, stations);
  return changes;
}

Changes remove_station(const Words& words) {
  expect_words(words, 3, 3);
  const std::string interface = interface_from(words[1]);
  if (words[2] == "all") return stations_leave(interface);
  const Mac mac = mac_from(words[2]);
  const Band band = band_of(interface).value();
  std::vector<Station> stations = load_stations(band);
  const auto known = std::find_if(stations.begin(), stations.end(), [&](const Station& station) {
    return interface == station.interface && is_at(station.mac, mac);
  });
  if (known == stations.end()) throw Refusal(interface + " has no station " + words[2]);
  stations.erase(known);
  store_stations(band, stations);
  return {interface + ": station " + mac_text(mac.data()) + " left"};
}

Changes add_neighbour(const Words& words) {
  expect_words(words, 3, words.size());
  const Band band = loaded_band_from(words[1]);
  const Mac bssid = mac_from(words[2]);
  const Pairs pairs = pairs_from(words, 3, {"channel", "signal", "ssid", "security", "wps"});
  std::vector<Neighbour> neighbours = load_neighbours(band);
  const auto known = std::find_if(neighbours.begin(), neighbours.end(),
                                  [&](const Neighbour& neighbour) { return is_at(neighbour.bssid, bssid); });
  Neighbour neighbour = {};
  if (known != neighbours.end()) {
    neighbour = *known;
  } else {
    if (neighbours.size() >= kMostNeighbours) throw Refusal("the radio's table has room for 128 neighbours");
    std::copy(bssid.begin(), bssid.end(), neighbour.bssid);
    neighbour.channel = static_cast<unsigned>(traits(band).automatic_channel);
    set_text("~-75", neighbour.signal);
    set_text("WPA2PSK/AES", neighbour.security);
  }
  set_number(pairs, "channel", &neighbour.channel, kMostChannel);
  set_number(pairs, "wps", &neighbour.wps, 1);
  set_signal(pairs, neighbour.signal);
  if (const auto ssid = pairs.find("ssid"); ssid != pairs.end()) {
    if (ssid->second.size() > kMostSsidBytes) throw UsageError("an SSID has at most 32 bytes: " + ssid->second);
    neighbour.ssid_length = ssid->second.copy(reinterpret_cast<char*>(neighbour.ssid), kMostSsidBytes);
  }
  if (const auto security = pairs.find("security"); security != pairs.end()) {
    const std::string& text = security->second;
    if (text.empty() || std::any_of(text.begin(), text.end(), [](char c) { return c <= ' '; })) {
      throw UsageError("a security is one word: " + text);
    }
    set_text(text, neighbour.security);
  }
  neighbour.seen_ms = monotonic_ms();
  const bool is_new = known == neighbours.end();
  if (is_new) {
    neighbours.push_back(neighbour);
  } else {
    *known = neighbour;
  }
  store_neighbours(band, neighbours);
  return {std::string(traits(band).label) + " radio: neighbour " + mac_text(bssid.data()) +
          (is_new ? " appeared" : " changed")};
}

Changes remove_neighbour(const Words& words) {
  expect_words(words, 3, 3);
  const Band band = loaded_band_from(words[1]);
  const bool all = words[2] == "all";
  const Mac bssid = all ? Mac() : mac_from(words[2]);
  std::vector<Neighbour> left;
  Changes changes;
  for (const Neighbour& neighbour : load_neighbours(band)) {
    if (all || is_at(neighbour.bssid, bssid)) {
      changes.push_back(std::string(traits(band).label) + " radio: neighbour " + mac_text(neighbour.bssid) + " gone");
    } else {
      left.push_back(neighbour);
    }
  }
  if (changes.empty() && !all) throw Refusal("no neighbour " + words[2]);
  store_neighbours(band, left);
  return changes;
}

Changes add_process(const Words& words) {
  expect_words(words, 3, 4);
  const std::string& name = words[1];
  if (name.empty() || name.size() > kListNameSize ||
      std::any_of(name.begin(), name.end(), [](char c) { return c <= ' '; })) {
    throw UsageError("a process's name is one word of at most 16 characters: " + name);
  }
  DriverProcess process = {};
  name.copy(process.name, kListNameSize);
  process.pid = number_from(words[2], "process id");
  process.running = 1;
  set_number(pairs_from(words, 3, {"running"}), "running", &process.running, UINT8_MAX);
  std::vector<DriverProcess> processes = load_processes();
  const auto known =
      std::find_if(processes.begin(), processes.end(), [&](const DriverProcess& each) { return name == each.name; });
  const bool is_new = known == processes.end();
  if (is_new) {
    if (processes.size() >= kMostProcesses) throw Refusal("the driver counts at most 255 processes");
    processes.push_back(process);
  } else {
    *known = process;
  }
  store_processes(processes);
  return {"driver: process " + name + (is_new ? " added" : " changed")};
}

Changes remove_process(const Words& words) {
  expect_words(words, 2, 2);
  std::vector<DriverProcess> left;
  Changes changes;
  for (const DriverProcess& process : load_processes()) {
    if (words[1] == "all" || words[1] == process.name) {
      changes.push_back("driver: process " + std::string(process.name) + " removed");
    } else {
      left.push_back(process);
    }
  }
  if (changes.empty() && words[1] != "all") throw Refusal("the driver has no process " + words[1]);
  store_processes(left);
  return changes;
}

Changes add_or_remove(const Words& words, Changes (*add)(const Words&), Changes (*remove)(const Words&)) {
  expect_words(words, 1, words.size());
  if (words[0] == "add") return add(words);
  if (words[0] == "remove") return remove(words);
  throw UsageError("unknown: " + words[0] + " (known: add, remove)");
}

}  // namespace

Changes station(const Words& words) {
  return add_or_remove(words, add_station, remove_station);
}

Changes neighbour(const Words& words) {
  return add_or_remove(words, add_neighbour, remove_neighbour);
}

Changes process(const Words& words) {
  return add_or_remove(words, add_process, remove_process);
}

}  // namespace gateway::tools::simctl
