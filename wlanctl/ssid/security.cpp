#include "wlanctl/ssid/security.h"

#include <strings.h>

namespace wlanctl {
namespace {

// Those that a passphrase is enough for. 802.1X needs a server and its secret, which have settings of their own.
constexpr Security kSecurities[] = {
    {"open", "OPEN", "NONE", false, "0", "0", "0"},
    {"wpa2-psk", "WPA2PSK", "AES", true, "0", "0", "2"},
    {"wpa-wpa2-psk", "WPAPSKWPA2PSK", "TKIPAES", true, "0", "0", "2"},
    {"wpa2-wpa3", "WPA2PSKWPA3PSK", "AES", true, "1", "0", "2"},
    {"wpa3", "WPA3PSK", "AES", true, "1", "1", "2"},
};

}  // namespace

const Security* find_security(const std::string& name) {
  for (const Security& security : kSecurities) {
    if (strcasecmp(security.name, name.c_str()) == 0 || strcasecmp(security.mode, name.c_str()) == 0) return &security;
  }
  return nullptr;
}

std::string security_names() {
  std::string names;
  for (const Security& security : kSecurities) names += (names.empty() ? "" : ",") + std::string(security.name);
  return names;
}

}  // namespace wlanctl
