// The getter of the MAC access policy, which alone has its own words for an unreadable SSID count.
#include "params/ssid_setting.h"
#include "wifimgr_lib.h"

extern "C" uint64_t wifimgr_lib_get_accessPolicy(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len) {
  trace::enter(__func__);
  if (buf == nullptr) return trace::fail(__func__);
  int count = 0;
  if (!params::read_ssid_count(wifi_type, count)) return trace::fail(__func__, "get_bssidnum err.");
  if (!params::is_ssid_of(count, ssid_index, __func__)) return 1;
  const params::SsidKey key("AccessPolicy%d", params::Numbering::kFromZero, ssid_index);
  return params::read_ssid_value(wifi_type, ssid_index, buf, len, __func__, key.text);
}
