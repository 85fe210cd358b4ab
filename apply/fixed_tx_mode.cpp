// The fixed TX mode of an SSID, brought in line with the wireless mode.
#include <cstring>

#include "apply/line_end.h"
#include "store/record.h"
#include "wifimgr_lib.h"

namespace {

// In the mixed b/g mode a fixed CCK rate asks for CCK; the others stay as they are.
const char* for_mixed_bg(uint32_t wifi_type, int32_t ssid_index) {
  char current[store::kValueSize] = "";
  if (wifimgr_lib_get_fixedTxMode(wifi_type, ssid_index, current, sizeof current) != 0) return "2";
  apply::strip_line_end(current);
  static constexpr char kCckRates[][4] = {"1", "2", "5.5", "11"};
  for (const auto& cck_rate : kCckRates) {
    if (std::strcmp(current, cck_rate) == 0) return "1";
  }
  return nullptr;
}

}  // namespace

extern "C" void update_fixedTxMode(uint32_t wifi_type, uint32_t ssid_index, uint32_t wireless_mode) {
  const int32_t ssid = static_cast<int32_t>(ssid_index);
  const char* value = "0";
  if (wireless_mode == 0) value = for_mixed_bg(wifi_type, ssid);
  if (wireless_mode == 1) value = "1";
  if (wireless_mode == 4) value = "2";
  if (value != nullptr) (void)wifimgr_lib_set_fixedTxMode(wifi_type, ssid, value);
}
