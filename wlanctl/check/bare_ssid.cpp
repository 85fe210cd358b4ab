#include "wlanctl/check/bare_ssid.h"

#include <algorithm>

#include "wifimgr_lib.h"
#include "wlanctl/store/value.h"

namespace wlanctl {

std::vector<int> ssids_switched_on(Band band) {
  std::vector<int> ssids;
  for (int ssid = 1; ssid <= std::clamp(ssid_count(band), 0, WIFIMGR_FIELDS); ++ssid) {
    if (is_switched_on(band, ssid)) ssids.push_back(ssid);
  }
  return ssids;
}

std::string reason_against_air(Band band, int ssid) {
  for (const char* const name : {"SSID", "AuthMode"}) {
    const auto has_none = [&](int number) { return read_value(band, *find_key(name), number).value_or("").empty(); };
    if (!has_none(ssid) || has_none(1)) continue;
    const std::string number = std::to_string(ssid);
    return "SSID " + number + " would be on the air, and " + name + ":" + number + " is empty";
  }
  return "";
}

}  // namespace wlanctl
