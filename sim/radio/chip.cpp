#include "sim/radio/chip.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <sstream>
#include <stdexcept>

#include "sim/base/text.h"

namespace gateway {
namespace {

constexpr const char* kKnownChips[] = {"7603", "7612", "7615", "7663", "7915", "7916", "7905"};

constexpr uint64_t kMemoryWindow = 0x100000;

std::string pci_line(unsigned slot, const std::string& device, unsigned irq, uint64_t base, const std::string& driver) {
  char text[512];
  int used = std::snprintf(text, sizeof text, "%02x%02x\t%s\t%x", slot, 0U, device.c_str(), irq);
  const uint64_t starts[7] = {base == 0 ? 0 : base | 4, 0, 0, 0, 0, 0, 0};
  const uint64_t sizes[7] = {base == 0 ? 0 : kMemoryWindow, 0, 0, 0, 0, 0, 0};
  for (const auto& row : {starts, sizes}) {
    for (int i = 0; i < 7; ++i) {
      used += std::snprintf(text + used, sizeof text - static_cast<size_t>(used), "\t%16" PRIx64, row[i]);
    }
  }
  return std::string(text) + "\t" + driver + "\n";
}

const char* driver_of(const std::string& chip) {
  for (const WlanModule& module : wlan_modules()) {
    if (chip == module.chip) return module.name;
  }
  return "wlan_ap";
}

}  // namespace

std::string known_chips() {
  return joined({std::begin(kKnownChips), std::end(kKnownChips)}, ", ");
}

Chips parse_chips(const std::string& list) {
  Chips chips;
  std::istringstream stream(list);
  for (std::string chip; std::getline(stream, chip, ',');) {
    if (std::find(std::begin(kKnownChips), std::end(kKnownChips), chip) == std::end(kKnownChips)) {
      throw std::invalid_argument("unknown chip '" + chip + "'; known are " + known_chips());
    }
    chips.push_back(chip);
  }
  if (chips.empty()) throw std::invalid_argument("no chip given; known are " + known_chips());
  return chips;
}

std::string pci_device_list(const Chips& chips) {
  std::string list = pci_line(0, "14c30801", 0, 0, "pcieport");
  unsigned slot = 1;
  for (const std::string& chip : chips) {
    list += pci_line(slot, "14c3" + chip, 0x20 + slot, 0x20000000 + slot * 2 * kMemoryWindow, driver_of(chip));
    ++slot;
  }
  return list;
}

const std::vector<WlanModule>& wlan_modules() {
  static const std::vector<WlanModule> modules = {
      {"mt7603eap", "7603", true, false},
      {"mt7662e_ap", "7612", false, true},
      {"mt7663_ap", "7663", false, true},
      {"mt7615_ap", "7615", true, true},
  };
  return modules;
}

const WlanModule* find_module(const std::string& name) {
  for (const WlanModule& module : wlan_modules()) {
    if (name == module.name) return &module;
  }
  return nullptr;
}

bool is_present(const Chips& chips, const WlanModule& module) {
  return std::find(chips.begin(), chips.end(), module.chip) != chips.end();
}

const WlanModule* module_of(const Chips& chips, Band band) {
  for (const WlanModule& module : wlan_modules()) {
    if (is_present(chips, module) && (band == Band::k2_4G ? module.serves_2_4g : module.serves_5g)) return &module;
  }
  return nullptr;
}

}  // namespace gateway
