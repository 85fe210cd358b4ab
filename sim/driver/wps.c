// WPS as the driver reports it: the session's state and peer, the PIN, the access list, the status word.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "sim/driver/answers.h"
#include "sim/driver/lists.h"
#include "sim/driver/state.h"

enum {
  kStateSize = 20,
  kPeerSize = 198,
  kPeerMac = 192,
  kPinSize = 16,
  kAccessListSize = 528,
  kAccessHeader = 16,
  kAccessEntrySize = 8,
  kAccessEntries = 64,
  kStationSize = 32,
  kStatusSize = 768,
};

// Sets the first word of a reply of `size` bytes, the rest is zero.
static int answer_number(const Query* query, size_t size, uint32_t number) {
  memset(query->data, 0, size);
  memcpy(query->data, &number, sizeof number);
  return 0;
}

// The MAC that a key is set to; false when there is none.
static bool mac_of(const char* settings, const char* key, uint8_t mac[kMacSize]) {
  const char* value = setting_of(settings, key);
  char text[kMacTextSize];
  if (value == NULL) return false;
  snprintf(text, sizeof text, "%.*s", (int)strcspn(value, "\n"), value);
  return parse_mac(text, mac);
}

int answer_wps_state(const Query* query) {
  return answer_number(query, kStateSize, (uint32_t)number_of(query->settings, "WpsState"));
}

int answer_wps_peer(const Query* query) {
  memset(query->data, 0, kPeerSize);
  mac_of(query->settings, "WpsPeer", query->data + kPeerMac);
  return 0;
}

int answer_wps_pin(const Query* query) {
  return answer_number(query, kPinSize, (uint32_t)number_of(query->settings, "WpsPin"));
}

int answer_wps_station(const Query* query) {
  memset(query->data, 0, kStationSize);
  mac_of(query->settings, "WpsStation", query->data);
  return 0;
}

int answer_wps_status(const Query* query) {
  return answer_number(query, kStatusSize, (uint16_t)number_of(query->settings, "WpsStatus"));
}

static bool is_associated(const Query* query, const char* stations, const char* mac) {
  char line[sizeof "\n" + kListNameSize + kMacTextSize];
  snprintf(line, sizeof line, "%s %s ", query->interface, mac);
  const size_t length = strlen(line);
  for (const char* at = stations; at != NULL && *at != '\0';) {
    if (strncmp(at, line, length) == 0) return true;
    at = strchr(at, '\n');
    if (at != NULL) ++at;
  }
  return false;
}

int answer_wps_access_list(const Query* query) {
  memset(query->data, 0, kAccessListSize);
  const uint32_t policy = (uint32_t)number_of(query->settings, "AccessPolicy");
  uint32_t count = 0;
  char* const stations = read_radio_list("stations", query->radio);
  const char* list = setting_of(query->settings, "WpsAccessList");
  while (list != NULL && count < kAccessEntries) {
    char text[kMacTextSize];
    const size_t length = strcspn(list, ";\n");
    snprintf(text, sizeof text, "%.*s", (int)length, list);
    uint8_t* const entry = query->data + kAccessHeader + kAccessEntrySize * count;
    if (parse_mac(text, entry)) {
      const uint16_t associated = is_associated(query, stations, text) ? 1 : 0;
      memcpy(entry + kMacSize, &associated, sizeof associated);
      ++count;
    }
    list = list[length] == ';' ? list + length + 1 : NULL;
  }
  free(stations);
  memcpy(query->data, &policy, sizeof policy);
  memcpy(query->data + 4, &count, sizeof count);
  return 0;
}
