// rollback: puts back what was in force before an apply that waits for its confirmation, or waited when the power went.
#include <algorithm>

#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/interrupt.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/rollback.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// The copy that outlives a boot stands in for a damaged one.
std::optional<Pending> to_put_back(Band band) {
  std::optional<Pending> pending = is_pending(band) ? read_pending(band) : interrupted(band);
  if (!pending && is_pending(band)) pending = kept_over_boot(band);
  // Whatever it was at when this was written: something may have been changed since.
  if (pending && pending->phase == Phase::kPrepared && !read_pending(band)) pending->phase = Phase::kWaiting;
  return pending;
}

// After a boot the file comes first: a store that nobody has made yet is made of it, with room for all that it has. A
// power cut may also have left half a file, of which none can be made.
bool open_for(const Pending& pending, bool is_file_first, Report& report) {
  if (is_file_first && !restore_dat_file(pending.band, pending.dat, report)) return false;
  return open_store(pending.band, report, Content::kToCome);
}

int put_back(Band band, Report& report) {
  if (is_way_back_damaged(band)) {
    report.problem(damaged_way_back(band));
    return kRefused;
  }
  std::optional<Pending> pending = to_put_back(band);
  const std::string label = label_of(band);
  const std::optional<Problem> unreadable = pending ? std::nullopt : unreadable_pending(band);
  if (unreadable) {
    report.problem(*unreadable);
    return kRefused;
  }
  if (!pending) {
    report.problem({"what was kept of " + label + ", in " + pending_path(band) + ", is damaged",
                    "set the values again; wlanctl confirm " + label + " --force ends the waiting", about(band)});
    return kRefused;
  }
  const bool has_booted = pending->boot != this_boot();
  const Settings booted = has_booted ? parse_dat_file(band) : std::nullopt;
  if (pending->phase != Phase::kPrepared) begin_going_back(&*pending, TakenFor::kAsked, report);
  if (!open_for(*pending, has_booted || !is_pending(band), report)) return kNoStore;
  if (!undo(*pending, By::kOperator, TakenFor::kAsked, report, booted)) return kRefused;
  const std::vector<Lack> lacks = lacks_of(band);
  complain_of(band, lacks, next_step(band), report);
  return is_back_in_force(band) ? kDone : kNotInForce;
}

int run(const Words& words, Report& report) {
  Json bands = Json::array();
  Json not_on_air = Json::array();
  report.data() = {{"bands", bands}, {"not_on_air", not_on_air}};
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  const SignalHold hold;
  const InterruptAnswer answer("interrupted; the roll back is finished first, and its result told");
  const DriverTime limited;
  int code = kDone;
  bool waiting = false;
  for (const Band band : bands_of(words.band)) {
    if (!is_undecided(band)) continue;
    waiting = true;
    const int result = put_back(band, report);
    code = std::max(code, result);
    if (result != kDone && result != kNotInForce) continue;
    bands.push_back(label_of(band));
    const std::vector<std::string> missing = interfaces_to_come(band);
    for (const std::string& interface : missing) not_on_air.push_back(interface);
    report.text() << label_of(band) << ": rolled back"
                  << (result != kDone    ? ", but not in force\n"
                      : !missing.empty() ? ", but not on the air: " + joined(missing, ", ") + "\n"
                                         : "; the settings before the apply are in force\n");
  }
  if (!waiting) {
    for (const Band band : bands_of(words.band)) (void)note_taken_back(band, report);
    report.problem({"nothing waits for a confirmation" + (words.band.empty() ? "" : " on " + words.band),
                    "wlanctl log lists what was done, and wlanctl undo takes it back"});
  }
  report.data() = {{"bands", std::move(bands)}, {"not_on_air", std::move(not_on_air)}};
  return code == kDone && report.has_problems() ? kRefused : code;
}

constexpr Word kWords[] = {word::kBand, word::kCommandTimeout, word::kWait};

}  // namespace

const Verb kRollback = {"rollback", "Put back what was before apply --confirm",
                        "At once, where the guardian would do so when the time is over. After a power\n"
                        "cut in that time nobody else does: the settings before are kept for this.\n\n"
                        "Examples:\n  wlanctl rollback\n  wlanctl rollback 5g",
                        kWords, run};

}  // namespace wlanctl
