/* Preloaded: when the process has let go of a store's lock for the nth time, WLANCTL_STEP, since it noted what it is
 * storing, it is ended as kill -9 does or, where WLANCTL_STEP_RUN has a command, waits for that. Each write of the
 * library is between taking the lock and letting it go. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/sem.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

static void run(const char* command) {
  const pid_t child = fork();
  if (child == 0) {
    unsetenv("WLANCTL_STEP");
    execl("/bin/sh", "sh", "-c", command, (char*)NULL);
    _exit(127);
  }
  if (child > 0) waitpid(child, NULL, 0);
}

int semtimedop(int semaphore, struct sembuf* steps, size_t count, const struct timespec* longest) {
  static int frees;
  int (*real)(int, struct sembuf*, size_t, const struct timespec*);
  *(void**)&real = dlsym(RTLD_NEXT, "semtimedop");
  const int result = real(semaphore, steps, count, longest);
  const char* wish = getenv("WLANCTL_STEP");
  if (wish == NULL || count != 1 || steps[0].sem_op != 1 || access("/var/run/wlanctl-storing", F_OK) != 0)
    return result;
  if (++frees != atoi(wish)) return result;
  const char* command = getenv("WLANCTL_STEP_RUN");
  if (command == NULL) kill(getpid(), SIGKILL);
  if (command != NULL) run(command);
  return result;
}
