#include "sim/driver/request_table.h"

#include <stddef.h>

enum {
  kOid = SIOCIWFIRSTPRIV + 1,  // the flags say which
  kStatistics = SIOCIWFIRSTPRIV + 9,
  kStationTable = SIOCIWFIRSTPRIV + 15,
  kWpsStatus = SIOCIWFIRSTPRIV + 18,
  kApCount = SIOCIWFIRSTPRIV + 28,
  kProcesses = SIOCIWFIRSTPRIV + 30,
};

static const RequestRow kRows[] = {
    {SIOCGIWNAME, 0, 0, 0, answer_name},
    {SIOCGIWFREQ, 0, 0, 0, answer_frequency},
    {kOid, 0x052A, 528, 528, answer_wps_access_list},
    {kOid, 0x0683, 18436, 18436, answer_neighbours},
    {kOid, 0x069C, 4, 4, answer_noise},
    {kOid, 0x0751, 20, 20, answer_wps_state},
    {kOid, 0x0752, 16, 16, answer_wps_pin},
    {kOid, 0x075C, 198, 198, answer_wps_peer},
    {kOid, 0x0765, 4, 4, answer_load},
    {kOid, 0x09A1, 4, 4, answer_temperature},
    {kOid, 0x2044, 32, 32, answer_wps_station},
    {kOid, 0x494A, 9, 9, answer_11v},
    {kOid, 0x494C, 19, 19, answer_11k},
    {kOid, 0x9204, 1, 0, keep_probe_response},
    {kOid, 0x9205, 0, 0, forget_probe_responses},
    {kOid, 0x9220, 0, 0, keep_oui_filter},
    {kStatistics, 0, 56, 56, answer_statistics},
    {kStationTable, 0, 8, 4096, answer_station_table},
    {kWpsStatus, 0, 768, 768, answer_wps_status},
    {kApCount, 0, 80, 80, answer_ap_count},
    {kProcesses, 0, 768, 768, answer_processes},
};

const RequestRow* find_row(unsigned long number, uint16_t flags) {
  for (size_t i = 0; i < sizeof kRows / sizeof kRows[0]; ++i) {
    if (kRows[i].request == number && (number != kOid || kRows[i].oid == flags)) return &kRows[i];
  }
  return NULL;
}
