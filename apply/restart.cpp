// The narrow restarts: a band's interfaces, without the dat file and mostly without the driver.
#include <cstring>

#include "apply/band_number.h"
#include "apply/interface.h"
#include "store/band.h"
#include "store/shell.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

static_assert(sizeof(wifimgr_restart_request) == 24);

namespace {

using apply::bring_up;
using apply::bring_wds_up;
using apply::kBr0;
using apply::kLanBridge;
using apply::kWdsLinks;
using apply::Prefixes;
using apply::prefixes_of;
using apply::take_all_down;

constexpr int kMaskBits = 8;

// False when the reload flag cannot be cleared. It is cleared although no module is reloaded here; deliberate.
bool restart_with_another_count(const wifimgr_restart_request& request, const Prefixes& prefix) {
  take_all_down(kLanBridge, prefix.wds, kWdsLinks);
  take_all_down(kLanBridge, prefix.bss, request.old_count);
  char chips[] = "0000000";
  return parse_driver(chips, sizeof chips - 1) != 0 || wifimgr_lib_set_reloadFlag(request.band, "0") == 0;
}

// 5G leaves its WDS interfaces as they are, unlike 2.4G; deliberate.
void restart_with_the_same_count(const wifimgr_restart_request& request, const Prefixes& prefix) {
  take_all_down(kLanBridge, prefix.bss, request.old_count);
  if (request.band == store::k2_4G) take_all_down(kLanBridge, prefix.wds, kWdsLinks);
}

bool is_first_of_2_4g(int32_t ssid, const Prefixes& prefix) {
  return ssid == 1 && std::strcmp(prefix.bss, "ra") == 0;
}

void bring_band_up(uint32_t wifi_type, int ssids, const Prefixes& prefix) {
  for (int32_t ssid = 1; ssid <= ssids; ++ssid) {
    if (apply::read_enable(wifi_type, ssid) != 0) {
      apply::bring_bss_up(prefix, ssid - 1);
    } else if (is_first_of_2_4g(ssid, prefix)) {
      // Up and down once, so that the first interface is initialised.
      (void)store::run_shell("ifconfig %s0 up", prefix.bss);
      (void)store::run_shell("ifconfig %s0 down", prefix.bss);
    }
  }
  apply::bring_wds_up_if_on(wifi_type, prefix);
}

// Takes `count` BSSs out of br0, and on 5G the WDS interfaces too, by the tool's full path.
void take_wlan_down(uint32_t wifi_type, int32_t count) {
  take_all_down(kBr0, prefixes_of(wifi_type).bss, count);
  if (wifi_type != store::k5G) return;
  for (int link = 0; link < kWdsLinks; ++link) {
    (void)store::run_shell("/sbin/ifconfig wdsi%d down", link);
    (void)store::run_shell("brctl delif br0 wdsi%d", link);
  }
}

// What kind 3 of the dispatcher answers.
uint64_t restart_by_value(uint32_t wifi_type, int32_t count, bool is_on) {
  if (wifi_type == store::k2_4G) return is_on ? 0 : 1;
  if (wifi_type != store::k5G) return 0;
  take_wlan_down(wifi_type, count);
  return 1;
}

}  // namespace

extern "C" uint64_t wifimgr_lib_restartInterface(const wifimgr_restart_request* request) {
  trace::enter(__func__);
  if (request == nullptr || !store::is_band(request->band)) return trace::fail(__func__);
  const Prefixes prefix = prefixes_of(request->band);
  if (static_cast<uint32_t>(request->old_count) == request->new_count) {
    restart_with_the_same_count(*request, prefix);
  } else if (!restart_with_another_count(*request, prefix)) {
    return trace::fail(__func__, "Set the ReloadFlag failed.");
  }
  for (int bss = 0; bss < kMaskBits; ++bss) {
    if ((request->up_mask >> bss & 1U) != 0) bring_up(kLanBridge, prefix.bss, bss);
  }
  if (request->wds != 0) bring_wds_up(kLanBridge, prefix.wds);
  return trace::success(__func__);
}

extern "C" uint64_t wifimgr_lib_do_restartInterface(const wifimgr_restart_request* request) {
  trace::enter(__func__);
  if (request == nullptr) return trace::fail(__func__);
  const wifimgr_restart_request copy = *request;
  (void)wifimgr_lib_restartInterface(&copy);
  return trace::success(__func__);
}

extern "C" void doWifiDownUp(uint32_t wifi_type, uint32_t oper) {
  const int ssids = apply::read_number_or_report(wifimgr_lib_get_bssidnum, wifi_type, apply::kSsidCountFailed);
  const Prefixes prefix = prefixes_of(wifi_type);
  if (oper == 0) {
    apply::take_band_down(prefix, ssids);
  } else if (oper == 1) {
    bring_band_up(wifi_type, ssids, prefix);
  }
}

extern "C" uint64_t wifimgr_lib_wifi_execute(uint32_t wifi_type, uint32_t oper) {
  trace::enter(__func__);
  doWifiDownUp(wifi_type, 0);
  if (oper != 0) doWifiDownUp(wifi_type, 1);
  return trace::success(__func__);
}

extern "C" uint64_t wifimgr_lib_restart_wlan_Interface(const wifimgr_restart_request* request, uint64_t,
                                                       const char* value, int32_t kind) {
  trace::enter(__func__);
  const bool goes_by_value = kind == 3 || kind == 4;
  if (request == nullptr || (goes_by_value && value == nullptr)) return trace::fail(__func__);
  const bool is_on = goes_by_value && std::strcmp(value, "1") == 0;
  const int32_t count = static_cast<int32_t>(request->new_count);
  uint64_t answer = 0;
  if (kind == 1) {
    const wifimgr_restart_request copy = *request;
    (void)wifimgr_lib_restartInterface(&copy);
  } else if (kind == 2 || (kind == 4 && is_on)) {
    take_wlan_down(request->band, count);
  } else if (kind == 3) {
    answer = restart_by_value(request->band, count, is_on);
  }
  return trace::success(__func__).as(answer);
}

extern "C" int reload_WlanAC_Driver(void) {
  (void)store::run_shell("rmmod mt7915_ap");
  return store::run_shell("insmod /lib/modules/mt7915_ap.ko");
}

extern "C" uint64_t wifimgr_lib_insmod_ko(void) {
  trace::enter(__func__);
  (void)store::run_shell("rmmod rt3390ap");
  (void)store::run_shell("insmod /lib/modules/rt3390ap.ko");
  return trace::success(__func__);
}
