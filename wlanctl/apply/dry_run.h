// An apply that touches nothing: the library's own calls, on a copy of the store, with its command lines recorded and
// its files in memory.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/apply/line_diff.h"
#include "wlanctl/apply/run.h"

namespace wlanctl {

struct DryRun {
  Applied applied;
  std::vector<std::string> commands;
  std::vector<LineChange> dat_changes;
};

// restore_applied comes first. The process is afterwards as it was before. None with a problem where the apply would
// fail. `always_commit`: as bring_into_force.
std::optional<DryRun> dry_run(Band band, bool always_commit, Report& report);

}  // namespace wlanctl
