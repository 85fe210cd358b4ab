// Taking single interfaces down and up, and out of and into a bridge.
//
// Which bridge belongs to the operation, not to the interface: callers rely on the commit and the restart working on
// br-lan and on everything else working on br0.
#pragma once

#include <cstdint>

#include "store/band.h"

namespace apply {

inline constexpr char kLanBridge[] = "br-lan";
inline constexpr char kBr0[] = "br0";
inline constexpr int kWdsLinks = 4;

// "ifconfig ... down" and "brctl delif ...".
void take_down(const char* bridge, const char* prefix, int number);

// The interfaces 0 to count - 1.
void take_all_down(const char* bridge, const char* prefix, int count);

// "ifconfig ... up" and "brctl addif ...".
void bring_up(const char* bridge, const char* prefix, int number);

// The interfaces' prefixes of a band; empty ones for a number that is no band.
struct Prefixes {
  char bss[4];
  char wds[8];
};
constexpr Prefixes prefixes_of(uint32_t wifi_type) {
  if (wifi_type == store::k2_4G) return {"ra", "wds"};
  if (wifi_type == store::k5G) return {"rai", "wdsi"};
  return {"", ""};
}

// Brings the four WDS interfaces up and into the bridge, and reports each on standard output. The report names br0
// whatever the bridge is; kept, as callers match the text.
void bring_wds_up(const char* bridge, const char* prefix);

// The steps that switching a whole band on br0 is made of.
void take_band_down(const Prefixes& prefix, int bss_count);           // the BSSs, then WDS
void bring_bss_up(const Prefixes& prefix, int number);                // and reports it on standard output
void bring_wds_up_if_on(uint32_t wifi_type, const Prefixes& prefix);  // otherwise WDS stays as it is

// The number in EnableSSID of one SSID; 0 when it cannot be read.
int32_t read_enable(uint32_t wifi_type, int32_t ssid_index);

}  // namespace apply
