#include "sim/state/neighbourhood.h"

#include <cstdio>

#include "sim/driver/reading.h"
#include "sim/state/driver_lists.h"

namespace gateway {
namespace {

// A survey is a table of text: what would break its lines shows as dots.
std::string printable(std::string text) {
  for (char& c : text) {
    if (c < ' ' || c == '\x7f') c = '.';
  }
  return text;
}

}  // namespace

long heard_signal(const Neighbour& neighbour) {
  return reading_at(neighbour.signal, neighbour.seen_ms, neighbour.bssid[kMacSize - 1]);
}

std::string ssid_of(const Neighbour& neighbour) {
  return {reinterpret_cast<const char*>(neighbour.ssid), neighbour.ssid_length};
}

size_t scan(Band band) {
  const int64_t now = monotonic_ms();
  std::vector<Neighbour> neighbours = load_neighbours(band);
  for (Neighbour& neighbour : neighbours) neighbour.seen_ms = now;
  store_neighbours(band, neighbours);
  return neighbours.size();
}

std::string site_survey(Band band, const std::string& interface) {
  const std::vector<Neighbour> neighbours = load_neighbours(band);
  std::string survey = interface + "  get_site_survey:\nTotal " + std::to_string(neighbours.size()) + "\n";
  char line[256];
  const char* const format = "%-4s%-33s%-19s%-24s%-8s%-4s\n";
  std::snprintf(line, sizeof line, format, "Ch", "SSID", "BSSID", "Security", "Signal", "WPS");
  survey += line;
  for (const Neighbour& neighbour : neighbours) {
    std::snprintf(line, sizeof line, format, std::to_string(neighbour.channel).c_str(),
                  printable(ssid_of(neighbour)).c_str(), mac_text(neighbour.bssid).c_str(), neighbour.security,
                  std::to_string(heard_signal(neighbour)).c_str(), neighbour.wps != 0 ? "YES" : "NO");
    survey += line;
  }
  return survey;
}

}  // namespace gateway
