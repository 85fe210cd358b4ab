#include "wlanctl/ssid/change.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/check/bare_ssid.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/keys/danger.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/keys/value_rule.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/output.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

using Table = std::vector<wifimgr_attr_record>;

bool is_written(Band band, const SsidWrite& write) {
  const Key& key = *write.target.key;
  const int index = write.target.index;
  const bool is_taken = key.setter(wifi_type_of(band), index, write.value.c_str()) == 0;
  if (is_taken) spread_list(band, key, write.value);
  if (!write.is_given) return is_taken;
  // A setter may take less than what was in the store already, or make something else of it.
  if (read_value(band, key, index) == write.value) return true;
  write_value(band, key, index, write.value);
  return read_value(band, key, index) == write.value;
}

void refuse(Report& report, Band band, const SsidWrite& write, const std::string& reason, const std::string& next) {
  const Key& key = *write.target.key;
  const std::string shown = shown_value(key, write.value);
  report.problem({std::string(label_of(band)) + ": " + write.target.name() + " cannot be \"" + shown + "\": " + reason,
                  next,
                  {{"band", label_of(band)},
                   {"key", write.target.name()},
                   {"value", shown},
                   {"reason", reason},
                   {"accepted", served_words(key)}}});
}

constexpr char kInsist[] = "choose another value, or insist with --force";

void refuse_unserved(Band band, const SsidPlan& plan, Report& report) {
  for (const SsidWrite& write : plan.writes) {
    if (write.is_given) continue;
    const auto sibling = [&](const char* name) { return read_value(band, *find_key(name), write.target.index); };
    std::string reason = danger_of(*write.target.key, write.value);
    if (reason.empty()) reason = unserved_reason(*write.target.key, band, write.value, sibling);
    if (!reason.empty()) refuse(report, band, write, reason, kInsist);
  }
}

// Of a name and security a save may have left nothing.
void judge_bare_ssids(Band band, const std::vector<int>& on_before, bool force, Report& report) {
  for (const int ssid : ssids_switched_on(band)) {
    const bool was_on = std::find(on_before.begin(), on_before.end(), ssid) != on_before.end();
    const std::string reason = was_on ? "" : reason_against_air(band, ssid);
    if (reason.empty()) continue;
    const std::string label = label_of(band);
    if (force) {
      report.note("all the same, by --force: " + label + ": " + reason);
    } else {
      report.problem({label + ": " + reason, "wlanctl set " + label + " gives it what it needs; --force insists",
                      about(band, ssid)});
    }
  }
}

void refuse_losses(Band band, const std::vector<DatFinding>& losses, Report& report) {
  for (const DatFinding& loss : losses) {
    const std::string label = label_of(band);
    report.problem({label + ": in the dat file, " + (loss.key.empty() ? "" : loss.key + ": ") + loss.reason,
                    "wlanctl set " + label + " a value for each SSID of it, or insist with --force",
                    {{"band", label}, {"line", nullptr}, {"dat_key", loss.key}, {"reason", loss.reason}}});
  }
}

// The loader takes lines of so many characters, and the library refuses to write a longer one.
constexpr size_t kLongestLine = WIFIMGR_DAT_LINE_SIZE - 2;

void refuse_long_lines(Band band, Report& report) {
  const int ssids = ssid_count(band);
  for (const StoreRecord& record : records_of(table_of_store(band))) {
    if (is_numbered_dat_key(record.key)) continue;
    std::vector<std::string> fields = record.fields;
    fields.resize(std::min(fields.size(), static_cast<size_t>(ssids)));
    const size_t length = record.key.size() + 1 + joined(fields, ";").size();
    if (length <= kLongestLine) continue;
    const std::string reason = "its line would have " + std::to_string(length) +
                               " characters, and the dat file holds " + std::to_string(kLongestLine) + " at most";
    report.problem({std::string(label_of(band)) + ": " + record.key + " has no room for one more SSID: " + reason,
                    "set shorter values for the others",
                    {{"band", label_of(band)}, {"line", nullptr}, {"dat_key", record.key}, {"reason", reason}}});
  }
}

// Whether all others are still what they were, each at its place.
bool are_kept(Band band, const SsidPlan& plan) {
  return std::all_of(plan.writes.begin(), plan.writes.end(), [&](const SsidWrite& write) {
    return read_value(band, *write.target.key, write.target.index).value_or("") == write.value;
  });
}

}  // namespace

const SsidWrite* make_changes(const SsidPlan& plan, std::vector<NotedField>* fields) {
  const ShellScope nothing_runs(ShellMode::kDrop);
  const CaughtOutput unheard;
  for (const SsidWrite& write : plan.writes) {
    clear_messages();
    const Table before = fields == nullptr ? Table() : table_of_store(plan.band);
    if (!is_written(plan.band, write)) return &write;
    if (fields != nullptr) add_changes(before, table_of_store(plan.band), fields);
  }
  return nullptr;
}

std::optional<JudgedPlan> judge(const SsidPlan& plan, bool force, Report& report) {
  const Band band = plan.band;
  const size_t problems = report.problems().size();
  const std::optional<std::string> before = saved_text(band);
  const std::vector<DatFinding> losses = losses_of_save(band, before);
  const std::vector<Adjustment> adjustments = adjustments_of(band);
  const std::vector<int> on_before = ssids_switched_on(band);
  const PrivateStore copy(band);
  if (add_records(band, plan.records) != Adding::kDone) {
    report.problem(
        {std::string("the store of ") + label_of(band) + " has no room for SSID " + std::to_string(plan.ssid),
         "wlanctl check its dat file", about(band, plan.ssid)});
    return std::nullopt;
  }
  JudgedPlan judged = {plan, {}, {}, {}};
  if (const SsidWrite* const refused = make_changes(plan, &judged.fields)) {
    const std::string reason = first_reason();
    refuse(report, band, *refused, reason.empty() ? "the library refuses it" : reason,
           "it takes " + served_words(*refused->target.key));
    return std::nullopt;
  }
  judged.table = table_of_store(band);
  if (!force) refuse_unserved(band, plan, report);
  judge_bare_ssids(band, on_before, force, report);
  const std::optional<std::string> after = saved_text(band);
  if (before && !after) refuse_long_lines(band, report);
  if (!force && report.problems().size() == problems) {
    refuse_losses(band, added_losses(losses, losses_of_save(band, after)), report);
  }
  if (report.problems().size() != problems) return std::nullopt;
  for (const Adjustment& one : adjustments_of(band)) {
    if (std::find(adjustments.begin(), adjustments.end(), one) == adjustments.end()) judged.adjustments.push_back(one);
  }
  return judged;
}

namespace {

std::string words_for_adding(Adding adding) {
  switch (adding) {
    case Adding::kNoLock:
      return "another process holds its lock";
    case Adding::kNoRoom:
      return "it has no room left";
    case Adding::kNotThere:
      return "another process replaced it";
    case Adding::kDone:
      break;
  }
  return "";
}

bool add_all_records(const std::vector<JudgedPlan>& plans, Report& report) {
  for (const JudgedPlan& judged : plans) {
    const Band band = judged.plan.band;
    const Adding adding = judged.plan.records.empty() ? Adding::kDone : add_records(band, judged.plan.records);
    if (adding == Adding::kDone) continue;
    report.problem({std::string("the store of ") + label_of(band) + " does not take the records of SSID " +
                        std::to_string(judged.plan.ssid) + ": " + words_for_adding(adding),
                    "nothing is changed; try again", about(band, judged.plan.ssid)});
    return false;
  }
  return true;
}

bool change_store(const JudgedPlan& judged, Report& report) {
  const Band band = judged.plan.band;
  const int served = ssid_count(band);
  if (judged.plan.count > served) store_unserved(band, judged.fields, served);
  const SsidWrite* const refused = make_changes(judged.plan);
  if (refused == nullptr && are_kept(band, judged.plan) && are_all_stored(band, judged.fields)) return true;
  const std::string reason = refused == nullptr ? "" : first_reason();
  report.problem({std::string("the store of ") + label_of(band) + " did not take all of it" + because(reason),
                  "another process changed it meanwhile, and everything is put back; try again",
                  about(band, judged.plan.ssid)});
  return false;
}

}  // namespace

bool carry_out(const std::vector<JudgedPlan>& plans, Report& report) {
  const SignalHold hold;
  if (!add_all_records(plans, report)) return false;
  std::vector<NotedBand> noted;
  for (const JudgedPlan& judged : plans) noted.push_back({judged.plan.band, judged.fields});
  if (!note_storing("ssid", noted, report)) return false;
  const bool is_done =
      std::all_of(plans.begin(), plans.end(), [&](const JudgedPlan& judged) { return change_store(judged, report); });
  if (!is_done) {
    for (const NotedBand& band : noted) (void)put_back_noted(band.band, band.fields);
  }
  return forget_storing(report) && is_done;
}

}  // namespace wlanctl
