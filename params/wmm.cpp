// The WMM parameter lists: band-wide values of four numbers, one per access category.
#include "params/accepted.h"
#include "params/band_setting.h"
#include "store/band.h"
#include "store/band_value.h"
#include "store/record.h"
#include "wifimgr_lib.h"

namespace {

bool is_wmm_list(const char* value) {
  char fields[4][store::kFieldSize];
  return check_para_valid(value, fields[0], fields[1], fields[2], fields[3]) == 0;
}

// The value comes before the index. A refused list shows twice in the trace: once by the check, once by the setter.
uint64_t set_wmm_list(uint32_t wifi_type, int32_t index, const char* value, const char* function, const char* key) {
  trace::enter(function);
  if (value == nullptr || !is_wmm_list(value)) return trace::fail(function);
  if (index != -1) return trace::fail(function, params::kIndexShouldBeMinusOne);
  if (update_attr(store::band_number(wifi_type), -1, key, value) != 0) return trace::fail(function);
  return trace::success(function);
}

}  // namespace

#define WMM_GETTER(getter, key, index_refusal)                                                                 \
  extern "C" int getter(uint32_t wifi_type, int32_t index, char* buf, uint32_t len) {                          \
    return store::get_band_value(store::band_number(wifi_type), index, buf, len, #getter, key, index_refusal); \
  }
#define WMM_SETTER(setter, key)                                                      \
  extern "C" uint64_t setter(uint32_t wifi_type, int32_t index, const char* value) { \
    return set_wmm_list(wifi_type, index, value, #setter, key);                      \
  }
#include "params/setting_rows.def"
