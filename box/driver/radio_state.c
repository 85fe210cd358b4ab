#include "box/driver/radio_state.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "box/driver/bss_settings.h"
#include "sim/driver/lists.h"
#include "sim/driver/reading.h"
#include "sim/driver/state.h"

enum { kWpsOff = 0, kWpsIdle = 1, kWpsOpen = 2, kMostChannel = 196, kMostPinDigits = 10, kMostKey = 64 };

static const char kNobody[] = "00:00:00:00:00:00";
// The phone that enrols when nobody says who.
static const char kSomebody[] = "02:5a:10:00:00:57";

static const char* const kNeighbours[kBands] = {
    "02:6e:40:24:00:01 1 ~-71 WPA2PSK/AES 1 0 Corner%20Bakery\n"
    "02:6e:40:24:00:02 6 ~-64 WPA1PSKWPA2PSK/TKIPAES 0 0 Neighbour-Two\n"
    "02:6e:40:24:00:03 11 ~-83 OPEN/NONE 0 0 Station-Square\n",
    "02:6e:40:50:00:01 36 ~-77 WPA2PSK/AES 1 0 Corner%20Bakery-5G\n"
    "02:6e:40:50:00:02 44 ~-69 WPA3PSK/AES 0 0 Neighbour-Two\n"
    "02:6e:40:50:00:03 100 ~-88 WPA2/AES 0 0 %\n",
};

// What a station knows of the network that it joins: it has to associate anew when that changes.
static const char* const kNetworkKeys[] = {"SSID",         "AuthMode", "EncrypType", "WPAPSK", "IEEE8021X",
                                           "DefaultKeyID", "Key1",     "Key2",       "Key3",   "Key4"};

static void bss_name(char name[kNameRoom], int band, int number) {
  snprintf(name, kNameRoom, "%s%d", kBandTraits[band].bss_prefix, number);
}

static void list_name(char name[32], const char* kind, int band) {
  snprintf(name, 32, "%s-%s", kind, kBandTraits[band].bss_prefix);
}

// Takes the text over.
static int store_and_free(const char* folder, const char* name, char* text) {
  const int error = text == NULL ? ENOMEM : store_state(folder, name, text);
  free(text);
  return error;
}

// Hears every neighbour of a list of lines now.
static int hear(int band, char* lines) {
  Text text = {NULL, 0, 0, false};
  char name[32];
  char* rest = lines;
  Neighbour neighbour;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    char fresh[kMostListLine];
    if (!parse_neighbour(line, &neighbour)) continue;
    neighbour.seen_ms = monotonic_ms();
    format_neighbour(&neighbour, fresh);
    add_text(&text, fresh);
    add_text(&text, "\n");
  }
  free(lines);
  list_name(name, "neighbours", band);
  return store_and_free(DRIVER_LISTS, name, finish_text(&text));
}

static int hear_defaults(int band) {
  Text text = {NULL, 0, 0, false};
  add_text(&text, kNeighbours[band]);
  return hear(band, finish_text(&text));
}

static int take_dat(int band, const char* dat, int bss_count, bool is_fresh) {
  int error = 0;
  for (int i = 0; i < bss_count && error == 0; ++i) {
    char name[kNameRoom];
    bss_name(name, band, i);
    char* const before = is_fresh ? NULL : read_state(DRIVER_SETTINGS, name);
    error = store_and_free(DRIVER_SETTINGS, name, settings_from_dat(dat, band == 1, i + 1, before));
    free(before);
  }
  return error;
}

int start_radio(int band, const char* dat, int bss_count) {
  char name[32];
  const int error = take_dat(band, dat, bss_count, true);
  list_name(name, "stations", band);
  if (error != 0) return error;
  const int cleared = store_state(DRIVER_LISTS, name, "");
  return cleared != 0 ? cleared : hear_defaults(band);
}

int read_dat_anew(int band, const char* dat, int bss_count) {
  return take_dat(band, dat, bss_count, false);
}

int stations_leave(int band, const char* interface) {
  Text text = {NULL, 0, 0, false};
  char name[32];
  char* const stations = read_radio_list("stations", kBandTraits[band].bss_prefix);
  char* rest = stations;
  Station station;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    if (!parse_station(line, &station) || strcmp(station.interface, interface) == 0) continue;
    add_text(&text, line);
    add_text(&text, "\n");
  }
  free(stations);
  list_name(name, "stations", band);
  return store_and_free(DRIVER_LISTS, name, finish_text(&text));
}

static int change_one(const char* interface, const char* key, const char* value) {
  char* const before = read_state(DRIVER_SETTINGS, interface);
  const int error = store_and_free(DRIVER_SETTINGS, interface, settings_with(before, key, value));
  free(before);
  return error;
}

typedef struct Bss {
  int band;
  const char* interface;
  int bss_count;
} Bss;

static int change(const Bss* bss, const char* key, const char* value) {
  int error = 0;
  if (!is_radio_wide(key, strlen(key))) return change_one(bss->interface, key, value);
  for (int i = 0; i < bss->bss_count && error == 0; ++i) {
    char name[kNameRoom];
    bss_name(name, bss->band, i);
    error = change_one(name, key, value);
  }
  return error;
}

static long number_setting(const Bss* bss, const char* key) {
  char* const settings = read_state(DRIVER_SETTINGS, bss->interface);
  const long number = number_of(settings, key);
  free(settings);
  return number;
}

static int change_number(const Bss* bss, const char* key, long number) {
  char text[24];
  snprintf(text, sizeof text, "%ld", number);
  return change(bss, key, text);
}

// Only a session beyond the open one has a peer, and such a one is set from outside.
static int set_wps_state(const Bss* bss, long state) {
  const int error = change_number(bss, "WpsState", state);
  char* const settings = read_state(DRIVER_SETTINGS, bss->interface);
  const bool had_peer = setting_of(settings, "WpsPeer") != NULL;
  free(settings);
  if (error != 0 || (!had_peer && state <= kWpsOpen)) return error;
  const char* const mac = state > kWpsOpen ? kSomebody : kNobody;
  const int peer_error = change(bss, "WpsPeer", mac);
  return peer_error != 0 ? peer_error : change(bss, "WpsStation", mac);
}

static bool is_wps_on(const Bss* bss) {
  return number_setting(bss, "WscConfMode") != 0;
}

static int end_session(const Bss* bss, const char* value) {
  (void)value;
  const int error = set_wps_state(bss, is_wps_on(bss) ? kWpsIdle : kWpsOff);
  return error != 0 ? error : change(bss, "WpsStatus", "0");
}

static int open_session(const Bss* bss, const char* value) {
  if (atol(value) == 0 || !is_wps_on(bss)) return 0;
  const int error = set_wps_state(bss, kWpsOpen);
  return error != 0 ? error : change(bss, "WpsStatus", "1");
}

static int follow_mode(const Bss* bss, const char* value) {
  if (!is_wps_on(bss)) return end_session(bss, value);
  return number_setting(bss, "WpsState") == kWpsOff ? set_wps_state(bss, kWpsIdle) : 0;
}

static int take_pin(const Bss* bss, const char* value) {
  return change(bss, "WpsPin", value);
}

static int make_pin(const Bss* bss, const char* value) {
  if (atol(value) == 0) return 0;
  char* const settings = read_state(DRIVER_SETTINGS, bss->interface);
  char* const old = plain_setting(settings, "WpsPin");
  char pin[9];
  do {
    format_pin(random_number() % 10000000, pin);
  } while (old != NULL && strcmp(pin, old) == 0);
  free(old);
  free(settings);
  return change(bss, "WpsPin", pin);
}

// Out of the box: not configured, no session.
static int reset_wps(const Bss* bss, const char* value) {
  if (atol(value) == 0) return 0;
  const int error = change(bss, "WscConfStatus", "1");
  return error != 0 ? error : end_session(bss, value);
}

static int scan(const Bss* bss, const char* value) {
  if (strcmp(value, "1") != 0) return 0;
  return hear(bss->band, read_radio_list("neighbours", kBandTraits[bss->band].bss_prefix));
}

// What a command does beside keeping its value.
static const struct {
  const char* key;
  int (*carry_out)(const Bss* bss, const char* value);
} kCommands[] = {
    {"WscConfMode", follow_mode}, {"WscGetConf", open_session}, {"WscStop", end_session}, {"WscOOB", reset_wps},
    {"WscPinCode", take_pin},     {"WscGenPinCode", make_pin},  {"PartialScan", scan},
};

static bool is_number(const char* text, size_t most_digits) {
  const size_t digits = strspn(text, "0123456789");
  return digits > 0 && digits <= most_digits && text[digits] == '\0';
}

// The value that the driver keeps, in `room`, or the value itself; null when it refuses.
static const char* accepted(int band, const char* key, const char* value, char room[16]) {
  if (strcmp(key, "WscPinCode") == 0) {
    return is_number(value, kMostPinDigits) && strtoul(value, NULL, 10) <= UINT32_MAX ? value : NULL;
  }
  if (strcmp(key, "Channel") != 0) return value;
  if (!is_number(value, 15) || strtoul(value, NULL, 10) > kMostChannel) return NULL;
  snprintf(room, 16, "%d", channel_for(band == 1, atol(value)));
  return room;
}

static bool is_joined_by(const char* key) {
  for (size_t i = 0; i < sizeof kNetworkKeys / sizeof kNetworkKeys[0]; ++i) {
    if (strcmp(key, kNetworkKeys[i]) == 0) return true;
  }
  return false;
}

static int set_key(const Bss* bss, const char* key, const char* value) {
  char room[16];
  const char* const kept = accepted(bss->band, key, value, room);
  if (kept == NULL) return EINVAL;
  char* const settings = read_state(DRIVER_SETTINGS, bss->interface);
  char* const old = plain_setting(settings, key);
  const bool is_new = old == NULL || strcmp(old, kept) != 0;
  free(old);
  free(settings);
  int error = change(bss, key, kept);
  for (size_t i = 0; i < sizeof kCommands / sizeof kCommands[0] && error == 0; ++i) {
    if (strcmp(key, kCommands[i].key) == 0) error = kCommands[i].carry_out(bss, value);
  }
  if (error == 0 && is_new && is_joined_by(key)) error = stations_leave(bss->band, bss->interface);
  return error;
}

int set_private(int band, const char* interface, int bss_count, const char* argument) {
  const Bss bss = {band, interface, bss_count};
  const size_t length = strcspn(argument, "=");
  char key[kMostKey];
  if (length == 0 || length >= sizeof key || memchr(argument, '\n', length) != NULL) return EINVAL;
  memcpy(key, argument, length);
  key[length] = '\0';
  return set_key(&bss, key, argument[length] == '=' ? argument + length + 1 : "");
}

char* site_survey(int band) {
  Text text = {NULL, 0, 0, false};
  Text lines = {NULL, 0, 0, false};
  char* const list = read_radio_list("neighbours", kBandTraits[band].bss_prefix);
  char* rest = list;
  char row[160];
  unsigned count = 0;
  Neighbour neighbour;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    char bssid[kMacTextSize];
    char channel[12];
    char signal[24];
    char ssid[kMostSsidBytes + 1] = "";
    if (!parse_neighbour(line, &neighbour)) continue;
    // A survey is a table of text: what would break its lines shows as dots.
    for (size_t i = 0; i < neighbour.ssid_length; ++i) {
      const uint8_t byte = neighbour.ssid[i];
      ssid[i] = byte < ' ' || byte == 0x7f ? '.' : (char)byte;
    }
    format_mac(neighbour.bssid, bssid);
    snprintf(channel, sizeof channel, "%u", neighbour.channel);
    snprintf(signal, sizeof signal, "%ld",
             reading_at(neighbour.signal, neighbour.seen_ms, neighbour.bssid[kMacSize - 1]));
    snprintf(row, sizeof row, "%-4s%-33s%-19s%-24s%-8s%-4s\n", channel, ssid, bssid, neighbour.security, signal,
             neighbour.wps != 0 ? "YES" : "NO");
    add_text(&lines, row);
    ++count;
  }
  free(list);
  snprintf(row, sizeof row, "\nTotal %u\n%-4s%-33s%-19s%-24s%-8s%-4s\n", count, "Ch", "SSID", "BSSID", "Security",
           "Signal", "WPS");
  add_text(&text, row);
  char* const all = finish_text(&lines);
  if (all != NULL) add_text(&text, all);
  free(all);
  return finish_text(&text);
}
