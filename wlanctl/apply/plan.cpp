#include "wlanctl/apply/plan.h"

#include <algorithm>
#include <optional>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/run.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/danger.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/difference.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

constexpr int kRestart = 1;

std::vector<Danger> dangers_of(Band band) {
  std::vector<Danger> dangers;
  const int ssids = ssid_count(band);
  for (const Key& key : all_keys()) {
    if (!key.is_on(band) || key.scope == Scope::kLink || !is_in_script(key)) continue;
    const int last = key.scope == Scope::kBand ? 1 : ssids;
    for (int i = 1; i <= last; ++i) {
      const Target target = {&key, key.scope == Scope::kBand ? -1 : i};
      // What stands behind a line end in it, the script would take for a line of its own.
      const std::optional<std::string> value = read_raw_value(band, key, target.index);
      const std::string reason = value ? shell_danger_of(key, *value) : "";
      if (!reason.empty()) dangers.push_back({target.name(), reason});
    }
  }
  return dangers;
}

bool has_file_a_count(Band band) {
  const auto file = parse_dat_file(band);
  if (!file) return false;
  const PrivateStore loaded(band, *file);
  return !senseless_count(band);
}

Problem problem_of_count(Band band, const std::string& count) {
  const std::string label = label_of(band);
  // A setter changes what is there; only a load puts in what is missing.
  const std::vector<StoreRecord> records = records_of(table_of_store(band));
  if (std::none_of(records.begin(), records.end(), [](const StoreRecord& one) { return one.key == kSsidCount; })) {
    return {"the store of " + label + " has no BssidNum, which says how many SSIDs there are",
            "give " + dat_path_of(band) + " a line BssidNum=2, then wlanctl revert " + label,
            about_key(kSsidCount, band)};
  }
  return {"BssidNum of " + label + " is \"" + printable(count) + "\" in the store, and no band has so many SSIDs",
          "wlanctl set " + label + " BssidNum=2" + (has_file_a_count(band) ? ", or wlanctl revert " + label : ""),
          about_key(kSsidCount, band)};
}

}  // namespace

const char* word_for_apply(bool nothing, int weight) {
  constexpr const char* kWords[] = {"save", "radio", "reboot"};
  return nothing ? "nothing" : kWords[std::clamp(weight, 0, 2)];
}

void tell_senseless_count(Band band, const std::string& count, Report& report) {
  report.problem(problem_of_count(band, count));
}

void note_senseless_count(Band band, Report& report) {
  const std::optional<std::string> count = senseless_count(band);
  if (!count) return;
  const Problem problem = problem_of_count(band, *count);
  report.note(problem.message + "; " + problem.next);
}

std::vector<std::string> lists_not_in_force(Band band) {
  std::vector<std::string> keys;
  for (const Difference& one :
       differences(records_of(table_of_store(band)), records_of(settings_in_force(band)), WIFIMGR_FIELDS)) {
    if (is_list_of_band(one.dat_key)) keys.push_back(one.dat_key);
  }
  return keys;
}

bool is_file_in_force(Band band) {
  const auto file = parse_dat_file(band);
  return file && saved_text(band, *file) == saved_text(band, settings_in_force(band));
}

Plan plan_apply(Band band) {
  Plan plan;
  plan.lacks = lacks_of(band);
  if (plan.lacks.empty() && !is_in_force_known(band)) {
    const PrivateStore counts_as_in_force(band, settings_in_force(band));
    plan.lacks = lacks_by_driver(band);
  }
  plan.senseless_count = senseless_count(band);
  if (plan.senseless_count) return plan;
  const std::optional<std::string> live = saved_text(band);
  const auto parsed = parse_dat_file(band);
  const std::optional<std::string> file = parsed ? saved_text(band, *parsed) : std::nullopt;
  const std::optional<std::string> in_force = saved_text(band, settings_in_force(band));
  plan.is_file_in_force = file == in_force;
  plan.nothing = live && live == file && live == in_force && !is_doubted(band) && weigh(band) == 0 && is_told(band) &&
                 plan.lacks.empty() && lists_not_in_force(band).empty();

  if (!plan.nothing) plan.adjustments = adjustments_of(band);
  const PrivateStore copy(band);
  Report unheard;
  make_consistent(band, unheard);
  plan.weight = plan.nothing ? 0 : weigh(band);
  const bool is_lacking = !plan.lacks.empty() && !are_all_unknown(plan.lacks);
  if (is_lacking || is_doubted(band)) plan.weight = std::max(plan.weight, kRestart);
  plan.dangers = dangers_of(band);
  plan.text = saved_text(band);
  return plan;
}

}  // namespace wlanctl
