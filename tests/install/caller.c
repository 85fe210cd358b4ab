/* What an integrator writes first: one program for both languages that links the installed library. */
#include <wifimgr_lib.h>

#include <stdio.h>
#include <string.h>

/* What takes anything is called with arguments and without, as callers always did. */
static int takes_anything(void) {
  return wifimgr_lib_set_AP2040Rescan(0, -1, "1") + wifimgr_lib_set_AP2040Rescan() + wifimgr_lib_get_max_sta_num_ui(1) +
         wifimgr_lib_set_ixia5gflag(1) + wifimgr_lib_check_wifi_ixia_test() + wifimgr_lib_set_needRebootFlag(1, 2) +
         wifimgr_lib_get_wps_info("anything", 0);
}

int main(void) {
  char names[7][WIFIMGR_ATTR_NAME_SIZE];
  if (wifimgr_lib_get_wlan_script_attr(names) != 7 || strcmp(names[6], "IgmpSnEnable") != 0) return 1;
  if (takes_anything() != 0) return 2;
#ifdef __cplusplus
  puts("C++");
#else
  puts("C");
#endif
  return 0;
}
