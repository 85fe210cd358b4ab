// The text in which ifconfig tells of interfaces.
#pragma once

#include <string>

namespace gateway::tools {

// IPv4 addresses as the gateway's ifconfig writes them ("inet addr:192.168.2.1  Bcast:192.168.2.255
// Mask:255.255.255.0") in place of the machine's ("inet 192.168.2.1  netmask 255.255.255.0  broadcast 192.168.2.255").
std::string as_gateway_prints(const std::string& output);

}  // namespace gateway::tools
