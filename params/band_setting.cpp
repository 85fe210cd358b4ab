#include "params/band_setting.h"

#include "store/band.h"
#include "wifimgr_lib.h"

namespace params {
namespace {

trace::Result set(store::Band band, int32_t index, const char* value, const char* function, const char* key,
                  const char* refusal, Accepted accepted, const char* index_refusal) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (index != -1) return trace::fail(function, index_refusal);
  if (!accepts(accepted, value)) return refuse(function, key, refusal, value);
  if (update_attr(band, -1, key, value) != 0) return trace::fail(function);
  return trace::success(function);
}

}  // namespace

uint64_t set_band_value(store::Band band, int32_t index, const char* value, const char* function, const char* key,
                        const char* refusal, Accepted accepted) {
  return set(band, index, value, function, key, refusal, accepted, kIndexShouldBeMinusOne);
}

uint64_t set_ht_group_value(store::Band band, int32_t index, const char* value, const char* function, const char* key,
                            const char* refusal, Accepted accepted) {
  return set(band, index, value, function, key, refusal, accepted, kIndexIsInvalid);
}

}  // namespace params
