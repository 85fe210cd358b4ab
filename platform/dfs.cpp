// DFS zero-wait: two band-wide switches that only 5G has.
#include "params/accepted.h"
#include "params/ssid_setting.h"
#include "store/band.h"
#include "store/band_value.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr char kOnly5G[] = "The type should be 1.";

uint64_t set(uint32_t wifi_type, int32_t index, const char* value, const char* function, const char* key) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (wifi_type != store::k5G) return trace::fail(function, kOnly5G);
  if (index != -1) return trace::fail(function, params::kIndexIsInvalid);
  if (!params::accepts(params::number(0, 1), value)) return params::refuse(function, key, params::kIsInvalid, value);
  return params::write_ssid_value(store::k5G, -1, value, function, key);
}

int get(int wifi_type, int index, char* buf, unsigned len, const char* function, const char* key) {
  trace::enter(function);
  if (wifi_type != store::k5G) return trace::fail(function, kOnly5G);
  if (index != -1) return trace::fail(function, store::kIndexRefusal);
  return params::read_ssid_value(store::k5G, -1, buf, len, function, key);
}

}  // namespace

extern "C" uint64_t wifimgr_lib_set_DfsDedicatedZeroWait(uint32_t wifi_type, int32_t index, const char* value) {
  return set(wifi_type, index, value, __func__, "DfsDedicatedZeroWait");
}

extern "C" uint64_t wifimgr_lib_set_DfsZeroWaitDefault(uint32_t wifi_type, int32_t index, const char* value) {
  return set(wifi_type, index, value, __func__, "DfsZeroWaitDefault");
}

extern "C" int wifimgr_lib_get_DfsDedicatedZeroWait(int wifi_type, int index, char* buf, unsigned len) {
  return get(wifi_type, index, buf, len, __func__, "DfsDedicatedZeroWait");
}

extern "C" int wifimgr_lib_get_DfsZeroWaitDefault(int wifi_type, int index, char* buf, unsigned len) {
  return get(wifi_type, index, buf, len, __func__, "DfsZeroWaitDefault");
}
