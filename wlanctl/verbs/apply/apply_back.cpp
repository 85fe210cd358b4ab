#include "wlanctl/verbs/apply/apply_back.h"

#include <algorithm>

#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/verb.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/rollback.h"
#include "wlanctl/confirm/taken_back.h"

namespace wlanctl {
namespace {

TakenFor taken_for(const Job& job) {
  switch (job.broken_off) {
    case BrokenOff::kInterrupted:
      return TakenFor::kInterrupted;
    case BrokenOff::kTimeOver:
      return TakenFor::kLate;
    case BrokenOff::kNo:
      break;
  }
  return TakenFor::kNotInForce;
}

std::string reason_of(const Words& words, const Job& job) {
  switch (job.broken_off) {
    case BrokenOff::kInterrupted:
      return "interrupted";
    case BrokenOff::kTimeOver:
      return "not done within the " + count_of(words.confirm_seconds, "second") + " of --confirm";
    case BrokenOff::kNo:
      break;
  }
  return "not in force";
}

}  // namespace

bool was_in_vain(const Words& words, const Job& job) {
  if (!job.applied || !job.pending) return false;
  if (job.broken_off != BrokenOff::kNo) return true;
  // What is not known, the operator is asked for.
  if (are_all_unknown(job.applied->lacks)) return false;
  return !words.keep && !job.applied->lacks.empty() && !job.applied->has_lacked_before;
}

void roll_back_job(const Words& words, Job& job, Report& report) {
  const std::string label = label_of(job.band);
  const std::string reason = reason_of(words, job);
  std::string cause;
  for (const Command& command : commands_run()) {
    if (cause.empty() && command.ending == Ending::kTooLong) cause = account_of(command);
  }
  // Nobody who gave it seconds waits a minute for each command that hangs again.
  constexpr unsigned kLeastSeconds = 10;
  if (job.broken_off == BrokenOff::kTimeOver) {
    limit_commands(std::min(words.command_seconds, std::max(words.confirm_seconds, kLeastSeconds)));
  }
  begin_going_back(&*job.pending, taken_for(job), report);
  job.is_rolled_back = roll_back(*job.pending, By::kApply, taken_for(job), report);
  limit_commands(words.command_seconds);
  const std::vector<Lack> lacks = lacks_of(job.band);
  std::string outcome = "its settings before are back";
  if (!job.is_rolled_back) {
    outcome = "its roll back failed, and is tried again";
  } else if (!is_back_in_force(job.band)) {
    outcome = "its settings before are back, but not in force either";
  } else if (!interfaces_to_come(job.band).empty()) {
    outcome = "its settings before are back, but not all of it is on the air";
  }
  report.problem({"the apply of " + label + " was " + reason + because(cause) + "; " + outcome,
                  "wlanctl diff " + label + " shows what is in force", about(job.band)});
  complain_of(job.band, lacks, next_step(job.band), report);
}

}  // namespace wlanctl
