/* Takes a band's lock, named by its key, makes the file "held", and lets go when the file "done" is there. With a second
 * word it ends at once, and leaves the lock taken: not even the kernel gives it back. With "segment" as that word it is
 * the band's segment that it attaches, and lets go likewise. */
#include <fcntl.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <unistd.h>

static int wait_until_done(void) {
  if (open("held", O_CREAT | O_WRONLY, 0600) < 0) return 1;
  while (access("done", F_OK) != 0) usleep(20000);
  return 0;
}

int main(int argc, char** argv) {
  if (argc > 2 && strcmp(argv[2], "segment") == 0) {
    const int segment = shmget((key_t)strtol(argv[1], NULL, 0), 0, 0);
    return shmat(segment, NULL, 0) == (void*)-1 ? 1 : wait_until_done();
  }
  const int id = argc > 1 ? semget((key_t)strtol(argv[1], NULL, 0), 1, 0) : -1;
  struct sembuf take = {0, -1, argc > 2 ? 0 : SEM_UNDO};
  if (id < 0 || semop(id, &take, 1) != 0) return 1;
  if (argc > 2) return open("held", O_CREAT | O_WRONLY, 0600) < 0;
  return wait_until_done();
}
