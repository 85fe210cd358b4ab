#include "wlanctl/apply/bridges.h"

#include <map>
#include <optional>
#include <set>

#include "wlanctl/base/text.h"
#include "wlanctl/check/bare_ssid.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/live/bridge.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {
namespace {

constexpr char kFormat[] = "wlanctl-bridges";
constexpr int kVersion = 1;

// Of interfaces, by their names.
using Bridges = std::map<std::string, std::string>;

std::string path_of(Band band) {
  return std::string(place::kBridges) + label_of(band);
}

Bridges read_bridges(Band band) {
  const std::vector<std::string> lines = lines_of(read_state_file(path_of(band), kFormat, kVersion).value_or(""));
  Bridges bridges;
  if (lines.empty() || lines[0] != this_boot()) return bridges;
  for (size_t i = 1; i < lines.size(); ++i) {
    const std::vector<std::string> words = split_at(lines[i], '\t');
    if (words.size() == 2) bridges[words[0]] = words[1];
  }
  return bridges;
}

// Those of the SSIDs that are served and on, where the kernel tells.
Bridges bridges_now(Band band) {
  Bridges bridges;
  for (const int ssid : ssids_switched_on(band)) {
    const std::string interface = interface_of(band, ssid - 1);
    if (link_state(interface) != LinkState::kUp) continue;
    const std::optional<std::string> bridge = bridge_of(interface);
    if (bridge) bridges[interface] = *bridge;
  }
  return bridges;
}

bool are_apart(const Bridges& bridges) {
  std::set<std::string> names;
  for (const auto& [interface, bridge] : bridges) {
    if (!bridge.empty()) names.insert(bridge);
  }
  return names.size() > 1;
}

}  // namespace

void keep_bridges(Band band, const std::vector<Wanted>& bridges, Report& report) {
  std::string text = this_boot() + "\n";
  for (const Wanted& one : bridges) text += joined({one.subject, one.detail}, "\t") + "\n";
  (void)write_state_file(path_of(band), kFormat, kVersion, text, report);
}

bool are_bridges_damaged(Band band) {
  return is_state_file_damaged(path_of(band), kFormat, kVersion);
}

std::vector<Wanted> bridges_lacking(Band band) {
  const Bridges kept = read_bridges(band);
  const Bridges now = bridges_now(band);
  const bool is_unequal = are_apart(now);
  std::vector<Wanted> lacking;
  for (const auto& [interface, bridge] : now) {
    const auto known = kept.find(interface);
    const bool is_known = known != kept.end();
    if (!is_known && !bridge.empty() && !is_unequal) continue;
    const std::string wanted = is_known ? known->second : kApplyBridge;
    if (bridge != wanted) lacking.push_back({Wanted::State::kUp, interface, wanted});
  }
  // Of the links nobody else tells anything.
  for (const auto& [interface, wanted] : kept) {
    if (!interface.starts_with("wds") || link_state(interface) != LinkState::kUp) continue;
    if (bridge_of(interface).value_or(wanted) != wanted) lacking.push_back({Wanted::State::kUp, interface, wanted});
  }
  return lacking;
}

}  // namespace wlanctl
