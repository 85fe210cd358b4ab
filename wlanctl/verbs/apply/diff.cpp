// diff: the live store against the dat file. save and revert bring one in line with the other.
#include <algorithm>
#include <array>
#include <map>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/base/colour.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/revert.h"
#include "wlanctl/store/saved_text.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/file_guard.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

using Fields = std::vector<std::string>;
using Values = std::map<std::string, Fields>;

Values values_of(const std::vector<StoreRecord>& records) {
  Values values;
  for (const StoreRecord& record : records) values[record.key] = record.fields;
  return values;
}

struct Difference {
  std::string name;
  std::string dat_key;
  std::string live;
  std::string file;
};

std::string field_of(const Fields& fields, size_t index) {
  return index < fields.size() ? fields[index] : std::string();
}

std::string named(const std::string& dat_key, size_t field, size_t fields) {
  int index = 0;
  const Key* const key = find_dat_key(dat_key, &index);
  if (key != nullptr && index > 0) return std::string(key->name) + ":" + std::to_string(index);
  const bool per_ssid = key != nullptr ? key->scope == Scope::kSsid : fields > 1;
  return per_ssid ? dat_key + ":" + std::to_string(field + 1) : dat_key;
}

// Whether the value belongs to an SSID beyond the band's count: a save leaves it out, so the file may well lack it.
bool is_beyond(const std::string& dat_key, size_t field, size_t ssids) {
  int index = 0;
  const Key* const key = find_dat_key(dat_key, &index);
  if (key != nullptr && key->scope == Scope::kLink) return false;
  return field >= ssids || (index > 0 && static_cast<size_t>(index) > ssids);
}

std::vector<Difference> differences(const Values& live, const Values& file, size_t ssids, bool secrets) {
  std::vector<Difference> found;
  const auto compare = [&](const std::string& key, const Fields& in_store, const Fields& in_file) {
    const size_t fields = std::max(in_store.size(), in_file.size());
    for (size_t i = 0; i < fields && !is_beyond(key, i, ssids); ++i) {
      std::string left = field_of(in_store, i);
      std::string right = field_of(in_file, i);
      if (left == right) continue;
      if (is_secret_dat_key(key) && !secrets) {
        if (!left.empty()) left = std::string(kMasked) + (right.empty() ? "" : " (new)");
        if (!right.empty()) right = kMasked;
      }
      found.push_back({named(key, i, fields), key, left, right});
    }
  };
  static const Fields kNone;
  for (const auto& [key, fields] : live) {
    const auto other = file.find(key);
    compare(key, fields, other == file.end() ? kNone : other->second);
  }
  for (const auto& [key, fields] : file) {
    if (live.find(key) == live.end()) compare(key, kNone, fields);
  }
  return found;
}

// A band without a count still has one field.
size_t shown_ssids(Band band) {
  return static_cast<size_t>(std::max(ssid_count(band), 1));
}

Problem unreadable_file(Band band) {
  return {"cannot read " + dat_path_of(band), "is it there, and readable?", about(band)};
}

// "  NAME  LEFT -> RIGHT" for each; two long values do not fit beside each other, and stand below each other.
std::string table_of(const std::vector<std::array<std::string, 3>>& changes) {
  Rows rows;
  size_t widest = 0;
  for (const auto& [name, left, right] : changes) {
    rows.push_back({"  " + printable(name),
                    painted(Paint::kRed, printable(left)) + " -> " + painted(Paint::kGreen, printable(right))});
    widest = std::max(widest, rows.back()[0].size());
  }
  for (size_t i = 0; i < rows.size(); ++i) {
    std::string& values = rows[i][1];
    if (widest + 2 + width_of(values) > kColumns)
      values.replace(painted(Paint::kRed, printable(changes[i][1])).size(), 1, "\n" + std::string(widest + 2, ' '));
  }
  return table(rows);
}

std::string verb_for(size_t count) {
  return count_of(count, "value") + (count == 1 ? " differs" : " differ");
}

Json tell_changes(const std::vector<Difference>& found, const char* other, Text& text) {
  Json changes = Json::array();
  std::vector<std::array<std::string, 3>> rows;
  for (const Difference& one : found) {
    changes.push_back(
        {{"key", one.name}, {"live", json_value(one.dat_key, one.live)}, {other, json_value(one.dat_key, one.file)}});
    rows.push_back({one.name, one.file, one.live});
  }
  text << table_of(rows);
  return changes;
}

Json tell_adjustments(const std::vector<Adjustment>& adjustments, bool secrets, Text& text) {
  Json told = Json::array();
  std::vector<std::array<std::string, 3>> rows;
  for (const Adjustment& one : adjustments) {
    const Key& key = *one.target.key;
    const std::string from = secrets ? one.from : shown_value(key, one.from);
    const std::string to = secrets || one.to == "0" ? one.to : shown_value(key, one.to);
    told.push_back({{"key", one.target.name()}, {"from", json_value(key, from)}, {"to", json_value(key, to)}});
    rows.push_back({one.target.name(), from, to});
  }
  if (!rows.empty()) {
    text << "  an apply will change by itself, so that it agrees with the rest:\n" << table_of(rows);
  }
  return told;
}

void note_access_lists(Band band, Report& report) {
  for (int ssid = 1; ssid <= ssid_count(band); ++ssid) {
    const Target target = {find_key(kAddressList), ssid};
    if (read_value(band, *target.key, ssid).value_or("").find(';') == std::string::npos) continue;
    report.note(target.name() + " of " + label_of(band) + ": " + kOnlyFirstAddress);
  }
}

int diff_band(Band band, const Words& words, Report& report, Json& bands) {
  if (!look_at_band(band, report)) return kNoStore;
  const auto parsed = parse_dat_file(band);
  if (!parsed) {
    report.problem(unreadable_file(band));
    return kWrongUsage;
  }
  const Values live = values_of(records_of(table_of_store(band)));
  const size_t ssids = shown_ssids(band);
  const std::vector<Difference> found = differences(live, values_of(records_of(*parsed)), ssids, words.secrets);
  if (!restore_applied(band, report)) return kWrongUsage;
  note_waiting(band, report);
  const Plan plan = plan_apply(band);
  const char* const weight = word_for_apply(plan.nothing, plan.weight);
  if (!is_told(band)) {
    report.note(std::string("the driver did not take all of the last apply of ") + label_of(band) + "; wlanctl apply " +
                label_of(band) + " tells it again");
  }
  const std::vector<Lack> lacks = lacks_of(band);
  complain_of(band, lacks, next_step(band), report);
  Text& text = report.text();
  text << label_of(band) << ": "
       << (found.empty() ? "the store is as the dat file" : verb_for(found.size()) + " (dat file -> store)")
       << "; an apply would mean: "
       << (plan.senseless_count                ? "?"
           : plan.weight == 0 && !plan.nothing ? "no restart"
                                               : weight)
       << '\n';
  Json changes = tell_changes(found, "file", text);
  // What was saved, but never applied.
  std::vector<Difference> waiting;
  if (!plan.senseless_count && !plan.is_file_in_force) {
    waiting = differences(live, values_of(records_of(settings_in_force(band))), ssids, words.secrets);
  }
  if (!waiting.empty()) text << "  " << verb_for(waiting.size()) << " from what is in force (in force -> store)\n";
  Json not_in_force = tell_changes(waiting, "in_force", text);
  Json adjustments = tell_adjustments(plan.adjustments, words.secrets, text);
  if (!plan.nothing) note_access_lists(band, report);
  bands.push_back({{"band", label_of(band)},
                   {"changes", std::move(changes)},
                   {"not_in_force", std::move(not_in_force)},
                   {"adjustments", std::move(adjustments)},
                   {"apply", plan.senseless_count ? Json() : Json(weight)}});
  if (!plan.senseless_count) return lacks.empty() ? kDone : kNotInForce;
  tell_senseless_count(band, *plan.senseless_count, report);
  return kRefused;
}

int diff(const Words& words, Report& report) {
  Json bands = Json::array();
  int code = kDone;
  for (const Band band : bands_of(words.band)) code = worse_of(code, diff_band(band, words, report, bands));
  report.data() = {{"bands", std::move(bands)}};
  return code;
}

int save_band(Band band, bool force, Report& report, Json& saved) {
  if (!open_band(band, report)) return kNoStore;
  if (const auto count = senseless_count(band)) {
    tell_senseless_count(band, *count, report);
    return kRefused;
  }
  // From now on the dat file no longer says what is in force.
  if (!restore_applied(band, report)) return kWrongUsage;
  const std::optional<std::string> text = saved_text(band);
  if (!force && !may_write_file(band, text, report)) return kRefused;
  if (!keep_file_of_now(band, text, report) || !keep_applied(band, FileIs::kChanging, report)) return kRefused;
  forget_settled(band);
  clear_messages();
  if (wifimgr_lib_save_dataFile(number_of(band)) != 0) {
    report.problem({std::string(label_of(band)) + " was not saved: " + first_reason(),
                    "is " + dat_path_of(band) + " writable, and is there room?", about(band)});
    return kRefused;
  }
  if (!keep_applied(band, FileIs::kSettled, report)) return kRefused;
  saved.push_back(label_of(band));
  report.text() << label_of(band) << ": saved to " << dat_path_of(band) << '\n';
  return kDone;
}

int save(const Words& words, Report& report) {
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  Json saved = Json::array();
  int code = kDone;
  for (const Band band : bands_of(words.band)) code = worse_of(code, save_band(band, words.force, report, saved));
  report.data() = {{"bands", std::move(saved)}};
  return code;
}

Problem refusal_of(Band band, const Reverted& outcome) {
  if (outcome.how == Reverting::kUnreadable) return unreadable_file(band);
  if (outcome.how == Reverting::kNoRoom) {
    return {std::string("the store of ") + label_of(band) + " cannot take its dat file",
            "stop the management processes, remove the segment with ipcrm and start them", about(band)};
  }
  const size_t others = outcome.missing.size() - 1;
  return {dat_path_of(band) + " lacks " + outcome.missing.front() +
              (others == 0 ? "" : " and " + std::to_string(others) + " more keys that the store has"),
          "was it cut off? wlanctl save " + std::string(label_of(band)) +
              " --force writes it anew; revert --force reverts to what there is",
          about(band)};
}

int revert_band(Band band, bool force, Report& report, Json& reverted) {
  if (!open_store(band, report, Content::kToCome)) return kNoStore;
  const size_t ssids = shown_ssids(band);
  const Reverted outcome = revert_store(band, force);
  if (outcome.how != Reverting::kDone) {
    report.problem(refusal_of(band, outcome));
    return outcome.how == Reverting::kUnreadable ? kWrongUsage : kRefused;
  }
  const size_t values =
      differences(values_of(records_of(outcome.before)), values_of(records_of(outcome.file)), ssids, false).size();
  reverted.push_back({{"band", label_of(band)}, {"values", values}});
  report.text() << label_of(band) << ": " << count_of(values, "value") << " put back to the dat file's\n";
  return kDone;
}

int revert(const Words& words, Report& report) {
  const ToolLock lock(report, words.wait_seconds);
  if (!lock) return lock.exit_code();
  Json reverted = Json::array();
  int code = kDone;
  for (const Band band : bands_of(words.band)) code = worse_of(code, revert_band(band, words.force, report, reverted));
  report.data() = {{"bands", std::move(reverted)}};
  return code;
}

constexpr Word kDiffWords[] = {word::kBand, word::kSecrets};
constexpr Word kSaveWords[] = {
    word::kBand, {"--force", &Words::force, "Also where something of the dat file is lost"}, word::kWait};
constexpr Word kRevertWords[] = {
    word::kBand, {"--force", &Words::force, "Also to a dat file that lacks keys of the store"}, word::kWait};

}  // namespace

const Verb kDiff = {"diff",
                    "Compare live store and dat file; weigh an apply",
                    "Examples:\n  wlanctl diff\n  wlanctl diff 2.4g --json",
                    kDiffWords,
                    diff,
                    {},
                    true};
const Verb kSave = {"save", "Write the live store to the dat file, no more",
                    "Examples:\n  wlanctl save\n  wlanctl save 5g", kSaveWords, save};
const Verb kRevert = {"revert", "Put the live store back to what the dat file says", "Examples:\n  wlanctl revert 2.4g",
                      kRevertWords, revert};

}  // namespace wlanctl
