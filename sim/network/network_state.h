// What the kernel says about the interfaces, and what changed between two looks.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace gateway {

struct InterfaceState {
  bool up = false;
  std::string bridge;
  std::string hardware_address;
  std::string ipv4_address;
  unsigned mtu = 0;
  unsigned queue_length = 0;
};

using NetworkState = std::map<std::string, InterfaceState>;

NetworkState read_network_state();

// One text for each change, such as "ra0: up -> down" or "ra0: joined br-lan".
std::vector<std::string> changes_between(const NetworkState& before, const NetworkState& after);

}  // namespace gateway
