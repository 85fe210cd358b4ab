// The per-SSID getters and setters that have no rule of their own: the settings' rows become exported functions.
#include "params/accepted.h"
#include "params/ssid_setting.h"
#include "wifimgr_lib.h"

#define SSID_GETTER(getter, key, numbering)                                                     \
  extern "C" uint64_t getter(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len) { \
    return params::get_ssid_value(wifi_type, ssid_index, buf, len, #getter, key, numbering);    \
  }
#define SSID_SETTER(setter, key, numbering, accepted, refusal)                                               \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t ssid_index, const char* value) {                    \
    return params::set_ssid_value<numbering>(wifi_type, ssid_index, value, #setter, key, refusal, accepted); \
  }
#include "params/setting_rows.def"
