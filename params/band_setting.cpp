#include "params/band_setting.h"

#include "store/band.h"
#include "wifimgr_lib.h"

namespace params {

trace::Result set_band_value(const BandSetting& setting, uint32_t wifi_type, int32_t index, const char* value) {
  trace::enter(setting.function);
  if (value == nullptr) return trace::fail(setting.function);
  if (index != -1) return trace::fail(setting.function, setting.index_refusal);
  if (!accepts(setting.accepted, value)) {
    WIFIMGR_TRACE(trace::kErrorLevel, setting.refusal, setting.function);
    return {1};
  }
  if (update_attr(store::band_number(wifi_type), -1, setting.key, value) != 0) return trace::fail(setting.function);
  return trace::success(setting.function);
}

}  // namespace params
