// The two radios, as an operator names them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace wlanctl {

enum class Band { k2_4G = 0, k5G = 1 };

inline constexpr size_t kBandCount = 2;
inline constexpr Band kBands[kBandCount] = {Band::k2_4G, Band::k5G};

constexpr int number_of(Band band) {
  return static_cast<int>(band);
}

// The same, as the library's getters and setters take it.
constexpr uint32_t wifi_type_of(Band band) {
  return static_cast<uint32_t>(band);
}

constexpr const char* label_of(Band band) {
  return band == Band::k2_4G ? "2.4g" : "5g";
}

// "ra0", "rai0" and on; `index` counts from 0.
std::string interface_of(Band band, int index);

// Capitals do not matter.
std::optional<Band> parse_band(const std::string& text);

// The band of that name; both when there is none.
std::vector<Band> bands_of(const std::string& text);

}  // namespace wlanctl
