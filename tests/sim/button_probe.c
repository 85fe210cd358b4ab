// Opens a file one way and prints what it reads, with the descriptor's flags in front.
//   button_probe FUNCTION PATH
//   button_probe locked PATH COMMAND      runs a shell command while it holds the file's lock, and lives as long
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <unistd.h>

// What open becomes under fortified headers.
extern int __open_2(const char* path, int flags);

static int opened(const char* function, const char* path) {
  if (strcmp(function, "open") == 0) return open(path, O_RDONLY);
  if (strcmp(function, "open-nonblocking") == 0) return open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (strcmp(function, "open64") == 0) return open64(path, O_RDONLY | O_CLOEXEC);
  if (strcmp(function, "openat") == 0) return openat(AT_FDCWD, path, O_RDONLY);
  if (strcmp(function, "openat64") == 0) return openat64(AT_FDCWD, path, O_RDONLY);
  if (strcmp(function, "fortified") == 0) return __open_2(path, O_RDONLY);
  if (strcmp(function, "read-write") == 0) return open(path, O_RDWR);
  if (strcmp(function, "append") == 0) return open(path, O_WRONLY | O_APPEND);
  return -1;
}

static int run_locked(const char* path, const char* command) {
  const int fd = open(path, O_RDWR | O_CLOEXEC);
  if (fd < 0 || flock(fd, LOCK_EX) != 0) return 1;
  return system(command) == 0 ? 0 : 1;
}

int main(int argc, char** argv) {
  if (argc == 4 && strcmp(argv[1], "locked") == 0) return run_locked(argv[2], argv[3]);
  if (argc != 3) return 2;
  errno = 0;
  const int fd = opened(argv[1], argv[2]);
  if (fd < 0) {
    printf("%s\n", strerrorname_np(errno));
    return 1;
  }
  const int error = errno;
  char text[64] = "";
  const ssize_t got = read(fd, text, sizeof text - 1);
  printf("%s%s%s%s\n", (fcntl(fd, F_GETFL) & O_NONBLOCK) != 0 ? "nonblocking " : "",
         (fcntl(fd, F_GETFD) & FD_CLOEXEC) != 0 ? "cloexec " : "", error != 0 ? "errno " : "", got >= 0 ? text : "?");
  close(fd);
  return 0;
}
