/* Does to a band's store what only a process that went wrong does: damage_store HOW KEY, with the key of the segment or,
 * for "raise" and "unnamed", of the semaphore. */
#include <stdlib.h>
#include <string.h>
#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/shm.h>

static int overwrite(int segment, char* bytes) {
  struct shmid_ds status;
  if (shmctl(segment, IPC_STAT, &status) != 0) return 1;
  memset(bytes, 0xff, status.shm_segsz);
  return 0;
}

static int forbid(int segment) {
  struct shmid_ds status;
  if (shmctl(segment, IPC_STAT, &status) != 0) return 1;
  status.shm_perm.mode = 0;
  return shmctl(segment, IPC_SET, &status) != 0;
}

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const key_t key = (key_t)strtol(argv[2], NULL, 0);
  if (strcmp(argv[1], "raise") == 0) {
    struct sembuf give = {0, 1, 0};
    return semop(semget(key, 1, 0), &give, 1) != 0;
  }
  /* Taken, as it is made, and by nobody that the kernel knows. */
  if (strcmp(argv[1], "unnamed") == 0) {
    return semctl(semget(key, 1, 0), 0, IPC_RMID) != 0 || semget(key, 1, IPC_CREAT | 0666) < 0;
  }
  const int segment = shmget(key, 0, 0);
  if (strcmp(argv[1], "forbid") == 0) return forbid(segment);
  char* const bytes = shmat(segment, NULL, 0);
  if (bytes == (char*)-1) return 1;
  if (strcmp(argv[1], "overwrite") == 0) return overwrite(segment, bytes);
  if (strcmp(argv[1], "empty") == 0) bytes[0] = '\0';
  if (strcmp(argv[1], "quarter") == 0) {
    struct shmid_ds status;
    if (shmctl(segment, IPC_STAT, &status) != 0) return 1;
    memset(bytes + status.shm_segsz / 4, 0, status.shm_segsz - status.shm_segsz / 4);
  }
  /* The first key fills its place, and its value begins with a line end. */
  if (strcmp(argv[1], "unended") == 0) {
    memset(bytes, 'x', 36);
    bytes[36] = '\n';
  }
  /* The first value, past its end: keys have 36 bytes, values 150. */
  if (strcmp(argv[1], "fill") == 0) memset(bytes + 36, 'x', 150);
  return 0;
}
