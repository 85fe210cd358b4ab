// WLAN chips, the PCI list they show up in, and the driver modules that serve them.
#pragma once

#include <string>
#include <vector>

#include "sim/base/band.h"

namespace gateway {

using Chips = std::vector<std::string>;

inline constexpr char kDefaultChips[] = "7915,7916";

// The known chip numbers, as a text for messages.
std::string known_chips();

// Reads a list such as "7915,7916"; throws std::invalid_argument when it is empty or names an unknown chip.
Chips parse_chips(const std::string& list);

// The text of the kernel's PCI device list. No line holds another chip's number anywhere: programs look chips up by
// searching each line for the number.
std::string pci_device_list(const Chips& chips);

struct WlanModule {
  const char* name;
  const char* chip;
  bool serves_2_4g;
  bool serves_5g;
};

// Chips without a loadable module have their driver built into the kernel.
const std::vector<WlanModule>& wlan_modules();
const WlanModule* find_module(const std::string& name);

bool is_present(const Chips& chips, const WlanModule& module);

// The module that drives a radio; null when the kernel's built-in driver does. A module that serves both radios leaves
// to the others those that they serve.
const WlanModule* module_of(const Chips& chips, Band band);

}  // namespace gateway
