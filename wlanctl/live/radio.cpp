#include "wlanctl/live/radio.h"

#include <net/if.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>

#include "wifimgr_lib.h"
#include "wlanctl/live/mac.h"

namespace wlanctl {
namespace {

constexpr size_t kNumberSize = 12;

template <typename Query>
std::optional<int> number_from(Report& report, const Asked& radio, const char* what, Query query) {
  char text[kNumberSize] = "";
  if (!ask(report, radio, what, [&] { return query(text) == 0; })) return std::nullopt;
  return static_cast<int>(std::strtol(text, nullptr, 10));
}

// The library asks for the features of the first SSIDs' stations only.
constexpr int kSsidsWithFeatures = 4;

void ask_features(Report& report, Band band, int ssid, const uint8_t* mac, Station* station) {
  if (ssid > kSsidsWithFeatures) return;
  const Asked asked = asked_of(band, interface_of(band, ssid - 1));
  uint8_t answer = 0;
  if (ask(report, asked, "what " + station->mac + " can do of 802.11k",
          [&] { return wifimgr_lib_get_Sta11kCap(number_of(band), ssid, mac, &answer) == 0; })) {
    station->can_11k = answer != 0;
  }
  if (ask(report, asked, "what " + station->mac + " can do of 802.11v",
          [&] { return wifimgr_lib_get_Sta11vCap(number_of(band), ssid, mac, &answer) == 0; })) {
    station->features_11v = answer;
  }
}

}  // namespace

Asked asked_of(Band band, const std::string& interface) {
  return {std::string(label_of(band)) + ": " + interface, {{"band", label_of(band)}, {"interface", interface}}};
}

LinkState link_state(const std::string& interface) {
  if (if_nametoindex(interface.c_str()) == 0) return LinkState::kAbsent;
  return wifimgr_lib_get_test_itf_status(interface.c_str(), IFF_UP) == 1 ? LinkState::kUp : LinkState::kDown;
}

const char* word_for(LinkState state) {
  if (state == LinkState::kAbsent) return "absent";
  return state == LinkState::kUp ? "up" : "down";
}

bool is_there(Band band, Report& report) {
  const std::string interface = interface_of(band, 0);
  if (link_state(interface) != LinkState::kAbsent) return true;
  report.problem({std::string(label_of(band)) + ": there is no " + interface,
                  "load the band's driver",
                  {{"band", label_of(band)}, {"interface", interface}}});
  return false;
}

Radio radio_of(Band band, Report& report) {
  const int number = number_of(band);
  const std::string interface = interface_of(band, 0);
  const Asked asked = asked_of(band, interface);
  Radio radio;
  char address[kMacTextSize] = "";
  if (ask(report, asked, "its address",
          [&] { return wifimgr_lib_get_itf_hwaddr(interface.c_str(), address, sizeof address) == 0; })) {
    radio.address = mac_text(address);
  }
  radio.channel =
      number_from(report, asked, "its channel", [&](char* text) { return wifimgr_lib_get_CHANNEL(number, text); });
  radio.noise =
      number_from(report, asked, "its noise", [&](char* text) { return wifimgr_lib_get_Noise(number, -1, text); });
  radio.load = number_from(report, asked, "its channel's load",
                           [&](char* text) { return wifimgr_lib_get_chanLoad(number, -1, text); });
  uint32_t temperature = 0;
  if (ask(report, asked, "its temperature",
          [&] { return wifimgr_lib_get_CPU_TEMPERATURE(number, &temperature) == 0; })) {
    radio.temperature = temperature;
  }
  return radio;
}

std::optional<std::vector<Station>> stations_of(Band band, int ssid, Report& report) {
  // The query has no result: a count that stays tells that there is no list.
  constexpr uint64_t kNoList = UINT64_MAX;
  constexpr char kNobody[] = "no sta existance";
  constexpr int kMostSsids = 8;
  wifimgr_station_list list = {};
  list.count = kNoList;
  std::string reason;
  const bool has_list = call_quietly(
      [&] {
        getMacEntryByIndex(&list, static_cast<unsigned>(number_of(band) * kMostSsids + ssid - 1));
        return list.count != kNoList;
      },
      &reason);
  if (!has_list && reason.find(kNobody) != std::string::npos) return std::vector<Station>();
  if (!has_list) {
    complain(report, asked_of(band, interface_of(band, ssid - 1)), "its stations", reason);
    return std::nullopt;
  }
  std::vector<Station> stations;
  for (uint64_t i = 0; i < list.count && i < WIFIMGR_STATIONS; ++i) {
    Station station = {mac_text(list.mac[i]), {}, {}};
    // On 2.4G one may be in the list twice.
    const auto is_same = [&](const Station& other) { return other.mac == station.mac; };
    if (std::any_of(stations.begin(), stations.end(), is_same)) continue;
    ask_features(report, band, ssid, list.mac[i], &station);
    stations.push_back(std::move(station));
  }
  return stations;
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

WpsSession wps_session_of(Band band, int ssid, Report& report) {
  // Stays when the driver does not tell the state itself.
  constexpr uint32_t kUntold = 0;
  uint32_t state = kUntold;
  char peer[kMacTextSize] = "";
  WpsSession session;
  std::string reason;
  const bool answered =
      call_quietly([&] { return wifimgr_lib_get_WpsStatus(number_of(band), &state, peer, ssid - 1) == 0; }, &reason);
  if (answered || state != kUntold) session.state = state;
  if (!answered) {
    complain(report, asked_of(band, interface_of(band, ssid - 1)),
             state == kUntold ? "the state of its WPS" : "the peer of its WPS", reason);
  }
  if (peer[0] != '\0') session.peer = mac_text(peer);
  return session;
}

std::string word_for_wps(const std::optional<unsigned>& state) {
  static constexpr const char* kNames[] = {"off", "idle", "open", "enrolling", "done", "failed"};
  if (!state) return "-";
  return *state < std::size(kNames) ? kNames[*state] : std::to_string(*state);
}

Json json_of(const WpsSession& session) {
  return {{"state", json_or_null(session.state)},
          {"state_name", session.state ? Json(word_for_wps(session.state)) : Json()},
          {"peer", json_or_null(session.peer)}};
}

std::optional<std::string> wps_pin_of(Band band, int ssid, Report& report) {
  constexpr size_t kPinSize = sizeof "4294967295";
  char pin[kPinSize] = "";
  const auto query = [&] { return wifimgr_lib_get_WPS_PIN_CODE(number_of(band), ssid - 1, pin) == 0; };
  if (!ask(report, asked_of(band, interface_of(band, ssid - 1)), "its WPS PIN", query)) return std::nullopt;
  return pin;
}

}  // namespace wlanctl
