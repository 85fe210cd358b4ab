// reboot: ends the processes, takes away what a boot would not have left, and boots.
#include <sys/ipc.h>
#include <sys/msg.h>
#include <sys/sem.h>
#include <sys/shm.h>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/network/network_state.h"
#include "sim/radio/boot.h"
#include "sim/records/journal.h"
#include "sim/tools/process.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

union SemaphoreArgument {
  int value;
  semid_ds* status;
  seminfo* info;
};

int remove_segments() {
  shm_info info = {};
  const int highest = shmctl(0, SHM_INFO, reinterpret_cast<shmid_ds*>(&info));
  int removed = 0;
  for (int slot = 0; slot <= highest; ++slot) {
    shmid_ds status = {};
    const int id = shmctl(slot, SHM_STAT, &status);
    if (id >= 0 && shmctl(id, IPC_RMID, nullptr) == 0) ++removed;
  }
  return removed;
}

int remove_semaphores() {
  seminfo info = {};
  SemaphoreArgument argument = {};
  argument.info = &info;
  const int highest = semctl(0, 0, SEM_INFO, argument);
  int removed = 0;
  for (int slot = 0; slot <= highest; ++slot) {
    semid_ds status = {};
    argument.status = &status;
    const int id = semctl(slot, 0, SEM_STAT, argument);
    if (id >= 0 && semctl(id, 0, IPC_RMID) == 0) ++removed;
  }
  return removed;
}

void remove_message_queues() {
  msginfo info = {};
  const int highest = msgctl(0, MSG_INFO, reinterpret_cast<msqid_ds*>(&info));
  for (int slot = 0; slot <= highest; ++slot) {
    msqid_ds status = {};
    const int id = msgctl(slot, MSG_STAT, &status);
    if (id >= 0) msgctl(id, IPC_RMID, nullptr);
  }
}

}  // namespace

Words boot_again(const std::string& why) {
  const NetworkState before = read_network_state();
  const int segments = remove_segments();
  const int semaphores = remove_semaphores();
  remove_message_queues();
  empty_folder("/tmp");
  empty_folder("/run", {name_of(place::kState)});
  boot();
  Words changes = {why, std::to_string(segments) + " shared memory segments removed",
                   std::to_string(semaphores) + " semaphores removed"};
  const Words network = changes_between(before, read_network_state());
  changes.insert(changes.end(), network.begin(), network.end());
  return changes;
}

int reboot(const Words& words) {
  end_processes(true);
  const StateLock lock;
  record_call(words, boot_again("rebooted"));
  return 0;
}

}  // namespace gateway::tools
