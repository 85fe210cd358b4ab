// The driver's neighbour table: who else sends on the band's channels.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/base/report.h"

namespace wlanctl {

struct Neighbour {
  std::string bssid;
  int channel;
  int signal;    // dBm, when it was last heard
  unsigned age;  // seconds since then
  std::string ssid;
  std::string security;
  std::string mode;
  bool offers_wps;
};

// The strongest first. Empty with a problem when the driver gives no table, or one that this tool cannot read.
std::optional<std::vector<Neighbour>> neighbours_of(Band band, Report& report);
Json json_of(const std::optional<std::vector<Neighbour>>& neighbours);

// A text table, for at most `most` of them.
std::string table_of(const std::vector<Neighbour>& neighbours, size_t most);

}  // namespace wlanctl
