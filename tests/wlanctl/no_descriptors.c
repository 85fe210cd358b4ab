/* Preloaded: a process without a descriptor left for the file that WLANCTL_UNOPENED names. */
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>

int open(const char* path, int flags, ...) {
  int (*real)(const char*, int, ...);
  *(void**)&real = dlsym(RTLD_NEXT, "open");
  const char* const unopened = getenv("WLANCTL_UNOPENED");
  if (unopened != NULL && strcmp(path, unopened) == 0) {
    errno = EMFILE;
    return -1;
  }
  va_list rest;
  va_start(rest, flags);
  const int mode = (flags & O_CREAT) != 0 ? va_arg(rest, int) : 0;
  va_end(rest);
  return real(path, flags, mode);
}
