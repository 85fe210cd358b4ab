// Every operation, stopped before each of its system calls in turn.
#pragma once

namespace soak {

struct Steps {
  int kills = 0;
  int faults = 0;
};

// Kills each operation before each system call; then lets each call fail that needs a resource. `stride` leaves out
// steps in between; `is_over` ends it early.
Steps kill_stepwise(int stride, bool (*is_over)());
Steps fail_stepwise(int stride, bool (*is_over)());

}  // namespace soak
