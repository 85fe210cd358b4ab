/* Prints the bytes of a shared-memory segment, named by its key. */
#include <stdio.h>
#include <stdlib.h>
#include <sys/ipc.h>
#include <sys/shm.h>

int main(int argc, char** argv) {
  struct shmid_ds status;
  const int id = argc > 1 ? shmget((key_t)strtol(argv[1], NULL, 0), 0, 0) : -1;
  if (id < 0 || shmctl(id, IPC_STAT, &status) != 0) return 1;
  const void* const bytes = shmat(id, NULL, SHM_RDONLY);
  if (bytes == (const void*)-1) return 1;
  return fwrite(bytes, 1, status.shm_segsz, stdout) == status.shm_segsz ? 0 : 1;
}
