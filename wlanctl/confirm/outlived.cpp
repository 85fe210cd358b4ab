#include "wlanctl/confirm/outlived.h"

#include <cerrno>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/confirm/applied_file.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/lasting_folder.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {

std::string path_over_boot(Band band) {
  const std::string folder = lasting_folder();
  return folder.empty() ? "" : folder + "/wlanctl-before-" + label_of(band);
}

void keep_over_boot(const Pending& pending, Report& report) {
  const std::string path = path_over_boot(pending.band);
  Report unheard;
  if (path.empty() || write_state_file(path, kPendingFormat, kPendingVersion, text_of(pending), unheard)) return;
  report.note("cannot write " + path + " (" + std::strerror(errno) + "): after a power cut, nothing puts " +
              label_of(pending.band) + " back; " + kFolderVariable + " names another folder");
}

bool forget_over_boot(Band band, Report& report) {
  const std::string path = path_over_boot(band);
  if (path.empty() || remove_state_file(path)) return true;
  report.problem({"cannot remove " + path + ": " + std::strerror(errno),
                  "remove it, or the next boot takes it for an apply that was cut off", about(band)});
  return false;
}

std::optional<Pending> kept_over_boot(Band band) {
  const std::string path = path_over_boot(band);
  if (path.empty()) return std::nullopt;
  const std::optional<std::string> text = read_state_file(path, kPendingFormat, kPendingVersion);
  return text ? parse_pending(band, *text) : std::nullopt;
}

void begin_going_back(Pending* pending, TakenFor reason, Report& report) {
  if (pending->phase == Phase::kGoingBack) return;
  keep_foreign_file(*pending, report);
  const bool could_be_confirmed = pending->phase == Phase::kWaiting && !pending->is_over();
  pending->phase = Phase::kGoingBack;
  pending->back_for = reason;
  pending->boot = this_boot();
  const std::string path = path_over_boot(pending->band);
  Report unheard;
  // The copy that could never be written was told at the apply.
  if (!path.empty() && is_state_file_there(path) &&
      !write_state_file(path, kPendingFormat, kPendingVersion, text_of(*pending), unheard)) {
    report.note("cannot write into " + path + " that the roll back begins (" + std::strerror(errno) +
                "): after a power cut before its end, look with wlanctl diff before you confirm");
  }
  // Of this boot nobody confirms what is over or was never done.
  if (could_be_confirmed && is_pending(pending->band)) (void)write_pending(*pending, unheard);
}

std::optional<Pending> interrupted(Band band) {
  std::optional<Pending> kept = kept_over_boot(band);
  if (!kept) return std::nullopt;
  const bool is_of_now = kept->boot == this_boot();
  // The copy is the first to go, so that it never outlives the other without a reason.
  if (is_of_now && (is_pending(band) || !is_state_file_there(path_over_boot(band)))) return std::nullopt;
  if (!is_of_now && read_bytes(dat_path_of(band)) == kept->dat) return std::nullopt;
  return kept;
}

Problem cut_off(const Pending& interrupted) {
  const std::string label = label_of(interrupted.band);
  const bool is_of_now = interrupted.boot == this_boot();
  if (interrupted.phase == Phase::kGoingBack) {
    return {"the roll back of the apply of " + label + " had begun when " +
                (is_of_now ? "it was cut off" : "the gateway went down") +
                ": of settings and dat file, some may be those of before",
            "wlanctl rollback " + label + " finishes it; wlanctl confirm " + label + " --force keeps what is there",
            about(interrupted.band)};
  }
  if (is_of_now) {
    return {pending_path(interrupted.band) + " was removed while the apply of " + label +
                " waited for its confirmation: nobody takes it back any more",
            "wlanctl confirm " + label + " --force keeps its settings; wlanctl rollback " + label +
                " puts back those before",
            about(interrupted.band)};
  }
  return {"the gateway went down before the apply of " + label + " was confirmed",
          "wlanctl confirm " + label + " keeps its settings; wlanctl rollback " + label + " puts back those before",
          about(interrupted.band)};
}

std::optional<Pending> taken_back_over_boot(Band band) {
  std::optional<Pending> kept = kept_over_boot(band);
  if (!kept || kept->phase != Phase::kGoingBack || kept->boot == this_boot() || interrupted(band)) return std::nullopt;
  return kept;
}

bool is_way_back_damaged(Band band) {
  const std::string path = path_over_boot(band);
  return !path.empty() && !is_pending(band) && is_state_file_there(path) && !kept_over_boot(band);
}

Problem damaged_way_back(Band band) {
  if (const std::optional<Problem> unreadable = unreadable_kept(band, path_over_boot(band))) return *unreadable;
  const std::string label = label_of(band);
  Json details = about(band);
  details["file"] = path_over_boot(band);
  return {"what an apply of " + label + " kept for its roll back, in " + path_over_boot(band) +
              ", is damaged: nobody knows whether it was confirmed",
          "wlanctl confirm " + label + " --force keeps what is there; wlanctl undo " + label +
              " then takes back what wlanctl log has of it",
          std::move(details)};
}

bool is_undecided(Band band) {
  return is_pending(band) || interrupted(band) || is_way_back_damaged(band);
}

void forget_settled(Band band) {
  const std::optional<Pending> kept = kept_over_boot(band);
  if (kept && kept->boot != this_boot() && !interrupted(band)) (void)remove_state_file(path_over_boot(band));
}

bool refuse_undecided(Band band, Report& report) {
  const std::string label = label_of(band);
  if (const std::optional<Pending> kept = interrupted(band)) {
    report.problem(cut_off(*kept));
    return true;
  }
  if (is_way_back_damaged(band)) {
    report.problem(damaged_way_back(band));
    return true;
  }
  if (!is_pending(band)) return false;
  const std::optional<Pending> pending = read_pending(band);
  if (!pending) {
    if (const std::optional<Problem> unreadable = unreadable_pending(band)) {
      report.problem(*unreadable);
      return true;
    }
    report.problem({"an apply of " + label + " waits for its confirmation, and what it kept in " + pending_path(band) +
                        " is damaged",
                    "wlanctl confirm " + label + " --force ends the waiting", about(band)});
    return true;
  }
  if (pending->phase == Phase::kGoingBack) {
    report.problem({"the roll back of an apply of " + label + " has begun and is not done",
                    "wlanctl rollback " + label + " finishes it", about(band)});
    return true;
  }
  report.problem({"an apply of " + label + " waits for its confirmation",
                  "wlanctl confirm " + label + " keeps it; without, it is rolled back when its time is over",
                  about(band)});
  return true;
}

void note_interrupted(Band band, Report& report) {
  if (is_way_back_damaged(band)) {
    const Problem damaged = damaged_way_back(band);
    return report.note(damaged.message + "; " + damaged.next);
  }
  const std::optional<Pending> kept = interrupted(band);
  if (!kept) return;
  if (kept->boot == this_boot() || kept->phase == Phase::kGoingBack) {
    const Problem problem = cut_off(*kept);
    return report.note(problem.message + "; " + problem.next);
  }
  const std::string label = label_of(band);
  report.note("the gateway went down before the apply of " + label +
              " was confirmed, and the boot took what the dat file says; wlanctl confirm " + label +
              " keeps it, wlanctl rollback " + label + " puts back what was before");
}

}  // namespace wlanctl
