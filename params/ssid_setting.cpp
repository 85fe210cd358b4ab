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

bool read_ssid_count(store::Band band, int& count) {
  char text[store::kValueSize] = "";
  if (wifimgr_lib_get_bssidnum(band, -1, text, sizeof text) != 0) return false;
  count = store::decimal(text);
  return true;
}

bool is_ssid_of(int count, int32_t ssid_index, const char* function) {
  if (ssid_index >= 1 && ssid_index <= count) return true;
  return trace::fail_printing(function, "The ssid index should be from 1 to BssidNum:%d.", count).as(false);
}

bool is_ssid_of_band(store::Band band, int32_t ssid_index, const char* function) {
  int count = 0;
  if (read_ssid_count(band, count)) return is_ssid_of(count, ssid_index, function);
  return trace::fail(function).as(false);
}

trace::Result read_ssid_value(store::Band band, int32_t ssid_index, char* buf, uint32_t len, const char* function,
                              const char* key) {
  if (read_attr(band, ssid_index, key, buf, len) != 0) return trace::fail(function);
  return trace::success(function);
}

trace::Result write_ssid_value(store::Band band, int32_t ssid_index, const char* value, const char* function,
                               const char* key) {
  if (update_attr(band, ssid_index, key, value) != 0) return trace::fail(function);
  return trace::success(function);
}

uint64_t get_ssid_value(store::Band band, int32_t ssid_index, char* buf, uint32_t len, const char* function,
                        const char* key, Numbering numbering) {
  trace::enter(function);
  if (buf == nullptr) return trace::fail(function);
  if (!is_ssid_of_band(band, ssid_index, function)) return 1;
  return read_ssid_value(band, ssid_index, buf, len, function, SsidKey(key, numbering, ssid_index).text);
}

namespace {

trace::Result set(store::Band band, int32_t ssid_index, const char* value, const char* function, const char* key,
                  const char* refusal, Accepted accepted, const char* words, Numbering numbering) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (!is_ssid_of_band(band, ssid_index, function)) return {1};
  if (!accepts(accepted, value, words)) return refuse(function, key, refusal, value);
  return write_ssid_value(band, ssid_index, value, function, SsidKey(key, numbering, ssid_index).text);
}

}  // namespace

template <Numbering kNumbering>
uint64_t set_ssid_value(store::Band band, int32_t ssid_index, const char* value, const char* function, const char* key,
                        const char* refusal, Accepted accepted) {
  return set(band, ssid_index, value, function, key, refusal, accepted, nullptr, kNumbering);
}

template uint64_t set_ssid_value<Numbering::kShared>(store::Band, int32_t, const char*, const char*, const char*,
                                                     const char*, Accepted);
template uint64_t set_ssid_value<Numbering::kFromOne>(store::Band, int32_t, const char*, const char*, const char*,
                                                      const char*, Accepted);
template uint64_t set_ssid_value<Numbering::kFromZero>(store::Band, int32_t, const char*, const char*, const char*,
                                                       const char*, Accepted);

template <>
uint64_t set_ssid_value<Numbering::kShared>(store::Band band, int32_t ssid_index, const char* value,
                                            const char* function, const char* key, const char* refusal,
                                            AcceptedWords accepted) {
  return set(band, ssid_index, value, function, key, refusal, alone(Accepted::Kind::kWords), accepted.words,
             Numbering::kShared);
}

}  // namespace params
