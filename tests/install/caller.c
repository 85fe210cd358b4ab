/* What an integrator writes first: one program for both languages that links the installed library. */
#include <wifimgr_lib.h>

#include <stdio.h>
#include <string.h>

int main(void) {
  char names[7][WIFIMGR_ATTR_NAME_SIZE];
  if (wifimgr_lib_get_wlan_script_attr(names) != 7 || strcmp(names[6], "IgmpSnEnable") != 0) return 1;
#ifdef __cplusplus
  puts("C++");
#else
  puts("C");
#endif
  return 0;
}
