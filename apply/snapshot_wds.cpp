// The WDS part of the snapshot.
//
// Getter failures are not looked at: a text that cannot be read counts as empty.
#include <cstring>

#include "apply/band_number.h"
#include "apply/line_end.h"
#include "apply/security_mode.h"
#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"
#include "wifimgr_lib.h"

namespace {

using apply::kWepKeys;

struct Text {
  char text[store::kValueSize] = "";
  const char* stripped() {
    apply::strip_line_end(text);
    return text;
  }
};

Text read(apply::BandGetter getter, store::Band band, int index) {
  Text value;
  (void)getter(band, index, value.text, sizeof value.text);
  (void)value.stripped();
  return value;
}

Text read_wep_key(store::Band band, int key) {
  Text value;
  (void)wifimgr_lib_get_keyStr(band, 1, key, value.text, sizeof value.text);
  (void)value.stripped();
  return value;
}

uint8_t read_enable(store::Band band) {
  return static_cast<uint8_t>(store::decimal(read(wifimgr_lib_get_wdsenable, band, -1).text));
}

bool first_ssid_uses_wep(store::Band band) {
  Text mode;
  (void)wifimgr_lib_get_authMode(band, 1, mode.text, sizeof mode.text);
  return std::strstr(mode.stripped(), "WEP") != nullptr;
}

template <size_t kSize>
void keep(char (&field)[kSize], const Text& value) {
  std::memset(field, 0, kSize);
  std::memcpy(field, value.text, strnlen(value.text, kSize - 1));
}

// Compared within the length that is kept.
template <size_t kSize>
bool differs(const char (&field)[kSize], const Text& value) {
  return std::strncmp(field, value.text, kSize - 1) != 0;
}

}  // namespace

extern "C" uint64_t wds_store(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record == nullptr) return 0;
  record->wds_enable = read_enable(wifi_type);
  keep(record->wds_encryp_type, read(wifimgr_lib_get_wdsencryptype, wifi_type, -1));
  keep(record->wds_key, read(wifimgr_lib_get_wdskey, wifi_type, 1));
  keep(record->wds_list, read(wifimgr_lib_get_wdslist, wifi_type, -1));
  if (record->wds_enable == 0 || !first_ssid_uses_wep(wifi_type)) return 0;
  for (int key = 1; key <= kWepKeys; ++key) keep(record->wep_key[key - 1], read_wep_key(wifi_type, key));
  return 0;
}

extern "C" uint64_t wds_compare(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record == nullptr) return 0;
  if (read_enable(wifi_type) != record->wds_enable) return 1;
  if (record->wds_enable == 0) return 0;
  if (differs(record->wds_encryp_type, read(wifimgr_lib_get_wdsencryptype, wifi_type, -1))) return 1;
  if (differs(record->wds_key, read(wifimgr_lib_get_wdskey, wifi_type, 1))) return 1;
  if (differs(record->wds_list, read(wifimgr_lib_get_wdslist, wifi_type, -1))) return 1;
  if (!first_ssid_uses_wep(wifi_type)) return 0;
  for (int key = 1; key <= kWepKeys; ++key) {
    if (differs(record->wep_key[key - 1], read_wep_key(wifi_type, key))) return 1;
  }
  return 0;
}
