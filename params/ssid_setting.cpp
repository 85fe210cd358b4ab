#include "params/ssid_setting.h"

#include <cstdio>

#include "store/band.h"
#include "store/decimal.h"

namespace params {

SsidKey::SsidKey(const char* key, Numbering numbering, int32_t ssid_index) : text(key) {
  if (numbering == Numbering::kShared) return;
  const int number = numbering == Numbering::kFromZero ? ssid_index - 1 : ssid_index;
  (void)std::snprintf(formatted_, sizeof formatted_, key, number);
  text = formatted_;
}

bool read_ssid_count(uint32_t wifi_type, int& count) {
  char text[store::kValueSize] = "";
  if (wifimgr_lib_get_bssidnum(store::band_number(wifi_type), -1, text, sizeof text) != 0) return false;
  count = store::decimal(text);
  return true;
}

bool is_ssid_of(const char* function, int count, int32_t ssid_index) {
  if (ssid_index >= 1 && ssid_index <= count) return true;
  (void)trace::fail_printing(function, "The ssid index should be from 1 to BssidNum:%d.", count);
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

uint64_t get_ssid_value(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len, const char* function,
                        const char* key, Numbering numbering) {
  trace::enter(function);
  if (buf == nullptr) return trace::fail(function);
  if (!is_ssid_of_band(function, wifi_type, ssid_index)) return 1;
  return read_ssid_value(function, wifi_type, ssid_index, SsidKey(key, numbering, ssid_index).text, buf, len);
}

namespace {

trace::Result set(uint32_t wifi_type, int32_t ssid_index, const char* value, const char* function, const char* key,
                  const char* refusal, Accepted accepted, Numbering numbering) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (!is_ssid_of_band(function, wifi_type, ssid_index)) return {1};
  // A refusal may print the number that was refused; most print none.
  if (!accepts(accepted, value)) return trace::fail_printing(function, refusal, store::decimal(value));
  return write_ssid_value(function, wifi_type, ssid_index, SsidKey(key, numbering, ssid_index).text, value);
}

}  // namespace

template <Numbering kNumbering>
uint64_t set_ssid_value(uint32_t wifi_type, int32_t ssid_index, const char* value, const char* function,
                        const char* key, const char* refusal, Accepted accepted) {
  return set(wifi_type, ssid_index, value, function, key, refusal, accepted, kNumbering);
}

template uint64_t set_ssid_value<Numbering::kShared>(uint32_t, int32_t, const char*, const char*, const char*,
                                                     const char*, Accepted);
template uint64_t set_ssid_value<Numbering::kFromOne>(uint32_t, int32_t, const char*, const char*, const char*,
                                                      const char*, Accepted);
template uint64_t set_ssid_value<Numbering::kFromZero>(uint32_t, int32_t, const char*, const char*, const char*,
                                                       const char*, Accepted);

}  // namespace params
