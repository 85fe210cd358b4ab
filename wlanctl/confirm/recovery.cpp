#include "wlanctl/confirm/recovery.h"

#include <optional>

#include "wlanctl/apply/damaged_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/filing.h"
#include "wlanctl/confirm/guardian.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/rollback.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/storing_note.h"

namespace wlanctl {
namespace {

// Each verb that changes something comes by here, and a roll back restarts the radio: one that failed is not tried again,
// and none begins whose end could not be written down.
bool may_be_rolled_back(const Pending& pending, Report& report) {
  if (pending.phase == Phase::kPrepared) return true;
  const std::string label = label_of(pending.band);
  const std::string reason = pending.is_tried ? "it failed before" : reason_against_roll_back(pending);
  if (!reason.empty()) {
    report.problem({"the roll back of the apply of " + label + " is due, and was not begun" +
                        (pending.is_tried ? " again" : "") + because(reason),
                    "mend that, and wlanctl rollback " + label + "; wlanctl confirm " + label +
                        " --force ends the waiting with what is there",
                    about(pending.band)});
    return false;
  }
  Pending tried = pending;
  tried.phase = Phase::kGoingBack;
  tried.back_for = reason_for(pending);
  tried.is_tried = true;
  Report unheard;
  (void)write_pending(tried, unheard);
  return true;
}

// Who cannot read it at this moment knows nothing of any damage.
bool note_unreadable(Band band, Report& report) {
  const std::optional<Problem> unreadable = unreadable_pending(band);
  if (unreadable) report.note(unreadable->message + "; " + unreadable->next);
  return unreadable.has_value();
}

// Looks after a pending apply whose guardian was lost. What it did becomes a note. Does nothing while another wlanctl is
// at work.
void recover_pending(Band band, Report& report) {
  if (!is_pending(band)) return;
  std::optional<ToolLock> lock;
  if (!ToolLock::is_held_here()) {
    lock.emplace();
    if (!*lock) return;
  }
  if (Guard::take_from_stopped(band)) {
    report.note(std::string("the guardian of the apply of ") + label_of(band) + " was stopped, and is replaced");
  }
  const Guard guard(band);
  const std::optional<Pending> pending = read_pending(band);
  if (pending && pending->boot != this_boot()) {
    if (!kept_over_boot(band) || pending->phase == Phase::kGoingBack) keep_over_boot(*pending, report);
    drop_pending(band);
    return;
  }
  if (!guard || (!pending && !is_pending(band))) return;
  const std::string apply = std::string("the apply of ") + label_of(band);
  if (!pending) {
    if (note_unreadable(band, report)) return;
    report.note(apply +
                " that waits for a confirmation cannot be rolled back, what it kept is damaged; wlanctl confirm " +
                label_of(band) + " --force ends the waiting");
    return;
  }
  if (pending->is_lost(true)) {
    if (!may_be_rolled_back(*pending, report)) return;
    const DriverTime limited;
    const bool done = undo(*pending, By::kRecovery, reason_for(*pending), report);
    const bool was_begun = pending->phase != Phase::kPrepared;
    report.note(apply +
                (pending->phase == Phase::kWaiting     ? " was not confirmed in time and its guardian is gone; "
                 : pending->phase == Phase::kGoingBack ? " was being rolled back, and that was cut off; "
                                                       : " ended in the middle; ") +
                (!done ? std::string("rolling it back failed; wlanctl rollback ") + label_of(band) +
                             " tries it again, wlanctl confirm " + label_of(band) +
                             " --force ends the waiting with what is there"
                 : was_begun ? std::string("it is rolled back now") + (!is_back_in_force(band) ? ", but not in force"
                                                                       : interfaces_to_come(band).empty()
                                                                           ? ""
                                                                           : ", but not all of it is on the air")
                             : "nothing was changed"));
    for (const Lack& lack : lacks_of(band)) {
      report.note(std::string(label_of(band)) + ": not in force: " + text_of(lack));
    }
  } else if (start_guardian(band, guard, report)) {
    report.note(apply + " had lost its guardian; a new one watches over it for the " +
                std::to_string(pending->seconds_left()) + " seconds that are left");
  }
}

void tell_what_is_due(Band band, Report& report) {
  if (!is_pending(band)) return;
  const std::string label = label_of(band);
  const std::optional<Pending> pending = read_pending(band);
  if (!pending) {
    if (note_unreadable(band, report)) return;
    report.note("what an apply of " + label + " kept for a roll back, in " + pending_path(band) +
                ", is damaged; wlanctl confirm " + label + " --force ends the waiting");
  } else if (pending->is_over()) {
    report.note(
        "the apply of " + label +
        " was not confirmed in time, and its roll back is due: its guardian does it or, where that is gone, the "
        "next wlanctl that changes something");
  } else if (pending->is_tried) {
    report.note("the roll back of an apply of " + label + " failed, or was cut off; wlanctl rollback " + label +
                " tries it again");
  } else if (pending->phase == Phase::kGoingBack) {
    report.note("an apply of " + label +
                " is being rolled back, or that was cut off; then its guardian finishes it or, where that is gone, the "
                "next wlanctl that changes something");
  } else if (pending->phase != Phase::kWaiting) {
    report.note(
        "an apply of " + label +
        " is under way or ended in the middle; then its guardian rolls it back or, where that is gone, the next "
        "wlanctl that changes something");
  }
}

}  // namespace

bool look_at_band(Band band, Report& report) {
  if (is_store_open(band)) return true;
  if (!look_at_store(band, report)) return false;
  tell_filing(band, report);
  tell_storing(band, report);
  note_damaged_state(band, report);
  tell_what_is_due(band, report);
  return true;
}

std::vector<Band> look_at_bands(const std::vector<Band>& bands, int* code, Report& report) {
  std::vector<Band> found;
  for (const Band band : bands) {
    if (look_at_band(band, report)) {
      found.push_back(band);
    } else {
      *code = kNoStore;
    }
  }
  return found;
}

bool open_band_if_there(Band band, Report& report) {
  return is_store_there(band) ? open_band(band, report) : look_at_band(band, report);
}

bool open_band(Band band, Report& report) {
  if (is_store_open(band)) return true;
  take_back_filing(report);
  if (!open_store(band, report)) return false;
  finish_storing(report);
  note_damaged_state(band, report);
  (void)note_taken_back(band, report);
  recover_pending(band, report);
  return true;
}

}  // namespace wlanctl
