// confirm: keeps what an apply with --confirm brought into force.
#include <algorithm>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/history/record.h"
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

// Whether what is to stay is in force.
bool holds(Band band, Report& report) {
  if (!restore_applied(band, report)) return false;
  std::vector<Lack> lacks = lacks_of(band);
  if (lacks.empty()) {
    const PrivateStore applied(band, settings_in_force(band));
    lacks = look_now(band);
  }
  complain_of(band, lacks,
              std::string("mend it and confirm then; --force keeps it as it is, wlanctl rollback ") + label_of(band) +
                  " puts back what was before",
              report);
  return lacks.empty();
}

int removed(Band band, Report& report) {
  return remove_pending(band, report) ? kDone : kRefused;
}

int confirm_band(Band band, bool force, Report& report) {
  // Where its guardian is lost and the time over, this rolls it back.
  if (!(force ? open_store(band, report) : open_band(band, report))) return kNoStore;
  if (force && (is_pending(band) || interrupted(band))) return removed(band, report);
  const std::optional<Pending> pending = read_pending(band);
  if (!is_pending(band) && interrupted(band)) return holds(band, report) ? removed(band, report) : kNotInForce;
  if (!is_pending(band)) {
    report.problem(too_late(band, "it was rolled back"));
  } else if (!pending) {
    report.note(std::string("what was kept for ") + label_of(band) + " was damaged");
    return removed(band, report);
  } else if (pending->phase != Phase::kWaiting) {
    report.problem(too_late(band, "it ended in the middle, and its roll back is due"));
  } else if (pending->is_over()) {
    report.problem(too_late(band, "its time is over, and its roll back is due"));
  } else {
    return holds(band, report) ? removed(band, report) : kNotInForce;
  }
  return kRefused;
}

int confirm(const Words& words, Report& report) {
  Json confirmed = Json::array();
  report.data() = {{"bands", confirmed}};
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  bool waiting = false;
  int code = kDone;
  for (const Band band : bands_of(words.band)) {
    if (!is_pending(band) && !interrupted(band)) continue;
    waiting = true;
    const int result = confirm_band(band, words.force, report);
    code = std::max(code, result);
    if (result != kDone) continue;
    note_confirmed(band, report);
    confirmed.push_back(label_of(band));
    report.text() << label_of(band) << ": confirmed; the settings stay\n";
  }
  if (!waiting) {
    report.problem({"nothing waits for a confirmation" + (words.band.empty() ? "" : " on " + words.band),
                    "what was not confirmed in time is rolled back; wlanctl diff shows what is in force"});
  }
  report.data() = {{"bands", std::move(confirmed)}};
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
                       "Examples:\n  wlanctl confirm\n  wlanctl confirm 5g", kWords, confirm};

}  // namespace wlanctl
