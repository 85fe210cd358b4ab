#include "wlanctl/live/stations.h"

#include <algorithm>
#include <cstdint>

#include "wifimgr_lib.h"
#include "wlanctl/library/station_answer.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/mac.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {
namespace {

// The library asks for the features of the first SSIDs' stations only.
constexpr int kSsidsWithFeatures = 4;

void ask_features(Report& report, Band band, int ssid, const uint8_t* mac, Station* station) {
  if (ssid > kSsidsWithFeatures) return;
  const std::string interface = interface_of(band, ssid - 1);
  uint8_t answer = 0;
  if (ask_driver(report, band, interface, "what " + station->mac + " can do of 802.11k",
                 [&] { return wifimgr_lib_get_Sta11kCap(number_of(band), ssid, mac, &answer) == 0; })) {
    station->can_11k = answer != 0;
  }
  if (ask_driver(report, band, interface, "what " + station->mac + " can do of 802.11v",
                 [&] { return wifimgr_lib_get_Sta11vCap(number_of(band), ssid, mac, &answer) == 0; })) {
    station->features_11v = answer;
  }
}

// None, with a problem, when the driver does not tell.
std::optional<wifimgr_station_list> station_list_of(Band band, int ssid, Report& report) {
  // The query has no result: a count that stays tells that there is no list.
  constexpr uint64_t kNoList = UINT64_MAX;
  constexpr char kNobody[] = "no sta existance";
  wifimgr_station_list list = {};
  list.count = kNoList;
  std::string reason;
  const StationAnswer answer;
  const bool has_list = ask_in_time(
      band,
      [&] {
        getMacEntryByIndex(&list, static_cast<unsigned>(number_of(band) * WIFIMGR_FIELDS + ssid - 1));
        return list.count != kNoList;
      },
      &reason);
  if (!answer.fault().empty()) {
    complain_of_driver(report, band, interface_of(band, ssid - 1), "its stations", answer.fault());
    return std::nullopt;
  }
  if (has_list) return list;
  if (reason.find(kNobody) != std::string::npos) return wifimgr_station_list{};
  complain_of_driver(report, band, interface_of(band, ssid - 1), "its stations", reason);
  return std::nullopt;
}

}  // namespace

std::optional<std::vector<Station>> stations_of(Band band, int ssid, Report& report) {
  const auto list = station_list_of(band, ssid, report);
  if (!list) return std::nullopt;
  std::vector<Station> stations;
  for (uint64_t i = 0; i < list->count && i < WIFIMGR_STATIONS; ++i) {
    Station station = {mac_text(list->mac[i]), {}, {}};
    // On 2.4G one may be in the list twice.
    const auto is_same = [&](const Station& other) { return other.mac == station.mac; };
    if (std::any_of(stations.begin(), stations.end(), is_same)) continue;
    ask_features(report, band, ssid, list->mac[i], &station);
    stations.push_back(std::move(station));
  }
  return stations;
}

std::optional<std::vector<std::string>> station_addresses_of(Band band, int ssid, Report& report) {
  const auto list = station_list_of(band, ssid, report);
  if (!list) return std::nullopt;
  std::vector<std::string> addresses;
  for (uint64_t i = 0; i < list->count && i < WIFIMGR_STATIONS; ++i) addresses.push_back(mac_text(list->mac[i]));
  return addresses;
}

Json json_of(const std::optional<std::vector<Station>>& stations) {
  if (!stations) return Json();
  Json list = Json::array();
  for (const Station& station : *stations) {
    list.push_back({{"mac", station.mac},
                    {"can_11k", json_or_null(station.can_11k)},
                    {"features_11v", json_or_null(station.features_11v)}});
  }
  return list;
}

std::string yes_or_no(const std::optional<bool>& known) {
  if (!known) return "-";
  return *known ? "yes" : "no";
}

}  // namespace wlanctl
