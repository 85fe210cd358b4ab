// WPS settings of one SSID: checked, stored where there is a key for them, and sent to the driver.
#include <cstdio>

#include "params/ssid_setting.h"
#include "platform_libs/api_lib_utility.h"
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

// What a setting's number must be. Rows hand it over by value, like all they have: they are code without relocations.
struct Accepted {
  enum class Kind : uint8_t { kAny, kWithin, kKeyFormat };
  int32_t highest;
  int16_t lowest;
  Kind kind;
};

// By the words of the settings' table.
// Digits are not all that counts: a sign may stand behind a line end.
constexpr Accepted ACCEPTS_NUMBER(int16_t lowest, int32_t highest) {
  return {highest, lowest, Accepted::Kind::kWithin};
}
constexpr Accepted ACCEPTS_KEY_FORMAT(int16_t, int32_t) {
  return {0, 0, Accepted::Kind::kKeyFormat};
}
constexpr Accepted any_number() {
  return {0, 0, Accepted::Kind::kAny};
}

bool accepts(Accepted accepted, long long number) {
  switch (accepted.kind) {
    case Accepted::Kind::kAny:
      return true;
    case Accepted::Kind::kWithin:
      return number >= accepted.lowest && number <= accepted.highest;
    case Accepted::Kind::kKeyFormat:  // 0 and 1 name a kind of key, 8 to 63 its length
      return (number >= 0 && number <= 1) || (number >= 8 && number <= 63);
  }
  return false;
}

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

// `store_refusal` is null for what is not stored. The caller's arguments come first and in its order, so that an
// exported setter only adds its row, which is then code and no data.
uint64_t set(uint32_t wifi_type, int32_t ssid_index, const char* value, const char* function, const char* key,
             const char* store_refusal, Accepted accepted) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (check_is_num(value) != 0 || !accepts(accepted, store::wide_decimal(value)))
    return trace::fail(function, kWrongValue);
  if (!is_ssid(ssid_index)) return trace::fail(function, kWrongIndex);
  if (store_refusal != nullptr && update_attr(store::band_number(wifi_type), ssid_index, key, value) != 0) {
    return trace::fail(function, store_refusal);
  }
  return send(function, key, wifi_type, ssid_index, value);
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

#define WPS_SETTER(setter, key, accepts, low, high)                                                        \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t ssid_index, const char* value) {                  \
    return set(wifi_type, ssid_index, value, #setter, key, "Set the " key " failed.", accepts(low, high)); \
  }
#include "params/setting_rows.def"

#define WPS_DIRECT(setter, key, accepted)                                                 \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t ssid_index, const char* value) { \
    return set(wifi_type, ssid_index, value, #setter, key, nullptr, accepted);            \
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
