// The board's buttons: a file that a pressed button has filled gives what it holds to the first who opens it to read,
// and is empty again.
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdbool.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "sim/driver/state.h"

#define VISIBLE __attribute__((visibility("default")))

static const char* const kButtons[] = {"wlan_button", "wps_button", "wps_5g_button", "wlan_wps_button",
                                       "wlan11ac_button"};
static const char kBoard[] = "/proc/zq2810/";

static bool is_button(const char* path) {
  if (path == NULL || strncmp(path, kBoard, sizeof kBoard - 1) != 0) return false;
  for (size_t i = 0; i < sizeof kButtons / sizeof kButtons[0]; ++i) {
    if (strcmp(path + sizeof kBoard - 1, kButtons[i]) == 0) return true;
  }
  return false;
}

// Moves what is in the file to a file in memory; -1 when there is nothing. Of two readers only one gets it.
static int take_press(int button, int flags) {
  lock_state(button);
  char text[4096];
  const ssize_t length = read(button, text, sizeof text);
  if (length <= 0) return -1;
  const int copy = memfd_create("button", (flags & O_CLOEXEC) != 0 ? MFD_CLOEXEC : 0);
  if (copy < 0) return -1;
  if (write(copy, text, (size_t)length) != length || ftruncate(button, 0) != 0) {
    close(copy);
    return -1;
  }
  lseek(copy, 0, SEEK_SET);
  if ((flags & O_NONBLOCK) != 0) fcntl(copy, F_SETFL, O_NONBLOCK);
  return copy;
}

static int open_any(int folder, const char* path, int flags, mode_t mode) {
  const bool reads = (flags & O_ACCMODE) == O_RDONLY && (flags & (O_PATH | O_DIRECTORY | O_TRUNC)) == 0;
  if (reads && is_button(path)) {
    const int before = errno;
    const int button = open_state(path, O_RDWR);
    const int press = button < 0 ? -1 : take_press(button, flags);
    if (button >= 0) close(button);
    errno = before;
    if (press >= 0) return press;
  }
  return (int)syscall(SYS_openat, folder, path, flags, mode);
}

// Only a call that may create a file has a mode.
#define MODE_OF(flags, mode)                                                          \
  do {                                                                                \
    va_list arguments;                                                                \
    va_start(arguments, flags);                                                       \
    const bool has_mode = ((flags)&O_CREAT) != 0 || ((flags)&O_TMPFILE) == O_TMPFILE; \
    (mode) = has_mode ? va_arg(arguments, mode_t) : 0;                                \
    va_end(arguments);                                                                \
  } while (0)

VISIBLE int open(const char* path, int flags, ...) {
  mode_t mode;
  MODE_OF(flags, mode);
  return open_any(AT_FDCWD, path, flags, mode);
}

VISIBLE int openat(int folder, const char* path, int flags, ...) {
  mode_t mode;
  MODE_OF(flags, mode);
  return open_any(folder, path, flags, mode);
}

#ifdef __USE_LARGEFILE64
VISIBLE int open64(const char* path, int flags, ...) {
  mode_t mode;
  MODE_OF(flags, mode);
  return open_any(AT_FDCWD, path, flags | O_LARGEFILE, mode);
}

VISIBLE int openat64(int folder, const char* path, int flags, ...) {
  mode_t mode;
  MODE_OF(flags, mode);
  return open_any(folder, path, flags | O_LARGEFILE, mode);
}
#endif

// What open becomes in programs built with fortified headers.
VISIBLE int __open_2(const char* path, int flags) {
  return open_any(AT_FDCWD, path, flags, 0);
}

VISIBLE int __open64_2(const char* path, int flags) {
  return open_any(AT_FDCWD, path, flags | O_LARGEFILE, 0);
}

VISIBLE int __openat_2(int folder, const char* path, int flags) {
  return open_any(folder, path, flags, 0);
}

VISIBLE int __openat64_2(int folder, const char* path, int flags) {
  return open_any(folder, path, flags | O_LARGEFILE, 0);
}
