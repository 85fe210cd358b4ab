// The regulatory region: one key per band, each served on its own band only.
#include "store/band.h"
#include "store/band_value.h"
#include "store/decimal.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

struct Region {
  int band;
  char key[20];
  char band_refusal[28];  // of the getter
};

constexpr Region kRegion2_4G = {store::k2_4G, "CountryRegion", "The wifi type should be 0."};
constexpr Region kRegion5G = {store::k5G, "CountryRegionABand", "The wifi type should be 1."};

bool is_region(int band, long long number) {
  if (band == store::k5G) return number <= 14;
  return number <= 7 || (number >= 31 && number <= 33);
}

int get_region(const char* function, const Region& region, int wifi_type, int index, char* buf, unsigned len) {
  if (buf != nullptr && index == -1 && wifi_type != region.band) {
    trace::enter(function);
    return trace::fail(function, region.band_refusal);
  }
  return store::get_band_value(wifi_type, index, buf, len, function, region.key);
}

trace::Result set_region(const char* function, const Region& region, uint32_t wifi_type, int32_t index,
                         const char* value) {
  constexpr char kInvalid[] = "The input parameter is invalid.";
  trace::enter(function);
  if (value == nullptr) return trace::fail(function);
  if (store::band_number(wifi_type) != region.band) return trace::fail(function, kInvalid);
  if (index != -1) return trace::fail(function, "The ssid index here should be -1.");
  if (doStrDecCheck(value) == 0 || !is_region(region.band, store::wide_decimal(value)))
    return trace::fail(function, kInvalid);
  if (update_attr(region.band, -1, region.key, value) != 0) return trace::fail(function);
  return trace::success(function);
}

}  // namespace

extern "C" int wifimgr_lib_get_countryRegion(int wifi_type, int index, char* buf, unsigned len) {
  return get_region(__func__, kRegion2_4G, wifi_type, index, buf, len);
}

extern "C" int wifimgr_lib_get_countryRegionABand(int wifi_type, int index, char* buf, unsigned len) {
  return get_region(__func__, kRegion5G, wifi_type, index, buf, len);
}

extern "C" uint64_t wifimgr_lib_set_countryRegion(uint32_t wifi_type, int32_t index, const char* value) {
  return set_region(__func__, kRegion2_4G, wifi_type, index, value);
}

extern "C" uint64_t wifimgr_lib_set_countryRegionABand(uint32_t wifi_type, int32_t index, const char* value) {
  return set_region(__func__, kRegion5G, wifi_type, index, value);
}
