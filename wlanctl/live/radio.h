// What driver and kernel say of a radio at this moment. A question that gets no answer adds a problem to the report and
// leaves its place empty.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/base/report.h"
#include "wlanctl/library/query.h"

namespace wlanctl {

// "2.4g: ra0", for messages.
Asked asked_of(Band band, const std::string& interface);

enum class LinkState { kAbsent, kDown, kUp };
LinkState link_state(const std::string& interface);
const char* word_for(LinkState state);  // "absent", "down", "up"

// Whether the driver serves the band at all; a problem when it does not.
bool is_there(Band band, Report& report);

struct Radio {
  std::optional<std::string> address;
  std::optional<int> channel;
  std::optional<int> noise;
  std::optional<int> load;
  std::optional<unsigned> temperature;
};
Radio radio_of(Band band, Report& report);

struct Station {
  std::string mac;
  std::optional<bool> can_11k;      // empty for the SSIDs of which the driver cannot be asked
  std::optional<int> features_11v;  // the driver's byte, likewise
};

// `ssid` counts from 1.
std::optional<std::vector<Station>> stations_of(Band band, int ssid, Report& report);
Json json_of(const std::optional<std::vector<Station>>& stations);

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
