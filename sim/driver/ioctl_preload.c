// The WLAN driver's side of the wireless requests: preloaded into every program of the simulation, it answers those
// addressed to the radios' interfaces from the driver's state and hands everything else to the kernel. It keeps nothing
// between two requests, so any process sees at once what another one changed.
#define _GNU_SOURCE
#include <net/if.h>

#include <fcntl.h>
#include <linux/wireless.h>
#include <stdarg.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

#define DRIVER_STATE "/run/gateway-sim/driver"

enum { kStateSize = 8192 };

// Reads the settings of an interface; false when the driver has no such interface.
static bool read_state(const char* interface, char state[kStateSize]) {
  char path[sizeof DRIVER_STATE + 1 + IFNAMSIZ];
  snprintf(path, sizeof path, "%s/%s", DRIVER_STATE, interface);
  const int fd = open(path, O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  size_t used = 0;
  for (ssize_t got; used < kStateSize - 1 && (got = read(fd, state + used, kStateSize - 1 - used)) > 0;) {
    used += (size_t)got;
  }
  state[used] = '\0';
  close(fd);
  return true;
}

// The number that a key is set to, 0 when it is missing.
static int number_of(const char* state, const char* key) {
  const size_t length = strlen(key);
  for (const char* line = state; line != NULL && *line != '\0';) {
    if (strncmp(line, key, length) == 0 && line[length] == '=') return atoi(line + length + 1);
    line = strchr(line, '\n');
    if (line != NULL) ++line;
  }
  return 0;
}

static void answer_name(struct iwreq* request, const char* state) {
  (void)state;
  snprintf(request->u.name, sizeof request->u.name, "IEEE 802.11");
}

// This driver reports a channel, not a frequency: the mantissa is the channel's number.
static void answer_frequency(struct iwreq* request, const char* state) {
  memset(&request->u.freq, 0, sizeof request->u.freq);
  request->u.freq.m = number_of(state, "Channel");
}

typedef void (*Answer)(struct iwreq* request, const char* state);

static const struct {
  unsigned long request;
  Answer answer;
} kAnswers[] = {
    {SIOCGIWNAME, answer_name},
    {SIOCGIWFREQ, answer_frequency},
};

static Answer find_answer(unsigned long request) {
  for (size_t i = 0; i < sizeof kAnswers / sizeof kAnswers[0]; ++i) {
    if (kAnswers[i].request == request) return kAnswers[i].answer;
  }
  return NULL;
}

static bool is_radio(const char interface[IFNAMSIZ]) {
  if (strnlen(interface, IFNAMSIZ) == IFNAMSIZ || strncmp(interface, "ra", 2) != 0) return false;
  const char* number = interface + (interface[2] == 'i' ? 3 : 2);
  return *number != '\0' && strspn(number, "0123456789") == strlen(number) && if_nametoindex(interface) != 0;
}

__attribute__((visibility("default"))) int ioctl(int fd, unsigned long request, ...) {
  va_list arguments;
  va_start(arguments, request);
  void* argument = va_arg(arguments, void*);
  va_end(arguments);

  const Answer answer = find_answer(request);
  struct iwreq* wireless = argument;
  char state[kStateSize];
  if (answer != NULL && wireless != NULL && is_radio(wireless->ifr_name) && read_state(wireless->ifr_name, state)) {
    answer(wireless, state);
    return 0;
  }
  return (int)syscall(SYS_ioctl, fd, request, argument);
}
