// What callers hand the driver: kept as it came, in hexadecimal, in a file for each interface.
#define _GNU_SOURCE
#include <dirent.h>
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "sim/driver/answers.h"
#include "sim/driver/state.h"

static const char kOuiFilter[] = "OuiFilter";
static const char kProbeResponse[] = "ProbeResponse";

static int keep(const Query* query, const char* kind) {
  char path[128];
  snprintf(path, sizeof path, "%s/%s.%s", DRIVER_PAYLOADS, query->interface, kind);
  if (query->length == 0) return unlink(path) == 0 || errno == ENOENT ? 0 : errno;
  // No two threads of the machine share this name.
  char fresh[128];
  snprintf(fresh, sizeof fresh, "%s/new.%ld", DRIVER_PAYLOADS, (long)syscall(SYS_gettid));
  FILE* const file = fopen(fresh, "we");
  if (file == NULL) return errno;
  for (size_t i = 0; i < query->length; ++i) fprintf(file, "%02x", query->data[i]);
  if (fclose(file) != 0 || rename(fresh, path) != 0) return errno;
  return 0;
}

int keep_oui_filter(const Query* query) {
  return keep(query, kOuiFilter);
}

int keep_probe_response(const Query* query) {
  return keep(query, kProbeResponse);
}

// Whatever the payload names: the radio has no entry left afterwards, on any of its BSSs.
int forget_probe_responses(const Query* query) {
  DIR* const folder = opendir(DRIVER_PAYLOADS);
  if (folder == NULL) return errno;
  const size_t prefix = strlen(query->radio);
  for (const struct dirent* entry; (entry = readdir(folder)) != NULL;) {
    const char* const kind = strchr(entry->d_name, '.');
    const bool own = strncmp(entry->d_name, query->radio, prefix) == 0 && entry->d_name[prefix] >= '0' &&
                     entry->d_name[prefix] <= '9';
    if (own && kind != NULL && strcmp(kind + 1, kProbeResponse) == 0) unlinkat(dirfd(folder), entry->d_name, 0);
  }
  closedir(folder);
  return 0;
}
