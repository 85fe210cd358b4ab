// confirm: keeps what an apply with --confirm brought into force.
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/files/lock.h"
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

bool confirm_band(Band band, bool force, Report& report) {
  // Where its guardian is lost and the time over, this rolls it back.
  if (!(force ? open_store(band, report) : open_band(band, report))) return false;
  const std::optional<Pending> pending = read_pending(band);
  if (is_pending(band) && force) return remove_pending(band, report);
  if (!is_pending(band)) {
    report.problem(too_late(band, "it was rolled back"));
  } else if (!pending) {
    report.note(std::string("what was kept for ") + label_of(band) + " was damaged");
    return remove_pending(band, report);
  } else if (pending->phase != Phase::kWaiting) {
    report.problem(too_late(band, "it ended in the middle, and its roll back is due"));
  } else if (pending->is_over()) {
    report.problem(too_late(band, "its time is over, and its roll back is due"));
  } else {
    return remove_pending(band, report);
  }
  return false;
}

int confirm(const Words& words, Report& report) {
  Json confirmed = Json::array();
  report.data() = {{"bands", confirmed}};
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  bool waiting = false;
  for (const Band band : bands_of(words.band)) {
    if (!is_pending(band)) continue;
    waiting = true;
    if (!confirm_band(band, words.force, report)) continue;
    confirmed.push_back(label_of(band));
    report.text() << label_of(band) << ": confirmed; the settings stay\n";
  }
  if (!waiting) {
    report.problem({"nothing waits for a confirmation" + (words.band.empty() ? "" : " on " + words.band),
                    "what was not confirmed in time is rolled back; wlanctl diff shows what is in force"});
  }
  report.data() = {{"bands", std::move(confirmed)}};
  return report.has_problems() ? kRefused : kDone;
}

constexpr Word kWords[] = {
    word::kBand,
    {"--force", &Words::force, "Also when its time is over and it cannot be rolled back"},
    word::kWait,
};

}  // namespace

const Verb kConfirm = {"confirm", "Keep what apply --confirm has brought into force",
                       "Examples:\n  wlanctl confirm\n  wlanctl confirm 5g", kWords, confirm};

}  // namespace wlanctl
