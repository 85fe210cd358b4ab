// What an operator stumbles over with a setting, though it is as it should be.
#pragma once

#include <string>
#include <vector>

namespace wlanctl {

struct Key;

// Those of the setting itself first, then those of its kind.
std::vector<std::string> traps_of(const Key& key);

}  // namespace wlanctl
