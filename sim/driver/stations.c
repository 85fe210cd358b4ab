// The stations of a radio: its table, and what one of them can do.
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "sim/driver/answers.h"
#include "sim/driver/lists.h"
#include "sim/driver/state.h"

enum { kTableSize = 4096, kTableEntries = 32, kStationQuery = 4 };

struct Entry {
  uint8_t ssid;
  uint8_t mac[kMacSize];
  uint8_t valid;
  uint8_t marker[2];
  uint8_t rest[30];
};
_Static_assert(sizeof(struct Entry) == 40, "an entry of the table");

struct Table {
  uint64_t count;
  struct Entry entry[kTableEntries];
  uint8_t rest[kTableSize - sizeof(uint64_t) - kTableEntries * sizeof(struct Entry)];
};
_Static_assert(sizeof(struct Table) == kTableSize, "the station table");

// The length field stays at 8 whatever the answer's size: callers provide for the whole table.
int answer_station_table(const Query* query) {
  struct Table* const table = (struct Table*)query->data;
  memset(table, 0, sizeof *table);
  char* const text = read_radio_list("stations", query->radio);
  char* rest = text;
  Station station;
  for (char* line; table->count < kTableEntries && (line = next_line(&rest)) != NULL;) {
    if (!parse_station(line, &station)) continue;
    struct Entry* entry = &table->entry[table->count++];
    entry->ssid = (uint8_t)strtoul(station.interface + strlen(query->radio), NULL, 10);
    memcpy(entry->mac, station.mac, kMacSize);
    entry->valid = (uint8_t)station.valid;
    entry->marker[0] = (uint8_t)station.marker;
    entry->marker[1] = (uint8_t)(station.marker >> 8);
  }
  free(text);
  return 0;
}

static bool find_station(const Query* query, const uint8_t mac[kMacSize], Station* found) {
  char* const text = read_radio_list("stations", query->radio);
  char* rest = text;
  bool is_found = false;
  for (char* line; !is_found && (line = next_line(&rest)) != NULL;) {
    is_found = parse_station(line, found) && strcmp(found->interface, query->interface) == 0 &&
               memcmp(found->mac, mac, kMacSize) == 0;
  }
  free(text);
  return is_found;
}

int answer_11k(const Query* query) {
  uint32_t length;
  memcpy(&length, query->data + 1, sizeof length);
  if (query->data[0] != kStationQuery || length != kMacSize + kCapabilities11k) return EINVAL;
  Station station;
  if (!find_station(query, query->data + 5, &station)) return ENOENT;
  memcpy(query->data + 11, station.capability_11k, kCapabilities11k);
  return 0;
}

int answer_11v(const Query* query) {
  if (query->data[0] != kStationQuery || query->data[1] != kMacSize + 1) return EINVAL;
  Station station;
  if (!find_station(query, query->data + 2, &station)) return ENOENT;
  query->data[8] = station.capability_11v;
  return 0;
}
