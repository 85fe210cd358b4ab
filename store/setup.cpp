// What a management process calls first.
#include <cstdio>
#include <cstring>

#include "store/band.h"
#include "store/band_value.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/trace.h"

int32_t pre_wlan_state[2] = {0, 0};

extern "C" int wifimgr_lib_get_bssidnum(int wifi_type, int index, char* buf, unsigned len) {
  return store::get_band_value(wifi_type, index, buf, len, __func__, "BssidNum");
}

extern "C" int wifimgr_lib_init(int wifi_type) {
  trace::enter(__func__);
  if (creat_shm_from_datafile(wifi_type) != 0) return trace::fail(__func__, "Initialize the share memory failed!");
  char count[store::kValueSize] = "";
  if (wifimgr_lib_get_bssidnum(wifi_type, -1, count, sizeof count) != 0) return trace::fail(__func__);
  pre_wlan_state[wifi_type] = store::decimal(count);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_version(int wifi_type, char* buf, int len) {
  trace::enter(__func__);
  if (buf == nullptr) return trace::fail(__func__);
  if (len > 0) std::memset(buf, 0, static_cast<size_t>(len));
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand).as(-1);
  if (len > 0) (void)std::snprintf(buf, static_cast<size_t>(len), "%s", "7915");
  return trace::success(__func__);
}
