#include "params/ssid_setting.h"

#include <cstdio>

#include "store/band.h"
#include "store/decimal.h"

namespace params {

SsidKey::SsidKey(const char* key, Numbering numbering, int32_t ssid_index) {
  (void)std::snprintf(text, sizeof text, key, numbering == Numbering::kFromZero ? ssid_index - 1 : ssid_index);
}

bool read_ssid_count(uint32_t wifi_type, int& count) {
  char text[store::kValueSize] = "";
  if (wifimgr_lib_get_bssidnum(store::band_number(wifi_type), -1, text, sizeof text) != 0) return false;
  count = store::decimal(text);
  return true;
}

bool is_ssid_of(const char* function, int count, int32_t ssid_index) {
  if (ssid_index >= 1 && ssid_index <= count) return true;
  WIFIMGR_TRACE(trace::kErrorLevel, WIFIMGR_REFUSAL("The ssid index should be from 1 to BssidNum:%d."), function,
                count);
  return false;
}

bool is_ssid_of_band(const char* function, uint32_t wifi_type, int32_t ssid_index) {
  int count = 0;
  if (read_ssid_count(wifi_type, count)) return is_ssid_of(function, count, ssid_index);
  (void)trace::fail(function);
  return false;
}

trace::Result read_ssid_value(const char* function, uint32_t wifi_type, int32_t ssid_index, const char* key, char* buf,
                              uint32_t len) {
  if (read_attr(store::band_number(wifi_type), ssid_index, key, buf, len) != 0) return trace::fail(function);
  return trace::success(function);
}

trace::Result write_ssid_value(const char* function, uint32_t wifi_type, int32_t ssid_index, const char* key,
                               const char* value) {
  if (update_attr(store::band_number(wifi_type), ssid_index, key, value) != 0) return trace::fail(function);
  return trace::success(function);
}

trace::Result get_ssid_value(const SsidGetter& getter, uint32_t wifi_type, int32_t ssid_index, char* buf,
                             uint32_t len) {
  trace::enter(getter.function);
  if (buf == nullptr) return trace::fail(getter.function);
  if (!is_ssid_of_band(getter.function, wifi_type, ssid_index)) return {1};
  const SsidKey key(getter.key, getter.numbering, ssid_index);
  return read_ssid_value(getter.function, wifi_type, ssid_index, key.text, buf, len);
}

trace::Result set_ssid_value(const SsidSetting& setting, uint32_t wifi_type, int32_t ssid_index, const char* value) {
  trace::enter(setting.function);
  if (value == nullptr) return trace::fail(setting.function);
  if (!is_ssid_of_band(setting.function, wifi_type, ssid_index)) return {1};
  if (!accepts(setting.accepted, value)) {
    // A refusal may print the number that was refused; most print none.
    WIFIMGR_TRACE(trace::kErrorLevel, setting.refusal, setting.function, store::decimal(value));
    return {1};
  }
  const SsidKey key(setting.key, setting.numbering, ssid_index);
  return write_ssid_value(setting.function, wifi_type, ssid_index, key.text, value);
}

}  // namespace params
