#include "sim/base/band.h"

#include <cstring>

#include "sim/base/places.h"

namespace gateway {
namespace {

constexpr BandTraits kTraits[] = {
    {"2.4G", "ra", "wds", place::kDat2_4G, 0x2400, 6},
    {"5G", "rai", "wdsi", place::kDat5G, 0x5000, 36},
};

bool is_numbered(const std::string& name, const char* prefix, int count) {
  const size_t length = std::strlen(prefix);
  if (name.size() != length + 1 || name.compare(0, length, prefix) != 0) return false;
  return name[length] >= '0' && name[length] < '0' + count;
}

}  // namespace

const BandTraits& traits(Band band) {
  return kTraits[static_cast<int>(band)];
}

std::string bss_name(Band band, int number) {
  return traits(band).bss_prefix + std::to_string(number);
}

std::string wds_name(Band band, int number) {
  return traits(band).wds_prefix + std::to_string(number);
}

std::string hardware_address(Band band, int number) {
  const char radio = band == Band::k2_4G ? '\x24' : '\x50';
  return {'\x02', '\x28', '\x10', radio, '\x00', static_cast<char>(number)};
}

std::optional<Band> band_of(const std::string& interface) {
  for (const Band band : kBands) {
    if (is_numbered(interface, traits(band).bss_prefix, kMostSsids)) return band;
    if (is_numbered(interface, traits(band).wds_prefix, kWdsLinks)) return band;
  }
  return std::nullopt;
}

}  // namespace gateway
