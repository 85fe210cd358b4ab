// Which processes work on a segment of a band, by what the kernel says of their memory.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

struct AttachedProcess {
  pid_t process;
  bool is_current;  // false where its segment was removed: what it writes there reaches nobody who attaches now
};

// This process is not among them; who may not look into a process does not see it.
std::vector<AttachedProcess> attached_processes(Band band);

// "process 12 (wlanctl)" of each, the first few.
std::string names_of(const std::vector<AttachedProcess>& processes);

}  // namespace wlanctl
