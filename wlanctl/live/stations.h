// Who is associated with an SSID at this moment.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/report.h"

namespace wlanctl {

struct Station {
  std::string mac;
  std::optional<bool> can_11k;      // empty for the SSIDs of which the driver cannot be asked
  std::optional<int> features_11v;  // the driver's byte, likewise
};

// `ssid` counts from 1. The addresses alone cost one question.
std::optional<std::vector<std::string>> station_addresses_of(Band band, int ssid, Report& report);
std::optional<std::vector<Station>> stations_of(Band band, int ssid, Report& report);
Json json_of(const std::optional<std::vector<Station>>& stations);

// "yes", "no", or "-" where it is not known.
std::string yes_or_no(const std::optional<bool>& known);

}  // namespace wlanctl
