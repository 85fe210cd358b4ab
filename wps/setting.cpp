// WPS settings of one SSID: checked, stored where there is a key for them, and sent to the driver.
#include <cstdio>

#include "platform_libs/api_lib_utility.h"
#include "params/ssid_setting.h"
#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/shell.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr char kWrongValue[] = "The input parameter is invalid.";
constexpr char kWrongIndex[] = "The ssid index is invalid.";
constexpr char kWrongBand[] = "The wifi type is invalid.";

template <long long kLowest, long long kHighest>
bool is_within(long long number) {
  return number >= kLowest && number <= kHighest;
}

bool is_any_number(long long) {
  return true;
}

// Digits are not all that counts: a sign may stand behind a line end.
bool is_not_negative(long long number) {
  return number >= 0;
}

// 0 and 1 name a kind of key, 8 to 63 its length.
bool is_key_format(long long number) {
  return is_within<0, 1>(number) || is_within<8, 63>(number);
}

struct Setting {
  const char* function;
  const char* key;
  const char* store_refusal;  // null for what is not stored
  bool (*accepts)(long long number);
};

// Any of the eight, however many SSIDs the band has.
bool is_ssid(int32_t ssid_index) {
  return ssid_index >= 1 && ssid_index <= store::kFields;
}

// The band's own check comes last, behind the store's; deliberate, a stored setting of a wrong band is refused with
// the store's words.
trace::Result send(const char* function, const char* key, uint32_t wifi_type, int32_t ssid_index, const char* value) {
  const int band = store::band_number(wifi_type);
  if (!store::is_band(band)) return trace::fail(function, kWrongBand);
  char word[store::kValueSize] = "";
  if (api_escape_parameter(value, word, sizeof word) != 0) return trace::fail(function);
  char line[320];
  (void)std::snprintf(line, sizeof line, "/userfs/bin/iwpriv %s%d set %s=%s", band == store::k2_4G ? "ra" : "rai",
                      static_cast<int>(ssid_index) - 1, key, word);
  (void)store::run_line(line);
  return trace::success(function);
}

trace::Result set(const Setting& setting, uint32_t wifi_type, int32_t ssid_index, const char* value) {
  trace::enter(setting.function);
  if (value == nullptr) return trace::fail(setting.function);
  if (check_is_num(value) != 0 || !setting.accepts(store::wide_decimal(value))) {
    return trace::fail(setting.function, kWrongValue);
  }
  if (!is_ssid(ssid_index)) return trace::fail(setting.function, kWrongIndex);
  if (setting.store_refusal != nullptr &&
      update_attr(store::band_number(wifi_type), ssid_index, setting.key, value) != 0) {
    return trace::fail(setting.function, setting.store_refusal);
  }
  return send(setting.function, setting.key, wifi_type, ssid_index, value);
}

trace::Result order(const char* function, const char* key, uint32_t wifi_type, int32_t ssid_index) {
  trace::enter(function);
  if (!is_ssid(ssid_index)) return trace::fail(function, kWrongIndex);
  return send(function, key, wifi_type, ssid_index, "1");
}

// The driver is not told: it reads these at its next start.
trace::Result store_uuid(const char* function, const char* key_format, uint32_t wifi_type, int32_t ssid_index,
                         const char* value) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (!is_ssid(ssid_index)) return trace::fail(function, kWrongIndex);
  const params::SsidKey key(key_format, params::Numbering::kFromOne, ssid_index);
  return params::write_ssid_value(function, wifi_type, ssid_index, key.text, value);
}

}  // namespace

#define WPS_STORED(setter, key, refusal, accepts)                                         \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t ssid_index, const char* value) { \
    return set(Setting{#setter, key, refusal, accepts}, wifi_type, ssid_index, value);    \
  }
#define WPS_DIRECT(setter, key, accepts)                                                  \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t ssid_index, const char* value) { \
    return set(Setting{#setter, key, nullptr, accepts}, wifi_type, ssid_index, value);    \
  }
#define WPS_ORDER(setter, key)                                         \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t ssid_index) { \
    return order(#setter, key, wifi_type, ssid_index);                 \
  }
#include "wps/setting.def"

extern "C" uint64_t wifimgr_lib_set_WscUUIDE(uint32_t wifi_type, int32_t ssid_index, const char* value) {
  return store_uuid(__func__, "WSC_UUID_E%d", wifi_type, ssid_index, value);
}

extern "C" uint64_t wifimgr_lib_set_WscUUIDStr(uint32_t wifi_type, int32_t ssid_index, const char* value) {
  return store_uuid(__func__, "WSC_UUID_Str%d", wifi_type, ssid_index, value);
}
