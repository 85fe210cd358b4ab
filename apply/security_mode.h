// Families of authentication modes, as the dat file spells them.
#pragma once

#include <cstring>

namespace apply {

// WEP keys of an SSID.
inline constexpr int kWepKeys = 4;

template <int kWords>
bool is_one_of(const char (&words)[kWords][16], const char* mode) {
  for (const auto& word : words) {
    if (std::strcmp(word, mode) == 0) return true;
  }
  return false;
}

// WPA with a pre-shared key.
inline bool is_personal(const char* mode) {
  static constexpr char kModes[][16] = {"WPAPSK", "WPA2PSK", "WPAPSKWPA2PSK", "WPA3PSK", "WPA2PSKWPA3PSK"};
  return is_one_of(kModes, mode);
}

// WPA with a RADIUS server; the 192-bit mode has two spellings and is not among them.
inline bool is_enterprise(const char* mode) {
  static constexpr char kModes[][16] = {"WPA", "WPA2", "WPA1WPA2", "WPA3"};
  return is_one_of(kModes, mode);
}

}  // namespace apply
