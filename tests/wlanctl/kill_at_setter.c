/* Preloaded: while a change of SSIDs is under way, ends the process at one of the values that are stored, as kill -9 does,
 * or has the store refuse it. WLANCTL_SETTER is "kill" or "refuse", and which of them from 1. */
#include <dlfcn.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

int update_attr(int band, int index, const char* name, const char* value) {
  static int calls;
  int (*real)(int, int, const char*, const char*);
  *(void**)&real = dlsym(RTLD_NEXT, "update_attr");
  char what[8] = "";
  int number = 0;
  const char* wish = getenv("WLANCTL_SETTER");
  const int hit = wish != NULL && sscanf(wish, "%7s %d", what, &number) == 2 &&
                  access("/var/run/wlanctl-storing", F_OK) == 0 && ++calls == number;
  if (hit && strcmp(what, "kill") == 0) kill(getpid(), SIGKILL);
  if (hit && strcmp(what, "refuse") == 0) return 1;
  return real(band, index, name, value);
}
