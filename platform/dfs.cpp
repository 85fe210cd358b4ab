// DFS zero-wait: two band-wide switches that only 5G has.
#include "params/accepted.h"
#include "params/ssid_setting.h"
#include "store/band.h"
#include "store/band_value.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr char kOnly5G[] = "The type should be 1.";

trace::Result set(const char* function, const char* key, const char* refusal, uint32_t wifi_type, int32_t index,
                  const char* value) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (wifi_type != store::k5G) return trace::fail(function, kOnly5G);
  if (index != -1) return trace::fail(function, params::kIndexIsInvalid);
  if (!params::accepts(params::number(0, 1), value)) return trace::fail(function, refusal);
  return params::write_ssid_value(function, store::k5G, -1, key, value);
}

trace::Result get(const char* function, const char* key, int wifi_type, int index, char* buf, unsigned len) {
  trace::enter(function);
  if (wifi_type != store::k5G) return trace::fail(function, kOnly5G);
  if (index != -1) return trace::fail(function, store::kIndexRefusal);
  return params::read_ssid_value(function, store::k5G, -1, key, buf, len);
}

}  // namespace

extern "C" uint64_t wifimgr_lib_set_DfsDedicatedZeroWait(uint32_t wifi_type, int32_t index, const char* value) {
  return set(__func__, "DfsDedicatedZeroWait", "The DfsDedicatedZeroWait value is invalid.", wifi_type, index, value);
}

extern "C" uint64_t wifimgr_lib_set_DfsZeroWaitDefault(uint32_t wifi_type, int32_t index, const char* value) {
  return set(__func__, "DfsZeroWaitDefault", "The DfsZeroWaitDefault value is invalid.", wifi_type, index, value);
}

extern "C" int wifimgr_lib_get_DfsDedicatedZeroWait(int wifi_type, int index, char* buf, unsigned len) {
  return get(__func__, "DfsDedicatedZeroWait", wifi_type, index, buf, len);
}

extern "C" int wifimgr_lib_get_DfsZeroWaitDefault(int wifi_type, int index, char* buf, unsigned len) {
  return get(__func__, "DfsZeroWaitDefault", wifi_type, index, buf, len);
}
