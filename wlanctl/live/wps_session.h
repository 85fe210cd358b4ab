// How far a WPS session of an SSID is.
#pragma once

#include <optional>
#include <string>

#include "wlanctl/base/report.h"

namespace wlanctl {

struct WpsSession {
  std::optional<unsigned> state;
  std::optional<std::string> peer;  // of a session that has one
};
WpsSession wps_session_of(Band band, int ssid, Report& report);
std::string word_for_wps(const std::optional<unsigned>& state);  // "idle" ..., a number, "-"
std::optional<std::string> wps_pin_of(Band band, int ssid, Report& report);
// {"state": 1, "state_name": "idle", "peer": null}
Json json_of(const WpsSession& session);

}  // namespace wlanctl
