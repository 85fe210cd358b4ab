// Multi-AP: the mode of the gateway, and MBO (multi-band operation) per SSID. Both are field 1 of a key of their own,
// so that a save keeps them.
#include "params/ssid_setting.h"
#include "store/band.h"
#include "store/band_value.h"
#include "store/decimal.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr char kMapMode[] = "MapMode";

params::SsidKey mbo_key(int32_t ssid_index) {
  return {"MboSupport%d", params::Numbering::kFromOne, ssid_index};
}

// A text without a number counts as 0.
bool is_at_most(long long highest, const char* value) {
  const long long number = store::wide_decimal(value);
  return number >= 0 && number <= highest;
}

}  // namespace

extern "C" uint64_t wifimgr_lib_set_MboSupport(uint32_t wifi_type, int32_t ssid_index, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (!params::is_ssid_of_band(wifi_type, ssid_index, __func__)) return 1;
  if (!is_at_most(1, value)) return params::refuse(__func__, "MboSupport", params::kIsInvalid, value);
  return params::write_ssid_value(wifi_type, -1, value, __func__, mbo_key(ssid_index).text);
}

extern "C" int wifimgr_lib_get_MboSupport(int wifi_type, int ssid_index, char* buf, unsigned len) {
  trace::enter(__func__);
  if (buf == nullptr) return trace::fail(__func__);
  const store::Band band = wifi_type;
  if (!params::is_ssid_of_band(band, ssid_index, __func__)) return 1;
  return params::read_ssid_value(band, -1, buf, len, __func__, mbo_key(ssid_index).text);
}

extern "C" uint64_t wifimgr_lib_set_MapMode(uint32_t wifi_type, int32_t index, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (index != -1) return trace::fail(__func__, store::kIndexRefusal);
  if (!is_at_most(2, value)) return params::refuse(__func__, kMapMode, params::kIsInvalid, value);
  return params::write_ssid_value(wifi_type, -1, value, __func__, kMapMode);
}

// Always the mode in the 2.4G store, whatever the band, while the setter writes the band given; deliberate.
extern "C" int wifimgr_lib_get_MapMode(int wifi_type, int ssid_index, char* buf, unsigned len) {
  trace::enter(__func__);
  if (buf == nullptr) return trace::fail(__func__);
  if (!params::is_ssid_of_band(wifi_type, ssid_index, __func__)) return 1;
  return params::read_ssid_value(store::k2_4G, -1, buf, len, __func__, kMapMode);
}
