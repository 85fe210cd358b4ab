// The driver's module, its interfaces, and whether it answers.
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>

#include "wifimgr_lib.h"
#include "wlanctl/base/text.h"
#include "wlanctl/doctor/checks.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/live/bridge.h"
#include "wlanctl/live/module.h"
#include "wlanctl/live/radio.h"

namespace wlanctl {
namespace {

constexpr char kModule[] = "module";
constexpr char kInterface[] = "interface";

// The first whose chip is on the bus is the band's, as for the library; the drivers of other chips are built in.
struct Module {
  Band band;
  const char* chip;
  const char* name;
};
constexpr Module kModules[] = {{Band::k2_4G, "14c37603", "mt7603eap"},
                               {Band::k2_4G, "14c37615", "mt7615_ap"},
                               {Band::k5G, "14c37612", "mt7662e_ap"},
                               {Band::k5G, "14c37663", "mt7663_ap"},
                               {Band::k5G, "14c37615", "mt7615_ap"}};

bool is_on_bus(const std::string& chip) {
  for (const std::string& line : lines_of(read_bytes("/proc/bus/pci/devices").value_or(""))) {
    const std::vector<std::string> words = words_of(line);
    if (words.size() > 1 && words[1] == chip) return true;
  }
  return false;
}

std::string value_of(const Settings& settings, const char* name, int ssid) {
  const Key* const key = find_key(name);
  if (key == nullptr) return "";
  const auto found = settings.find(dat_key_of(*key, ssid));
  const bool is_shared = ssid > 0 && key->numbering == Numbering::kShared;
  const size_t field = is_shared ? static_cast<size_t>(ssid) - 1 : 0;
  return found != settings.end() && field < found->second.size() ? found->second[field] : "";
}

// The interfaces that are up, each with its bridge; "" for none.
using Bridges = std::vector<std::pair<std::string, std::string>>;

std::string text_of(const Bridges& bridges) {
  std::vector<std::string> texts;
  for (const auto& [interface, bridge] : bridges) {
    texts.push_back(interface + (bridge.empty() ? " in none" : " in " + bridge));
  }
  return joined(texts, ", ");
}

// Stations of the one bridge do not reach those of the other; a restart that finds an interface in another bridge leaves
// it there.
void check_bridges(Band band, const Bridges& bridges, Diagnosis& diagnosis) {
  std::set<std::string> names;
  for (const auto& [interface, bridge] : bridges) {
    if (!bridge.empty()) names.insert(bridge);
  }
  for (const auto& [interface, bridge] : bridges) {
    const std::string others = names.empty() ? "" : "; of the band: " + text_of(bridges);
    diagnosis.add(bridge.empty(), Ill::kInterfaceUnbridged, kInterface, band,
                  bridge.empty() ? interface + others : interface + " in " + bridge);
  }
  if (names.size() > 1) diagnosis.ill(Ill::kBridgesDiffer, kInterface, band, text_of(bridges));
}

}  // namespace

void check_module(Band band, Diagnosis& diagnosis) {
  for (const Module& module : kModules) {
    if (module.band != band || !is_on_bus(module.chip)) continue;
    const std::string path = std::string("/lib/modules/4.4.115/") + module.name + ".ko";
    diagnosis.add(access(path.c_str(), R_OK) != 0, Ill::kModuleMissing, kModule, band, path);
    diagnosis.add(!is_module_loaded(module.name).value_or(false), Ill::kModuleUnloaded, kModule, band, module.name);
    return;
  }
  diagnosis.well(kModule, band, "none of a chip on the bus: the driver is built in");
}

void check_interfaces(Band band, const Settings& settings, Diagnosis& diagnosis) {
  const long count = std::strtol(value_of(settings, kSsidCount, -1).c_str(), nullptr, 10);
  Bridges bridges;
  for (int ssid = 1; ssid <= std::min(count, static_cast<long>(WIFIMGR_FIELDS)); ++ssid) {
    const std::string interface = interface_of(band, ssid - 1);
    const LinkState state = link_state(interface);
    if (state == LinkState::kAbsent) {
      diagnosis.ill(Ill::kInterfaceMissing, kInterface, band, interface + " of SSID " + std::to_string(ssid));
      continue;
    }
    const bool is_wanted = value_of(settings, "EnableSSID", ssid) == "1";
    diagnosis.add(is_wanted && state == LinkState::kDown, Ill::kInterfaceDown, kInterface, band,
                  interface + " is " + word_for(state));
    const std::optional<std::string> bridge = state == LinkState::kUp ? bridge_of(interface) : std::nullopt;
    if (bridge) bridges.emplace_back(interface, *bridge);
  }
  check_bridges(band, bridges, diagnosis);
}

void check_driver(Band band, Diagnosis& diagnosis) {
  const std::string interface = interface_of(band, 0);
  std::string reason = "there is no " + interface;
  const std::optional<int> channel =
      link_state(interface) == LinkState::kAbsent ? std::nullopt : channel_of(band, &reason);
  diagnosis.add(!channel, Ill::kDriverSilent, "driver", band,
                channel ? interface + " is on channel " + std::to_string(*channel) : interface + because(reason));
}

}  // namespace wlanctl
