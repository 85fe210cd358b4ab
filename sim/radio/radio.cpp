#include "sim/radio/radio.h"

#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <unistd.h>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/network/netlink.h"
#include "sim/network/network_state.h"
#include "sim/records/dat_file.h"
#include "sim/state/driver_defaults.h"
#include "sim/state/driver_lists.h"
#include "sim/state/driver_state.h"

namespace gateway {
namespace {

// Stays in the namespace of the interfaces' far ends for a while.
class Visit {
 public:
  explicit Visit(const UniqueFd& there) : own_(open_file("/proc/self/ns/net", O_RDONLY)) { enter(there); }
  ~Visit() { setns(own_.get(), CLONE_NEWNET); }

 private:
  static void enter(const UniqueFd& there) {
    if (setns(there.get(), CLONE_NEWNET) != 0) fail(std::string("enter ") + place::kAir);
  }

  UniqueFd own_;
};

std::string mark_of(const std::string& module) {
  return std::string(place::kModules) + "/" + module;
}

}  // namespace

void load_radio(Band band) {
  const DatFile dat(traits(band).dat_file);
  const UniqueFd air = open_file(place::kAir, O_RDONLY);
  NetlinkBatch near;
  NetlinkBatch far;
  const auto add = [&](const std::string& name, int number) {
    near.add_radio_interface(name, hardware_address(band, number), traits(band).link_group, air.get());
    far.set_up(name);
  };
  for (int i = 0; i < dat.ssid_count(); ++i) add(bss_name(band, i), i);
  for (int i = 0; i < kWdsLinks; ++i) add(wds_name(band, i), kMostSsids + i);
  near.commit();
  {
    // A far end that is up gives the interface its carrier as soon as that comes up.
    const Visit visit(air);
    far.commit();
  }
  start_driver(band);
}

void start_driver(Band band) {
  const DatFile dat(traits(band).dat_file);
  forget_lists(band);
  for (int i = 0; i < kMostSsids; ++i) {
    if (if_nametoindex(bss_name(band, i).c_str()) == 0) continue;
    DriverSettings settings = settings_from_dat(dat, band, i + 1);
    add_default_readings(&settings, band, i);
    store_settings(bss_name(band, i), settings);
  }
  store_default_neighbours(band);
}

void start_stations(Band band) {
  std::vector<std::string> up;
  for (const auto& [name, state] : read_network_state()) {
    if (state.up && band_of(name) == band) up.push_back(name);
  }
  store_default_stations(band, up);
}

bool is_loaded(Band band) {
  for (const auto& [name, state] : read_network_state()) {
    if (band_of(name) == band) return true;
  }
  return false;
}

void unload_radio(Band band) {
  if (is_loaded(band)) {
    NetlinkBatch batch;
    batch.remove_group(traits(band).link_group);
    batch.commit();
  }
  forget_settings(band);
  forget_lists(band);
}

bool is_module_loaded(const std::string& name) {
  return path_exists(mark_of(name));
}

void mark_module(const std::string& name, bool loaded) {
  if (loaded) {
    write_text(mark_of(name), "");
  } else {
    unlink(mark_of(name).c_str());
  }
  // As the kernel lists them.
  std::string list;
  for (const std::string& module : names_in(place::kModules)) list += module + " 16384 0 - Live 0x0000000000000000\n";
  write_text(place::kModuleList, list);
}

Chips present_chips() {
  return parse_chips(read_text(place::kChips));
}

}  // namespace gateway
