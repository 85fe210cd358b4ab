// Sends one request to the driver and prints the reply in hexadecimal, or the error.
//   request_probe INTERFACE NUMBER OID LENGTH [PAYLOAD [SHOWN [HOW]]]
// NUMBER and OID are hexadecimal. PAYLOAD is hexadecimal, "-" for zeros, "null" for no buffer at all, "wild" for an
// address where nothing is or "const" for zeros that cannot be written; SHOWN is how much of the reply to print when that
// is not LENGTH. INTERFACE "closed" sends to ra0 over a descriptor that is none, "wild" from an address where nothing is. HOW
// "length" prints what the length field says afterwards, too; "handled" has SIGUSR1 handled, and the request restarted.
#define _GNU_SOURCE
#include <net/if.h>

#include <errno.h>
#include <linux/wireless.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>

enum { kRoom = 70000, kBeyond = 0xa5 };

static unsigned char g_data[kRoom];

static void on_signal(int number) {
  (void)number;
}

int main(int argc, char** argv) {
  if (argc < 5) return 2;
  const int closed = strcmp(argv[1], "closed") == 0;
  const char* payload = argc > 5 ? argv[5] : "-";
  void* const nowhere = (void*)16;
  const size_t length = strtoul(argv[4], NULL, 10);
  const size_t shown = argc > 6 ? strtoul(argv[6], NULL, 10) : length;
  const size_t used = shown > length ? shown : length;

  memset(g_data, kBeyond, sizeof g_data);
  memset(g_data, 0, used);
  void* data = g_data;
  if (strcmp(payload, "null") == 0) {
    data = NULL;
  } else if (strcmp(payload, "wild") == 0) {
    data = nowhere;
  } else if (strcmp(payload, "const") == 0) {
    data = mmap(NULL, kRoom, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  } else if (payload[0] != '-') {
    for (size_t i = 0; payload[2 * i] != '\0'; ++i) sscanf(payload + 2 * i, "%2hhx", &g_data[i]);
  }
  struct iwreq request;
  memset(&request, 0, sizeof request);
  strncpy(request.ifr_name, closed ? "ra0" : argv[1], sizeof request.ifr_name - 1);
  request.u.data.pointer = data;
  request.u.data.length = (unsigned short)length;
  request.u.data.flags = (unsigned short)strtoul(argv[3], NULL, 16);
  const char* const how = argc > 7 ? argv[7] : "";
  if (strcmp(how, "handled") == 0) {
    struct sigaction action;
    memset(&action, 0, sizeof action);
    action.sa_handler = on_signal;
    action.sa_flags = SA_RESTART;
    sigaction(SIGUSR1, &action, NULL);
  }
  const int fd = closed ? -1 : socket(AF_INET, SOCK_DGRAM, 0);
  const int wild = strcmp(argv[1], "wild") == 0;
  if (ioctl(fd, strtoul(argv[2], NULL, 16), wild ? nowhere : (void*)&request) < 0) {
    printf("%s\n", strerrorname_np(errno));
    return 1;
  }
  for (size_t i = used; i < sizeof g_data; ++i) {
    if (g_data[i] != kBeyond) return 3;
  }
  for (size_t i = 0; i < shown; ++i) printf("%02x", g_data[i]);
  if (strcmp(how, "length") == 0) printf(" %u", (unsigned)request.u.data.length);
  printf("\n");
  return 0;
}
