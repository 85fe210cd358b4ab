#include "wlanctl/store/lock_holder.h"

#include <sys/sem.h>

#include <cerrno>

#include "wlanctl/files/process.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {

LockHolder lock_holder(Band band) {
  const int id = semaphore_of(band);
  if (id < 0 || semctl(id, 0, GETVAL) != 0) return {};
  const pid_t process = semctl(id, 0, GETPID);
  if (process <= 0) return {LockHolder::Is::kUnknown, 0};
  // One that nobody has waited for yet lets nothing go any more.
  return {has_ended(process) ? LockHolder::Is::kGone : LockHolder::Is::kRunning, process};
}

std::string name_of(const LockHolder& holder) {
  if (holder.is == LockHolder::Is::kUnknown) return "a process that the kernel does not name";
  return text_of_process(holder.process);
}

bool free_lock(Band band, const LockHolder& from) {
  const int id = semaphore_of(band);
  if (id < 0) return false;
  if (semctl(id, 0, GETPID) != from.process) {
    errno = EBUSY;
    return false;
  }
  sembuf step = {0, 1, IPC_NOWAIT};
  return semctl(id, 0, GETVAL) != 0 || semop(id, &step, 1) == 0;
}

}  // namespace wlanctl
