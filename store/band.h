// The two radios, by the number that callers pass as wifi_type, and the words that refuse any other.
#pragma once

#include <cstdint>

namespace store {

inline constexpr int k2_4G = 0;
inline constexpr int k5G = 1;
inline constexpr int kBands = 2;

inline constexpr char kWrongBand[] = "The wifi_type is wrong.";

constexpr bool is_band(int wifi_type) {
  return wifi_type == k2_4G || wifi_type == k5G;
}

// Functions that take the band as uint32_t call those that take it as int; no value becomes a band on the way.
constexpr int band_number(uint32_t wifi_type) {
  return static_cast<int>(wifi_type);
}

}  // namespace store
