// The WLAN driver's side of the wireless requests: preloaded into every program of the simulation, it answers those
// addressed to the radios' interfaces from the driver's state and hands everything else to the kernel. It keeps nothing
// between two requests, so any process sees at once what another one changed.
#define _GNU_SOURCE
#include <net/if.h>

#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "sim/driver/answers.h"
#include "sim/driver/state.h"

enum {
  kOid = SIOCIWFIRSTPRIV + 1,  // the flags say which
  kStatistics = SIOCIWFIRSTPRIV + 9,
  kStationTable = SIOCIWFIRSTPRIV + 15,
  kWpsStatus = SIOCIWFIRSTPRIV + 18,
  kApCount = SIOCIWFIRSTPRIV + 28,
  kProcesses = SIOCIWFIRSTPRIV + 30,
};

// What the driver answers, from which length of the payload on. OID 0 stands for requests that have none.
static const struct Row {
  unsigned long request;
  uint16_t oid;
  uint16_t least_length;
  Answer answer;
} kRows[] = {
    {SIOCGIWNAME, 0, 0, answer_name},
    {SIOCGIWFREQ, 0, 0, answer_frequency},
    {kOid, 0x052A, 528, answer_wps_access_list},
    {kOid, 0x0683, 18436, answer_neighbours},
    {kOid, 0x069C, 4, answer_noise},
    {kOid, 0x0751, 20, answer_wps_state},
    {kOid, 0x0752, 16, answer_wps_pin},
    {kOid, 0x075C, 198, answer_wps_peer},
    {kOid, 0x0765, 4, answer_load},
    {kOid, 0x09A1, 4, answer_temperature},
    {kOid, 0x2044, 32, answer_wps_station},
    {kOid, 0x494A, 9, answer_11v},
    {kOid, 0x494C, 19, answer_11k},
    {kOid, 0x9204, 1, keep_probe_response},
    {kOid, 0x9205, 0, forget_probe_responses},
    {kOid, 0x9220, 0, keep_oui_filter},
    {kStatistics, 0, 56, answer_statistics},
    {kStationTable, 0, 8, answer_station_table},
    {kWpsStatus, 0, 768, answer_wps_status},
    {kApCount, 0, 80, answer_ap_count},
    {kProcesses, 0, 768, answer_processes},
};

static const struct Row* find_row(unsigned long number, uint16_t flags) {
  for (size_t i = 0; i < sizeof kRows / sizeof kRows[0]; ++i) {
    if (kRows[i].request == number && (number != kOid || kRows[i].oid == flags)) return &kRows[i];
  }
  return NULL;
}

static bool is_private(unsigned long number) {
  return number >= SIOCIWFIRSTPRIV && number <= SIOCIWLASTPRIV;
}

static bool is_wireless(unsigned long number) {
  return is_private(number) || number == SIOCGIWNAME || number == SIOCGIWFREQ;
}

// "ra" or "rai" for the BSSs of a radio, null for any other name.
static const char* radio_of(const char interface[IFNAMSIZ]) {
  if (strnlen(interface, IFNAMSIZ) == IFNAMSIZ || strncmp(interface, "ra", 2) != 0) return NULL;
  const bool is_5g = interface[2] == 'i';
  const char* const number = interface + (is_5g ? 3 : 2);
  if (*number == '\0' || strspn(number, "0123456789") != strlen(number)) return NULL;
  return if_nametoindex(interface) == 0 ? NULL : is_5g ? "rai" : "ra";
}

// The errno that the request fails with, or 0.
static int answer(unsigned long number, struct iwreq* request, const char* radio, const char* settings) {
  const int fault = error_for(number, request);
  if (fault != 0) return fault;
  const struct Row* const row = find_row(number, request->u.data.flags);
  if (row == NULL) return EOPNOTSUPP;
  Query query = {request, request->ifr_name, settings, radio, radio[2] == 'i', NULL, 0};
  if (is_private(number)) {
    query.data = request->u.data.pointer;
    query.length = request->u.data.length;
    if (query.length < row->least_length) return EINVAL;
    if (query.length > 0 && query.data == NULL) return EFAULT;
  }
  return row->answer(&query);
}

__attribute__((visibility("default"))) int ioctl(int fd, unsigned long number, ...) {
  va_list arguments;
  va_start(arguments, number);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);

  struct iwreq* const request = argument;
  const int before = errno;
  // EBADF; emulations of the kernel know no wireless requests and say something else.
  if (is_wireless(number) && fcntl(fd, F_GETFD) < 0) return -1;
  if (is_wireless(number) && request != NULL) {
    const char* const radio = radio_of(request->ifr_name);
    char* const settings = radio == NULL ? NULL : read_state(DRIVER_SETTINGS, request->ifr_name);
    if (settings != NULL) {
      const int error = answer(number, request, radio, settings);
      free(settings);
      errno = error == 0 ? before : error;
      return error == 0 ? 0 : -1;
    }
  }
  errno = before;
  return (int)syscall(SYS_ioctl, fd, number, argument);
}
