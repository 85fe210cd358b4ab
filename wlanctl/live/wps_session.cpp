#include "wlanctl/live/wps_session.h"

#include <cstdint>
#include <iterator>

#include "wifimgr_lib.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/mac.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {

WpsSession wps_session_of(Band band, int ssid, Report& report) {
  // Stays when the driver does not tell the state itself.
  constexpr uint32_t kUntold = 0;
  uint32_t state = kUntold;
  char peer[kMacTextSize] = "";
  WpsSession session;
  std::string reason;
  const bool answered = ask_in_time(
      band, [&] { return wifimgr_lib_get_WpsStatus(number_of(band), &state, peer, ssid - 1) == 0; }, &reason);
  if (answered || state != kUntold) session.state = state;
  if (!answered) {
    complain_of_driver(report, band, interface_of(band, ssid - 1),
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
  if (!ask_driver(report, band, interface_of(band, ssid - 1), "its WPS PIN", query)) return std::nullopt;
  return pin;
}

}  // namespace wlanctl
