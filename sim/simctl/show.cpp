// What there is to steer, in words.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/driver/reading.h"
#include "sim/records/journal.h"
#include "sim/simctl/words.h"
#include "sim/state/driver_lists.h"
#include "sim/state/driver_state.h"
#include "sim/state/neighbourhood.h"
#include "sim/state/wps_session.h"

namespace gateway::tools::simctl {
namespace {

std::string setting(const DriverSettings& settings, const char* key) {
  const auto found = settings.find(key);
  return found == settings.end() ? "-" : on_one_line(found->second);
}

void show_station(const Station& station) {
  const long signal = reading_at(station.signal, monotonic_ms(), station.mac[kMacSize - 1]);
  std::printf("  station %s on %s: aid %u, signal %ld (%s) dBm, %u Mbit/s, for %lld s", mac_text(station.mac).c_str(),
              station.interface, station.association_id, signal, station.signal, station.rate,
              static_cast<long long>((monotonic_ms() - station.joined_ms) / 1000));
  if (station.valid != 1 || station.marker != station.association_id) {
    std::printf(", valid %u, marker 0x%04x", station.valid, station.marker);
  }
  std::printf("\n");
}

void show_neighbour(const Neighbour& neighbour) {
  std::printf("  neighbour %s: channel %u, signal %ld (%s) dBm, %s, \"%s\"\n", mac_text(neighbour.bssid).c_str(),
              neighbour.channel, heard_signal(neighbour), neighbour.signal, neighbour.security,
              on_one_line(ssid_of(neighbour)).c_str());
}

void show_interface(const std::string& interface) {
  const DriverSettings settings = load_settings(interface).value_or(DriverSettings());
  const std::string peer = setting(settings, "WpsPeer");
  std::printf("  %s: \"%s\", WPS state %s, PIN %s, peer %s\n", interface.c_str(), setting(settings, "SSID").c_str(),
              setting(settings, "WpsState").c_str(), setting(settings, "WpsPin").c_str(),
              peer == kNobody ? "-" : peer.c_str());
  if (settings.count("WpsAccessList") != 0) {
    std::printf("    WPS access list %s\n", setting(settings, "WpsAccessList").c_str());
  }
  for (const auto& [kind, bytes] : kept_payloads(interface)) std::printf("    %s %s\n", kind.c_str(), bytes.c_str());
}

void show_radio(Band band, const std::string& only) {
  const Words interfaces = driver_interfaces(band);
  if (interfaces.empty()) {
    std::printf("%s radio: no driver\n", traits(band).label);
    return;
  }
  const DriverSettings settings = load_settings(interfaces.front()).value_or(DriverSettings());
  std::printf("%s radio: channel %s, noise %s dBm, load %s %%, temperature %s C, WPS status %s\n", traits(band).label,
              setting(settings, "Channel").c_str(), setting(settings, "Noise").c_str(),
              setting(settings, "ChannelLoad").c_str(), setting(settings, "Temperature").c_str(),
              setting(settings, "WpsStatus").c_str());
  for (const std::string& interface : interfaces) {
    if (only.empty() || only == interface) show_interface(interface);
  }
  for (const Station& station : load_stations(band)) {
    if (only.empty() || only == station.interface) show_station(station);
  }
  if (!only.empty()) return;
  for (const Neighbour& neighbour : load_neighbours(band)) show_neighbour(neighbour);
}

void show_rest() {
  for (const DriverProcess& process : load_processes()) {
    std::printf("process %s: %u, %s\n", process.name, process.pid, process.running != 0 ? "running" : "not running");
  }
  for (const Fault& fault : load_faults()) std::printf("request %s\n", fault_text(fault).c_str());
  for (const ToolFault& fault : load_tool_faults()) std::printf("command %s\n", fault_text(fault).c_str());
  std::string id = read_text(std::string(place::kPlatform) + "/chip_id");
  if (!id.empty() && id.back() == '\n') id.pop_back();
  std::printf("package id: %s\n", on_one_line(id).c_str());
}

}  // namespace

Changes show(const Words& words) {
  expect_words(words, 0, 1);
  if (words.empty()) {
    for (const Band band : kBands) show_radio(band, "");
    show_rest();
  } else if (band_of(words[0])) {
    const std::string interface = interface_from(words[0]);
    show_radio(band_of(interface).value(), interface);
  } else {
    show_radio(band_from(words[0]), "");
  }
  return {};
}

}  // namespace gateway::tools::simctl
