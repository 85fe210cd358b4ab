// The two radios, by the number that callers pass as wifi_type, and the words that refuse any other.
#pragma once

#include <cstdint>

namespace store {

inline constexpr int k2_4G = 0;
inline constexpr int k5G = 1;
inline constexpr int kBands = 2;

inline constexpr char kWrongBand[] = "The wifi_type is wrong.";

// A number that stands for a band, or for none. Exported functions take it as int or as uint32_t and call those of the
// other type; no value becomes a band on the way.
class Band {
 public:
  constexpr Band(int wifi_type) : number_(wifi_type) {}
  constexpr Band(uint32_t wifi_type) : number_(static_cast<int>(wifi_type)) {}

  constexpr operator int() const { return number_; }
  constexpr operator uint32_t() const { return static_cast<uint32_t>(number_); }
  friend constexpr bool operator==(Band band, int number) { return band.number_ == number; }

 private:
  int number_;
};

constexpr bool is_band(Band band) {
  return band == k2_4G || band == k5G;
}

}  // namespace store
