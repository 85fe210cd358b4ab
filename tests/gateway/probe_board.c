/* Steps of the library probe for the board.
 *
 *   constant FUNCTION | band-constant FUNCTION BAND | number FUNCTION
 *   read FUNCTION SIZE | write FUNCTION TEXT | button MODE PATH
 *   chip-id | pcie FLAG | share A B TEXT TEXT | temperature BAND
 *   address FUNCTION INTERFACE | mac INTERFACE | bridge-macs | ipv6 | flags INTERFACE MASK */
#include <stdio.h>
#include <string.h>
#include <sys/socket.h>
#include <unistd.h>

#include "library_probe.h"
#include "wifimgr_lib.h"

static void do_constant(int has_band) {
  const char* name = next();
  union {
    void* address;
    int (*plain)(char* out, int size);
    int (*of_band)(int band, char* out, int size);
  } symbol = {exported(name)};
  char text[64] = "untouched";
  const int result = has_band ? symbol.of_band(next_number(), text, sizeof text) : symbol.plain(text, sizeof text);
  printf("%s %d %s\n", name, result, text);
}

static void do_plain_constant(void) {
  do_constant(0);
}

static void do_band_constant(void) {
  do_constant(1);
}

static void do_number(void) {
  const char* name = next();
  union {
    void* address;
    int (*get)(uint32_t* value);
  } symbol = {exported(name)};
  uint32_t value = 99;
  const int result = symbol.get(&value);
  printf("%s %d %u\n", name, result, value);
}

static void do_read(void) {
  const char* name = next();
  union {
    void* address;
    int (*read)(char* buffer, int size, uint32_t* count);
  } symbol = {exported(name)};
  char buffer[256] = "";
  uint32_t count = 99;
  const int result = symbol.read(buffer, next_number(), &count);
  buffer[strcspn(buffer, "\n")] = '\0';
  printf("%s %d %u %s\n", name, result, count, buffer);
}

static void do_write(void) {
  const char* name = next();
  union {
    void* address;
    int (*write)(const char* text);
  } symbol = {exported(name)};
  printf("%s %d\n", name, symbol.write(next()));
}

static void do_button(void) {
  const int mode = next_number();
  char buffer[64] = "";
  const int result = wifimgr_lib_get_button_state(mode, next(), buffer, sizeof buffer);
  printf("button %d %s\n", result, buffer);
}

static void do_chip_id(void) {
  int id = 99;
  const int result = wifimgr_lib_get_CHIP_ID(&id);
  printf("chip-id %d %d\n", result, id);
}

static void do_pcie(void) {
  printf("pcie %d\n", wifimgr_lib_set_5G_PCIE(next_number()));
}

static void do_share(void) {
  const int a = next_number();
  const int b = next_number();
  const char* text = next();
  char command[80] = "";
  const int result = wifimgr_lib_get_WLANSHARE_CMD(command, a, b, text, next());
  printf("share %d %s\n", result, command);
}

static void do_temperature(void) {
  uint32_t value = 99;
  const int result = wifimgr_lib_get_CPU_TEMPERATURE(next_number(), &value);
  printf("temperature %d %u\n", result, value);
}

static void do_address(void) {
  const char* name = next();
  union {
    void* address;
    int (*get)(const char* interface, char* out, int size);
  } symbol = {exported(name)};
  char text[32] = "untouched";
  const int result = symbol.get(next(), text, sizeof text);
  printf("%s %d %s\n", name, result, text);
}

static void print_mac(const char* name, int result, const uint8_t* mac) {
  printf("%s %d ", name, result);
  print_bytes(mac, 6);
  printf("\n");
}

static void do_mac(void) {
  uint8_t mac[6] = {0xee, 0xee, 0xee, 0xee, 0xee, 0xee};
  const int result = wifimgr_lib_get_interface_mac(next(), mac);
  print_mac("mac", result, mac);
}

static void do_bridge_macs(void) {
  uint8_t mac[6] = {0};
  int result = wifimgr_lib_get_ethaddr(mac);
  print_mac("ethaddr", result, mac);
  memset(mac, 0, sizeof mac);
  const int file = socket(AF_INET, SOCK_DGRAM, 0);
  result = wifimgr_lib_get_ifaddr(file, mac);
  print_mac("ifaddr", result, mac);
  close(file);
}

static void do_ipv6(void) {
  uint8_t record[16];
  memset(record, 0xee, sizeof record);
  const int result = wifimgr_lib_get_br0_v6addr(record);
  printf("ipv6 %d ", result);
  print_bytes(record, sizeof record);
  printf("\n");
}

static void do_flags(void) {
  const char* interface = next();
  printf("flags %d\n", wifimgr_lib_get_test_itf_status(interface, (uint16_t)next_number()));
}

int do_board(const char* step) {
  static const struct {
    const char* step;
    void (*run)(void);
  } kSteps[] = {{"constant", do_plain_constant},
                {"band-constant", do_band_constant},
                {"number", do_number},
                {"read", do_read},
                {"write", do_write},
                {"button", do_button},
                {"chip-id", do_chip_id},
                {"pcie", do_pcie},
                {"share", do_share},
                {"temperature", do_temperature},
                {"address", do_address},
                {"mac", do_mac},
                {"bridge-macs", do_bridge_macs},
                {"ipv6", do_ipv6},
                {"flags", do_flags}};
  for (size_t i = 0; i < sizeof kSteps / sizeof kSteps[0]; ++i) {
    if (strcmp(step, kSteps[i].step) == 0) return kSteps[i].run(), 1;
  }
  return 0;
}
