// The process-wide command flags, and answers that are the same on every gateway. None of them traces.
#include <cstdint>

#include "wifimgr_lib.h"

int32_t _11N_CMDflag = -1;
int32_t _11AC_CMDflag = -1;

namespace {

// -1 is "not set yet", which callers see as 0.
int32_t shown(int32_t flag) {
  return flag == -1 ? 0 : flag;
}

}  // namespace

extern "C" int32_t wifimgr_lib_get_11N_CMDflag(void) {
  return shown(_11N_CMDflag);
}

extern "C" int32_t wifimgr_lib_get_11AC_CMDflag(void) {
  return shown(_11AC_CMDflag);
}

extern "C" int wifimgr_lib_set_11N_CMDflag(uint32_t value) {
  _11N_CMDflag = static_cast<int32_t>(value);
  return 0;
}

extern "C" int wifimgr_lib_set_11AC_CMDflag(uint32_t value) {
  _11AC_CMDflag = static_cast<int32_t>(value);
  return 0;
}

extern "C" int wifimgr_lib_get_wlan_igmp_snooping_support(void) {
  return 1;
}

extern "C" int wifimgr_lib_set_AP2040Rescan(...) {
  return 0;
}

extern "C" int wifimgr_lib_get_max_sta_num_ui(...) {
  return 0;
}

extern "C" int wifimgr_lib_set_iswps5gstart_val(uint32_t* variable, uint32_t value) {
  if (variable != nullptr) *variable = value;
  return 0;
}
