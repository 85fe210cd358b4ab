#include "wlanctl/live/served_ssid.h"

#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

std::string setting(Band band, const char* key, int ssid) {
  return read_value(band, *find_key(key), ssid).value_or("");
}

}  // namespace

ServedSsid served_ssid(Band band, int number) {
  const std::string interface = interface_of(band, number - 1);
  return {number, interface, setting(band, "SSID", number), setting(band, "EnableSSID", number) == "1",
          link_state(interface)};
}

std::vector<ServedSsid> served_ssids(Band band) {
  std::vector<ServedSsid> ssids;
  const int count = ssid_count(band);
  for (int number = 1; number <= count; ++number) ssids.push_back(served_ssid(band, number));
  return ssids;
}

bool has_ssid(Band band, int number, Report& report) {
  const int count = ssid_count(band);
  if (number >= 1 && number <= count) return true;
  report.problem(
      {std::string(label_of(band)) + " has " + std::to_string(count) + " SSIDs, and no SSID " + std::to_string(number),
       "name one of them", about(band, number)});
  return false;
}

}  // namespace wlanctl
