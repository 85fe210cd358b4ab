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

uint64_t set_for_every_ssid(store::Band band, int32_t index, const char* value, const char* function, const char* key,
                            const char* refusal, params::Accepted accepted, Repeat repeat) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (index != -1) return trace::fail(function, params::kIndexShouldBeMinusOne);
  if (!params::accepts(accepted, value)) return params::refuse(function, key, refusal, value);
  int count = 0;
  if (!params::read_ssid_count(band, count)) return trace::fail(function);
  char list[store::kValueSize];
  repeat(list, value, count);
  if (update_attr(band, -1, key, list) != 0) return trace::fail(function);
  return trace::success(function);
}

}  // namespace

extern "C" uint64_t wifimgr_lib_set_VHT_BW(uint32_t wifi_type, int32_t index, const char* value) {
  return set_for_every_ssid(wifi_type, index, value, __func__, "VHT_BW", "The VHT_BW value should be from 0 to 3.",
                            params::number(0, 3), params::repeat_whole_value);
}

extern "C" uint64_t wifimgr_lib_set_VHT_SGI(uint32_t wifi_type, int32_t index, const char* value) {
  return set_for_every_ssid(wifi_type, index, value, __func__, "VHT_SGI", params::kShouldBe0To1, params::number(0, 1),
                            params::repeat_value);
}
