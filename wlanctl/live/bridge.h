// Which bridge an interface is in.
#pragma once

#include <optional>
#include <string>

namespace wlanctl {

// Its name; "" while it is in none, or does not exist. None when the kernel does not tell.
std::optional<std::string> bridge_of(const std::string& interface);

}  // namespace wlanctl
