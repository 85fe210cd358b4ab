#include "wlanctl/live/mac.h"

#include <cstdio>

namespace wlanctl {

std::string mac_text(const uint8_t* mac) {
  char text[kMacTextSize];
  (void)std::snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3], mac[4],
                      mac[5]);
  return text;
}

std::string mac_text(const char* capitals) {
  std::string text = capitals;
  for (char& c : text) {
    if (c >= 'A' && c <= 'F') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

}  // namespace wlanctl
