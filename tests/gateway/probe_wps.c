/* Steps of the library probe for WPS.
 *
 *   session FUNCTION SSID | session-of BAND SSID | status BAND | access BAND SSID
 *   do FUNCTION BAND SSID            a setter without a value
 *   service FUNCTION PATH BAND SSID | service-start PATH BAND SSID METHOD PIN
 *   daemon BAND SSID ENABLE
 *   nothing FUNCTION                 one that does nothing */
#include <stdio.h>
#include <string.h>

#include "library_probe.h"
#include "wifimgr_lib.h"

static void do_session(void) {
  const char* name = next();
  union {
    void* address;
    void (*query)(uint32_t* state, char* peer, int ssid);
  } symbol = {exported(name)};
  uint32_t state = 99;
  char peer[18] = "untouched";
  symbol.query(&state, peer, next_number());
  printf("%s %u %s\n", name, state, peer);
}

static void do_session_of(void) {
  const int band = next_number();
  uint32_t state = 99;
  char peer[18] = "untouched";
  const int result = wifimgr_lib_get_WpsStatus(band, &state, peer, next_number());
  printf("session %d %u %s\n", result, state, peer);
}

static void do_status(void) {
  uint16_t status = 0xeeee;
  const int result = wifimgr_lib_get_WPS_STATUS(next_number(), &status);
  printf("status %d %u\n", result, status);
}

static void do_access(void) {
  const int band = next_number();
  wifimgr_wps_access_list list;
  memset(&list, 0xee, sizeof list);
  const int result = wifimgr_lib_get_WPS_ACL_INFO(band, next_number(), &list);
  printf("access %d ", result);
  print_bytes(list.header, sizeof list.header);
  for (size_t i = 0; i < 3; ++i) {
    printf(" ");
    print_bytes(list.entry[i].mac, sizeof list.entry[i].mac);
    printf("=%u", list.entry[i].value);
  }
  printf("\n");
}

static void do_plain_setter(void) {
  const char* name = next();
  union {
    void* address;
    uint64_t (*set)(uint32_t band, int32_t ssid);
  } symbol = {exported(name)};
  const int band = next_number();
  const uint64_t result = symbol.set((uint32_t)band, next_number());
  printf("%s %d\n", name, (int)result);
}

static void do_service(void) {
  const char* name = next();
  union {
    void* address;
    int (*write)(const char* path, int band, int ssid);
  } symbol = {exported(name)};
  const char* path = next();
  const int band = next_number();
  const int result = symbol.write(path, band, next_number());
  printf("%s %d\n", name, result);
}

static void do_service_start(void) {
  const char* path = next();
  const int band = next_number();
  const int ssid = next_number();
  uint32_t start[2];
  start[0] = (uint32_t)next_number();
  start[1] = (uint32_t)next_number();
  printf("service-start %d\n", wifimgr_lib_service_start_wps(path, band, ssid, start));
}

static void do_daemon(void) {
  const int band = next_number();
  const int ssid = next_number();
  printf("daemon %d\n", wifimgr_lib_service_wpsstart_wifiupnp(band, ssid, next()));
}

static void do_nothing(void) {
  const char* name = next();
  union {
    void* address;
    int (*call)(int anything);
  } symbol = {exported(name)};
  printf("%s %d\n", name, symbol.call(0));
}

int do_wps(const char* step) {
  static const struct {
    const char* step;
    void (*run)(void);
  } kSteps[] = {{"session", do_session}, {"session-of", do_session_of},
                {"status", do_status},   {"access", do_access},
                {"do", do_plain_setter}, {"service", do_service},
                {"daemon", do_daemon},   {"service-start", do_service_start},
                {"nothing", do_nothing}};
  for (size_t i = 0; i < sizeof kSteps / sizeof kSteps[0]; ++i) {
    if (strcmp(step, kSteps[i].step) == 0) return kSteps[i].run(), 1;
  }
  return 0;
}
