#include "wlanctl/verbs/apply/undone_entry.h"

#include <optional>
#include <string>

#include "wlanctl/base/report.h"
#include "wlanctl/verbs/apply/entry_words.h"

namespace wlanctl {
namespace {

struct Operands {
  std::optional<Band> band;
  unsigned entry = 0;  // 0 for the newest
};

bool is_of(const std::optional<Band>& band, const Entry& entry) {
  return !band || *band == entry.band;
}

std::optional<Operands> parse_operands(const Words& words, Report& report) {
  Operands operands;
  for (const std::string& word : words.operands) {
    const std::optional<Band> band = parse_band(word);
    const std::optional<unsigned> entry = band ? std::nullopt : parse_entry_number(word);
    if (!band && !entry) {
      report.problem({"\"" + word + "\" is no band and no entry", "wlanctl log lists the entries' numbers"});
    } else if ((band && operands.band) || (entry && operands.entry != 0)) {
      report.problem({std::string("there is more than one ") + (band ? "band" : "entry"),
                      band ? "--both undoes the newest entry of each" : "undo one after the other"});
    } else if (band) {
      operands.band = band;
    } else {
      operands.entry = *entry;
    }
  }
  if (report.has_problems()) return std::nullopt;
  return operands;
}

bool is_worth_undoing(const History& history, const Entry& entry) {
  return entry.deed != Deed::kUndo && entry.deed != Deed::kRollback && entry.state != State::kFailed &&
         !entry.changes.empty() && taken_back_by(history.entries, entry) == nullptr;
}

const Entry* newest_of(const History& history, const std::optional<Band>& band) {
  for (auto entry = history.entries.rbegin(); entry != history.entries.rend(); ++entry) {
    if (is_of(band, *entry) && is_worth_undoing(history, *entry)) return &*entry;
  }
  return nullptr;
}

// Whoever has just seen a roll back might expect it to be the one.
void note_roll_back(const History& history, const std::optional<Band>& band, const Entry* chosen, Report& report) {
  for (auto entry = history.entries.rbegin(); entry != history.entries.rend() && &*entry != chosen; ++entry) {
    const bool stands = entry->state == State::kDone && taken_back_by(history.entries, *entry) == nullptr;
    if (!is_of(band, *entry) || entry->deed != Deed::kRollback || !stands) continue;
    const std::string number = std::to_string(entry->number);
    report.note("entry " + number + ", a roll back" +
                (entry->about == 0 ? "" : ", and " + std::to_string(entry->about) + ", which it took back,") +
                (entry->about == 0 ? " is" : " are") + " passed over; wlanctl undo " + number +
                " brings back what was rolled back");
    return;
  }
}

const Entry* choose_newest(const History& history, const std::optional<Band>& band, Report& report) {
  const Entry* const newest = newest_of(history, band);
  note_roll_back(history, band, newest, report);
  if (newest == nullptr) {
    report.problem({"there is nothing to undo" + (band ? std::string(" on ") + label_of(*band) : ""),
                    "wlanctl log lists what was done; wlanctl revert takes back what was only set"});
  }
  return newest;
}

// Null with a problem, and the exit code.
const Entry* choose(const History& history, const Operands& operands, bool force, Report& report, int* code) {
  *code = kRefused;
  if (operands.entry == 0) return choose_newest(history, operands.band, report);
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

}  // namespace

const Entry* entry_left_out(const Words& words, const History& history, const Entry& chosen) {
  if (words.both || !words.operands.empty()) return nullptr;
  const Entry* const other = left_beside(history.entries, chosen);
  return other != nullptr && newest_of(history, other->band) == other ? other : nullptr;
}

const Entry* entry_before(const History& history, const Entry& entry) {
  for (auto other = history.entries.rbegin(); other != history.entries.rend(); ++other) {
    if (other->number < entry.number && other->band == entry.band && is_worth_undoing(history, *other)) return &*other;
  }
  return nullptr;
}

std::vector<const Entry*> entries_to_undo(const Words& words, const History& history, Report& report, int* code) {
  const std::optional<Operands> operands = parse_operands(words, report);
  *code = kWrongUsage;
  if (!operands) return {};
  if (words.both && !words.operands.empty()) {
    report.problem({"--both stands for the newest entry of each band", "leave out the band, or the entry"});
    return {};
  }
  std::vector<const Entry*> chosen;
  if (!words.both) {
    chosen = {choose(history, *operands, words.force, report, code)};
  } else {
    *code = kRefused;
    for (const Band band : kBands) chosen.push_back(choose_newest(history, band, report));
  }
  return report.has_problems() ? std::vector<const Entry*>() : chosen;
}

}  // namespace wlanctl
