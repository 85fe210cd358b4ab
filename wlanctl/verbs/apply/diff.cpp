// diff: the live store against the dat file, what is in force, or a file. save and revert bring it in line with the
// first.
#include <unistd.h>

#include <algorithm>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/apply/undone.h"
#include "wlanctl/base/colour.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/compared_file.h"
#include "wlanctl/verbs/apply/diff_text.h"
#include "wlanctl/verbs/apply/file_guard.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// The radio is restarted all the same.
constexpr char kAtAReboot[] =
    "\n  a restart of the radio, and a reboot: the driver makes interfaces for another\n"
    "  BssidNum, and switches hardware NAT, when it is loaded";

// What a comparison has found so far.
struct Outcome {
  int code = kDone;
  bool differs = false;
  Json bands = Json::array();
};

Json tell_adjustments(const std::vector<Adjustment>& adjustments, bool secrets, Text& text) {
  Json told = Json::array();
  std::vector<ShownChange> rows;
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

// Beforehand.
void note_lists_to_cut(Band band, const std::vector<StoreRecord>& live, const std::vector<StoreRecord>& file,
                       Report& report) {
  for (const DatFinding& cut : lists_to_be_cut(live, file, ssid_count(band))) {
    report.note(cut.key + " of " + label_of(band) + ": " + cut.reason);
  }
}

int diff_dat_file(Band band, const Words& words, Report& report, Outcome& outcome) {
  if (!look_at_band(band, report)) return kNoStore;
  const auto parsed = parse_dat_file(band);
  if (!parsed) {
    report.problem({unreadable_dat_file(band), "is it there, and readable?", about(band)});
    return kWrongUsage;
  }
  const std::vector<StoreRecord> live = records_of(table_of_store(band));
  const std::vector<StoreRecord> file = records_of(*parsed);
  const std::vector<Difference> found = served_differences(live, file, DatFile::kRight);
  if (!restore_applied(band, report)) return kWrongUsage;
  note_waiting(band, report);
  const std::optional<TakenBack> taken = note_taken_back(band, report);
  const DriverTime limited;
  const Plan plan = plan_apply(band);
  const char* const weight = word_for_apply(plan.nothing, plan.weight);
  const bool is_told = was_told(band);
  if (!is_told) report.problem(untold(band));
  complain_of(band, plan.lacks, next_step(band), report);
  Text& text = report.text();
  text << label_of(band) << ": "
       << (found.empty() ? "the store is as the dat file" : verb_for(found.size()) + " (dat file -> store)")
       << "; an apply would mean: "
       << (plan.senseless_count                ? "?"
           : plan.weight == 0 && !plan.nothing ? "no restart"
                                               : weight)
       << (plan.weight > 1 ? kAtAReboot : "") << '\n';
  Json changes = tell_changes(found, {"file", ssids_in(file)}, words.secrets, text);
  // What was saved but never applied, and what the file alone says nothing of, such as a list that a save has cut.
  std::vector<Difference> waiting;
  OtherSide in_force = {"in_force"};
  if (!plan.senseless_count && (found.empty() || !plan.is_file_in_force)) {
    const std::vector<StoreRecord> records = records_of(settings_in_force(band));
    waiting = served_differences(live, records);
    in_force.ssids = ssids_in(records);
  }
  if (!waiting.empty()) text << "  " << verb_for(waiting.size()) << " from what is in force (in force -> store)\n";
  Json not_in_force = tell_changes(waiting, in_force, words.secrets, text);
  Json adjustments = tell_adjustments(plan.adjustments, words.secrets, text);
  if (!plan.senseless_count) note_system(band, plan.lacks, report);
  if (!plan.nothing) {
    note_access_lists(band, report);
    note_lists_to_cut(band, live, file, report);
    note_unused_values(band, report);
  }
  outcome.differs = outcome.differs || !found.empty();
  outcome.bands.push_back({{"band", label_of(band)},
                           {"changes", std::move(changes)},
                           {"not_in_force", std::move(not_in_force)},
                           {"adjustments", std::move(adjustments)},
                           {"apply", plan.senseless_count ? Json() : Json(weight)},
                           {"taken_back", json_of(taken)}});
  if (!plan.senseless_count) return plan.lacks.empty() && is_told ? kDone : kNotInForce;
  tell_senseless_count(band, *plan.senseless_count, report);
  return kRefused;
}

// Value by value, and no more: what an apply would mean does not depend on it.
void tell_comparison(Band band, const std::vector<Difference>& found, const OtherSide& other, const std::string& name,
                     const Words& words, Report& report, Outcome& outcome) {
  report.text() << label_of(band) << ": "
                << (found.empty() ? "the store is as " + name : verb_for(found.size()) + " (" + name + " -> store)")
                << '\n';
  outcome.differs = outcome.differs || !found.empty();
  outcome.bands.push_back(
      {{"band", label_of(band)}, {"changes", tell_changes(found, other, words.secrets, report.text())}});
}

int diff_in_force(Band band, const Words& words, Report& report, Outcome& outcome) {
  if (!look_at_band(band, report)) return kNoStore;
  note_waiting(band, report);
  const auto in_force = last_applied(band);
  if (!in_force) {
    report.problem({std::string("nothing is known of what was last applied to ") + label_of(band),
                    std::string("wlanctl apply ") + label_of(band) + " makes it known; wlanctl diff " + label_of(band) +
                        " compares with the dat file",
                    about(band)});
    return kWrongUsage;
  }
  const std::vector<StoreRecord> live = records_of(table_of_store(band));
  const DriverTime limited;
  const std::vector<Lack> lacks = lacks_of(band);
  const std::string other = lacks.empty() && was_told(band) ? "what is in force" : "what was last applied";
  const std::vector<StoreRecord> applied = records_of(*in_force);
  tell_comparison(band, served_differences(live, applied), {"in_force", ssids_in(applied)}, other, words, report,
                  outcome);
  complain_of(band, lacks, next_step(band), report);
  const bool is_told = was_told(band);
  if (!is_told) report.problem(untold(band));
  return lacks.empty() && is_told ? kDone : kNotInForce;
}

// A band alone, a file alone, or both.
struct Compared {
  std::string band;
  std::string file;
};

std::optional<Compared> parse_operands(const Words& words, Report& report) {
  Compared compared;
  for (const std::string& operand : words.operands) {
    std::string& place = parse_band(operand) ? compared.band : compared.file;
    if (!place.empty()) {
      report.problem({"there is more than one " + std::string(parse_band(operand) ? "band" : "file"),
                      "compare with one after the other; without a band, both are compared"});
      return std::nullopt;
    }
    place = operand;
  }
  if (!words.in_force || compared.file.empty()) return compared;
  report.problem({"--in-force and a file are two comparisons", "leave one out"});
  return std::nullopt;
}

int diff_file(const Compared& compared, const Words& words, Report& report, Outcome& outcome) {
  if (compared.file.find('/') == std::string::npos && access(compared.file.c_str(), F_OK) != 0) {
    report.problem({"there is no band and no file \"" + compared.file + "\"",
                    "say 2.4g or 5g, or name a file",
                    {{"file", compared.file}}});
    return kWrongUsage;
  }
  const auto file = read_compared_file(compared.file, report);
  if (!file) return kWrongUsage;
  std::vector<Band> bands = file->bands;
  if (const std::optional<Band> wanted = parse_band(compared.band)) {
    // A dat file is of whichever band somebody says.
    const bool is_of_it = file->dat || std::find(bands.begin(), bands.end(), *wanted) != bands.end();
    if (!is_of_it) {
      report.problem({compared.file + " has no settings of " + label_of(*wanted),
                      "leave the band out",
                      {{"band", label_of(*wanted)}, {"file", compared.file}}});
      return kWrongUsage;
    }
    bands = {*wanted};
  }
  if (bands.empty()) {
    report.problem({"the band of " + compared.file + " is not to be told from its name",
                    "wlanctl diff 2.4g FILE, or wlanctl diff 5g FILE",
                    {{"file", compared.file}}});
    return kWrongUsage;
  }
  int code = kDone;
  for (const Band band : look_at_bands(bands, &code, report)) {
    note_waiting(band, report);
    tell_comparison(band, differences_from(*file, band), {"file", ssids_in(*file, band)}, "the file", words, report,
                    outcome);
  }
  return code;
}

int diff(const Words& words, Report& report) {
  const std::optional<Compared> compared = parse_operands(words, report);
  if (!compared) return kWrongUsage;
  Outcome outcome;
  if (!compared->file.empty()) {
    outcome.code = diff_file(*compared, words, report, outcome);
  } else {
    for (const Band band : bands_of(compared->band)) {
      const int code =
          words.in_force ? diff_in_force(band, words, report, outcome) : diff_dat_file(band, words, report, outcome);
      outcome.code = worse_of(outcome.code, code);
    }
  }
  report.data() = {{"against", !compared->file.empty() ? "file"
                               : words.in_force        ? "in_force"
                                                       : "dat_file"},
                   {"file", compared->file.empty() ? Json() : Json(compared->file)},
                   {"bands", std::move(outcome.bands)}};
  return outcome.code == kDone && words.exit_code && outcome.differs ? kRefused : outcome.code;
}

constexpr Word kWords[] = {
    {"BAND|FILE", &Words::operands, "2.4g or 5g; a dat file or an export to compare with", {.offers = "band-or-file"}},
    {"--in-force", &Words::in_force, "Compare with what was last applied"},
    {"--exit-code", &Words::exit_code, "End with 1 where there are differences"},
    word::kSecrets};

}  // namespace

const Verb kDiff = {"diff",
                    "Compare live store and dat file; weigh an apply",
                    "The store is compared with the band's dat file, with what is in force, which is\n"
                    "what was last applied, or with a FILE. That is another dat file, whose band is\n"
                    "told by its path where it can be, else by BAND; or an export, of which what it\n"
                    "has is compared, but for secrets that it leaves out. A file named as a band is\n"
                    "./5g.\n\n"
                    "Examples:\n"
                    "  wlanctl diff\n"
                    "  wlanctl diff 2.4g --json\n"
                    "  wlanctl diff --in-force\n"
                    "  wlanctl diff 5g backup.dat\n"
                    "  wlanctl diff --exit-code >/dev/null || wlanctl save",
                    kWords,
                    diff,
                    {},
                    true};

}  // namespace wlanctl
