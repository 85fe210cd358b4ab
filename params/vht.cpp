// VHT bandwidth and guard interval: band-wide for callers, a list with one value per SSID for the driver.
//
// The list is written with index -1 and so lands in field 1 as a whole, next to whatever fields the dat file had; the
// loader splits it at the next start.
#include "params/band_setting.h"
#include "params/repeated_value.h"
#include "params/ssid_setting.h"
#include "store/band.h"
#include "wifimgr_lib.h"

namespace {

using Repeat = void (*)(char (&list)[store::kValueSize], const char* value, int count);

trace::Result set_for_every_ssid(const params::BandSetting& setting, Repeat repeat, uint32_t wifi_type, int32_t index,
                                 const char* value) {
  trace::enter(setting.function);
  if (value == nullptr) return trace::fail(setting.function);
  if (index != -1) return trace::fail(setting.function, setting.index_refusal);
  if (!params::accepts(setting.accepted, value)) {
    WIFIMGR_TRACE(trace::kErrorLevel, setting.refusal, setting.function);
    return {1};
  }
  int count = 0;
  if (!params::read_ssid_count(wifi_type, count)) return trace::fail(setting.function);
  char list[store::kValueSize];
  repeat(list, value, count);
  if (update_attr(store::band_number(wifi_type), -1, setting.key, list) != 0) return trace::fail(setting.function);
  return trace::success(setting.function);
}

}  // namespace

extern "C" uint64_t wifimgr_lib_set_VHT_BW(uint32_t wifi_type, int32_t index, const char* value) {
  static constexpr params::BandSetting kRow = {__func__, "VHT_BW", params::kIndexShouldBeMinusOne, params::number(0, 3),
                                               WIFIMGR_REFUSAL("The VHT_BW value should be from 0 to 3.")};
  return set_for_every_ssid(kRow, params::repeat_whole_value, wifi_type, index, value);
}

extern "C" uint64_t wifimgr_lib_set_VHT_SGI(uint32_t wifi_type, int32_t index, const char* value) {
  static constexpr params::BandSetting kRow = {__func__, "VHT_SGI", params::kIndexShouldBeMinusOne,
                                               params::number(0, 1),
                                               WIFIMGR_REFUSAL("The VHT_SGI value should be between 0 to 1.")};
  return set_for_every_ssid(kRow, params::repeat_value, wifi_type, index, value);
}
