/* A second process that sees the live store of both bands, unsaved changes included.
 *
 * It must not call wifimgr_lib_init: that clears the band for everybody and loads the file again. Instead it attaches
 * the band's segment itself and hands the address to the library. */
#define _DEFAULT_SOURCE
#include <stdio.h>
#include <string.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include "wifimgr_lib.h"

/* Returns the address of a segment that some process has initialised, or null. */
static char* attach(key_t key) {
  int id = shmget(key, 0, 0666);
  if (id < 0) return NULL;
  void* address = shmat(id, NULL, 0);
  return address == (void*)-1 ? NULL : address;
}

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
  shm_addr_2_4g = attach(0x12345);
  shm_addr_5g = attach(0x12346);
  if (shm_addr_2_4g == NULL || shm_addr_5g == NULL) {
    fprintf(stderr, "no store to attach to: no process has initialised the bands yet\n");
    return 1;
  }
  show(0, "2.4G");
  show(1, "5G");
  return 0;
}
