#define _GNU_SOURCE
#include <sys/syscall.h>
#include <unistd.h>

#include "make_request.h"

int make_request(int fd, unsigned long number, void* record) {
  return (int)syscall(SYS_ioctl, fd, number, record);
}
