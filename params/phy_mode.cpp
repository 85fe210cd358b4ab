// The wireless mode, and the HT settings that the stored mode must allow.
#include "params/accepted.h"
#include "params/band_setting.h"
#include "params/ssid_setting.h"
#include "store/band.h"
#include "store/decimal.h"
#include "wifimgr_lib.h"

namespace {

// A set of wireless modes, one bit each.
template <typename... Modes>
constexpr uint32_t modes(Modes... mode) {
  return ((1U << mode) | ...);
}

constexpr bool contains(uint32_t set, long long mode) {
  return mode >= 0 && mode < 32 && (set >> mode & 1U) != 0;
}

constexpr uint32_t k2_4GModes = modes(0, 1, 3, 4, 5, 6, 7, 8, 9, 10, 16);
constexpr uint32_t k5GModes = modes(2, 3, 5, 8, 10, 11, 14, 15, 17);
// Mode 2 allows HT_BW but neither HT_GI nor HT_MCS; deliberate, the normalisation sets HT_BW in that mode.
constexpr uint32_t kModesWithBandwidth = modes(2, 5, 6, 7, 8, 9, 10, 11, 14, 15, 16, 17);
constexpr uint32_t kModesWithRates = modes(5, 6, 7, 8, 9, 10, 11, 14, 15, 16, 17);

// Whether the stored wireless mode is one of `set`; traces the refusal as `function` when not, or when it is
// unreadable.
bool mode_allows(const char* function, uint32_t wifi_type, uint32_t set, const char* refusal) {
  char mode[store::kValueSize] = "";
  if (wifimgr_lib_get_wirelessMode(store::band_number(wifi_type), -1, mode, sizeof mode) != 0) {
    (void)trace::fail(function);
    return false;
  }
  if (contains(set, store::decimal(mode))) return true;
  (void)trace::fail(function, refusal);
  return false;
}

// The mode comes before the index. The caller's arguments come first and in its order.
uint64_t set_if_mode_allows(uint32_t wifi_type, int32_t index, const char* value, const char* function, const char* key,
                            uint32_t modes, const char* mode_refusal, const char* refusal) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (!mode_allows(function, wifi_type, modes, mode_refusal)) return 1;
  if (index != -1) return trace::fail(function, params::kIndexShouldBeMinusOne);
  if (!params::accepts(params::number(0, 1), value)) return trace::fail(function, refusal);
  if (update_attr(store::band_number(wifi_type), -1, key, value) != 0) return trace::fail(function);
  return trace::success(function);
}

bool is_mcs(const char* value) {
  if (doStrDecCheck(value) == 0) return false;
  const long long mcs = store::wide_decimal(value);
  return mcs <= 15 || mcs == 32 || mcs == 33;
}

}  // namespace

extern "C" uint64_t wifimgr_lib_set_wirelessMode(uint32_t wifi_type, int32_t index, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (index != -1) return trace::fail(__func__, params::kIndexShouldBeMinusOne);
  if (doStrDecCheck(value) == 0) return trace::fail(__func__, "The WirelessMode value should be DEC num.");
  const int band = store::band_number(wifi_type);
  const long long mode = store::wide_decimal(value);
  if (band == store::k2_4G && !contains(k2_4GModes, mode)) {
    return trace::fail(__func__, "The WirelessMode value for 2.4G is invalid.");
  }
  if (band == store::k5G && !contains(k5GModes, mode)) {
    return trace::fail(__func__, "The WirelessMode value for 5G is invalid.");
  }
  if (update_attr(band, -1, "WirelessMode", value) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}

extern "C" uint64_t wifimgr_lib_set_HT_BW(uint32_t wifi_type, int32_t index, const char* value) {
  return set_if_mode_allows(wifi_type, index, value, __func__, "HT_BW", kModesWithBandwidth,
                            "The wirelessMode do not support to set the HT_BW value.",
                            "The HT_BW value should be 0 or 1.");
}

extern "C" uint64_t wifimgr_lib_set_HT_GI(uint32_t wifi_type, int32_t index, const char* value) {
  return set_if_mode_allows(wifi_type, index, value, __func__, "HT_GI", kModesWithRates,
                            "The wirelessMode do not support to set the HT_GI value.", "The HT_GI value is invalid.");
}

extern "C" uint64_t wifimgr_lib_set_HT_MCS(uint32_t wifi_type, int32_t ssid_index, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  // The refusal names HT_BW; kept, as callers match the text.
  if (!mode_allows(__func__, wifi_type, kModesWithRates, "The wirelessMode do not support to set the HT_BW value."))
    return 1;
  if (!params::is_ssid_of_band(__func__, wifi_type, ssid_index)) return 1;
  if (!is_mcs(value)) return trace::fail(__func__, "The HT_MCS value is invalid.");
  return params::write_ssid_value(__func__, wifi_type, ssid_index, "HT_MCS", value);
}
