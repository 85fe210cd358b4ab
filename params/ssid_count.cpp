// How many SSIDs a band serves: the one setting whose change asks for a driver reload by itself.
#include <cstring>

#include "params/band_setting.h"
#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

extern "C" uint64_t wifimgr_lib_set_bssidNum(uint32_t wifi_type, int32_t index, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (index != -1) return trace::fail(__func__, params::kIndexShouldBeMinusOne);
  const store::Band band = wifi_type;
  char current[store::kValueSize] = "";
  if (wifimgr_lib_get_bssidnum(band, -1, current, sizeof current) == 0) {
    // The interfaces that the next commit takes down are those of the count in force.
    if (store::is_band(band)) pre_wlan_state[wifi_type] = store::decimal(current);
    // Compared over the new value's length only, so that the line end of a value read from the file does not count.
    // "1" for a current "12" therefore passes as no change; deliberate.
    const bool changed = std::strncmp(current, value, std::strlen(value)) != 0;
    if (wifimgr_lib_set_reloadFlag(wifi_type, changed ? "1" : "0") != 0) {
      return trace::fail(__func__, "Set the ReloadFlag failed.");
    }
  }
  // A failure here leaves the count remembered and the flag set.
  if (update_attr(band, -1, "BssidNum", value) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}
