#include "wlanctl/command_line/common_words.h"

#include "wlanctl/base/band.h"

namespace wlanctl {

std::string colour_choices() {
  return "auto,always,never";
}

}  // namespace wlanctl

namespace wlanctl::word {

std::string band_refusal(const std::string& text) {
  return parse_band(text) ? "" : "there is no band \"" + text + "\"; say 2.4g or 5g";
}

}  // namespace wlanctl::word
