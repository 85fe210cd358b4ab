// Names and values of this platform that callers ask for. None of them traces.
#include <cstdint>

#include "store/band.h"
#include "store/bounded_text.h"
#include "wifimgr_lib.h"

int32_t ixia5gflag = -1;

namespace {

int write_text(char* out, int size, const char* text) {
  store::write_text(out, size, text);
  return 0;
}

int write_number(uint32_t* value, uint32_t number) {
  if (value != nullptr) *value = number;
  return 0;
}

}  // namespace

extern "C" int wifimgr_lib_get_WLAN_BUTTON_PATH(char* out, int size) {
  return write_text(out, size, "/proc/zq2810/wlan_button");
}

extern "C" int wifimgr_lib_get_WPS_BUTTON_PATH(char* out, int size) {
  return write_text(out, size, "/proc/zq2810/wps_button");
}

extern "C" int wifimgr_lib_get_WPS_5G_BUTTON_PATH(char* out, int size) {
  return write_text(out, size, "/proc/zq2810/wps_5g_button");
}

extern "C" int wifimgr_lib_get_WLAN11AC_BUTTON_PATH(char* out, int size) {
  return write_text(out, size, "/proc/zq2810/wlan11ac_button");
}

extern "C" int wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME(int wifi_type, char* out, int size) {
  return store::is_band(wifi_type) ? write_text(out, size, "MbssMaxStaNum") : 0;
}

extern "C" int wifimgr_lib_get_CHANNEL_SELECT_DEF(char* out, int size) {
  return write_text(out, size, "3");
}

extern "C" int wifimgr_lib_get_IEEE8021X_VAL(char* out, int size) {
  return write_text(out, size, "0");
}

extern "C" int wifimgr_lib_get_MESH_TRIGGER_WAIT(uint32_t* value) {
  return write_number(value, 15000);
}

extern "C" int wifimgr_lib_get_img_boot_flag_offset(uint32_t* value) {
  return write_number(value, 0x340000);
}

extern "C" int wifimgr_lib_get_img_commit_flag_offset(uint32_t* value) {
  return write_number(value, 0x340001);
}

extern "C" int32_t wifimgr_lib_get_ixia5gflag(void) {
  return ixia5gflag;
}

// The flag keeps its value; deliberate.
extern "C" int wifimgr_lib_set_ixia5gflag(...) {
  return 0;
}

extern "C" int wifimgr_lib_check_wifi_ixia_test(...) {
  return 0;
}

extern "C" int wifimgr_lib_set_needRebootFlag(...) {
  return 0;
}
