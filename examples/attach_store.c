/* A second process that sees the live store of both bands, unsaved changes included. */
#define _DEFAULT_SOURCE
#include "attach_store.h"

#include <stdio.h>
#include <string.h>

static void show(int band, const char* name) {
  char ssid[WIFIMGR_VALUE_SIZE] = "", channel[WIFIMGR_VALUE_SIZE] = "", beacon[WIFIMGR_VALUE_SIZE] = "";
  wifimgr_lib_get_ssid((uint32_t)band, 1, ssid, sizeof ssid);
  wifimgr_lib_get_channel(band, -1, channel, sizeof channel);
  wifimgr_lib_get_beaconPeriod(band, -1, beacon, sizeof beacon);
  /* Values that were not set since the file was loaded still end in its line end. */
  ssid[strcspn(ssid, "\r\n")] = '\0';
  channel[strcspn(channel, "\r\n")] = '\0';
  beacon[strcspn(beacon, "\r\n")] = '\0';
  printf("%-5s SSID 1 \"%s\", channel %s, beacon period %s\n", name, ssid, channel, beacon);
}

int main(void) {
  if (attach_store() != 0) {
    fprintf(stderr, "no store to attach to: no process has initialised the bands yet\n");
    return 1;
  }
  show(0, "2.4G");
  show(1, "5G");
  return 0;
}
