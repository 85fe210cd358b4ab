// apply: brings the live store into force. What it prints is in apply_text.h, and in dry_run_text.h.
#include <algorithm>
#include <ctime>
#include <utility>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/dry_run_text.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/apply/run.h"
#include "wlanctl/apply/undone.h"
#include "wlanctl/apply/unread.h"
#include "wlanctl/base/interrupt.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/guardian.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/confirm/rollback.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/history/record.h"
#include "wlanctl/library/command.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/verbs/apply/apply_back.h"
#include "wlanctl/verbs/apply/apply_text.h"
#include "wlanctl/verbs/apply/file_guard.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr unsigned kLongestWait = 24 * 60 * 60;

void refuse_dangers(const Job& job, Report& report) {
  for (const Danger& danger : job.plan.dangers) {
    report.problem({danger.key + " of " + label_of(job.band) + " is dangerous: " + danger.reason,
                    "set another value, or insist with --force",
                    {{"band", label_of(job.band)}, {"key", danger.key}, {"reason", danger.reason}}});
  }
}

// Everything that can be refused is found here, before anything is touched. A band that is refused, or has no store, keeps
// no other one from its apply.
int plan_all(const Words& words, Report& report, std::vector<Job>* jobs) {
  int code = kDone;
  const auto refuse = [&](bool is_refused) {
    if (is_refused) code = worse_of(code, kRefused);
  };
  for (const Band band : bands_of(words.band)) {
    // A dry run touches nothing, not even what is due.
    if (!(words.dry_run ? look_at_store(band, report) : open_band(band, report))) {
      code = kNoStore;
      continue;
    }
    if (words.dry_run) (void)note_taken_back(band, report);
    if (words.dry_run && is_pending(band)) {
      report.note(std::string("an apply of ") + label_of(band) + " waits for its confirmation, or to be rolled back");
    }
    if (!words.dry_run && refuse_undecided(band, report)) {
      refuse(true);
      continue;
    }
    Doubt doubt = Doubt::kNone;
    if (!restore_applied(band, &doubt, report)) {
      code = worse_of(code, kWrongUsage);
      continue;
    }
    const Plan plan = plan_apply(band);
    if (plan.senseless_count) {
      note_doubt(band, doubt, report);
      tell_senseless_count(band, *plan.senseless_count, report);
      refuse(true);
      continue;
    }
    jobs->emplace_back();
    jobs->back().band = band;
    jobs->back().plan = plan;
    jobs->back().doubt = doubt;
    if (words.again) jobs->back().plan.nothing = false;
    if (jobs->back().plan.nothing) continue;
    Report objections;
    refuse_dangers(jobs->back(), objections);
    (void)may_write_file(band, plan.text, objections);
    jobs->back().is_refused = !may_go_on(objections, words.force, report);
    refuse(jobs->back().is_refused);
  }
  return code;
}

// Before the first change of any band: the settings to come back, and somebody who brings them.
bool prepare(const Words& words, Job& job, Report& report) {
  // Until the new settings are in force, and kept as such, the file must not pass for them.
  if (!keep_file_of_now(job.band, job.plan.text, report)) return false;
  if (!keep_applied(job.band, FileIs::kApplying, report) || !forget_over_boot(job.band, report)) return false;
  if (words.confirm_seconds == 0) return true;
  if (!job.plan.is_file_in_force) {
    report.note(dat_path_of(job.band) +
                " was saved with values that were never applied; a roll back leaves them in it");
  }
  Guard::wait_until_free(job.band);
  job.pending = prepare_pending(job.band, report);
  if (!job.pending) return false;
  set_deadline(&*job.pending, words.confirm_seconds);
  if (!write_pending(*job.pending, report)) return false;
  keep_over_boot(*job.pending, report);
  const Guard guard(job.band);
  if (guard && start_guardian(job.band, guard, report)) return true;
  if (!guard) report.problem({std::string("another guardian watches over ") + label_of(job.band), "try again"});
  return false;
}

// What the driver did not take is said; on a changed count it may lack the interface until the reboot.
int judge_scripts(const Job& job, Report& report) {
  if (!job.applied) return kDone;
  bool failed = false;
  for (const Script& script : job.applied->scripts) {
    if (script.status == 0 || script.may_fail) continue;
    failed = true;
    const std::string label = label_of(job.band);
    report.problem({"the driver's script of SSID " + std::to_string(script.ssid) + " of " + label +
                        " failed, with status " + std::to_string(script.status) + because(script.cause),
                    job.waits() ? "wlanctl rollback " + label + " puts back what was before, and wlanctl confirm " +
                                      label + " --force keeps it"
                                : "wlanctl apply " + label + " tells it again; the kernel's log may say why",
                    about(job.band, script.ssid)});
  }
  return failed ? kNoAnswer : kDone;
}

// What did not come into force, another apply brings into force.
bool always_commit(const Words& words, const Job& job) {
  return words.again || (!job.plan.lacks.empty() && !are_all_unknown(job.plan.lacks));
}

// The library's part. With a roll back to come, an interrupt breaks it off, and so does the end of the time.
void bring_about(const Words& words, Job& job, Report& report) {
  const CommandRun run(job.pending ? job.pending->deadline_ms : 0,
                       job.pending ? AtInterrupt::kRunNoMore : AtInterrupt::kGoOn);
  make_consistent(job.band, report);
  job.applied = bring_into_force(job.band, always_commit(words, job), report);
  job.broken_off = is_broken_off();
}

// What it changes, as far as it is known before.
void begin(Job& job, const std::vector<wifimgr_attr_record>& before, Report& report) {
  job.entry.band = job.band;
  job.entry.deed = Deed::kApply;
  job.entry.weight = word_for_apply(false, job.plan.weight);
  job.entry.changes = changes_between(before, table_of_store(job.band));
  job.entry = begin_entry(std::move(job.entry), report);
}

void finish(Job& job, int exit_code, Report& report) {
  Entry& entry = job.entry;
  entry.exit_code = exit_code;
  entry.is_in_force = job.is_in_force();
  // What could not be rolled back yet waits for that.
  entry.state = !job.applied ? State::kFailed : job.pending && !job.is_rolled_back ? State::kWaiting : State::kDone;
  finish_entry(entry, report);
}

// The driver has read the file behind the write of it.
void doubt_other_file(Band band, Report& report) {
  if (is_file_in_force(band)) return;
  doubt_applied(band);
  const std::optional<std::string> written = saved_text(band, settings_in_force(band));
  if (written && read_bytes(dat_path_of(band)) == written) {
    report.note(dat_path_of(band) +
                " was written, but is read otherwise: what of it the driver has taken is not known; " +
                "wlanctl check " + dat_path_of(band) + " tells where");
    return;
  }
  report.note("others have changed " + dat_path_of(band) +
              " while it was applied: what of it the driver has read is not "
              "known; look with wlanctl diff " +
              label_of(band) + ", and wlanctl apply " + label_of(band) + " applies anew");
}

// The exit code.
int apply_job(const Words& words, Job& job, const std::vector<wifimgr_attr_record>& before, Report& report) {
  const std::optional<std::string> file_before = read_bytes(dat_path_of(job.band));
  if (job.pending) {
    job.pending->phase = Phase::kApplying;
    if (!write_pending(*job.pending, report)) return kRefused;
  }
  bring_about(words, job, report);
  if (!job.applied) {
    // A write that failed on the way has left half a file.
    if (file_before && read_bytes(dat_path_of(job.band)) != file_before) {
      (void)restore_dat_file(job.band, *file_before, report);
    }
    (void)keep_applied(job.band, FileIs::kSettled, report);
    return kRefused;
  }
  // With what it made consistent, and without what another process has set meanwhile.
  job.entry.changes = changes_between(before, settings_in_force(job.band));
  job.entry.weight = word_for_apply(false, std::max(job.applied->weight, job.applied->committed ? 1 : 0));
  if (was_in_vain(words, job)) {
    complain_of(job.band, job.applied->lacks, "", report);
    roll_back_job(words, job, report);
    return job.broken_off == BrokenOff::kInterrupted ? kRefused : kNotInForce;
  }
  keep_lacks(job.band, job.applied->lacks, report);
  doubt_other_file(job.band, report);
  if (!keep_applied(job.band, FileIs::kSettled, report)) return kRefused;
  complain_of(job.band, job.applied->lacks, next_step(job.band), report);
  if (!job.applied->committed && job.applied->lacks.empty()) note_undone(job.band, {}, report);
  if (!job.applied->committed) note_unread(job.band, before, job.applied->scripts, report);
  const int told = judge_scripts(job, report);
  return job.applied->lacks.empty() ? told : kNotInForce;
}

int run_job(const Words& words, Job& job, Report& report) {
  const std::vector<wifimgr_attr_record> before = settings_in_force(job.band);
  begin(job, before, report);
  const int code = apply_job(words, job, before, report);
  finish(job, code, report);
  return code;
}

// Nobody can confirm before all is done.
void begin_waiting(std::vector<Job>& jobs, Report& report) {
  for (Job& job : jobs) {
    if (!job.pending || job.is_rolled_back || job.pending->phase == Phase::kGoingBack) continue;
    if (!job.applied) {
      (void)remove_pending(job.band, report);
    } else if (job.broken_off == BrokenOff::kNo) {
      job.pending->phase = Phase::kWaiting;
      if (!write_pending(*job.pending, report)) job.pending = std::nullopt;  // the guardian rolls back
    }
  }
}

// False where one could not be: it is refused then.
bool prepare_all(const Words& words, std::vector<Job>& jobs, Report& report) {
  bool are_all = true;
  for (Job& job : jobs) {
    if (job.plan.nothing || job.is_refused || prepare(words, job, report)) continue;
    if (job.pending) (void)remove_pending(job.band, report);
    (void)keep_applied(job.band, FileIs::kSettled, report);
    job.pending = std::nullopt;
    job.is_refused = true;
    are_all = false;
  }
  return are_all;
}

std::string answer_to_interrupt(const Words& words) {
  const std::string bands = words.band.empty() ? "both bands" : words.band;
  const std::string are = words.band.empty() ? " are" : " is";
  return words.confirm_seconds == 0
             ? "interrupted; the apply of " + bands + " is finished first, and its result told"
             : "interrupted; the command under way is finished, then " + bands + are + " rolled back";
}

int run_all(const Words& words, std::vector<Job>& jobs, Report& report) {
  const SignalHold hold;
  const InterruptAnswer answer(answer_to_interrupt(words));
  const size_t problems_before = report.problems().size();
  int code = prepare_all(words, jobs, report) ? kDone : kRefused;
  for (Job& job : jobs) {
    if (job.is_refused) continue;
    if (job.plan.nothing) {
      // From now on it is known.
      (void)keep_applied(job.band, FileIs::kSettled, report);
      continue;
    }
    const int result = run_job(words, job, report);
    if (code == kDone || result == kNotInForce) code = result;
  }
  // One that had its turn before the interrupt is not confirmed either.
  for (Job& job : jobs) {
    if (words.confirm_seconds == 0 || !is_interrupted() || !job.applied || job.is_rolled_back) continue;
    if (job.broken_off != BrokenOff::kNo) continue;
    job.broken_off = BrokenOff::kInterrupted;
    roll_back_job(words, job, report);
    code = kRefused;
  }
  begin_waiting(jobs, report);
  return report.problems().size() > problems_before && code == kDone ? kRefused : code;
}

// Those that the apply has not removed.
void tell_doubts(const std::vector<Job>& jobs, Report& report) {
  for (const Job& job : jobs) note_doubt(job.band, job.doubt, report);
}

int apply(const Words& words, Report& report) {
  report.data() = {{"dry_run", words.dry_run}, {"bands", Json::array()}};
  std::optional<ToolLock> lock;
  // A dry run changes nothing, and waits for nobody.
  if (!words.dry_run) {
    lock.emplace(report, words.wait_seconds);
    if (!*lock) return lock->exit_code();
  }
  const DriverTime limited;
  std::vector<Job> jobs;
  const auto begun = static_cast<int64_t>(time(nullptr));
  int code = plan_all(words, report, &jobs);
  if (words.dry_run) {
    for (const Job& job : jobs) {
      if (!tell_dry_run(job.band, job.plan, always_commit(words, job), words.secrets, report))
        code = worse_of(code, kRefused);
    }
    tell_doubts(jobs, report);
    return code;
  }
  for (Job& job : jobs) {
    job.entry.when = begun;
    if (!job.is_refused) forget_taken_back(job.band);
  }
  code = worse_of(code, run_all(words, jobs, report));
  if (code == kDone || code == kNoAnswer || code == kNotInForce || report.has_problems()) {
    for (const Job& job : jobs) tell_applied(words, job, report);
  }
  tell_doubts(jobs, report);
  return code;
}

constexpr char kFooter[] =
    "The whole store of the band comes into force: values that depend on others\n"
    "are made consistent, the dat file is written, the interfaces are restarted\n"
    "when a setting needs it, and the driver is told the rest. With nothing changed\n"
    "nothing is run.\n\n"
    "Then the kernel is asked: what the settings want up is up and in its bridge,\n"
    "the driver answers. What is not so is told, with the command that failed, and\n"
    "exit code 6; wlanctl status and diff tell it until it is mended. A ^C waits\n"
    "for the end of the apply.\n\n"
    "--confirm: before it begins, the dat file and the settings in force are kept in\n"
    "/var/run/wlanctl-pending-BAND, and a guardian starts, a process of its own that\n"
    "neither ^C nor a lost connection ends. Unless wlanctl confirm comes within\n"
    "SECONDS of the start, the guardian puts both back and restarts the interfaces;\n"
    "should the apply be killed in the middle, at once. An apply that does not come\n"
    "into force, is interrupted, or takes longer is rolled back at once. When the\n"
    "guardian is killed too, or stopped, the next wlanctl that works on the band\n"
    "takes its place. What was set meanwhile is gone then. After a power cut,\n"
    "wlanctl confirm or wlanctl rollback decides: what was before is kept in\n"
    "/etc/Wireless too, or in the folder that WLANCTL_FOLDER names.\n\n"
    "Examples:\n"
    "  wlanctl apply 2.4g --dry-run\n"
    "  wlanctl apply --confirm 60 && ping -c3 192.168.1.2 && wlanctl confirm";

constexpr Word kWords[] = {
    word::kBand,
    {"--dry-run", &Words::dry_run, "Show what would be run and written; touch nothing"},
    {"--secrets", &Words::secrets, "Show passphrases and keys in a dry run"},
    {"--confirm",
     &Words::confirm_seconds,
     "Put all back unless wlanctl confirm comes in time",
     {.lowest = 1, .highest = kLongestWait, .value_name = "SECONDS"}},
    {"--keep", &Words::keep, "With --confirm: wait also for what is not in force"},
    {"--again", &Words::again, "Run the whole apply though nothing differs"},
    {"--force", &Words::force, "Apply what a shell would act on, and write what loses lines of the file"},
    word::kCommandTimeout,
    word::kWait,
};

}  // namespace

const Verb kApply = {"apply", "Bring the live store into force", kFooter, kWords, apply};

}  // namespace wlanctl
