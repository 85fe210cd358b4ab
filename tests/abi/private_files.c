#define _GNU_SOURCE

#include "private_files.h"

#include <fcntl.h>
#include <sched.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/mount.h>
#include <unistd.h>

static void refuse(const char* what) {
  perror(what);
  exit(EXIT_FAILURE);
}

static void write_map(const char* path, const char* format, unsigned id) {
  FILE* file = fopen(path, "w");
  if (file == NULL) refuse(path);
  fprintf(file, format, id);
  if (fclose(file) != 0) refuse(path);
}

void enter_private_namespaces(void) {
  const unsigned user = geteuid();
  const unsigned group = getegid();
  if (unshare((user != 0 ? CLONE_NEWUSER : 0) | CLONE_NEWIPC | CLONE_NEWNS) != 0) refuse("unshare");
  if (user != 0) {
    write_map("/proc/self/setgroups", "deny", 0);
    write_map("/proc/self/uid_map", "0 %u 1", user);
    write_map("/proc/self/gid_map", "0 %u 1", group);
  }
  if (mount(NULL, "/", NULL, MS_REC | MS_PRIVATE, NULL) != 0) refuse("private mounts");
  if (mount("tmpfs", "/tmp", "tmpfs", 0, "mode=1777") != 0) refuse("mount on /tmp");
}

void write_text(const char* path, const char* text) {
  FILE* file = fopen(path, "w");
  if (file == NULL) refuse(path);
  if (fputs(text, file) < 0) refuse(path);
  if (fclose(file) != 0) refuse(path);
}

void read_text(const char* path, char* text, size_t size) {
  FILE* file = fopen(path, "r");
  if (file == NULL) refuse(path);
  text[fread(text, 1, size - 1, file)] = '\0';
  if (fclose(file) != 0) refuse(path);
}
