// A band's radio on and off.
#include "apply/band_number.h"
#include "apply/interface.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

extern "C" int wifimgr_lib_wifi_onoff(uint32_t wifi_type, uint32_t oper) {
  trace::enter(__func__);
  const int ssids = apply::read_number_or_report(wifimgr_lib_get_bssidnum, wifi_type, apply::kSsidCountFailed);
  const apply::Prefixes prefix = apply::prefixes_of(wifi_type);
  if (oper == 0) apply::take_band_down(prefix, ssids);
  if (oper == 1) {
    for (int32_t ssid = 1; ssid <= ssids; ++ssid) {
      if (apply::read_enable(wifi_type, ssid) == 1) {
        apply::bring_bss_up(prefix, ssid - 1);
      } else {
        apply::take_down(apply::kBr0, prefix.bss, ssid - 1);
      }
    }
    apply::bring_wds_up_if_on(wifi_type, prefix);
  }
  return trace::success(__func__);
}
