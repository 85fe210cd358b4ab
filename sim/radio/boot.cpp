#include "sim/radio/boot.h"

#include <net/if.h>

#include <cstdio>
#include <random>
#include <string>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/network/netlink.h"
#include "sim/radio/radio.h"
#include "sim/records/dat_file.h"
#include "sim/state/driver_defaults.h"

namespace gateway {
namespace {

struct PlatformFile {
  const char* name;
  const char* text;
};

// Buttons are empty until they are pressed.
constexpr PlatformFile kPlatformFiles[] = {
    {"dbg_msg", ""},         {"wlan_button", ""},
    {"wps_button", ""},      {"wps_5g_button", ""},
    {"ahb_status", "1\n"},   {"wlan_wps_button", ""},
    {"wlan11ac_button", ""}, {"led_wlan", "1\n"},
    {"chip_id", "24\n"},     {"wlanshare", "0 0 none none\n"},
};

struct Bridge {
  const char* name;
  const char* ipv4_address;
  char last_address_byte;
};

constexpr const char* kLanBridge = "br-lan";
constexpr unsigned kLanPrefix = 24;
constexpr Bridge kBridges[] = {{kLanBridge, "192.168.1.1", 1}, {"br0", "192.168.2.1", 2}};

void start_bridges() {
  NetlinkBatch links;
  links.set_up("lo");
  for (const Bridge& bridge : kBridges) {
    if (if_nametoindex(bridge.name) != 0) links.remove_link(bridge.name);
    links.add_bridge(bridge.name, std::string{'\x02', '\x28', '\x10', '\x00', '\x00', bridge.last_address_byte});
    links.set_up(bridge.name);
  }
  links.commit();
  NetlinkBatch addresses;
  for (const Bridge& bridge : kBridges) addresses.add_ipv4_address(bridge.name, bridge.ipv4_address, kLanPrefix);
  addresses.commit();
}

void start_modules() {
  const Chips chips = present_chips();
  for (const WlanModule& module : wlan_modules()) mark_module(module.name, is_present(chips, module));
}

void start_radio(Band band) {
  unload_radio(band);
  load_radio(band);
  const DatFile dat(traits(band).dat_file);
  NetlinkBatch links;
  for (int i = 0; i < dat.ssid_count(); ++i) {
    if (!dat.is_enabled(i + 1)) continue;
    links.set_up(bss_name(band, i));
    links.join_bridge(bss_name(band, i), kLanBridge);
  }
  links.commit();
  start_stations(band);
}

// Written as the kernel writes it.
std::string fresh_boot_id() {
  std::random_device source;
  std::string text;
  for (const int words : {2, 1, 1, 1, 3}) {
    for (int i = 0; i < words; ++i) {
      char part[8];
      std::snprintf(part, sizeof part, "%04x", source() & 0xffffU);
      text += part;
    }
    text += '-';
  }
  text.back() = '\n';
  // Its version, 4, and its variant.
  text[14] = '4';
  text[19] = '8';
  return text;
}

}  // namespace

void start_platform() {
  make_folder(place::kPlatform);
  for (const PlatformFile& file : kPlatformFiles) {
    write_text(std::string(place::kPlatform) + "/" + file.name, file.text, 0644);
  }
  make_folder(parent_of(place::kPciDevices));
  write_text(place::kPciDevices, pci_device_list(present_chips()), 0444);
}

void boot() {
  write_text(place::kBootId, fresh_boot_id(), 0444);
  start_platform();
  start_bridges();
  start_modules();
  store_default_helpers();
  for (const Band band : kBands) start_radio(band);
}

}  // namespace gateway
