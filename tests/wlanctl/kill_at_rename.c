/* Preloaded: ends the process, as kill -9 does, at a chosen replacement of a file. WLANCTL_KILL is "before" or "after",
 * which replacement of it from 1, and the file's path, separated by blanks. */
#include <dlfcn.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static void end_if(int hit) {
  if (hit) kill(getpid(), SIGKILL);
}

int rename(const char* from, const char* to) {
  static int calls;
  int (*real)(const char*, const char*);
  *(void**)&real = dlsym(RTLD_NEXT, "rename");
  char when[8] = "", path[128] = "";
  int number = 0;
  const char* wish = getenv("WLANCTL_KILL");
  const int hit = wish != NULL && sscanf(wish, "%7s %d %127s", when, &number, path) == 3 && strcmp(path, to) == 0 &&
                  ++calls == number;
  end_if(hit && strcmp(when, "before") == 0);
  const int result = real(from, to);
  end_if(hit && strcmp(when, "after") == 0);
  return result;
}
