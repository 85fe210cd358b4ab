// The two radios, as an operator names them.
#pragma once

#include <array>
#include <optional>
#include <string>

namespace wlanctl {

enum class Band { k2_4G = 0, k5G = 1 };

inline constexpr std::array kBands = {Band::k2_4G, Band::k5G};

constexpr int number_of(Band band) {
  return static_cast<int>(band);
}

constexpr const char* label_of(Band band) {
  return band == Band::k2_4G ? "2.4g" : "5g";
}

// "ra0", "rai0" and on; `index` counts from 0.
std::string interface_of(Band band, int index);

// Capitals do not matter.
std::optional<Band> parse_band(const std::string& text);

}  // namespace wlanctl
