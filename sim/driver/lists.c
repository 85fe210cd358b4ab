#include "sim/driver/lists.h"

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char kHexDigits[] = "0123456789abcdef";

static int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

static bool parse_hex(const char* text, uint8_t* bytes, size_t size) {
  if (strlen(text) != 2 * size) return false;
  for (size_t i = 0; i < size; ++i) {
    const int high = hex_digit(text[2 * i]);
    const int low = hex_digit(text[2 * i + 1]);
    if (high < 0 || low < 0) return false;
    bytes[i] = (uint8_t)(high << 4 | low);
  }
  return true;
}

static void format_hex(const uint8_t* bytes, size_t size, char* text) {
  for (size_t i = 0; i < size; ++i) {
    *text++ = kHexDigits[bytes[i] >> 4];
    *text++ = kHexDigits[bytes[i] & 15];
  }
  *text = '\0';
}

bool parse_mac(const char* text, uint8_t mac[kMacSize]) {
  if (strlen(text) != kMacTextSize - 1) return false;
  for (size_t i = 0; i < kMacSize; ++i, text += 3) {
    const int high = hex_digit(text[0]);
    const int low = hex_digit(text[1]);
    const char separator = i + 1 < kMacSize ? ':' : '\0';
    if (high < 0 || low < 0 || text[2] != separator) return false;
    mac[i] = (uint8_t)(high << 4 | low);
  }
  return true;
}

void format_mac(const uint8_t mac[kMacSize], char text[kMacTextSize]) {
  snprintf(text, kMacTextSize, "%02x:%02x:%02x:%02x:%02x:%02x", mac[0], mac[1], mac[2], mac[3], mac[4], mac[5]);
}

// An SSID is any bytes: what is not a plain letter or digit becomes %XX. A lone "%" stands for none.
static void format_ssid(const Neighbour* neighbour, char* text) {
  for (size_t i = 0; i < neighbour->ssid_length; ++i) {
    const uint8_t byte = neighbour->ssid[i];
    const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
                       byte == '-' || byte == '_';
    if (!plain) {
      *text++ = '%';
      *text++ = kHexDigits[byte >> 4];
    }
    *text++ = plain ? (char)byte : kHexDigits[byte & 15];
  }
  if (neighbour->ssid_length == 0) *text++ = '%';
  *text = '\0';
}

static bool parse_ssid(const char* text, Neighbour* neighbour) {
  neighbour->ssid_length = 0;
  if (strcmp(text, "%") == 0) return true;
  while (*text != '\0') {
    if (neighbour->ssid_length == kMostSsidBytes) return false;
    uint8_t byte = (uint8_t)*text++;
    if (byte == '%') {
      const int high = hex_digit(text[0]);
      const int low = high < 0 ? -1 : hex_digit(text[1]);
      if (low < 0) return false;
      byte = (uint8_t)(high << 4 | low);
      text += 2;
    }
    neighbour->ssid[neighbour->ssid_length++] = byte;
  }
  return true;
}

bool parse_station(const char* line, Station* station) {
  char mac[kMacTextSize];
  char rrm[2 * kCapabilities11k + 1];
  char wnm[3];
  memset(station, 0, sizeof *station);
  const int found =
      sscanf(line, "%15s %17s %u %u %u %15s %u %16s %2s %" SCNd64, station->interface, mac, &station->association_id,
             &station->valid, &station->marker, station->signal, &station->rate, rrm, wnm, &station->joined_ms);
  return found == 10 && parse_mac(mac, station->mac) && parse_hex(rrm, station->capability_11k, kCapabilities11k) &&
         parse_hex(wnm, &station->capability_11v, 1);
}

void format_station(const Station* station, char line[kMostListLine]) {
  char mac[kMacTextSize];
  char rrm[2 * kCapabilities11k + 1];
  format_mac(station->mac, mac);
  format_hex(station->capability_11k, kCapabilities11k, rrm);
  snprintf(line, kMostListLine, "%s %s %u %u %u %s %u %s %02x %" PRId64, station->interface, mac,
           station->association_id, station->valid, station->marker, station->signal, station->rate, rrm,
           station->capability_11v, station->joined_ms);
}

bool parse_neighbour(const char* line, Neighbour* neighbour) {
  char bssid[kMacTextSize];
  char ssid[3 * kMostSsidBytes + 1];
  memset(neighbour, 0, sizeof *neighbour);
  const int found = sscanf(line, "%17s %u %15s %31s %u %" SCNd64 " %96s", bssid, &neighbour->channel, neighbour->signal,
                           neighbour->security, &neighbour->wps, &neighbour->seen_ms, ssid);
  return found == 7 && parse_mac(bssid, neighbour->bssid) && parse_ssid(ssid, neighbour);
}

void format_neighbour(const Neighbour* neighbour, char line[kMostListLine]) {
  char bssid[kMacTextSize];
  char ssid[3 * kMostSsidBytes + 2];
  format_mac(neighbour->bssid, bssid);
  format_ssid(neighbour, ssid);
  snprintf(line, kMostListLine, "%s %u %s %s %u %" PRId64 " %s", bssid, neighbour->channel, neighbour->signal,
           neighbour->security, neighbour->wps, neighbour->seen_ms, ssid);
}

bool parse_process(const char* line, DriverProcess* process) {
  memset(process, 0, sizeof *process);
  return sscanf(line, "%16s %u %u", process->name, &process->pid, &process->running) == 3;
}

void format_process(const DriverProcess* process, char line[kMostListLine]) {
  snprintf(line, kMostListLine, "%s %u %u", process->name, process->pid, process->running);
}

bool parse_fault(const char* line, Fault* fault) {
  memset(fault, 0, sizeof *fault);
  return sscanf(line, "%lx %d %d %15s %d %u %d", &fault->request, &fault->oid, &fault->error, fault->interface,
                &fault->count, &fault->delay_ms, &fault->cut) == 7 &&
         fault->delay_ms <= kMostFaultDelayMs;
}

// Both drivers ask this: a name may fill its field, without an end.
bool is_fault_of(const Fault* fault, unsigned long request, uint16_t oid, const char* interface) {
  if (fault->request != request || (fault->oid >= 0 && fault->oid != oid)) return false;
  return strcmp(fault->interface, "*") == 0 || strncmp(fault->interface, interface, sizeof fault->interface) == 0;
}

void format_fault(const Fault* fault, char line[kMostListLine]) {
  snprintf(line, kMostListLine, "%lx %d %d %s %d %u %d", fault->request, fault->oid, fault->error, fault->interface,
           fault->count, fault->delay_ms, fault->cut);
}
