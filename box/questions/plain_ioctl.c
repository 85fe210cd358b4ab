#include <sys/ioctl.h>

#include "make_request.h"

int make_request(int fd, unsigned long number, void* record) {
  return ioctl(fd, number, record);
}
