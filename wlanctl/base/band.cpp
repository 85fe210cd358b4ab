#include "wlanctl/base/band.h"

#include <strings.h>

namespace wlanctl {

std::string interface_of(Band band, int index) {
  return (band == Band::k2_4G ? "ra" : "rai") + std::to_string(index);
}

std::optional<Band> parse_band(const std::string& text) {
  for (const Band band : kBands) {
    if (strcasecmp(text.c_str(), label_of(band)) == 0) return band;
  }
  return std::nullopt;
}

}  // namespace wlanctl
