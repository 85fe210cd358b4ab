// A band's radio on and off.
#include <cstdio>

#include "apply/band_number.h"
#include "apply/interface.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

using apply::bring_up;
using apply::kBr0;
using apply::Prefixes;
using apply::take_down;

void switch_ssid(uint32_t wifi_type, const Prefixes& prefix, int32_t ssid) {
  char enabled[store::kValueSize] = "";
  if (wifimgr_lib_get_enableSsid(wifi_type, ssid, enabled, sizeof enabled) != 0) enabled[0] = '\0';
  if (store::decimal(enabled) != 1) {
    take_down(kBr0, prefix.bss, ssid - 1);
    return;
  }
  bring_up(kBr0, prefix.bss, ssid - 1);
  (void)std::printf("add %s%d to br0\n", prefix.bss, ssid - 1);
}

}  // namespace

extern "C" int wifimgr_lib_wifi_onoff(uint32_t wifi_type, uint32_t oper) {
  trace::enter(__func__);
  const int ssids = apply::read_number_or_report(wifimgr_lib_get_bssidnum, wifi_type, apply::kSsidCountFailed);
  const Prefixes prefix = apply::prefixes_of(wifi_type);
  if (oper == 0) {
    apply::take_all_down(kBr0, prefix.bss, ssids);
    apply::take_all_down(kBr0, prefix.wds, apply::kWdsLinks);
  }
  if (oper == 1) {
    for (int32_t ssid = 1; ssid <= ssids; ++ssid) switch_ssid(wifi_type, prefix, ssid);
    // A WDS that is off or unreadable leaves its interfaces as they are.
    int32_t wds_mode = 0;
    if (apply::read_number(wifimgr_lib_get_wdsenable, wifi_type, wds_mode) && wds_mode == 1) {
      apply::bring_wds_up(kBr0, prefix.wds);
    }
  }
  return trace::success(__func__);
}
