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
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/apply/entry_words.h"
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
  std::vector<Step> steps;                                  // in an order that the library takes
  std::vector<std::string> already;                         // as before the entry
  std::vector<std::pair<SettingChange, std::string>> left;  // with the reason
};

struct Operands {
  std::optional<Band> band;
  unsigned entry = 0;  // 0 for the newest
};

std::optional<Operands> parse_operands(const Words& words, Report& report) {
  Operands operands;
  for (const std::string& word : words.operands) {
    const std::optional<Band> band = parse_band(word);
    const std::optional<unsigned> entry = band ? std::nullopt : parse_entry_number(word);
    if (!band && !entry) {
      report.problem({"\"" + word + "\" is no band and no entry", "wlanctl log lists the entries' numbers"});
    } else if ((band && operands.band) || (entry && operands.entry != 0)) {
      report.problem({std::string("there is more than one ") + (band ? "band" : "entry"), "undo one after the other"});
    } else if (band) {
      operands.band = band;
    } else {
      operands.entry = *entry;
    }
  }
  if (report.has_problems()) return std::nullopt;
  return operands;
}

// That of an undo is only meant when it is named: else two of them would go back and forth.
bool is_worth_undoing(const History& history, const Entry& entry) {
  return entry.deed != Deed::kUndo && entry.state != State::kFailed && !entry.changes.empty() &&
         taken_back_by(history.entries, entry) == nullptr;
}

const Entry* newest_of(const History& history, const std::optional<Band>& band) {
  for (auto entry = history.entries.rbegin(); entry != history.entries.rend(); ++entry) {
    if ((!band || *band == entry->band) && is_worth_undoing(history, *entry)) return &*entry;
  }
  return nullptr;
}

// Null with a problem, and the exit code.
const Entry* choose(const History& history, const Operands& operands, bool force, Report& report, int* code) {
  *code = kRefused;
  if (operands.entry == 0) {
    const Entry* const newest = newest_of(history, operands.band);
    if (newest == nullptr) {
      report.problem(
          {"there is nothing to undo" + (operands.band ? std::string(" on ") + label_of(*operands.band) : ""),
           "wlanctl log lists what was done"});
    }
    return newest;
  }
  const std::string name = "entry " + std::to_string(operands.entry);
  const Entry* const entry = find_entry(history, operands.entry);
  if (entry == nullptr) {
    report.problem(no_such_entry(operands.entry));
    *code = kWrongUsage;
    return nullptr;
  }
  if (operands.band && *operands.band != entry->band) {
    report.problem({name + " is of " + label_of(entry->band), "leave the band out", about(*operands.band)});
    *code = kWrongUsage;
    return nullptr;
  }
  const Entry* const other = taken_back_by(history.entries, *entry);
  if (other != nullptr && !force) {
    const bool is_undo = other->deed == Deed::kUndo;
    report.problem(
        {name + " is " + (is_undo ? "undone by " : "rolled back by ") + std::to_string(other->number) + " already",
         "wlanctl undo " + std::to_string(other->number) + " brings it back; --force undoes it again",
         about(entry->band)});
    return nullptr;
  }
  if (entry->changes.empty()) {
    report.problem({name + " changed no setting", "wlanctl log lists what was done", about(entry->band)});
    return nullptr;
  }
  return entry;
}

Json about_change(Band band, const SettingChange& change) {
  return {{"band", label_of(band)}, {"key", change.name}};
}

void leave(const SettingChange& change, const std::string& reason, Undoing* undoing) {
  undoing->left.emplace_back(change, reason);
}

// What is to be set, and what stands in the way of it.
void look_at_values(bool force, Undoing* undoing, Report& report) {
  const Entry& entry = undoing->entry;
  for (const SettingChange& change : entry.changes) {
    const std::optional<Target> target = change.target(entry.band);
    if (!target) {
      leave(change, "the library has no setter for it", undoing);
      continue;
    }
    const std::optional<std::string> value = exact_value(entry.band, *target);
    if (!value) {
      leave(change, "the store has no place for it", undoing);
      continue;
    }
    if (*value == change.from) {
      undoing->already.push_back(change.name);
      continue;
    }
    if (*value != change.to && !force) {
      const std::string now = shown_value(change, *value, false);
      const std::string to = shown_value(change, change.to, false);
      report.problem({change.name + " of " + label_of(entry.band) + " has changed since: it is \"" + now +
                          "\", and entry " + std::to_string(entry.number) + " left \"" + to + "\"" +
                          (now == to && !now.empty() ? ", another one" : ""),
                      "--force puts back what was before that entry all the same", about_change(entry.band, change)});
      continue;
    }
    undoing->steps.push_back({change, *target, *value});
  }
}

bool is_back(Band band, const Step& step) {
  return exact_value(band, step.target) == step.change.from;
}

// The library sets what belongs to an SSID only while the band has it: one that goes goes last, one that comes comes first.
void put_in_order(std::vector<Step>* steps) {
  const auto is_count = [](const Step& step) { return step.change.name == kSsidCount; };
  const auto count = std::find_if(steps->begin(), steps->end(), is_count);
  if (count == steps->end()) return;
  if (number_in(count->change.from).value_or(0) < number_in(count->now).value_or(0)) {
    std::rotate(count, count + 1, steps->end());
  } else {
    std::rotate(steps->begin(), count, count + 1);
  }
}

Wish wish_of(const Step& step) {
  return {step.target, step.change.from, "", 0};
}

// On a private copy, whatever order the library wants: a value may be refused until another one is back. The steps as they
// are taken; what does not come back is left.
std::vector<Step> steps_taken(Undoing* undoing) {
  constexpr int kMostRounds = 4;
  const Band band = undoing->entry.band;
  const PrivateStore copy(band);
  const ShellScope nothing_runs(ShellMode::kDrop);
  put_in_order(&undoing->steps);
  std::vector<Step> taken;
  std::vector<std::string> reasons(undoing->steps.size());
  bool is_moving = true;
  for (int round = 0; is_moving && round < kMostRounds; ++round) {
    is_moving = false;
    for (size_t i = 0; i < undoing->steps.size(); ++i) {
      const Step& step = undoing->steps[i];
      if (is_back(band, step)) continue;
      if (!is_stored(band, wish_of(step))) {
        reasons[i] = first_reason().empty() ? "the library refuses it" : first_reason();
        continue;
      }
      reasons[i] = is_back(band, step) ? "another value changes it" : "the library makes another value of it";
      is_moving = true;
      taken.push_back(step);
    }
  }
  for (size_t i = 0; i < undoing->steps.size(); ++i) {
    if (!is_back(band, undoing->steps[i])) leave(undoing->steps[i].change, reasons[i], undoing);
  }
  // What does not come back is not touched.
  std::erase_if(taken, [&](const Step& step) {
    return std::any_of(undoing->left.begin(), undoing->left.end(),
                       [&](const auto& one) { return one.first == step.change; });
  });
  return taken;
}

void tell_left(const Undoing& undoing, bool force, Report& report) {
  const Entry& entry = undoing.entry;
  const std::string label = label_of(entry.band);
  const auto tell = [&](const std::string& message, Json details) {
    if (force) {
      report.note(message);
    } else {
      report.problem({message, "--force brings back the others", std::move(details)});
    }
  };
  for (const auto& [change, reason] : undoing.left) {
    Json details = about_change(entry.band, change);
    details["reason"] = reason;
    tell(change.name + " of " + label + " cannot be brought back to \"" + shown_value(change, change.from, false) +
             "\": " + reason,
         std::move(details));
  }
  if (entry.left_out > 0) {
    tell(count_of(entry.left_out, "change") + " of entry " + std::to_string(entry.number) + " found no room in it",
         about(entry.band));
  }
}

// What was there once is not judged again; what a shell would act on, an apply refuses.
StorePlan plan_of(const Undoing& undoing, Report& report) {
  std::vector<Wish> wishes;
  for (const Step& step : undoing.steps) wishes.push_back(wish_of(step));
  return try_out(undoing.entry.band, wishes, Order::kAsGiven, true, report);
}

// All or nothing, whoever interrupts or kills it.
int bring_back(const Undoing& undoing, const StorePlan& plan, Report& report) {
  const Band band = undoing.entry.band;
  if (undoing.steps.empty()) return kDone;
  if (!store_plans("undo", {plan}, report)) return kRefused;
  for (const Step& step : undoing.steps) {
    if (is_back(band, step)) continue;
    report.problem({step.change.name + " of " + label_of(band) + " did not come back",
                    "another process changed the store; try again", about_change(band, step.change)});
    (void)put_back_noted(band, plan.fields);
    return kRefused;
  }
  return report.has_problems() ? kNoAnswer : kDone;
}

void tell(const Undoing& undoing, const Words& words, Report& report) {
  const std::string label = label_of(undoing.entry.band);
  Json changes = Json::array();
  Json left = Json::array();
  std::vector<std::string> told;
  for (const Step& step : undoing.steps) {
    const SettingChange& change = step.change;
    if (std::find(told.begin(), told.end(), change.name) != told.end()) continue;
    told.push_back(change.name);
    changes.push_back({{"key", change.key()},
                       {"index", change.index()},
                       {"before", json_value(change, step.now, words.secrets)},
                       {"after", json_value(change, change.from, words.secrets)}});
    report.text() << label << ' ' << printable(change.name) << " = "
                  << printable(shown_value(change, change.from, words.secrets)) << "  (was "
                  << printable(shown_value(change, step.now, words.secrets)) << ")\n";
  }
  for (const auto& [change, reason] : undoing.left) left.push_back({{"key", change.name}, {"reason", reason}});
  const std::string next = undoing.steps.empty() ? "" : "wlanctl apply " + label;
  report.data()["changes"] = std::move(changes);
  report.data()["already"] = Json(undoing.already);
  report.data()["left"] = std::move(left);
  report.data()["next"] = next;
  const std::string name = "entry " + std::to_string(undoing.entry.number);
  if (undoing.steps.empty()) {
    report.text() << label << ": the store is as before " << name << " already\n";
  } else if (words.dry_run) {
    report.text() << label << ": this would undo " << name << " in the store; nothing was changed\n";
  } else {
    report.text() << label << ": " << name << " is undone in the store\n  " << next << " brings that into force\n";
  }
}

int undo(Undoing& undoing, const Words& words, Report& report) {
  look_at_values(words.force, &undoing, report);
  undoing.steps = steps_taken(&undoing);
  if (!report.has_problems() || words.force) tell_left(undoing, words.force, report);
  if (report.has_problems()) return kRefused;
  const StorePlan plan = plan_of(undoing, report);
  if (report.has_problems()) return kRefused;
  int code = kDone;
  if (!words.dry_run) {
    const Band band = undoing.entry.band;
    const std::vector<wifimgr_attr_record> before = table_of_store(band);
    Entry entry;
    entry.band = band;
    entry.deed = Deed::kUndo;
    entry.about = undoing.entry.number;
    for (const Step& step : undoing.steps) entry.changes.push_back({step.change.name, step.now, step.change.from});
    entry = begin_entry(std::move(entry), report);
    code = bring_back(undoing, plan, report);
    entry.changes = changes_between(before, table_of_store(band));
    entry.exit_code = code;
    entry.state = code == kRefused ? State::kFailed : State::kDone;
    finish_entry(std::move(entry), report);
    if (code == kRefused) return code;
  }
  tell(undoing, words, report);
  return code;
}

int run(const Words& words, Report& report) {
  const std::optional<Operands> operands = parse_operands(words, report);
  if (!operands) return kWrongUsage;
  std::optional<ToolLock> lock;
  if (!words.dry_run) {
    lock.emplace(report, words.wait_seconds);
    if (!*lock) return lock->exit_code();
  }
  History history;
  if (!look_at_history(&history, report)) return kWrongUsage;
  int code = kDone;
  const Entry* const entry = choose(history, *operands, words.force, report, &code);
  if (entry == nullptr) return code;
  Undoing undoing = {*entry, {}, {}, {}};
  report.data() = {{"band", label_of(entry->band)},
                   {"entry", entry->number},
                   {"dry_run", words.dry_run},
                   {"changes", Json::array()},
                   {"already", Json::array()},
                   {"left", Json::array()},
                   {"next", ""}};
  if (!(words.dry_run ? look_at_band(entry->band, report) : open_band(entry->band, report))) return kNoStore;
  if (words.dry_run) note_waiting(entry->band, report);
  if (!words.dry_run && refuse_undecided(entry->band, report)) return kRefused;
  return undo(undoing, words, report);
}

constexpr Word kWords[] = {
    {"BAND|ENTRY", &Words::operands, "2.4g or 5g; an entry's number, as log has it", {.offers = "band-or-entry"}},
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
                    "Without ENTRY it is the newest that changed something and is not undone; of\n"
                    "both bands, or of BAND. An undo itself is undone by its number alone.\n\n"
                    "Examples:\n"
                    "  wlanctl undo --dry-run\n"
                    "  wlanctl undo 5g\n"
                    "  wlanctl undo 17 && wlanctl apply 2.4g --confirm 60",
                    kWords, run};

}  // namespace wlanctl
