// What the verbs that change SSIDs have in common: their words, and the steps from those to the change.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/command_line/common_words.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/ssid/change.h"

namespace wlanctl {

class Report;

// The bands, and what stands behind them on the command line.
struct AskedSsids {
  std::vector<Band> bands;
  std::vector<std::string> names;
};

// With so many names, which `what` tells; with --both there is no band in front. None with a problem.
std::optional<AskedSsids> asked_of(const Words& words, size_t count, const std::string& what, Report& report);

// Opens the bands for a change, or for looking at them in a dry run. The exit code.
int open_all(const Words& words, const AskedSsids& asked, Report& report);

// The number of the SSID that a word names; 0 with a problem.
int asked_ssid(Band band, const std::string& word, Report& report);

// Problems with a name that another SSID than `own` has, and with one that stations cannot show.
void refuse_taken_name(Band band, const std::string& name, int own, Report& report);
void refuse_bad_name(const std::string& name, bool force, Report& report);

// Judges the plans, carries them out unless this is a dry run, and tells it. `done` completes "is ". The exit code.
int finish(const Words& words, const AskedSsids& asked, const std::vector<SsidPlan>& plans, const std::string& done,
           Report& report);

// Taken for a change; a dry run waits for nobody.
class MaybeLock {
 public:
  MaybeLock(const Words& words, Report& report) {
    if (!words.dry_run) lock_.emplace(report, words.wait_seconds);
  }
  bool is_missing() const { return lock_ && !*lock_; }
  int exit_code() const { return lock_->exit_code(); }

 private:
  std::optional<ToolLock> lock_;
};

namespace word {

inline constexpr Word kBandOrBoth = {
    "BAND", &Words::band, "2.4g or 5g; left out with --both", {.required = true, .offers = "band"}};
inline constexpr Word kBoth = {"--both", &Words::both, "On both bands, or on none"};
inline constexpr Word kDryRun = {"--dry-run", &Words::dry_run, "Say what would change, and change nothing"};
inline constexpr Word kForceName = {"--force", &Words::force, "Take a name twice, or what cannot be served"};
inline constexpr Word kWhichSsid = {"SSID", &Words::names, "Its number or name", {.offers = "1,2,3,4,5,6,7,8"}};

}  // namespace word

}  // namespace wlanctl
