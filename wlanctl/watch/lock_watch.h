// The lock of a band's store: who holds it longer than anybody should.
#pragma once

#include <sys/types.h>

#include <ctime>

#include "wlanctl/base/band.h"
#include "wlanctl/watch/event.h"

namespace wlanctl {

class LockWatch {
 public:
  explicit LockWatch(Band band) : band_(band) {}

  // Tells of a lock that the same process holds since the last look, once, and when it is free again.
  void look(Events& events);

 private:
  Band band_;
  bool was_held_ = false;  // at the last look
  pid_t holder_ = 0;       // 0 where the kernel does not tell
  time_t since_ = 0;       // when it was last taken or given back
  bool is_told_ = false;
};

}  // namespace wlanctl
