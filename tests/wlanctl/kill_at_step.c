/* Preloaded: ends the process, as kill -9 does, when it has let go of a store's lock for the nth time, WLANCTL_STEP, since
 * it noted what it is storing. Each write of the library is between taking the lock and letting it go. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/sem.h>
#include <time.h>
#include <unistd.h>

int semtimedop(int semaphore, struct sembuf* steps, size_t count, const struct timespec* longest) {
  static int frees;
  int (*real)(int, struct sembuf*, size_t, const struct timespec*);
  *(void**)&real = dlsym(RTLD_NEXT, "semtimedop");
  const int result = real(semaphore, steps, count, longest);
  const char* wish = getenv("WLANCTL_STEP");
  if (wish == NULL || count != 1 || steps[0].sem_op != 1 || access("/var/run/wlanctl-storing", F_OK) != 0)
    return result;
  if (++frees == atoi(wish)) kill(getpid(), SIGKILL);
  return result;
}
