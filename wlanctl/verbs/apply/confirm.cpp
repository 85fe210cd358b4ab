// confirm: keeps what an apply with --confirm brought into force.
#include <algorithm>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/undone.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/time_text.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/applied_file.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/history/record.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

Problem too_late(Band band, const std::string& why) {
  const std::string label = label_of(band);
  return {"the apply of " + label + " can no longer be confirmed: " + why,
          "wlanctl diff " + label + " shows what is in force; when it cannot be rolled back, --force ends the waiting",
          about(band)};
}

// Nobody can say what it waited for, nor put it back.
Problem damaged(Band band) {
  if (const std::optional<Problem> unreadable = unreadable_pending(band)) return *unreadable;
  const std::string label = label_of(band);
  Json details = about(band);
  details["file"] = pending_path(band);
  return {"what an apply of " + label + " kept for its roll back, in " + pending_path(band) + ", is damaged",
          "wlanctl rollback " + label +
              " puts back what was before, where that is kept a second time; wlanctl confirm " + label +
              " --force keeps what is there",
          std::move(details)};
}

// Whether what is to stay is in force.
bool holds(Band band, Report& report) {
  if (!restore_applied(band, report)) return false;
  std::vector<Lack> lacks = lacks_of(band);
  if (lacks.empty()) {
    const PrivateStore applied(band, settings_in_force(band));
    lacks = look_closely(band);
  }
  const std::string next = std::string("mend it and confirm then; --force keeps it as it is, wlanctl rollback ") +
                           label_of(band) + " puts back what was before";
  complain_of(band, lacks, next, report);
  if (lacks.empty()) {
    const PrivateStore applied(band, settings_in_force(band));
    note_missing(band, missing_interfaces(band), false, report);
  }
  const bool is_told = was_told(band);
  if (!is_told) {
    report.problem(
        {std::string("the driver did not take all of what was applied to ") + label_of(band),
         std::string("--force keeps it as it is, wlanctl rollback ") + label_of(band) + " puts back what was before",
         about(band)});
  }
  return lacks.empty() && is_told;
}

int removed(Band band, Report& report) {
  if (!remove_pending(band, report)) return kRefused;
  forget_taken_back(band);
  return kDone;
}

// With the settings in force and in the file: a boot is to come up with them.
int keep(const Pending& pending, Report& report) {
  if (!has_what_was_applied(pending, report)) return kRefused;
  return holds(pending.band, report) ? removed(pending.band, report) : kNotInForce;
}

// What is insisted on.
void note_lacking(Band band, Report& report) {
  const std::optional<Pending> pending = is_pending(band) ? read_pending(band) : interrupted(band);
  Report objections;
  if (!pending || has_what_was_applied(*pending, objections)) return;
  for (const Problem& problem : objections.problems()) report.note("all the same, by --force: " + problem.message);
}

int confirm_band(Band band, bool force, Report& report) {
  // A boot may have made no store of a file without settings.
  if (const std::optional<Pending> kept = force || is_pending(band) ? std::nullopt : interrupted(band)) {
    if (kept->boot != this_boot() && !has_what_was_applied(*kept, report)) return kRefused;
  }
  // Where its guardian is lost and the time over, this rolls it back.
  if (!(force ? open_store(band, report) : open_band(band, report))) return kNoStore;
  if (force && is_undecided(band)) {
    note_lacking(band, report);
    return removed(band, report);
  }
  if (is_way_back_damaged(band)) {
    report.problem(damaged_way_back(band));
    return kRefused;
  }
  const std::optional<Pending> pending = read_pending(band);
  if (const std::optional<Pending> kept = is_pending(band) ? std::nullopt : interrupted(band)) {
    if (kept->phase == Phase::kGoingBack || kept->boot == this_boot()) {
      report.problem(cut_off(*kept));
      return kRefused;
    }
    return keep(*kept, report);
  }
  if (!is_pending(band)) {
    report.problem(too_late(band, "it was rolled back"));
    acknowledge_taken_back(band);
  } else if (!pending) {
    report.problem(damaged(band));
  } else if (pending->phase == Phase::kGoingBack) {
    report.problem(too_late(band, "its roll back has begun and is not done"));
  } else if (pending->phase != Phase::kWaiting) {
    report.problem(too_late(band, "it ended in the middle, and its roll back is due"));
  } else if (pending->is_over()) {
    report.problem(too_late(band, "its time is over, and its roll back is due"));
  } else {
    return keep(*pending, report);
  }
  return kRefused;
}

// Whoever asks again gets the same answer: no script takes what was taken back for confirmed.
bool refuse_taken_back(Band band, Report& report) {
  if (const std::optional<Pending> before_boot = taken_back_over_boot(band)) {
    report.problem({std::string("the apply of ") + label_of(band) + " of " + local_time(before_boot->applied_at) +
                        " was taken back before the gateway went down",
                    "set the values again, and apply", about(band)});
    return true;
  }
  if (is_taken_back_damaged(band)) {
    report.problem(damaged_taken_back(band));
    return true;
  }
  const std::optional<TakenBack> taken = taken_back(band);
  if (!taken) return false;
  report.problem(
      {words_of(band, *taken),
       std::string("wlanctl diff ") + label_of(band) + " shows what is in force; set the values again, and apply",
       about(band)});
  acknowledge_taken_back(band);
  return true;
}

int confirm(const Words& words, Report& report) {
  Json confirmed = Json::array();
  report.data() = {{"bands", confirmed}, {"waited", false}};
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  const DriverTime limited;
  bool waiting = false;
  int code = kDone;
  for (const Band band : bands_of(words.band)) {
    if (!is_undecided(band)) {
      if (refuse_taken_back(band, report)) {
        code = std::max<int>(code, kRefused);
      } else {
        make_up_for_confirmation(band, report);
      }
      continue;
    }
    waiting = true;
    const int result = confirm_band(band, words.force, report);
    code = std::max(code, result);
    if (result != kDone) continue;
    note_confirmed(band, report);
    confirmed.push_back(label_of(band));
    report.text() << label_of(band) << ": confirmed; the settings stay\n";
  }
  if (!waiting && !report.has_problems()) {
    report.text() << "nothing waits to be confirmed" << (words.band.empty() ? std::string() : " on " + words.band)
                  << '\n';
  }
  report.data() = {{"bands", std::move(confirmed)}, {"waited", waiting}};
  return code == kDone && report.has_problems() ? kRefused : code;
}

constexpr Word kWords[] = {
    word::kBand,
    {"--force", &Words::force, "Also what is not in force, or cannot be rolled back"},
    word::kCommandTimeout,
    word::kWait,
};

}  // namespace

const Verb kConfirm = {"confirm", "Keep what apply --confirm has brought into force",
                       "Where nothing waits, it says so and ends with 0; what was taken back meanwhile\n"
                       "is told, and 1 the exit code, until another apply or save.\n\n"
                       "Examples:\n  wlanctl confirm\n  wlanctl confirm 5g",
                       kWords, confirm};

}  // namespace wlanctl
