/* Preloaded: ends the process, as kill -9 does, at a chosen write into 2.4G's store, WLANCTL_STORE_WRITE from 1, or
 * behind the step that lets go of its lock with something written. As finely as pages tell: the store can be written
 * only where its lock is held, and then only the two pages that were touched last; each other one counts anew. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <signal.h>
#include <stddef.h>
#include <stdint.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <time.h>
#include <unistd.h>

enum { STORE_KEY = 0x12345 };

static char* store;
static size_t store_size;
static char* open_pages[2];
static int writes, wished, is_written;

static size_t page_size(void) {
  return (size_t)sysconf(_SC_PAGESIZE);
}

static void count_write(void) {
  if (++writes == wished) kill(getpid(), SIGKILL);
}

static void protect(char* page, int how) {
  if (page != NULL && mprotect(page, page_size(), how) != 0) _exit(70);
}

static void touched(int number, siginfo_t* about, void* context) {
  (void)context;
  char* const at = about->si_addr;
  if (store == NULL || at < store || at >= store + store_size) {
    signal(number, SIG_DFL);
    return;
  }
  is_written = 1;
  count_write();
  protect(open_pages[1], PROT_READ);
  open_pages[1] = open_pages[0];
  open_pages[0] = store + (size_t)(at - store) / page_size() * page_size();
  protect(open_pages[0], PROT_READ | PROT_WRITE);
}

/* Also behind each step, so that the next one counts anew. */
static void close_pages(void) {
  if (store != NULL && mprotect(store, store_size, PROT_READ) != 0) _exit(70);
  open_pages[0] = open_pages[1] = NULL;
}

void* shmat(int segment, const void* address, int flags) {
  void* (*real)(int, const void*, int);
  *(void**)&real = dlsym(RTLD_NEXT, "shmat");
  struct shmid_ds status;
  void* const at = real(segment, address, flags);
  const char* const wish = getenv("WLANCTL_STORE_WRITE");
  if (wish == NULL || at == (void*)-1 || segment != shmget(STORE_KEY, 0, 0)) return at;
  if ((flags & SHM_RDONLY) != 0 || shmctl(segment, IPC_STAT, &status) != 0) return at;
  wished = atoi(wish);
  store = at;
  store_size = (status.shm_segsz + page_size() - 1) / page_size() * page_size();
  struct sigaction action = {.sa_sigaction = touched, .sa_flags = SA_SIGINFO};
  sigaction(SIGSEGV, &action, NULL);
  close_pages();
  return at;
}

int semtimedop(int semaphore, struct sembuf* steps, size_t count, const struct timespec* longest) {
  int (*real)(int, struct sembuf*, size_t, const struct timespec*);
  *(void**)&real = dlsym(RTLD_NEXT, "semtimedop");
  const int result = real(semaphore, steps, count, longest);
  if (store == NULL || count != 1 || steps[0].sem_op != 1) return result;
  close_pages();
  if (is_written) count_write();
  is_written = 0;
  return result;
}
