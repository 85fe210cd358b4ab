#include "sim/radio/following.h"

#include <algorithm>

#include "sim/base/band.h"
#include "sim/state/association.h"
#include "sim/state/driver_state.h"

namespace gateway {
namespace {

bool is_up(const NetworkState& network, const std::string& interface) {
  const auto found = network.find(interface);
  return found != network.end() && found->second.up;
}

}  // namespace

std::vector<std::string> follow_interfaces(const NetworkState& before, const NetworkState& after) {
  std::vector<std::string> changes;
  const auto add = [&](const std::vector<std::string>& more) {
    changes.insert(changes.end(), more.begin(), more.end());
  };
  for (const Band band : kBands) {
    const std::vector<std::string> interfaces = driver_interfaces(band);
    const auto any_up = [&](const NetworkState& network) {
      return std::any_of(interfaces.begin(), interfaces.end(),
                         [&](const std::string& interface) { return is_up(network, interface); });
    };
    for (const std::string& interface : interfaces) {
      if (is_up(before, interface) && !is_up(after, interface)) add(stations_leave(interface));
    }
    if (!any_up(before) && any_up(after)) add(read_dat_file_anew(band));
  }
  return changes;
}

}  // namespace gateway
