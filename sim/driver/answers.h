// The driver's answers, one for each request of the table in request_table.c.
#pragma once

#include <linux/wireless.h>
#include <stdbool.h>
#include <stdint.h>

#include "sim/driver/lists.h"

typedef struct Query {
  struct iwreq* request;
  const char* interface;
  const char* settings;  // of that interface
  const char* radio;     // "ra" or "rai"
  bool is_5g;
  uint8_t* data;    // the driver's own, as long as its reply, or as what it takes
  uint16_t length;  // what the caller says
} Query;

// An answer returns 0, or the errno that the request fails with.
typedef int (*Answer)(const Query* query);

// How the radio does (radio.c).
int answer_name(const Query* query);
int answer_frequency(const Query* query);
int answer_noise(const Query* query);
int answer_load(const Query* query);
int answer_temperature(const Query* query);
int answer_statistics(const Query* query);

// Its stations (stations.c).
int answer_station_table(const Query* query);
int answer_11k(const Query* query);
int answer_11v(const Query* query);

// WPS (wps.c).
int answer_wps_state(const Query* query);
int answer_wps_peer(const Query* query);
int answer_wps_pin(const Query* query);
int answer_wps_access_list(const Query* query);
int answer_wps_station(const Query* query);
int answer_wps_status(const Query* query);

// Who else is on the air (neighbours.c).
int answer_neighbours(const Query* query);
int answer_ap_count(const Query* query);

// The driver's helpers (processes.c).
int answer_processes(const Query* query);

// What callers hand the driver (payloads.c).
int keep_oui_filter(const Query* query);
int keep_probe_response(const Query* query);
int forget_probe_responses(const Query* query);

// The fault that the request meets, which it uses up; false when there is none (faults.c).
bool meet_fault(unsigned long number, const struct iwreq* request, Fault* fault);
