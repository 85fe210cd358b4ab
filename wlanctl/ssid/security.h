// How an SSID can be secured, in words for an operator, and the settings that make it so.
#pragma once

#include <string>

namespace wlanctl {

struct Security {
  const char* name;    // "wpa2-psk"
  const char* mode;    // AuthMode
  const char* cipher;  // EncrypType
  bool has_passphrase;
  const char* pmf_capable;
  const char* pmf_required;
  const char* wep_key;  // DefaultKeyID, as the normalisation has it
};

inline constexpr char kDefaultSecurity[] = "wpa2-psk";

// By its own name or that of its mode; capitals do not matter. Null for others.
const Security* find_security(const std::string& name);

// Joined by commas.
std::string security_names();

}  // namespace wlanctl
