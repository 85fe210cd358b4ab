#include "wlanctl/base/band.h"

#include <strings.h>

#include <iterator>

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

std::vector<Band> bands_of(const std::string& text) {
  if (const std::optional<Band> band = parse_band(text)) return {*band};
  return {std::begin(kBands), std::end(kBands)};
}

}  // namespace wlanctl
