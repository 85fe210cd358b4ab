// Prints what the driver answers for an interface: its name, then the mantissa of its frequency, or the error.
#define _GNU_SOURCE
#include <net/if.h>

#include <errno.h>
#include <linux/wireless.h>
#include <stdio.h>
#include <string.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const int fd = socket(AF_INET, SOCK_DGRAM, 0);
  struct iwreq request;
  memset(&request, 0, sizeof request);
  snprintf(request.ifr_name, sizeof request.ifr_name, "%s", argv[1]);
  if (ioctl(fd, SIOCGIWNAME, &request) != 0) {
    printf("%s\n", strerrorname_np(errno));
    return 1;
  }
  printf("%s\n", request.u.name);
  if (ioctl(fd, SIOCGIWFREQ, &request) != 0) {
    printf("%s\n", strerrorname_np(errno));
    return 1;
  }
  printf("%d\n", request.u.freq.m);
  return 0;
}
