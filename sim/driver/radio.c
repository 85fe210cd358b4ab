// How a radio does: channel, noise, load, temperature, traffic.
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "sim/driver/answers.h"
#include "sim/driver/counter.h"
#include "sim/driver/lists.h"
#include "sim/driver/reading.h"
#include "sim/driver/state.h"

enum { kNoisePhase = 0, kLoadPhase = 2, kTemperaturePhase = 4, kFullLoad = 100 };

// A reading of the radio's settings as it is now.
static long reading_of(const Query* query, const char* key, unsigned phase) {
  const char* value = setting_of(query->settings, key);
  char text[kReadingSize] = "0";
  if (value != NULL) snprintf(text, sizeof text, "%.*s", (int)strcspn(value, "\n"), value);
  return reading_at(text, monotonic_ms(), phase + (query->is_5g ? 1 : 0));
}

static int answer_word(const Query* query, long value) {
  const uint32_t word = (uint32_t)value;
  memcpy(query->data, &word, sizeof word);
  return 0;
}

int answer_name(const Query* query) {
  snprintf(query->request->u.name, sizeof query->request->u.name, "IEEE 802.11");
  return 0;
}

// This driver reports a channel, not a frequency: the mantissa is the channel's number.
int answer_frequency(const Query* query) {
  memset(&query->request->u.freq, 0, sizeof query->request->u.freq);
  query->request->u.freq.m = (int)number_of(query->settings, "Channel");
  return 0;
}

int answer_noise(const Query* query) {
  return answer_word(query, reading_of(query, "Noise", kNoisePhase));
}

int answer_load(const Query* query) {
  const long load = reading_of(query, "ChannelLoad", kLoadPhase);
  const char* value = setting_of(query->settings, "ChannelLoad");
  const bool wanders = value != NULL && *value == '~';
  if (wanders && load < 0) return answer_word(query, 0);
  return answer_word(query, wanders && load > kFullLoad ? kFullLoad : load);
}

int answer_temperature(const Query* query) {
  return answer_word(query, reading_of(query, "Temperature", kTemperaturePhase));
}

int answer_statistics(const Query* query) {
  struct {
    uint32_t stations;
    int32_t noise;
    uint64_t counter[6];
  } reply = {.noise = (int32_t)reading_of(query, "Noise", kNoisePhase)};
  char* const text = read_radio_list("stations", query->radio);
  char* rest = text;
  Station station;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    if (parse_station(line, &station) && strcmp(station.interface, query->interface) == 0) ++reply.stations;
  }
  free(text);
  static const char* const kCounters[] = {"tx_packets", "rx_packets", "tx_bytes", "rx_bytes", "tx_errors", "rx_errors"};
  for (size_t i = 0; i < sizeof kCounters / sizeof kCounters[0]; ++i) {
    reply.counter[i] = interface_counter(query->interface, kCounters[i]);
  }
  memcpy(query->data, &reply, sizeof reply);
  return 0;
}
