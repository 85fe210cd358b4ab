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

// Whether the stored wireless mode is one of `set`; traces the refusal of `refused_key` as `function` when not, or the
// plain failure when it is unreadable.
bool mode_allows(store::Band band, const char* function, uint32_t set, const char* refused_key) {
  char mode[store::kValueSize] = "";
  if (wifimgr_lib_get_wirelessMode(band, -1, mode, sizeof mode) != 0) return trace::fail(function).as(false);
  if (contains(set, store::decimal(mode))) return true;
  return trace::fail_printing(function, "The wirelessMode do not support to set the %s value.", refused_key).as(false);
}

// The mode comes before the index. The caller's arguments come first and in its order.
uint64_t set_if_mode_allows(store::Band band, int32_t index, const char* value, const char* function, const char* key,
                            uint32_t modes, const char* refusal) {
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (!mode_allows(band, function, modes, key)) return 1;
  if (index != -1) return trace::fail(function, params::kIndexShouldBeMinusOne);
  if (!params::accepts(params::number(0, 1), value)) return params::refuse(function, key, refusal, value);
  if (update_attr(band, -1, key, value) != 0) return trace::fail(function);
  return trace::success(function);
}

constexpr char kModeRefusal[] = "The WirelessMode value for %s is invalid.";

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
  const store::Band band = wifi_type;
  const long long mode = store::wide_decimal(value);
  if (band == store::k2_4G && !contains(k2_4GModes, mode)) {
    return trace::fail_printing(__func__, kModeRefusal, "2.4G");
  }
  if (band == store::k5G && !contains(k5GModes, mode)) {
    return trace::fail_printing(__func__, kModeRefusal, "5G");
  }
  if (update_attr(band, -1, "WirelessMode", value) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}

extern "C" uint64_t wifimgr_lib_set_HT_BW(uint32_t wifi_type, int32_t index, const char* value) {
  return set_if_mode_allows(wifi_type, index, value, __func__, "HT_BW", kModesWithBandwidth, params::kShouldBe0Or1);
}

extern "C" uint64_t wifimgr_lib_set_HT_GI(uint32_t wifi_type, int32_t index, const char* value) {
  return set_if_mode_allows(wifi_type, index, value, __func__, "HT_GI", kModesWithRates, params::kIsInvalid);
}

extern "C" uint64_t wifimgr_lib_set_HT_MCS(uint32_t wifi_type, int32_t ssid_index, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  // The refusal names HT_BW; kept, as callers match the text.
  if (!mode_allows(wifi_type, __func__, kModesWithRates, "HT_BW")) return 1;
  if (!params::is_ssid_of_band(wifi_type, ssid_index, __func__)) return 1;
  if (!is_mcs(value)) return params::refuse(__func__, "HT_MCS", params::kIsInvalid, value);
  return params::write_ssid_value(wifi_type, ssid_index, value, __func__, "HT_MCS");
}
