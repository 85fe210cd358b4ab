// The band-wide getters and setters that have no rule of their own: the settings' rows become exported functions.
#include "params/accepted.h"
#include "params/band_setting.h"
#include "store/band_value.h"
#include "wifimgr_lib.h"

#define BAND_GETTER(getter, key)                                             \
  extern "C" int getter(int wifi_type, int index, char* buf, unsigned len) { \
    return store::get_band_value(wifi_type, index, buf, len, #getter, key);  \
  }
#define BAND_SETTER(setter, key, accepted, refusal)                                          \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t index, const char* value) {         \
    return params::set_band_value(wifi_type, index, value, #setter, key, refusal, accepted); \
  }
#define HT_GROUP_SETTER(setter, key, accepted, refusal)                                          \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t index, const char* value) {             \
    return params::set_ht_group_value(wifi_type, index, value, #setter, key, refusal, accepted); \
  }
#include "params/setting_rows.def"
