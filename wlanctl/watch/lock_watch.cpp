#include "wlanctl/watch/lock_watch.h"

#include <sys/sem.h>

#include "wlanctl/files/process.h"
#include "wlanctl/store/lock_holder.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

time_t last_step_of(Band band) {
  semid_ds status = {};
  const int id = semaphore_of(band);
  return id >= 0 && semctl(id, 0, IPC_STAT, &status) == 0 ? status.sem_otime : 0;
}

}  // namespace

void LockWatch::look(Events& events) {
  const LockHolder holder = lock_holder(band_);
  const bool is_held = holder.is != LockHolder::Is::kNone;
  const time_t since = is_held ? last_step_of(band_) : 0;
  const bool is_same = is_held && was_held_ && holder.process == holder_ && since == since_;
  if (is_told_ && !is_same) {
    events.push_back({"lock-free", band_, "the lock is free again", {{"process", holder_}}});
    is_told_ = false;
  }
  if (is_same && !is_told_) {
    const std::string name = name_of_process(holder.process);
    const char* const gone = holder.is == LockHolder::Is::kGone ? ", which is gone" : "";
    events.push_back({"lock-held",
                      band_,
                      (holder.is == LockHolder::Is::kUnknown ? "the kernel names no process" : name_of(holder)) + gone,
                      {{"process", holder.process}, {"name", name.empty() ? Json() : Json(name)}}});
    is_told_ = true;
  }
  was_held_ = is_held;
  holder_ = holder.process;
  since_ = since;
}

}  // namespace wlanctl
