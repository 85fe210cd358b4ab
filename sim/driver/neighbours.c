// The other access points on the air, as the last scan heard them.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "sim/driver/answers.h"
#include "sim/driver/lists.h"
#include "sim/driver/reading.h"
#include "sim/driver/state.h"

enum { kMostNeighbours = 128, kModeSize = 12 };

struct Record {
  uint8_t bssid[kMacSize];
  uint16_t channel;
  int32_t signal;
  uint32_t age;
  uint8_t ssid_length;
  uint8_t wps;
  uint8_t ssid[kMostSsidBytes + 2];
  char security[kSecuritySize];
  char mode[kModeSize];
  uint8_t rest[48];
};
_Static_assert(sizeof(struct Record) == 144, "a record of the neighbour table");

struct Table {
  uint32_t count;
  struct Record record[kMostNeighbours];
};
_Static_assert(sizeof(struct Table) == 18436, "the neighbour table");

struct ApCount {
  uint32_t total;
  uint32_t on_own_channel;
  int32_t strongest_signal;
  uint16_t strongest_channel;
  uint8_t strongest_bssid[kMacSize];
  uint8_t reserved_20[20];
  uint64_t table_handle;  // the driver's own, means nothing to callers
  uint8_t reserved_48[8];
  uint64_t scan_handle;  // likewise
  uint8_t reserved_64[16];
};
_Static_assert(sizeof(struct ApCount) == 80, "the AP count record");

// As it was when the neighbour was last heard.
static int32_t signal_of(const Neighbour* neighbour) {
  return (int32_t)reading_at(neighbour->signal, neighbour->seen_ms, neighbour->bssid[kMacSize - 1]);
}

int answer_neighbours(const Query* query) {
  struct Table* const table = calloc(1, sizeof *table);
  char* const text = read_radio_list("neighbours", query->radio);
  char* rest = text;
  const int64_t now = monotonic_ms();
  Neighbour neighbour;
  for (char* line; table != NULL && table->count < kMostNeighbours && (line = next_line(&rest)) != NULL;) {
    if (!parse_neighbour(line, &neighbour)) continue;
    struct Record* const record = &table->record[table->count++];
    memcpy(record->bssid, neighbour.bssid, kMacSize);
    record->channel = (uint16_t)neighbour.channel;
    record->signal = signal_of(&neighbour);
    record->age = (uint32_t)((now - neighbour.seen_ms) / 1000);
    record->ssid_length = (uint8_t)neighbour.ssid_length;
    record->wps = (uint8_t)neighbour.wps;
    memcpy(record->ssid, neighbour.ssid, neighbour.ssid_length);
    snprintf(record->security, sizeof record->security, "%s", neighbour.security);
    snprintf(record->mode, sizeof record->mode, "%s", query->is_5g ? "11a/n/ac/ax" : "11b/g/n/ax");
  }
  if (table != NULL) memcpy(query->data, table, sizeof *table);
  free(text);
  free(table);
  return 0;
}

int answer_ap_count(const Query* query) {
  struct ApCount reply = {.table_handle = 0xa110ca7ed0000000, .scan_handle = 0xa110ca7ed0001000};
  const unsigned own_channel = (unsigned)number_of(query->settings, "Channel");
  char* const text = read_radio_list("neighbours", query->radio);
  char* rest = text;
  Neighbour neighbour;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    if (!parse_neighbour(line, &neighbour)) continue;
    const int32_t signal = signal_of(&neighbour);
    if (reply.total++ == 0 || signal > reply.strongest_signal) {
      reply.strongest_signal = signal;
      reply.strongest_channel = (uint16_t)neighbour.channel;
      memcpy(reply.strongest_bssid, neighbour.bssid, kMacSize);
    }
    if (neighbour.channel == own_channel) ++reply.on_own_channel;
  }
  free(text);
  memcpy(query->data, &reply, sizeof reply);
  return 0;
}
