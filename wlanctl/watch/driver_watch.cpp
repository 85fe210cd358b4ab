#include "wlanctl/watch/driver_watch.h"

#include <cstdlib>
#include <utility>

#include "wifimgr_lib.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/live/stations.h"
#include "wlanctl/watch/link_watch.h"
#include "wlanctl/watch/store_watch.h"

namespace wlanctl {
namespace {

using Stations = std::set<std::string>;

// Where others have the right of way, and a radio that hears them must go.
constexpr int kFirstRadarChannel = 52;
constexpr int kLastRadarChannel = 144;

// A radio that was restarted takes the channel that it was told at the first look or the second.
constexpr int kLooksToSettle = 2;

bool is_radar_channel(Band band, int channel) {
  return band == Band::k5G && channel >= kFirstRadarChannel && channel <= kLastRadarChannel;
}

std::string ssid_text(int number, const std::string& name) {
  return "SSID " + std::to_string(number) + (name.empty() ? "" : " " + name);
}

Event station_event(const char* kind, Band band, int number, const std::string& name, const std::string& mac) {
  return {kind,
          band,
          mac + " " + ssid_text(number, name),
          {{"mac", mac}, {"ssid", number}, {"interface", interface_of(band, number - 1)}, {"name", name}}};
}

}  // namespace

void DriverWatch::look(const LinkWatch& links, const StoreWatch& store, Events& events) {
  if (look_at_channel(links, events)) {
    for (int number = 1; number <= WIFIMGR_FIELDS; ++number) look_at_ssid(number, links, store, events);
    is_first_ = false;
  }
}

// Whether the driver answers.
bool DriverWatch::look_at_channel(const LinkWatch& links, Events& events) {
  const std::string interface = interface_of(band_, 0);
  std::string reason = "there is no " + interface;
  const std::optional<int> channel = links.is_there(interface) ? channel_of(band_, &reason) : std::nullopt;
  const bool did_answer = std::exchange(answers_, channel.has_value());
  if (did_answer && !channel) {
    // In front of it the library says which of its functions did not get on.
    const size_t colon = reason.rfind(": ");
    events.push_back(
        {"driver-gone", band_, colon == std::string::npos ? reason : reason.substr(colon + 2), {{"reason", reason}}});
  }
  if (!did_answer && channel) {
    events.push_back(
        {"driver-back", band_, "the driver answers; channel " + std::to_string(*channel), {{"channel", *channel}}});
  }
  if (links.changes_of(band_) != changes_) looks_since_restart_ = 0;
  changes_ = links.changes_of(band_);
  if (!channel) {
    // An interface that went took its stations with it.
    if (!links.is_there(interface)) {
      for (auto& [number, ssid] : ssids_) {
        for (const std::string& mac : ssid.stations.value_or(Stations())) {
          events.push_back(station_event("station-left", band_, number, "", mac));
        }
      }
      ssids_.clear();
    }
    return false;
  }
  if (channel_ && *channel_ != *channel) tell_channel(*channel_, *channel, events);
  channel_ = channel;
  if (looks_since_restart_ < kLooksToSettle) ++looks_since_restart_;
  return true;
}

// The driver does not say why it left a channel. On its own it leaves one for radar alone.
void DriverWatch::tell_channel(int from, int to, Events& events) {
  events.push_back({"channel",
                    band_,
                    "channel " + std::to_string(from) + " -> " + std::to_string(to),
                    {{"from", from}, {"to", to}}});
  const bool was_restarted = changes_ > 0 && looks_since_restart_ < kLooksToSettle;
  if (was_restarted || !is_radar_channel(band_, from)) return;
  events.push_back({"radar", band_, "perhaps: channel " + std::to_string(from) + " left unasked", {{"channel", from}}});
}

void DriverWatch::look_at_ssid(int number, const LinkWatch& links, const StoreWatch& store, Events& events) {
  const bool is_there = links.is_there(interface_of(band_, number - 1));
  const auto found = ssids_.find(number);
  if (!is_there && found == ssids_.end()) return;
  Ssid& before = ssids_[number];
  // An interface that comes while it is watched has none yet.
  if (found == ssids_.end() && !is_first_) before.stations = Stations();
  const std::string name = store.ssid_name(number);
  Report unheard;
  Ssid now = before;
  if (is_there) {
    if (const auto macs = station_addresses_of(band_, number, unheard))
      now.stations = Stations(macs->begin(), macs->end());
    const WpsSession wps = wps_session_of(band_, number, unheard);
    if (wps.state) now.wps = wps;
  } else {
    now = {Stations(), WpsSession()};
  }
  if (before.stations && now.stations) {
    for (const std::string& mac : *before.stations) {
      if (!now.stations->contains(mac)) events.push_back(station_event("station-left", band_, number, name, mac));
    }
    for (const std::string& mac : *now.stations) {
      if (!before.stations->contains(mac)) events.push_back(station_event("station-joined", band_, number, name, mac));
    }
  }
  const bool differs = now.wps.state != before.wps.state || now.wps.peer != before.wps.peer;
  if (before.wps.state && is_there && differs) {
    const std::string from = now.wps.peer ? "" : word_for_wps(before.wps.state) + " -> ";
    events.push_back({"wps",
                      band_,
                      ssid_text(number, name) + ": " + from + word_for_wps(now.wps.state) +
                          (now.wps.peer ? " " + *now.wps.peer : ""),
                      {{"ssid", number},
                       {"interface", interface_of(band_, number - 1)},
                       {"name", name},
                       {"from", word_for_wps(before.wps.state)},
                       {"to", word_for_wps(now.wps.state)},
                       {"peer", json_or_null(now.wps.peer)}}});
  }
  before = std::move(now);
  if (!is_there) ssids_.erase(number);
}

}  // namespace wlanctl
