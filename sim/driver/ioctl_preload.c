// The kernel's and the WLAN driver's side of the wireless requests: preloaded into every program of the simulation, it
// answers those addressed to the radios' interfaces from the driver's state and hands everything else to the kernel. It
// keeps nothing between two requests, so any process sees at once what another one changed.
#define _GNU_SOURCE
#include <net/if.h>

#include <errno.h>
#include <fcntl.h>
#include <linux/capability.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include "sim/driver/answers.h"
#include "sim/driver/caller_memory.h"
#include "sim/driver/request_table.h"
#include "sim/driver/state.h"

static bool is_private(unsigned long number) {
  return number >= SIOCIWFIRSTPRIV && number <= SIOCIWLASTPRIV;
}

static bool is_wireless(unsigned long number) {
  return is_private(number) || number == SIOCGIWNAME || number == SIOCGIWFREQ;
}

// "ra" or "rai" for the BSSs of a radio, null for any other name.
static const char* radio_of(const char interface[IFNAMSIZ]) {
  if (strncmp(interface, "ra", 2) != 0) return NULL;
  const bool is_5g = interface[2] == 'i';
  const char* const number = interface + (is_5g ? 3 : 2);
  if (*number == '\0' || strspn(number, "0123456789") != strlen(number)) return NULL;
  return is_5g ? "rai" : "ra";
}

// As the kernel asks before it looks for the interface: an even number sets something.
static bool is_permitted(unsigned long number) {
  struct __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
  struct __user_cap_data_struct data[2] = {{0, 0, 0}, {0, 0, 0}};
  if (number % 2 != 0) return true;
  return syscall(SYS_capget, &header, data) == 0 && (data[0].effective & (1U << CAP_NET_ADMIN)) != 0;
}

// As much of the answer as is to reach the caller; what is cut has the length field say so.
static size_t shown_of(size_t reply, int cut, struct iwreq* request) {
  if (cut < 0 || (size_t)cut >= reply) return reply;
  request->u.data.length = (uint16_t)cut;
  return (size_t)cut;
}

// Answers into a buffer of the driver's own; the errno that the request fails with, or 0.
static int answer_private(const RequestRow* row, Query* query, int cut) {
  void* const payload = query->request->u.data.pointer;
  query->length = query->request->u.data.length;
  if (query->length < row->least_length) return EINVAL;
  const size_t taken = row->reply == 0 ? query->length : row->least_length;
  query->data = calloc(1, (taken > row->reply ? taken : row->reply) + 1);
  if (query->data == NULL) return ENOMEM;
  int error = copy_from_caller(query->data, payload, taken) ? row->answer(query) : EFAULT;
  if (error == 0 && !copy_to_caller(payload, query->data, shown_of(row->reply, cut, query->request))) error = EFAULT;
  free(query->data);
  return error;
}

static int answer(unsigned long number, struct iwreq* request, const char* radio, int cut) {
  const RequestRow* const row = find_row(number, request->u.data.flags);
  if (row == NULL) return EOPNOTSUPP;
  char* const settings = read_state(DRIVER_SETTINGS, request->ifr_name);
  if (settings == NULL) return EOPNOTSUPP;
  Query query = {request, request->ifr_name, settings, radio, radio[2] == 'i', NULL, 0};
  const int error = is_private(number) ? answer_private(row, &query, cut) : row->answer(&query);
  free(settings);
  return error;
}

// False when a signal that the caller handles ended the waiting.
static bool wait_for(unsigned ms) {
  const struct timespec time = {ms / 1000, ms % 1000 * 1000000L};
  return ms == 0 || nanosleep(&time, NULL) == 0;
}

// The errno that the request fails with, or 0.
static int serve(unsigned long number, struct iwreq* argument) {
  struct iwreq request;
  if (!copy_from_caller(&request, argument, sizeof request)) return EFAULT;
  request.ifr_name[IFNAMSIZ - 1] = '\0';
  if (!is_permitted(number)) return EPERM;
  if (if_nametoindex(request.ifr_name) == 0) return ENODEV;
  const char* const radio = radio_of(request.ifr_name);
  if (radio == NULL) return EOPNOTSUPP;
  Fault fault = {.cut = -1};
  if (meet_fault(number, &request, &fault) && !wait_for(fault.delay_ms)) return EINTR;
  const int error = fault.error != 0 ? fault.error : answer(number, &request, radio, fault.cut);
  // As the kernel gives the record back: an odd number gets something.
  if (error != 0 || number % 2 == 0) return error;
  return copy_to_caller(argument, &request, sizeof request) ? 0 : EFAULT;
}

__attribute__((visibility("default"))) int ioctl(int fd, unsigned long number, ...) {
  va_list arguments;
  va_start(arguments, number);
  void* const argument = va_arg(arguments, void*);
  va_end(arguments);
  if (!is_wireless(number)) return (int)syscall(SYS_ioctl, fd, number, argument);
  // EBADF.
  if (fcntl(fd, F_GETFD) < 0) return -1;
  const int before = errno;
  const int error = serve(number, argument);
  errno = error == 0 ? before : error;
  return error == 0 ? 0 : -1;
}
