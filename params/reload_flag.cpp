// The band's reload flag: "1" when the next commit must reload the driver module.
#include "store/band.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

extern "C" int wifimgr_lib_get_reloadFlag(uint32_t wifi_type, char* buf, uint32_t len) {
  trace::enter(__func__);
  if (buf == nullptr) return trace::fail(__func__);
  if (read_attr(store::Band(wifi_type), -1, "ReloadFlag", buf, len) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_set_reloadFlag(uint32_t wifi_type, const char* value) {
  trace::enter(__func__);
  if (value == nullptr) return trace::fail(__func__);
  if (update_attr(store::Band(wifi_type), -1, "ReloadFlag", value) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}
