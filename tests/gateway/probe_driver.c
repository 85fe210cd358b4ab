/* Steps of the library probe that ask the driver.
 *
 *   text FUNCTION | band-text FUNCTION BAND | index-text FUNCTION BAND INDEX | sized-text FUNCTION BAND INDEX SIZE
 *   station FUNCTION BAND INDEX MAC | stations INDEX | aps BAND
 *   band FUNCTION BAND               any function of a band alone
 *   survey BAND | neighbours BAND    the list of one entry; the driver's table
 *   processes
 *   ioctl REQUEST INTERFACE LENGTH | oid OID INTERFACE LENGTH | statistics INTERFACE LENGTH
 *   oui BAND BYTES | probe-response BAND BYTES MASK | probe-response-delete BAND BYTES
 *   command PREFIX INDEX ARGUMENT KIND | template BAND
 *
 * MAC and BYTES are hexadecimal, and so are records in what is printed. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "library_probe.h"
#include "wifimgr_lib.h"

enum { kMostBytes = 20000 };

static uint8_t g_bytes[kMostBytes];

size_t next_bytes(uint8_t* bytes, size_t size) {
  const char* text = next();
  size_t used = 0;
  for (; used < size && strlen(text) >= 2; text += 2) {
    const char digits[] = {text[0], text[1], '\0'};
    bytes[used++] = (uint8_t)strtoul(digits, NULL, 16);
  }
  return used;
}

void print_bytes(const uint8_t* bytes, size_t size) {
  for (size_t i = 0; i < size; ++i) printf("%02x", bytes[i]);
}

/* Functions that write a text, told apart by what they take before it. */
static void do_text(const char* kind) {
  const char* name = next();
  union {
    void* address;
    void (*plain)(char* out);
    int (*of_band)(int band, char* out);
    int (*of_index)(int band, int index, char* out);
    int (*sized)(int band, int index, char* out, unsigned size);
  } symbol = {exported(name)};
  char text[WIFIMGR_VALUE_SIZE] = "untouched";
  if (strcmp(kind, "text") == 0) {
    symbol.plain(text);
    printf("%s %s\n", name, text);
    return;
  }
  const int band = next_number();
  int result = 0;
  if (strcmp(kind, "band-text") == 0) {
    result = symbol.of_band(band, text);
  } else {
    const int index = next_number();
    result = strcmp(kind, "index-text") == 0 ? symbol.of_index(band, index, text)
                                             : symbol.sized(band, index, text, (unsigned)next_number());
  }
  text[strcspn(text, "\r\n")] = '\0';
  printf("%s %d %s\n", name, result, text);
}

static void do_station(void) {
  const char* name = next();
  union {
    void* address;
    int (*query)(int band, int index, const uint8_t* mac, uint8_t* out);
  } symbol = {exported(name)};
  const int band = next_number();
  const int index = next_number();
  uint8_t mac[6] = {0};
  next_bytes(mac, sizeof mac);
  uint8_t answer = 0xee;
  const int result = symbol.query(band, index, mac, &answer);
  printf("%s %d %02x\n", name, result, answer);
}

static void do_stations(void) {
  wifimgr_station_list list = {.count = 99};
  getMacEntryByIndex(&list, (unsigned)next_number());
  printf("stations %llu", (unsigned long long)list.count);
  for (uint64_t i = 0; i < list.count && i < WIFIMGR_STATIONS && list.count != 99; ++i) {
    printf(" ");
    print_bytes(list.mac[i], sizeof list.mac[i]);
  }
  printf("\n");
}

static void do_aps(void) {
  wifimgr_ap_count record = {{0}, {0}, {0}, {0}, {0}};
  const int result = getAPCount(next_number(), &record);
  printf("aps %d ", result);
  print_bytes((const uint8_t*)&record, sizeof record);
  printf("\n");
}

static void do_band(void) {
  const char* name = next();
  union {
    void* address;
    int (*call)(int band);
  } symbol = {exported(name)};
  const int result = symbol.call(next_number());
  printf("%s %d\n", name, result);
}

static void do_survey(void) {
  wifimgr_neighbour_list list;
  memset(&list, 0xee, sizeof list);
  const int result = wifimgr_lib_get_neighbourinfo(next_number(), &list);
  printf("survey %d %u ", result, list.count);
  print_bytes((const uint8_t*)&list.first, sizeof list.first);
  printf("\n");
}

static void do_neighbours(void) {
  memset(g_bytes, 0, sizeof g_bytes);
  const int result = wifimgr_lib_get_neighbourinfo_v1(g_bytes, next_number());
  uint32_t count;
  memcpy(&count, g_bytes, sizeof count);
  printf("neighbours %d %u", result, count);
  for (uint32_t i = 0; i < count; ++i) {
    printf(" ");
    print_bytes(g_bytes + sizeof count + 144 * i, 6);
  }
  printf("\n");
}

static void do_processes(void) {
  wifimgr_process_info info;
  memset(&info, 0xee, sizeof info);
  const int result = wifimgr_lib_get_wifi_process_info(&info);
  printf("processes %d %d", result, info.count);
  for (int i = 0; result == 0 && i < WIFIMGR_PROCESSES && info.process[i].name[0] != '\0'; ++i) {
    const wifimgr_process* process = &info.process[i];
    printf(" %.16s=%u/%d", process->name, process->pid, process->running);
  }
  printf("\n");
}

/* Requests with the caller's own bytes: printed as the driver left them. */
static void do_request(const char* kind) {
  const int number = strcmp(kind, "statistics") == 0 ? 0 : next_number();
  const char* interface = next();
  const uint16_t length = (uint16_t)next_number();
  memset(g_bytes, 0, sizeof g_bytes);
  int result = 0;
  if (strcmp(kind, "ioctl") == 0) {
    result = wifimgr_lib_ioctl(number, g_bytes, interface, length);
  } else if (strcmp(kind, "oid") == 0) {
    result = wifimgr_lib_OidQueryInformation((uint16_t)number, interface, g_bytes, length);
  } else {
    result = wifimgr_lib_get_WIFI_STATS(interface, g_bytes, length);
  }
  printf("%s %d ", kind, result);
  print_bytes(g_bytes, length);
  printf("\n");
}

static void do_payload(const char* kind) {
  const int band = next_number();
  const uint16_t length = (uint16_t)next_bytes(g_bytes, sizeof g_bytes);
  int result = 0;
  if (strcmp(kind, "oui") == 0) {
    result = wifimgr_lib_set_OUI_FILTER(band, g_bytes, length);
  } else if (strcmp(kind, "probe-response") == 0) {
    result = wifimgr_lib_proberesp_execute(band, g_bytes, length, next_number());
  } else {
    result = wifimgr_lib_proberesp_delete(band, g_bytes, length);
  }
  printf("%s %d\n", kind, result);
}

static void do_command(void) {
  const char* prefix = next();
  const int index = next_number();
  const char* argument = next();
  char text[100] = "untouched";
  const int result = wifimgr_lib_set_WIFI_CMD(prefix, index, sizeof text, argument, text, next_number());
  printf("command %d %s\n", result, text);
}

static void do_template(void) {
  char text[100] = "untouched\n";
  const int result = wifimgr_lib_get_WLAN_SCRIPT(next_number(), sizeof text, text);
  printf("template %d %s", result, text);
}

static int is_one_of(const char* step, const char* const* kinds) {
  for (; *kinds != NULL; ++kinds) {
    if (strcmp(step, *kinds) == 0) return 1;
  }
  return 0;
}

int do_driver(const char* step) {
  static const char* const kTexts[] = {"text", "band-text", "index-text", "sized-text", NULL};
  static const char* const kRequests[] = {"ioctl", "oid", "statistics", NULL};
  static const char* const kPayloads[] = {"oui", "probe-response", "probe-response-delete", NULL};
  static const struct {
    const char* step;
    void (*run)(void);
  } kSteps[] = {{"station", do_station},     {"stations", do_stations}, {"aps", do_aps},
                {"band", do_band},           {"survey", do_survey},     {"neighbours", do_neighbours},
                {"processes", do_processes}, {"command", do_command},   {"template", do_template}};
  if (is_one_of(step, kTexts)) return do_text(step), 1;
  if (is_one_of(step, kRequests)) return do_request(step), 1;
  if (is_one_of(step, kPayloads)) return do_payload(step), 1;
  for (size_t i = 0; i < sizeof kSteps / sizeof kSteps[0]; ++i) {
    if (strcmp(step, kSteps[i].step) == 0) return kSteps[i].run(), 1;
  }
  return 0;
}
