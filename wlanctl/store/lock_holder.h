// Who holds the lock of a band's store, and freeing it from somebody who is gone.
#pragma once

#include <sys/types.h>

#include <string>

#include "wlanctl/base/band.h"

namespace wlanctl {

struct LockHolder {
  enum class Is {
    kNone,     // the lock is free
    kRunning,  // and may let go
    kGone,     // and never will
    kUnknown,  // the kernel does not tell who took it
  };
  Is is = Is::kNone;
  pid_t process = 0;
};

// A band without a lock has no holder.
LockHolder lock_holder(Band band);

// "process 12 (wlanctl)", or that nobody knows.
std::string name_of(const LockHolder& holder);

// Frees the lock while that holder is the last who took it. False when it cannot be freed, with errno.
bool free_lock(Band band, const LockHolder& from);

}  // namespace wlanctl
