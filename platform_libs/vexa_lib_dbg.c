/* Stand-in for the platform's debug library: the trace switch is read from two files, messages go to standard error.
 *
 * A level is on when "/tmp/wifi_lib_dbg_enable" begins with "1" and the number in "/tmp/vexalib_dbg" is at least that
 * level; without the second file the number is 1, so that errors show and the trace does not. */
#define _POSIX_C_SOURCE 200809L

#include "vexa_lib_dbg.h"

#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
#include <unistd.h>

#define EXPORTED __attribute__((visibility("default")))

enum { kLongestLine = 4096 };

/* Reads the start of a small text file; returns its length, or -1 when it cannot be opened. */
static ssize_t read_start(const char* path, char* text, size_t size) {
  int fd = open(path, O_RDONLY | O_CLOEXEC);
  if (fd < 0) return -1;
  ssize_t length = read(fd, text, size - 1);
  close(fd);
  if (length < 0) length = 0;
  text[length] = '\0';
  return length;
}

static int highest_level_on(void) {
  char text[32];
  if (read_start("/tmp/wifi_lib_dbg_enable", text, sizeof text) < 1 || text[0] != '1') return INT_MIN;
  if (read_start("/tmp/vexalib_dbg", text, sizeof text) < 0) return 1;
  return (int)strtol(text, NULL, 10);
}

EXPORTED int get_itf_dbg_switch(int level, int module) {
  /* The files are looked at once a second at most: this is asked several times in every call of the library. */
  static _Atomic int64_t next_look_ns;
  static _Atomic int highest_on = INT_MIN;
  struct timespec now;
  (void)module;
  if (clock_gettime(CLOCK_MONOTONIC, &now) != 0) return 0;
  int64_t now_ns = (int64_t)now.tv_sec * 1000000000 + now.tv_nsec;
  if (now_ns >= next_look_ns) {
    next_look_ns = now_ns + 1000000000;
    highest_on = highest_level_on();
  }
  return level <= highest_on;
}

EXPORTED int vexa_itf_printf(const char* fmt, ...) {
  char line[kLongestLine];
  va_list args;
  va_start(args, fmt);
  int length = vsnprintf(line, sizeof line, fmt, args);
  va_end(args);
  if (length < 0) return length;
  if (length >= kLongestLine) {
    length = kLongestLine - 1;
    line[length - 1] = '\n';
  }
  /* One write a line, so that the lines of several processes do not mix. */
  return (int)write(STDERR_FILENO, line, (size_t)length);
}
