// Requests to the kernel's network configuration, sent in batches: one round trip for a whole radio.
#pragma once

#include <linux/netlink.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/base/file.h"

namespace gateway {

class NetlinkBatch {
 public:
  // One interface of a radio. Its far end has the same name and lives in the network namespace `far_end`.
  void add_radio_interface(const std::string& name, const std::string& address, unsigned group, int far_end);
  void add_bridge(const std::string& name, const std::string& address);
  void add_ipv4_address(const std::string& interface, const std::string& address, unsigned prefix);
  void set_up(const std::string& name);
  void join_bridge(const std::string& name, const std::string& bridge);
  void remove_link(const std::string& name);
  void remove_group(unsigned group);

  // Carries the requests out in order; throws for the first that the kernel refuses. Names of bridges and addresses
  // are looked up when a request is added, so they have to exist by then.
  void commit();

 private:
  class Message;
  void add(Message message, const std::string& purpose);

  std::vector<char> requests_;
  std::vector<std::string> purposes_;
};

// Calls `visit` with each message the kernel gives in answer to a dump request such as RTM_GETLINK.
void dump_network(uint16_t request, const std::function<void(const nlmsghdr&)>& visit);

}  // namespace gateway
