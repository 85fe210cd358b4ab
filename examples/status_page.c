/* A page with what both radios are doing right now: driver, board and settings, all asked through the library.
 *
 *   status_page            once
 *   status_page SECONDS    again and again, until it is interrupted */
#define _DEFAULT_SOURCE
#include <signal.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "attach_store.h"

enum { kBands = 2, kMostSsids = 8, kMostShownNeighbours = 6, kUp = 1 };

/* The neighbour table is the driver's own. This is how the simulated gateway's driver lays it out. */
struct neighbour {
  uint8_t bssid[6];
  uint16_t channel;
  int32_t signal;
  uint32_t age;
  uint8_t ssid_length;
  uint8_t wps;
  char ssid[34];
  char security[32];
  char mode[12];
  uint8_t rest[48];
};
struct neighbour_table {
  uint32_t count;
  struct neighbour neighbour[128];
};
_Static_assert(sizeof(struct neighbour_table) == WIFIMGR_NEIGHBOUR_TABLE_SIZE, "the buffer that the query fills");

/* Everything is asked before the first line is printed: the library prints some of its complaints itself. */
struct ssid {
  char interface[16];
  char name[WIFIMGR_VALUE_SIZE];
  bool up;
  wifimgr_station_list stations;
  uint8_t can_11k[WIFIMGR_STATIONS];
  uint32_t wps_state;
  char wps_peer[18];
  char wps_pin[12];
};
struct radio {
  char address[18];
  char channel[12];
  char noise[12];
  char load[12];
  uint32_t temperature;
  bool has_temperature;
  int ssid_count;
  struct ssid ssid[kMostSsids];
  struct neighbour_table neighbours;
};
struct page {
  char bridge_address[18];
  char bridge_ip[32];
  int chip_package;
  wifimgr_process_info processes;
  struct radio radio[kBands];
};

static volatile sig_atomic_t g_interrupted;

static void interrupt(int number) {
  (void)number;
  g_interrupted = 1;
}

/* A value that was not set since the file was loaded still ends in its line end. */
static void cut_line_end(char* text) {
  text[strcspn(text, "\r\n")] = '\0';
}

static void ask_ssid(int band, int number, struct ssid* ssid) {
  snprintf(ssid->interface, sizeof ssid->interface, band == 0 ? "ra%d" : "rai%d", number);
  wifimgr_lib_get_ssid((uint32_t)band, number + 1, ssid->name, sizeof ssid->name);
  cut_line_end(ssid->name);
  ssid->up = wifimgr_lib_get_test_itf_status(ssid->interface, kUp) == 1;
  getMacEntryByIndex(&ssid->stations, (unsigned)(band * kMostSsids + number));
  for (uint64_t i = 0; i < ssid->stations.count && i < WIFIMGR_STATIONS; ++i) {
    wifimgr_lib_get_Sta11kCap(band, number + 1, ssid->stations.mac[i], &ssid->can_11k[i]);
  }
  wifimgr_lib_get_WpsStatus(band, &ssid->wps_state, ssid->wps_peer, number);
  wifimgr_lib_get_wscPinCode(band, number + 1, ssid->wps_pin);
}

static void ask_radio(int band, struct radio* radio) {
  wifimgr_lib_get_itf_hwaddr(band == 0 ? "ra0" : "rai0", radio->address, sizeof radio->address);
  wifimgr_lib_get_CHANNEL(band, radio->channel);
  wifimgr_lib_get_Noise(band, -1, radio->noise);
  wifimgr_lib_get_chanLoad(band, -1, radio->load);
  radio->has_temperature = wifimgr_lib_get_CPU_TEMPERATURE(band, &radio->temperature) == 0;
  if (wifimgr_lib_get_neighbourinfo_v1(&radio->neighbours, band) != 0) radio->neighbours.count = 0;

  char count[WIFIMGR_VALUE_SIZE] = "";
  wifimgr_lib_get_bssidnum(band, -1, count, sizeof count);
  radio->ssid_count = atoi(count);
  if (radio->ssid_count > kMostSsids) radio->ssid_count = kMostSsids;
  for (int i = 0; i < radio->ssid_count; ++i) ask_ssid(band, i, &radio->ssid[i]);
}

static void ask(struct page* page) {
  memset(page, 0, sizeof *page);
  wifimgr_lib_get_itf_hwaddr("br0", page->bridge_address, sizeof page->bridge_address);
  get_onu_ipaddr(page->bridge_ip);
  wifimgr_lib_get_CHIP_ID(&page->chip_package);
  wifimgr_lib_get_wifi_process_info(&page->processes);
  for (int band = 0; band < kBands; ++band) ask_radio(band, &page->radio[band]);
}

static const char* or_dash(const char* text) {
  return *text == '\0' ? "-" : text;
}

static void print_mac(const uint8_t mac[6]) {
  printf("%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
}

/* Names come from the air and may hold anything; a terminal gets only what is text. */
static void print_name(const char* name, size_t length) {
  putchar('"');
  for (size_t i = 0; i < length && name[i] != '\0'; ++i) {
    putchar((unsigned char)name[i] < ' ' || name[i] == 0x7f ? '?' : name[i]);
  }
  putchar('"');
}

static void print_ssid(const struct ssid* ssid) {
  printf("  %-5s ", ssid->interface);
  print_name(ssid->name, sizeof ssid->name);
  printf("  %s\n", ssid->up ? "up" : "down");
  printf("        WPS state %u%s%s, PIN %s\n", ssid->wps_state, ssid->wps_peer[0] == '\0' ? "" : " with ",
         ssid->wps_peer, or_dash(ssid->wps_pin));
  for (uint64_t i = 0; i < ssid->stations.count && i < WIFIMGR_STATIONS; ++i) {
    printf("        station ");
    print_mac(ssid->stations.mac[i]);
    printf("  802.11k %s\n", ssid->can_11k[i] != 0 ? "yes" : "no");
  }
}

static void print_radio(const char* name, const struct radio* radio) {
  printf("\n%s  %s  channel %s  noise %s dBm  load %s %%", name, or_dash(radio->address), or_dash(radio->channel),
         or_dash(radio->noise), or_dash(radio->load));
  if (radio->has_temperature) printf("  %u C", radio->temperature);
  putchar('\n');
  for (int i = 0; i < radio->ssid_count; ++i) print_ssid(&radio->ssid[i]);
  const uint32_t count = radio->neighbours.count;
  printf("  neighbours: %u\n", count);
  for (uint32_t i = 0; i < count && i < kMostShownNeighbours; ++i) {
    const struct neighbour* neighbour = &radio->neighbours.neighbour[i];
    printf("        ");
    print_mac(neighbour->bssid);
    printf("  channel %3u  %4d dBm  ", neighbour->channel, neighbour->signal);
    print_name(neighbour->ssid, neighbour->ssid_length);
    putchar('\n');
  }
}

static void print(const struct page* page) {
  printf("gateway br0 %s  %s  chip package %d\n", or_dash(page->bridge_address), or_dash(page->bridge_ip),
         page->chip_package);
  printf("processes:");
  for (int i = 0; i < WIFIMGR_PROCESSES && page->processes.process[i].name[0] != '\0'; ++i) {
    const wifimgr_process* process = &page->processes.process[i];
    printf(" %.*s (%u%s)", (int)sizeof process->name, process->name, process->pid,
           process->running != 0 ? "" : ", stopped");
  }
  putchar('\n');
  print_radio("2.4G", &page->radio[0]);
  print_radio("5G", &page->radio[1]);
  fflush(stdout);
}

/* Attaching leaves alone what other processes hold; only where nobody has a store yet this one loads it. */
static int use_store(void) {
  if (attach_store() == 0) return 0;
  return wifimgr_lib_init(0) == 0 && wifimgr_lib_init(1) == 0 ? 0 : -1;
}

int main(int argc, char** argv) {
  char* end = NULL;
  const long seconds = argc == 2 ? strtol(argv[1], &end, 10) : 0;
  if (argc > 2 || (argc == 2 && (*end != '\0' || seconds < 1 || seconds > 3600))) {
    fprintf(stderr, "usage: status_page [SECONDS]\nPrints the page once, or every 1 to 3600 seconds.\n");
    return 2;
  }
  if (use_store() != 0) {
    fprintf(stderr, "status_page: the dat files cannot be loaded\n");
    return 1;
  }
  static struct page page;
  const struct sigaction action = {.sa_handler = interrupt};
  if (seconds > 0) {
    sigaction(SIGINT, &action, NULL);
    sigaction(SIGTERM, &action, NULL);
  }
  do {
    ask(&page);
    if (seconds > 0 && isatty(STDOUT_FILENO)) printf("\033[H\033[2J");
    print(&page);
    if (seconds > 0 && g_interrupted == 0) sleep((unsigned)seconds);
  } while (seconds > 0 && g_interrupted == 0);
  return 0;
}
