// The simulation's /proc. The kernel's own takes no new folders, so it lies elsewhere and /proc holds links into it,
// beside the folders of the gateway's platform.
#pragma once

#include <sys/types.h>

namespace gateway {

class ProcOverlay {
 public:
  // Fills /proc, process folders included.
  void fill();

  // A process folder cannot appear by itself: the links of process numbers to come are made ahead, and this keeps them
  // ahead. To be called every now and then.
  void keep_ahead();

 private:
  void link_processes(pid_t first, pid_t last);
  void drop_ended_processes(pid_t newest);

  pid_t newest_ = 0;
  pid_t linked_to_ = 0;
  int linked_ = 0;
};

}  // namespace gateway
