#include "sim/network/network_state.h"

#include <arpa/inet.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

#include <cstdio>
#include <cstring>

#include "sim/base/text.h"
#include "sim/network/netlink.h"

namespace gateway {
namespace {

template <typename Header, typename Visit>
const Header& for_each_attribute(const nlmsghdr& message, Visit visit) {
  const auto* header = static_cast<const Header*>(NLMSG_DATA(&message));
  const auto* attribute =
      reinterpret_cast<const rtattr*>(reinterpret_cast<const char*>(header) + NLMSG_ALIGN(sizeof(Header)));
  auto left = static_cast<int>(NLMSG_PAYLOAD(&message, sizeof(Header)));
  for (; RTA_OK(attribute, left); attribute = RTA_NEXT(attribute, left)) {
    visit(attribute->rta_type, static_cast<const char*>(RTA_DATA(attribute)), RTA_PAYLOAD(attribute));
  }
  return *header;
}

unsigned number_in(const char* data) {
  unsigned number = 0;
  std::memcpy(&number, data, sizeof number);
  return number;
}

std::string address_text(const char* data, size_t size) {
  std::string text;
  for (size_t i = 0; i < size; ++i) {
    char part[4];
    std::snprintf(part, sizeof part, "%s%02x", i == 0 ? "" : ":", static_cast<unsigned char>(data[i]));
    text += part;
  }
  return text;
}

void note(std::vector<std::string>* changes, const std::string& name, const char* what, const std::string& before,
          const std::string& after) {
  if (before == after) return;
  const auto shown = [](const std::string& text) { return text.empty() ? std::string("none") : text; };
  changes->push_back(name + ": " + what + shown(before) + " -> " + shown(after));
}

void compare(std::vector<std::string>* changes, const std::string& name, const InterfaceState& before,
             const InterfaceState& after) {
  note(changes, name, "", before.up ? "up" : "down", after.up ? "up" : "down");
  if (before.bridge != after.bridge) {
    if (!before.bridge.empty()) changes->push_back(name + ": left " + before.bridge);
    if (!after.bridge.empty()) changes->push_back(name + ": joined " + after.bridge);
  }
  note(changes, name, "address ", before.ipv4_address, after.ipv4_address);
  note(changes, name, "hardware address ", before.hardware_address, after.hardware_address);
  note(changes, name, "mtu ", std::to_string(before.mtu), std::to_string(after.mtu));
  note(changes, name, "txqueuelen ", std::to_string(before.queue_length), std::to_string(after.queue_length));
}

// Interfaces come and go a radio at a time, which one entry tells better than a dozen.
void note_presence(std::vector<std::string>* changes, const NetworkState& one, const NetworkState& other,
                   const char* what) {
  std::vector<std::string> names;
  for (const auto& entry : one) {
    if (other.count(entry.first) == 0) names.push_back(entry.first);
  }
  if (!names.empty()) changes->push_back(joined(names, " ") + ": " + what);
}

}  // namespace

NetworkState read_network_state() {
  std::map<int, std::string> names;
  std::map<std::string, int> bridges;
  NetworkState network;
  dump_network(RTM_GETLINK, [&](const nlmsghdr& message) {
    std::string name;
    InterfaceState state;
    int bridge = 0;
    const auto& link = for_each_attribute<ifinfomsg>(message, [&](unsigned type, const char* data, size_t size) {
      if (type == IFLA_IFNAME) name = data;
      if (type == IFLA_MASTER) bridge = static_cast<int>(number_in(data));
      if (type == IFLA_MTU) state.mtu = number_in(data);
      if (type == IFLA_TXQLEN) state.queue_length = number_in(data);
      if (type == IFLA_ADDRESS) state.hardware_address = address_text(data, size);
    });
    state.up = (link.ifi_flags & IFF_UP) != 0;
    names[link.ifi_index] = name;
    bridges[name] = bridge;
    network[name] = state;
  });
  for (auto& [name, state] : network) {
    if (bridges[name] != 0) state.bridge = names[bridges[name]];
  }
  dump_network(RTM_GETADDR, [&](const nlmsghdr& message) {
    std::string address;
    const auto& header = for_each_attribute<ifaddrmsg>(message, [&](unsigned type, const char* data, size_t) {
      char text[INET_ADDRSTRLEN];
      if (type == IFA_LOCAL && inet_ntop(AF_INET, data, text, sizeof text) != nullptr) address = text;
    });
    if (header.ifa_family != AF_INET) return;
    const auto found = network.find(names[static_cast<int>(header.ifa_index)]);
    if (found == network.end()) return;
    std::string& all = found->second.ipv4_address;
    all += (all.empty() ? "" : " ") + address + "/" + std::to_string(header.ifa_prefixlen);
  });
  return network;
}

std::vector<std::string> changes_between(const NetworkState& before, const NetworkState& after) {
  std::vector<std::string> changes;
  note_presence(&changes, before, after, "gone");
  note_presence(&changes, after, before, "created");
  for (const auto& [name, state] : after) {
    const auto found = before.find(name);
    if (found != before.end()) compare(&changes, name, found->second, state);
  }
  return changes;
}

}  // namespace gateway
