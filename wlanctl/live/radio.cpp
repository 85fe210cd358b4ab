#include "wlanctl/live/radio.h"

#include <net/if.h>

#include <cstdint>
#include <cstdlib>

#include "wifimgr_lib.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/mac.h"

namespace wlanctl {
namespace {

constexpr size_t kNumberSize = 12;

template <typename Query>
std::optional<int> number_from(Report& report, Band band, const char* what, Query query) {
  char text[kNumberSize] = "";
  if (!ask_driver(report, band, interface_of(band, 0), what, [&] { return query(text) == 0; })) return std::nullopt;
  return static_cast<int>(std::strtol(text, nullptr, 10));
}

}  // namespace

LinkState link_state(const std::string& interface) {
  if (if_nametoindex(interface.c_str()) == 0) return LinkState::kAbsent;
  return wifimgr_lib_get_test_itf_status(interface.c_str(), IFF_UP) == 1 ? LinkState::kUp : LinkState::kDown;
}

int interfaces_up(Band band) {
  int count = WIFIMGR_FIELDS;
  while (count > 0 && link_state(interface_of(band, count - 1)) != LinkState::kUp) --count;
  return count;
}

const char* word_for(LinkState state) {
  if (state == LinkState::kAbsent) return "absent";
  return state == LinkState::kUp ? "up" : "down";
}

bool is_there(Band band, Report& report) {
  const std::string interface = interface_of(band, 0);
  if (link_state(interface) != LinkState::kAbsent) return true;
  report.problem(
      {std::string(label_of(band)) + ": there is no " + interface, "load the band's driver", about(band, interface)});
  return false;
}

std::optional<int> channel_of(Band band, std::string* reason) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  if (!ask_in_time(
          band, [&] { return wifimgr_lib_get_CHANNEL(number_of(band), text) == 0; }, reason)) {
    if (is_driver_late(band)) *reason = "it takes longer than " + std::to_string(kDriverSeconds) + " s";
    return std::nullopt;
  }
  return static_cast<int>(std::strtol(text, nullptr, 10));
}

std::optional<std::string> hardware_address_of(const std::string& interface, const Asked& asked, Report& report) {
  char address[kMacTextSize] = "";
  const auto query = [&] { return wifimgr_lib_get_itf_hwaddr(interface.c_str(), address, sizeof address) == 0; };
  if (!ask(report, asked, "its address", query)) return std::nullopt;
  return mac_text(address);
}

Radio radio_of(Band band, Report& report) {
  const int number = number_of(band);
  const std::string interface = interface_of(band, 0);
  const Asked asked = asked_of(band, interface);
  Radio radio;
  radio.address = hardware_address_of(interface, asked, report);
  radio.channel =
      number_from(report, band, "its channel", [&](char* text) { return wifimgr_lib_get_CHANNEL(number, text); });
  radio.noise =
      number_from(report, band, "its noise", [&](char* text) { return wifimgr_lib_get_Noise(number, -1, text); });
  radio.load = number_from(report, band, "its channel's load",
                           [&](char* text) { return wifimgr_lib_get_chanLoad(number, -1, text); });
  uint32_t temperature = 0;
  if (ask_driver(report, band, interface, "its temperature",
                 [&] { return wifimgr_lib_get_CPU_TEMPERATURE(number, &temperature) == 0; })) {
    radio.temperature = temperature;
  }
  return radio;
}

}  // namespace wlanctl
