#include "box/driver/bss_settings.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "box/driver/dat.h"
#include "sim/driver/state.h"

enum { kAutomatic2_4G = 6, kAutomatic5G = 36 };

static const char* const kRadioKeys[] = {"WirelessMode", "TxPower",    "CountryRegion", "CountryRegionABand",
                                         "BeaconPeriod", "DtimPeriod", "HT_BW",         "VHT_BW"};
static const char* const kReportKeys[] = {"Noise", "ChannelLoad", "Temperature", "WpsStatus", "WpsStation"};
static const char* const kSsidKeys[] = {"EnableSSID",   "HideSSID",   "AuthMode",  "EncrypType",  "IEEE8021X",
                                        "DefaultKeyID", "WmmCapable", "MaxStaNum", "WscConfMode", "WscConfStatus"};
static const char* const kReadings[2][3] = {{"~-92", "~38", "~54"}, {"~-95", "~12", "~58"}};
// Seven digits of the first BSS's PIN; the others follow.
static const unsigned kFirstPin[2] = {2810240, 2810500};

#define COUNT(array) (sizeof(array) / sizeof(array)[0])

static bool is_one_of(const char* const* keys, size_t count, const char* key, size_t length) {
  for (size_t i = 0; i < count; ++i) {
    if (strlen(keys[i]) == length && memcmp(keys[i], key, length) == 0) return true;
  }
  return false;
}

bool is_radio_wide(const char* key, size_t length) {
  static const char* const kChannel[] = {"Channel"};
  return is_one_of(kChannel, 1, key, length) || is_one_of(kRadioKeys, COUNT(kRadioKeys), key, length) ||
         is_one_of(kReportKeys, COUNT(kReportKeys), key, length);
}

int channel_for(bool is_5g, long wanted) {
  if (wanted > 0) return (int)wanted;
  return is_5g ? kAutomatic5G : kAutomatic2_4G;
}

// The digits weigh 3 and 1 in turn; the check digit makes the sum a multiple of ten.
void format_pin(unsigned seven_digits, char text[9]) {
  unsigned sum = 0;
  unsigned weight = 3;
  seven_digits %= 10000000;
  for (unsigned rest = seven_digits; rest != 0; rest /= 10) {
    sum += weight * (rest % 10);
    weight = 4 - weight;
  }
  snprintf(text, 9, "%07u%u", seven_digits, (10 - sum % 10) % 10);
}

static void add_escaped(Text* text, const char* value, size_t length) {
  for (size_t i = 0; i < length; ++i) {
    if (value[i] == '\n') {
      add_text(text, "\\n");
    } else {
      if (value[i] == '\\') add_text(text, "\\");
      add_bytes(text, value + i, 1);
    }
  }
}

static void add_unescaped(Text* text, const char* value, size_t length) {
  for (size_t i = 0; i < length; ++i) {
    const bool is_escape = value[i] == '\\' && i + 1 < length;
    if (is_escape) ++i;
    add_bytes(text, is_escape && value[i] == 'n' ? "\n" : value + i, 1);
  }
}

static size_t line_length(const char* line) {
  return strcspn(line, "\n");
}

// How the key of a line compares with another key.
static int compare_key(const char* line, const char* key, size_t length) {
  const size_t own = strcspn(line, "=\n");
  const int order = memcmp(line, key, own < length ? own : length);
  if (order != 0) return order;
  return own < length ? -1 : own > length;
}

// `settings` is text that was made here, so its keys are in order.
char* settings_with(const char* settings, const char* key, const char* value) {
  Text text = {NULL, 0, 0, false};
  const size_t length = strlen(key);
  const char* line = settings == NULL ? "" : settings;
  for (; *line != '\0' && compare_key(line, key, length) < 0; line += line_length(line), line += *line == '\n') {
    add_bytes(&text, line, line_length(line));
    add_text(&text, "\n");
  }
  add_text(&text, key);
  add_text(&text, "=");
  add_escaped(&text, value, strlen(value));
  add_text(&text, "\n");
  if (*line != '\0' && compare_key(line, key, length) == 0) {
    line += line_length(line);
    line += *line == '\n';
  }
  add_text(&text, line);
  return finish_text(&text);
}

char* plain_setting(const char* settings, const char* key) {
  const char* const value = setting_of(settings, key);
  Text text = {NULL, 0, 0, false};
  if (value == NULL) return NULL;
  add_unescaped(&text, value, line_length(value));
  return finish_text(&text);
}

void add_plain_settings(Text* text, const char* settings) {
  for (const char* line = settings; line != NULL && *line != '\0';) {
    const size_t length = line_length(line);
    add_unescaped(text, line, length);
    add_text(text, "\n");
    line += length;
    line += *line == '\n';
  }
}

// Takes a text over and gives the one with the setting; what memory ran out for stays null.
static char* put(char* settings, const char* key, const char* value, size_t length) {
  if (settings == NULL || value == NULL || length == 0) return settings;
  char* const plain = malloc(length + 1);
  char* fresh = NULL;
  if (plain != NULL) {
    memcpy(plain, value, length);
    plain[length] = '\0';
    fresh = settings_with(settings, key, plain);
    free(plain);
  }
  free(settings);
  return fresh;
}

static char* put_text(char* settings, const char* key, const char* value) {
  return put(settings, key, value, strlen(value));
}

static char* put_numbered(char* settings, const char* key, const char* dat, const char* prefix, int number) {
  char name[32];
  size_t length = 0;
  snprintf(name, sizeof name, "%s%d", prefix, number);
  const char* const value = dat_value(dat, name, &length);
  return put(settings, key, value, length);
}

static char* put_reports(char* settings, bool is_5g, int ssid, const char* before) {
  char pin[9];
  if (before == NULL) {
    format_pin(kFirstPin[is_5g] + (unsigned)(ssid - 1), pin);
    settings = put_text(settings, "Noise", kReadings[is_5g][0]);
    settings = put_text(settings, "ChannelLoad", kReadings[is_5g][1]);
    settings = put_text(settings, "Temperature", kReadings[is_5g][2]);
    settings = put_text(settings, "WpsStatus", "0");
    return put_text(settings, "WpsPin", pin);
  }
  for (size_t i = 0; i <= COUNT(kReportKeys); ++i) {
    const char* const key = i < COUNT(kReportKeys) ? kReportKeys[i] : "WpsPin";
    char* const value = plain_setting(before, key);
    if (value != NULL) settings = put_text(settings, key, value);
    free(value);
  }
  return settings;
}

char* settings_from_dat(const char* dat, bool is_5g, int ssid, const char* before) {
  Text empty = {NULL, 0, 0, false};
  char* settings = finish_text(&empty);
  char text[16];
  size_t length = 0;
  snprintf(text, sizeof text, "%d", channel_for(is_5g, dat_number(dat, "Channel", 1)));
  settings = put_text(settings, "Channel", text);
  for (size_t i = 0; i < COUNT(kRadioKeys); ++i) {
    const char* const value = dat_field(dat, kRadioKeys[i], 1, &length);
    settings = put(settings, kRadioKeys[i], value, length);
  }
  for (size_t i = 0; i < COUNT(kSsidKeys); ++i) {
    const char* const value = dat_field(dat, kSsidKeys[i], ssid, &length);
    settings = put(settings, kSsidKeys[i], value, length);
  }
  settings = put_numbered(settings, "SSID", dat, "SSID", ssid);
  settings = put_numbered(settings, "WPAPSK", dat, "WPAPSK", ssid);
  settings = put_numbered(settings, "AccessPolicy", dat, "AccessPolicy", ssid - 1);
  settings = put_numbered(settings, "WpsAccessList", dat, "AccessControlList", ssid - 1);
  // Idle where WPS is on.
  settings = put_text(settings, "WpsState", dat_number(dat, "WscConfMode", ssid) != 0 ? "1" : "0");
  return put_reports(settings, is_5g, ssid, before);
}
