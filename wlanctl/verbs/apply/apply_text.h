// What an apply tells of a band when it is done. What a dry run of it prints is in apply/dry_run_text.h.
#pragma once

#include <optional>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/apply/run.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/history/entry.h"
#include "wlanctl/library/command.h"

namespace wlanctl {

class Report;
struct Words;

// A band's part of an apply under way.
struct Job {
  Band band = Band::k2_4G;
  Plan plan;
  Doubt doubt = Doubt::kNone;
  bool is_refused = false;  // before anything was changed
  std::optional<Pending> pending;
  std::optional<Applied> applied;
  BrokenOff broken_off = BrokenOff::kNo;
  bool is_rolled_back = false;
  Entry entry;  // of the history
  int exit_code = 0;

  bool is_in_force() const;
  bool waits() const;  // for its confirmation
};

void tell_applied(const Words& words, const Job& job, Report& report);

}  // namespace wlanctl
