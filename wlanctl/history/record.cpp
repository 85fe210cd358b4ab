#include "wlanctl/history/record.h"

#include <algorithm>
#include <utility>

#include "wlanctl/base/report.h"
#include "wlanctl/history/folder.h"

namespace wlanctl {
namespace {

void write(Entry* entry, Report& report) {
  static bool is_told = false;
  const std::string failure = write_entry(entry);
  if (failure.empty() || is_told) return;
  is_told = true;
  report.note("the history is not kept: " + failure + "; " + kHistoryVariable + " names another folder, or off");
}

const Entry* find_undecided(const History& history, Band band) {
  for (auto entry = history.entries.rbegin(); entry != history.entries.rend(); ++entry) {
    if (entry->band != band || entry->deed != Deed::kApply) continue;
    const bool is_undecided = entry->state == State::kBegun || entry->state == State::kWaiting;
    return is_undecided && taken_back_by(history.entries, *entry) == nullptr ? &*entry : nullptr;
  }
  return nullptr;
}

void confirm(Entry entry, Report& report) {
  entry.state = State::kConfirmed;
  write(&entry, report);
}

}  // namespace

Entry begin_entry(Entry entry, Report& report) {
  if (history_folder().empty()) return entry;
  sign(&entry);
  entry.state = State::kBegun;
  write(&entry, report);
  return entry;
}

void finish_entry(Entry entry, Report& report) {
  // One that could not be begun may find room now.
  if (!history_folder().empty()) write(&entry, report);
}

Entry begin_quiet_entry(Band band, Deed deed, const std::vector<SettingChange>& changes, Report& report) {
  Entry entry;
  entry.band = band;
  entry.deed = deed;
  entry.changes = changes;
  return begin_entry(std::move(entry), report);
}

void finish_quiet_entry(Entry entry, int exit_code, Report& report) {
  if (exit_code != kDone) entry.changes.clear();
  entry.state = exit_code == kDone ? State::kDone : State::kFailed;
  entry.exit_code = exit_code;
  finish_entry(std::move(entry), report);
}

void note_confirmed(Band band, Report& report) {
  if (history_folder().empty()) return;
  const History history = read_history();
  const Entry* const found = find_undecided(history, band);
  if (found != nullptr) confirm(*found, report);
}

void make_up_for_confirmation(Band band, Report& report) {
  if (history_folder().empty()) return;
  const History history = read_history();
  const auto newest = std::find_if(history.entries.rbegin(), history.entries.rend(),
                                   [&](const Entry& entry) { return entry.band == band; });
  const bool is_left =
      newest != history.entries.rend() && newest->deed == Deed::kApply && newest->state == State::kWaiting;
  if (is_left) confirm(*newest, report);
}

unsigned undecided_entry(Band band) {
  if (history_folder().empty()) return 0;
  const History history = read_history();
  const Entry* const found = find_undecided(history, band);
  return found == nullptr ? 0 : found->number;
}

}  // namespace wlanctl
