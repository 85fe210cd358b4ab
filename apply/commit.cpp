// Bringing a band's settings into force: dat file, interfaces, driver module, bridge.

#include "apply/interface.h"
#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/shell.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

using apply::bring_up;
using apply::kLanBridge;
using apply::kWdsLinks;
using apply::take_down;

// A driver module, by the position of its chip's flag.
struct Module {
  int chip;
  char unload[24];
  char load[44];
};

// What differs between the bands.
struct BandInterfaces {
  apply::Prefixes prefix;
  char save_refusal[68];
  char wds_down_trace[36];
  Module modules[3];  // the first whose chip is present is reloaded; empty rows are skipped
};

// The first unload names the module with its suffix, the others do not; deliberate, callers match the lines as
// they stand. The trailing blanks of the refusals are part of the messages.
constexpr BandInterfaces kBands[] = {
    {apply::prefixes_of(store::k2_4G),
     "[%s]:===Fail Exit===WIFI_2_4G updtate datefile from shm failed.\n ",
     "[%s]:\n=== wds%d has been down ===\n",
     {{0, "rmmod mt7603eap.ko", "insmod /lib/modules/4.4.115/mt7603eap.ko"},
      {2, "rmmod mt7615_ap", "insmod /lib/modules/4.4.115/mt7615_ap.ko"},
      {}}},
    {apply::prefixes_of(store::k5G),
     "[%s]:===Fail Exit===WIFI_5G updtate datefile from shm failed.\n ",
     "[%s]:\n=== wdsi%d has been down ===\n",
     {{1, "rmmod mt7662e_ap", "insmod /lib/modules/4.4.115/mt7662e_ap.ko"},
      {3, "rmmod mt7663_ap", "insmod /lib/modules/4.4.115/mt7663_ap.ko"},
      {2, "rmmod mt7615_ap", "insmod /lib/modules/4.4.115/mt7615_ap.ko"}}},
};

void reload_driver(const char* function, uint32_t band) {
  if (band == store::k5G) WIFIMGR_TRACE(trace::kTraceLevel, "[%s]:\n===  reloadFlag ==1 ===\n", function);
  char chips[] = "0000000";
  if (parse_driver(chips, sizeof chips - 1) != 0) return;
  for (const Module& module : kBands[band].modules) {
    if (module.unload[0] == '\0' || chips[module.chip] != '1') continue;
    (void)store::run_shell("%s", module.unload);
    (void)store::run_shell("%s", module.load);
    break;
  }
  // Also when no module matched.
  if (band == store::k5G) WIFIMGR_TRACE(trace::kTraceLevel, "[%s]:\n\n\n===  reload ko success  ===\n\n\n", function);
}

void take_interfaces_down(const char* function, uint32_t band) {
  const BandInterfaces& interfaces = kBands[band];
  // All four links, whether WDS is on or not: the setting says nothing about what is up now.
  for (int link = 0; link < kWdsLinks; ++link) {
    take_down(kLanBridge, interfaces.prefix.wds, link);
    WIFIMGR_TRACE(trace::kTraceLevel, interfaces.wds_down_trace, function, link);
  }
  for (int bss = 0; bss < pre_wlan_state[band]; ++bss) take_down(kLanBridge, interfaces.prefix.bss, bss);
}

void bring_interfaces_up(uint32_t band, int ssids, bool with_wds) {
  const BandInterfaces& interfaces = kBands[band];
  for (int ssid = 1; ssid <= ssids; ++ssid) {
    if (apply::read_enable(band, ssid) == 1) bring_up(kLanBridge, interfaces.prefix.bss, ssid - 1);
  }
  if (!with_wds) return;
  for (int link = 0; link < kWdsLinks; ++link) bring_up(kLanBridge, interfaces.prefix.wds, link);
}

}  // namespace

extern "C" int wifimgr_lib_commit(uint32_t wifi_type, int32_t ssid_index) {
  trace::enter(__func__);
  const int band = store::band_number(wifi_type);
  char count[store::kValueSize] = "";
  if (wifimgr_lib_get_bssidnum(band, -1, count, sizeof count) != 0) return trace::fail(__func__);
  const int ssids = store::decimal(count);
  if (ssid_index < 1 || ssid_index > ssids) {
    WIFIMGR_TRACE(trace::kErrorLevel, "[%s]:===Fail Exit===The ssid index parameter is invalid.\n ", __func__);
    return 1;
  }

  char wds_enable[store::kValueSize] = "";
  char reload[store::kValueSize] = "";
  // What cannot be read counts as empty.
  if (wifimgr_lib_get_wdsenable(band, -1, wds_enable, sizeof wds_enable) != 0) wds_enable[0] = '\0';
  if (wifimgr_lib_get_reloadFlag(wifi_type, reload, sizeof reload) != 0) reload[0] = '\0';
  const bool must_reload = reload[0] == '1';
  // Cleared before the band is even checked, whatever becomes of this commit; deliberate.
  if (must_reload && wifimgr_lib_set_reloadFlag(wifi_type, "0") != 0) {
    return trace::fail(__func__, "Set the ReloadFlag failed.");
  }
  if (!store::is_band(band)) {
    WIFIMGR_TRACE(trace::kErrorLevel, "[%s]:===Fail Exit===type should be 2.4G or 5G .\n ", __func__);
    return 1;
  }
  if (update_datafile_from_shm(band, ssids) != 0) {
    WIFIMGR_TRACE(trace::kErrorLevel, kBands[band].save_refusal, __func__);
    return 1;
  }

  take_interfaces_down(__func__, wifi_type);
  if (must_reload) reload_driver(__func__, wifi_type);
  bring_interfaces_up(wifi_type, ssids, wds_enable[0] == '1');
  return trace::success(__func__);
}
