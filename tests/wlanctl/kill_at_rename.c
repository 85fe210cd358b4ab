/* Preloaded: ends the process, as kill -9 does, at a chosen step of writing a file. WLANCTL_KILL is "before" or "after",
 * which replacement of it from 1, and the file's path, separated by blanks. WLANCTL_KILL_IN is which step from 1 that
 * makes, writes, syncs, renames or removes something in a folder, and the folder's path: the process ends before it. */
#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

static void end_if(int hit) {
  if (hit) kill(getpid(), SIGKILL);
}

static void* real_of(const char* name) {
  return dlsym(RTLD_NEXT, name);
}

static void step_in(const char* path) {
  static int steps;
  char folder[128] = "";
  int number = 0;
  const char* wish = getenv("WLANCTL_KILL_IN");
  if (wish == NULL || sscanf(wish, "%d %127s", &number, folder) != 2) return;
  end_if(strncmp(path, folder, strlen(folder)) == 0 && ++steps == number);
}

static void step_of(int file) {
  char link[64], path[256] = "";
  snprintf(link, sizeof link, "/proc/self/fd/%d", file);
  if (readlink(link, path, sizeof path - 1) > 0) step_in(path);
}

int mkdir(const char* path, mode_t mode) {
  int (*real)(const char*, mode_t);
  *(void**)&real = real_of("mkdir");
  step_in(path);
  return real(path, mode);
}

int mkostemp(char* path, int flags) {
  int (*real)(char*, int);
  *(void**)&real = real_of("mkostemp");
  step_in(path);
  return real(path, flags);
}

ssize_t write(int file, const void* bytes, size_t size) {
  ssize_t (*real)(int, const void*, size_t);
  *(void**)&real = real_of("write");
  step_of(file);
  return real(file, bytes, size);
}

int fsync(int file) {
  int (*real)(int);
  *(void**)&real = real_of("fsync");
  step_of(file);
  return real(file);
}

int unlink(const char* path) {
  int (*real)(const char*);
  *(void**)&real = real_of("unlink");
  step_in(path);
  return real(path);
}

int rename(const char* from, const char* to) {
  static int calls;
  int (*real)(const char*, const char*);
  *(void**)&real = real_of("rename");
  char when[8] = "", path[128] = "";
  int number = 0;
  const char* wish = getenv("WLANCTL_KILL");
  const int hit = wish != NULL && sscanf(wish, "%7s %d %127s", when, &number, path) == 3 && strcmp(path, to) == 0 &&
                  ++calls == number;
  end_if(hit && strcmp(when, "before") == 0);
  step_in(to);
  const int result = real(from, to);
  end_if(hit && strcmp(when, "after") == 0);
  return result;
}
