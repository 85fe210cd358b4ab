// undo: the settings that an entry of the history changed, as they were before it, in the live store.
#include <algorithm>
#include <utility>

#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/exchange/stored_settings.h"
#include "wlanctl/exchange/storing.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/history/record.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/entry_words.h"
#include "wlanctl/verbs/apply/undone_entry.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

// A change on its way back.
struct Step {
  SettingChange change;
  Target target;
  std::string now;
};

struct Undoing {
  Entry entry;
  std::vector<Step> steps;
  std::vector<std::string> already;                         // as before the entry
  std::vector<std::pair<SettingChange, std::string>> left;  // with the reason
  StorePlan plan;
  std::string way_on;  // behind what to do with a refusal; "" where this is the oldest one

  std::string name() const { return "entry " + std::to_string(entry.number); }
};

Json about_change(Band band, const SettingChange& change) {
  return {{"band", label_of(band)}, {"key", change.name}};
}

// What is to be set, and what stands in the way of it.
void look_at_values(bool force, Undoing* undoing, Report& report) {
  const Entry& entry = undoing->entry;
  for (const SettingChange& change : entry.changes) {
    const std::optional<Target> target = change.target(entry.band);
    if (!target) {
      undoing->left.emplace_back(change, "the library has no setter for it");
      continue;
    }
    const std::optional<std::string> value = exact_value(entry.band, *target);
    const std::string now = value.value_or("");
    if (now == change.from) {
      undoing->already.push_back(change.name);
      continue;
    }
    // What stands behind the count of SSIDs is nobody's; a save drops it, and it can come again.
    const bool is_served = target->key->scope != Scope::kSsid || target->index <= ssid_count(entry.band);
    if (value && is_served && now != change.to && !force) {
      const std::string shown = shown_value(change, now, false);
      const std::string to = shown_value(change, change.to, false);
      report.problem({change.name + " of " + label_of(entry.band) + " has changed since: it is \"" + shown +
                          "\", and entry " + std::to_string(entry.number) + " left \"" + to + "\"" +
                          (shown == to && !shown.empty() ? ", another one" : ""),
                      "--force puts back what was before that entry all the same" + undoing->way_on,
                      about_change(entry.band, change)});
      continue;
    }
    undoing->steps.push_back({change, *target, now});
  }
}

// What the problems are about is left; true when that is something.
bool leave_refused(const std::vector<Problem>& problems, Undoing* undoing) {
  const size_t before = undoing->left.size();
  for (const Problem& problem : problems) {
    Json details = problem.details;
    const auto step = std::find_if(undoing->steps.begin(), undoing->steps.end(),
                                   [&](const Step& one) { return one.target.name() == details["key"].text(); });
    if (step == undoing->steps.end()) continue;
    undoing->left.emplace_back(step->change, details["reason"].text());
    undoing->steps.erase(step);
  }
  return undoing->left.size() != before;
}

// As the library takes it. What does not come back is left, and not touched. What was there once is not judged again; what
// a shell would act on, an apply refuses.
void make_plan(Undoing* undoing, Report& report) {
  for (;;) {
    std::vector<Wish> wishes;
    for (const Step& step : undoing->steps) wishes.push_back({step.target, step.change.from, "", 0});
    Report said;
    undoing->plan = try_out(undoing->entry.band, wishes, Order::kAsBefore, true, said);
    if (said.has_problems() && leave_refused(said.problems(), undoing)) continue;
    for (const Problem& problem : said.problems()) report.problem(problem);
    // Of what is refused anyway, nothing is taken.
    if (report.has_problems()) return;
    for (const std::string& note : said.notes()) report.note(note);
    return;
  }
}

void tell_left(const Undoing& undoing, bool force, Report& report) {
  const Entry& entry = undoing.entry;
  const std::string label = label_of(entry.band);
  const auto tell = [&](const std::string& message, Json details, bool is_only_read = false) {
    if (force || is_only_read) {
      report.note(message);
    } else {
      report.problem({message, "--force brings back the others" + undoing.way_on, std::move(details)});
    }
  };
  for (const auto& [change, reason] : undoing.left) {
    Json details = about_change(entry.band, change);
    details["reason"] = reason;
    // As with an import, what nothing sets does not keep the rest from it.
    const std::optional<Target> target = change.target(entry.band);
    const bool is_only_read = target && target->key->is_only_read();
    tell(change.name + " of " + label + " cannot be brought back to \"" + shown_value(change, change.from, false) +
             "\": " + reason,
         std::move(details), is_only_read);
  }
  if (entry.left_out > 0) {
    tell(count_of(entry.left_out, "change") + " of " + undoing.name() + " found no room in it", about(entry.band));
  }
}

// What the undo has changed: its steps, also those of an SSID that was not served before, and what the setters changed
// besides.
std::vector<SettingChange> changes_of(const Undoing& undoing, const std::vector<wifimgr_attr_record>& before) {
  const Band band = undoing.entry.band;
  std::vector<SettingChange> changes = changes_between(before, table_of_store(band));
  for (const Step& step : undoing.steps) {
    const std::string now = exact_value(band, step.target).value_or("");
    const auto is_same = [&](const SettingChange& one) { return one.name == step.change.name; };
    if (now == step.now || std::any_of(changes.begin(), changes.end(), is_same)) continue;
    changes.push_back({step.change.name, step.now, now});
  }
  return changes;
}

// An entry of the history for each, begun before the first change. All or nothing, whoever interrupts or kills it.
int bring_back(const std::vector<Undoing>& undoings, Report& report) {
  std::vector<std::vector<wifimgr_attr_record>> before;
  std::vector<Entry> entries;
  std::vector<StorePlan> plans;
  for (const Undoing& undoing : undoings) {
    Entry entry;
    entry.band = undoing.entry.band;
    entry.deed = Deed::kUndo;
    entry.about = undoing.entry.number;
    for (const Step& step : undoing.steps) entry.changes.push_back({step.change.name, step.now, step.change.from});
    before.push_back(table_of_store(entry.band));
    entries.push_back(begin_entry(std::move(entry), report));
    plans.push_back(undoing.plan);
  }
  int code = kRefused;
  if (store_plans("undo", plans, report)) code = report.has_problems() ? kNoAnswer : kDone;
  for (size_t i = 0; i < entries.size(); ++i) {
    Entry& entry = entries[i];
    entry.changes = changes_of(undoings[i], before[i]);
    entry.exit_code = code;
    entry.state = code == kRefused ? State::kFailed : State::kDone;
    finish_entry(std::move(entry), report);
  }
  return code;
}

std::string next_of(const std::vector<Undoing>& undoings) {
  const auto has_steps = [](const Undoing& one) { return !one.steps.empty(); };
  const auto loses = [](const Undoing& one) { return one.plan.loses_ssids; };
  if (std::none_of(undoings.begin(), undoings.end(), has_steps)) return "";
  return "wlanctl apply" + (undoings.size() == 1 ? std::string(" ") + label_of(undoings.front().entry.band) : "") +
         (std::any_of(undoings.begin(), undoings.end(), loses) ? " --force" : "");
}

Json document_of(const Undoing& undoing, const Words& words, const std::string& next) {
  Json changes = Json::array();
  Json left = Json::array();
  for (const Step& step : undoing.steps) {
    const SettingChange& change = step.change;
    changes.push_back({{"key", change.key()},
                       {"index", change.index()},
                       {"before", json_value(change, step.now, words.secrets)},
                       {"after", json_value(change, change.from, words.secrets)}});
  }
  for (const auto& [change, reason] : undoing.left) left.push_back({{"key", change.name}, {"reason", reason}});
  return {{"band", label_of(undoing.entry.band)},
          {"entry", undoing.entry.number},
          {"dry_run", words.dry_run},
          {"changes", std::move(changes)},
          {"already", undoing.already},
          {"left", std::move(left)},
          {"next", next}};
}

void tell(const Undoing& undoing, const Words& words, Report& report) {
  const std::string label = label_of(undoing.entry.band);
  for (const Step& step : undoing.steps) {
    const SettingChange& change = step.change;
    report.text() << change_lines(label + ' ' + printable(change.name),
                                  printable(shown_value(change, change.from, words.secrets)),
                                  printable(shown_value(change, step.now, words.secrets)));
  }
  if (undoing.steps.empty()) {
    report.text() << label << ": the store is as before " << undoing.name() << " already\n";
  } else if (words.dry_run) {
    report.text() << label << ": this would undo " << undoing.name() << " in the store; nothing was changed\n";
  } else {
    report.text() << label << ": " << undoing.name() << " is undone in the store\n";
  }
}

void tell_data(const std::vector<Undoing>& undoings, const Words& words, const std::string& next, Report& report) {
  Json documents = Json::array();
  for (const Undoing& undoing : undoings) documents.push_back(document_of(undoing, words, next));
  report.data() = words.both ? Json{{"bands", std::move(documents)}} : documents.items().front();
}

int undo(std::vector<Undoing>& undoings, const Words& words, Report& report) {
  for (Undoing& undoing : undoings) {
    look_at_values(words.force, &undoing, report);
    make_plan(&undoing, report);
    if (!report.has_problems() || words.force) tell_left(undoing, words.force, report);
  }
  const std::string next = next_of(undoings);
  int code = report.has_problems() ? kRefused : kDone;
  if (code == kDone && !words.dry_run) code = bring_back(undoings, report);
  if (code == kRefused) {
    // As far as it is known; nothing of it is done.
    for (Undoing& undoing : undoings) undoing = {undoing.entry, {}, {}, {}, {}, {}};
    tell_data(undoings, words, "", report);
    return code;
  }
  tell_data(undoings, words, next, report);
  for (const Undoing& undoing : undoings) tell(undoing, words, report);
  if (!words.dry_run && !next.empty()) report.text() << "  " << next << " brings that into force\n";
  return code;
}

// Whoever undoes an apply of both bands may think of both.
void note_left_out(const Entry& other, const Words& words, Report& report) {
  const std::string number = std::to_string(other.number);
  const std::string which =
      "entry " + number + " of " + label_of(other.band) + " is of the same " + word_for(other.deed);
  report.note(words.dry_run ? which + ", and stays; wlanctl undo --both undoes the two"
                            : which + ", and stands; wlanctl undo " + number +
                                  " undoes it too, as wlanctl undo --both would have done");
}

// What a revert or a save changed need not be what an apply behind it began with: whoever walks back comes to an entry
// that is refused, and would come to it each time.
std::string way_on_with(const Entry& before) {
  return "; wlanctl undo " + std::to_string(before.number) + " leaves it and goes on with the entry before it";
}

int run(const Words& words, Report& report) {
  std::optional<ToolLock> lock;
  if (!words.dry_run) {
    lock.emplace(report, words.wait_seconds);
    if (!*lock) return lock->exit_code();
  }
  History history;
  if (!look_at_history(&history, report)) return kWrongUsage;
  int code = kDone;
  std::vector<Undoing> undoings;
  for (const Entry* const entry : entries_to_undo(words, history, report, &code)) {
    const Entry* const before = entry_before(history, *entry);
    undoings.push_back({*entry, {}, {}, {}, {}, before == nullptr ? "" : way_on_with(*before)});
  }
  if (undoings.empty()) return code;
  tell_data(undoings, words, "", report);
  for (const Undoing& undoing : undoings) {
    const Band band = undoing.entry.band;
    if (!(words.dry_run ? look_at_band(band, report) : open_band(band, report))) return kNoStore;
    if (words.dry_run) note_waiting(band, report);
    if (!words.dry_run && refuse_undecided(band, report)) return kRefused;
  }
  const Entry chosen = undoings.front().entry;
  code = undo(undoings, words, report);
  if (code == kRefused) return code;
  if (const Entry* const other = entry_left_out(words, history, chosen)) note_left_out(*other, words, report);
  return code;
}

constexpr Word kWords[] = {
    {"BAND|ENTRY", &Words::operands, "2.4g or 5g; an entry's number, as log has it", {.offers = "band-or-entry"}},
    {"--both", &Words::both, "The newest of each band; on both, or on none"},
    {"--dry-run", &Words::dry_run, "Show what would be set; touch nothing"},
    {"--force", &Words::force, "Also what has changed since; leave what cannot be brought back"},
    word::kSecrets,
    word::kCommandTimeout,
    word::kWait,
};

}  // namespace

const Verb kUndo = {"undo", "Bring back what an entry of the log changed",
                    "The settings that the entry changed are as before it in the live store then:\n"
                    "all of them, or none. wlanctl apply brings that into force, as after a set.\n"
                    "Without ENTRY it is the newest that changed something and is not taken back; of\n"
                    "BAND where one is named, and of each band with --both: an apply of both leaves\n"
                    "an entry for each. Undos and roll backs are undone by their numbers alone.\n\n"
                    "Examples:\n"
                    "  wlanctl undo --dry-run\n"
                    "  wlanctl undo 5g\n"
                    "  wlanctl undo --both\n"
                    "  wlanctl undo 17 && wlanctl apply 2.4g --confirm 60",
                    kWords, run};

}  // namespace wlanctl
