// The lists that the simulated driver keeps beside its settings: stations, neighbours, processes, faults. A list is a
// file of its own, one line for each entry, its fields separated by blanks.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

enum {
  kMacSize = 6,
  kMacTextSize = 18,
  kListNameSize = 16,
  kReadingSize = 16,
  kSecuritySize = 32,
  kMostSsidBytes = 32,
  kCapabilities11k = 8,
  kMostListLine = 512,
  // A kernel lets nobody else at the network meanwhile.
  kMostFaultDelayMs = 60000,
};

// A station that is associated with a BSS.
typedef struct Station {
  char interface[kListNameSize];
  uint8_t mac[kMacSize];
  unsigned association_id;
  unsigned valid;   // byte 7 of its table entry
  unsigned marker;  // bytes 8 and 9, as a rule the association id
  char signal[kReadingSize];
  unsigned rate;  // Mbit/s
  uint8_t capability_11k[kCapabilities11k];
  uint8_t capability_11v;
  int64_t joined_ms;
} Station;

// An access point that the radio hears.
typedef struct Neighbour {
  uint8_t bssid[kMacSize];
  unsigned channel;
  char signal[kReadingSize];
  char security[kSecuritySize];  // without blanks
  unsigned wps;
  int64_t seen_ms;
  size_t ssid_length;
  uint8_t ssid[kMostSsidBytes];
} Neighbour;

typedef struct DriverProcess {
  char name[kListNameSize + 1];
  unsigned pid;
  unsigned running;
} DriverProcess;

// A request that is to go wrong: it fails, or its answer comes late, or is cut.
typedef struct Fault {
  unsigned long request;
  int oid;                        // -1: any
  int error;                      // 0: none
  char interface[kListNameSize];  // "*": any
  int count;                      // -1: from now on
  unsigned delay_ms;
  int cut;  // bytes of the answer that reach the caller; -1: all
} Fault;

// Each returns false for a line that is not of its kind.
bool parse_station(const char* line, Station* station);
bool parse_neighbour(const char* line, Neighbour* neighbour);
bool parse_process(const char* line, DriverProcess* process);
bool parse_fault(const char* line, Fault* fault);

// Whether a request on an interface, with that OID among its flags, is one that the fault is for.
bool is_fault_of(const Fault* fault, unsigned long request, uint16_t oid, const char* interface);

void format_station(const Station* station, char line[kMostListLine]);
void format_neighbour(const Neighbour* neighbour, char line[kMostListLine]);
void format_process(const DriverProcess* process, char line[kMostListLine]);
void format_fault(const Fault* fault, char line[kMostListLine]);

// "02:28:10:00:00:01" and nothing after it.
bool parse_mac(const char* text, uint8_t mac[kMacSize]);
void format_mac(const uint8_t mac[kMacSize], char text[kMacTextSize]);

#ifdef __cplusplus
}
#endif
