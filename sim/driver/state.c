#define _GNU_SOURCE
#include "sim/driver/state.h"

#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

int open_state(const char* path, int flags) {
  return (int)syscall(SYS_openat, AT_FDCWD, path, flags | O_CLOEXEC, 0);
}

char* read_state(const char* folder, const char* name) {
  char path[128];
  if (snprintf(path, sizeof path, "%s/%s", folder, name) >= (int)sizeof path) return NULL;
  const int fd = open_state(path, O_RDONLY);
  if (fd < 0) return NULL;
  struct stat status;
  char* text = fstat(fd, &status) == 0 ? malloc((size_t)status.st_size + 1) : NULL;
  if (text != NULL) {
    const size_t size = (size_t)status.st_size;
    size_t used = 0;
    for (ssize_t got; used < size;) {
      got = read(fd, text + used, size - used);
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) break;
      used += (size_t)got;
    }
    text[used] = '\0';
  }
  close(fd);
  return text;
}

char* read_radio_list(const char* kind, const char* radio) {
  char name[32];
  snprintf(name, sizeof name, "%s-%s", kind, radio);
  return read_state(DRIVER_LISTS, name);
}

void lock_state(int fd) {
  while (flock(fd, LOCK_EX) != 0 && errno == EINTR) continue;
}
