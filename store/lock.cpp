#include "store/lock.h"

#include <sys/ipc.h>
#include <sys/sem.h>

#include "store/trace.h"
#include "wifimgr_lib.h"

int semid_2_4g = -1;
int semid_5g = -1;

namespace store {

int look_up_semaphore(int band) {
  return semget(semaphore_key(band), 1, 0666);
}

}  // namespace store

namespace {

// The fourth argument of semctl, which the C library leaves to its callers to declare.
union SemaphoreArgument {
  int value;
  struct semid_ds* status;
  unsigned short* array;
};

// SEM_UNDO: the kernel gives back the lock of a holder that dies. A wait ended by a signal is a failure.
bool operate(int semid, short operation) {
  struct sembuf step = {0, operation, SEM_UNDO};
  return semop(semid, &step, 1) == 0;
}

}  // namespace

extern "C" int set_semvalue(int semid, int value) {
  trace::enter(__func__);
  SemaphoreArgument argument = {};
  argument.value = value;
  if (semctl(semid, 0, SETVAL, argument) < 0) return trace::fail(__func__, "set_semvalue failed.");
  return trace::success(__func__);
}

extern "C" int del_semvalue(int semid) {
  trace::enter(__func__);
  if (semctl(semid, 0, IPC_RMID, SemaphoreArgument{}) < 0) return trace::fail(__func__, "del_semvalue failed.");
  return trace::success(__func__);
}

// "seamphore" in both messages: callers match the text, keep the spelling.
extern "C" int semaphore_p(int semid) {
  trace::enter_often(__func__);
  if (!operate(semid, -1)) return trace::fail(__func__, "seamphore_p failed.");
  return trace::success_often(__func__);
}

extern "C" int semaphore_v(int semid) {
  trace::enter_often(__func__);
  if (!operate(semid, +1)) return trace::fail(__func__, "seamphore_v failed.");
  return trace::success_often(__func__);
}
