/* Stand-in for the platform's debug library: the trace switch is read from two files, messages go to standard error.
 *
 * A level is on when "/tmp/wifi_lib_dbg_enable" begins with "1" and the number in "/tmp/vexalib_dbg" is at least that
 * level; without the second file the number is 1, so that errors show and the trace does not. */
#define _POSIX_C_SOURCE 200809L

#include "vexa_lib_dbg.h"

#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <signal.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#define EXPORTED __attribute__((visibility("default")))

enum { kLongestLine = 4096 };

/* A second is all that is measured, so a clock that is as old as the last tick will do. */
#ifdef CLOCK_MONOTONIC_COARSE
static const clockid_t kClock = CLOCK_MONOTONIC_COARSE;
#else
static const clockid_t kClock = CLOCK_MONOTONIC;
#endif

/* Reads the start of a small text file; returns its length, or -1 when it cannot be opened. Anybody may have put
 * something else in its place: a pipe must not be waited for, nor a device be opened through a link. */
static ssize_t read_start(const char* path, char* text, size_t size) {
  int fd = open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW | O_CLOEXEC);
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
  if (clock_gettime(kClock, &now) != 0) return 0;
  int64_t now_ns = (int64_t)now.tv_sec * 1000000000 + now.tv_nsec;
  if (now_ns >= next_look_ns) {
    next_look_ns = now_ns + 1000000000;
    highest_on = highest_level_on();
  }
  return level <= highest_on;
}

/* Standard error of its own, which does not wait; -1 without one. The flag of the descriptor itself would be that of
 * every process that has inherited it. */
static int open_without_waiting(void) {
  return open("/proc/self/fd/2", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

static ssize_t write_to_pipe(const char* line, size_t length) {
  int fd = open_without_waiting();
  if (fd >= 0) {
    ssize_t written = write(fd, line, length);
    int error = errno;
    close(fd);
    errno = error;
    return written;
  }
  /* Without /proc, or a pipe of somebody else's: another writer may fill it behind this look. */
  struct pollfd room = {.fd = STDERR_FILENO, .events = POLLOUT};
  if (poll(&room, 1, 0) != 1 || (room.revents & POLLOUT) == 0) return -1;
  return write(STDERR_FILENO, line, length);
}

/* The caller may hold the lock of a band: a line that cannot be written now is lost. */
static ssize_t write_now(const char* line, size_t length) {
  /* Everything that the library opens is close-on-exec. Where standard error was closed, its number may be that of a
   * dat file by now. */
  int flags = fcntl(STDERR_FILENO, F_GETFD);
  struct stat status;
  if (flags < 0 || (flags & FD_CLOEXEC) != 0 || fstat(STDERR_FILENO, &status) != 0) return -1;
  if (S_ISSOCK(status.st_mode)) return send(STDERR_FILENO, line, length, MSG_DONTWAIT | MSG_NOSIGNAL);
  if (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode)) return write_to_pipe(line, length);
  return write(STDERR_FILENO, line, length);
}

/* The same without the signals that a write can raise, which would end or stop the process. */
static ssize_t write_quietly(const char* line, size_t length) {
  static const int raised[] = {SIGPIPE, SIGXFSZ, SIGTTOU};
  enum { kRaised = sizeof raised / sizeof raised[0] };
  sigset_t blocked, before, pending;
  sigemptyset(&blocked);
  for (int i = 0; i < kRaised; ++i) sigaddset(&blocked, raised[i]);
  if (sigpending(&pending) != 0 || pthread_sigmask(SIG_BLOCK, &blocked, &before) != 0) return -1;

  ssize_t written = write_now(line, length);

  /* What was pending before is not this line's. */
  for (int i = 0; i < kRaised; ++i) {
    if (sigismember(&pending, raised[i]) == 1) sigdelset(&blocked, raised[i]);
  }
  static const struct timespec at_once = {0, 0};
  while (sigtimedwait(&blocked, NULL, &at_once) > 0) continue;
  (void)pthread_sigmask(SIG_SETMASK, &before, NULL);
  return written;
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
  int error = errno;
  int written = (int)write_quietly(line, (size_t)length);
  errno = error;
  return written;
}
