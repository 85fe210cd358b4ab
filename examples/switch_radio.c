/* Switches a radio off or on, or restarts its interfaces without touching the dat file.
 *
 * usage: switch_radio off|on|restart 0|1     (0 is 2.4G, 1 is 5G)
 *
 * A helper beside the management process: it attaches to the live store and leaves it as it is. */
#define _DEFAULT_SOURCE
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "attach_store.h"

/* Restarts the enabled SSIDs' interfaces on br-lan, with as many as there are now. */
static int restart(uint32_t band) {
  char count[WIFIMGR_VALUE_SIZE] = "";
  if (wifimgr_lib_get_bssidnum((int)band, -1, count, sizeof count) != 0) return 1;
  int ssids = (int)strtol(count, NULL, 10);
  wifimgr_restart_request request = {.band = band, .old_count = ssids, .new_count = (uint32_t)ssids};
  for (int ssid = 1; ssid <= ssids && ssid <= WIFIMGR_FIELDS; ++ssid) {
    char enabled[WIFIMGR_VALUE_SIZE] = "";
    wifimgr_lib_get_enableSsid(band, ssid, enabled, sizeof enabled);
    if (strtol(enabled, NULL, 10) == 1) request.up_mask |= 1U << (ssid - 1);
  }
  return (int)wifimgr_lib_restartInterface(&request);
}

int main(int argc, char** argv) {
  if (argc != 3 || (strcmp(argv[2], "0") != 0 && strcmp(argv[2], "1") != 0)) {
    fprintf(stderr, "usage: switch_radio off|on|restart 0|1\n");
    return 2;
  }
  if (attach_store() != 0) {
    fprintf(stderr, "switch_radio: no store to attach to: no process has initialised the bands yet\n");
    return 1;
  }
  uint32_t band = (uint32_t)(argv[2][0] - '0');
  setvbuf(stdout, NULL, _IOLBF, 0);
  if (strcmp(argv[1], "off") == 0) return wifimgr_lib_wifi_onoff(band, 0);
  if (strcmp(argv[1], "on") == 0) return wifimgr_lib_wifi_onoff(band, 1);
  if (strcmp(argv[1], "restart") == 0) return restart(band);
  fprintf(stderr, "usage: switch_radio off|on|restart 0|1\n");
  return 2;
}
