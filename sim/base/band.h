// The two radios: what their interfaces are called and how they are wired up.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace gateway {

enum class Band { k2_4G, k5G };

inline constexpr Band kBands[] = {Band::k2_4G, Band::k5G};
inline constexpr int kMostSsids = 8;
inline constexpr int kWdsLinks = 4;

struct BandTraits {
  const char* label;
  const char* bss_prefix;
  const char* wds_prefix;
  const char* dat_file;
  // Marks the radio's interfaces in the kernel, so that they go in one request when the driver leaves.
  unsigned link_group;
  // Where the driver settles when the dat file leaves the choice to it (channel 0).
  int automatic_channel;
};

const BandTraits& traits(Band band);

std::string bss_name(Band band, int number);
std::string wds_name(Band band, int number);

// A fixed hardware address for each interface; WDS links follow the eight BSSs.
std::string hardware_address(Band band, int number);

// The radio an interface name belongs to; none for names that no radio has.
std::optional<Band> band_of(const std::string& interface);

}  // namespace gateway
