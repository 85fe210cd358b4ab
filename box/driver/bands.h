// The two radios: what their interfaces are called and where their dat files lie.
#pragma once

#include <stdbool.h>
#include <stdint.h>

enum { kBands = 2, kWdsLinks = 4, kMostBsss = 8, kNameRoom = 16 };

typedef struct BandTraits {
  const char* bss_prefix;
  const char* wds_prefix;
  const char* dat_file;
  uint8_t address_byte;  // the fourth of the interfaces' hardware addresses
} BandTraits;

static const BandTraits kBandTraits[kBands] = {
    {"ra", "wds", "/etc/Wireless/RT2860AP/RT2860AP.dat", 0x24},
    {"rai", "wdsi", "/etc/Wireless/RT2860AP_AC/RT2860AP.dat", 0x50},
};
