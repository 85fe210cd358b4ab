#include "sim/state/association.h"

#include <algorithm>
#include <iterator>

#include "sim/state/driver_lists.h"

namespace gateway {
namespace {

// What a station knows of the network that it joins: its name and its security.
constexpr const char* kNetworkKeys[] = {"SSID",         "AuthMode", "EncrypType", "WPAPSK", "IEEE8021X",
                                        "DefaultKeyID", "Key1",     "Key2",       "Key3",   "Key4"};

}  // namespace

std::vector<std::string> stations_leave(const std::string& interface) {
  const Band band = band_of(interface).value();
  std::vector<std::string> changes;
  std::vector<Station> left;
  for (const Station& station : load_stations(band)) {
    if (interface == station.interface) {
      changes.push_back(interface + ": station " + mac_text(station.mac) + " left");
    } else {
      left.push_back(station);
    }
  }
  if (!changes.empty()) store_stations(band, left);
  return changes;
}

bool is_joined_by(const std::string& key) {
  return std::find(std::begin(kNetworkKeys), std::end(kNetworkKeys), key) != std::end(kNetworkKeys);
}

}  // namespace gateway
