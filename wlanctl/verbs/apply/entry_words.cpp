#include "wlanctl/verbs/apply/entry_words.h"

#include <algorithm>

#include "wlanctl/base/terminal.h"
#include "wlanctl/base/time_text.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/keys/json_value.h"
#include "wlanctl/keys/secret_mask.h"

namespace wlanctl {
namespace {

constexpr size_t kMostTold = 8;

// Of an apply that nobody has confirmed or rolled back yet, as far as the history knows.
std::string undecided_words(const Entry& entry) {
  if (is_pending(entry.band) || interrupted(entry.band)) return "waits for its confirmation";
  return "whether it was confirmed is not known";
}

std::string meaning_of(const Entry& entry) {
  if (entry.weight == "save") return "no restart";
  return entry.weight == "reboot" ? "reboot advised" : entry.weight;
}

}  // namespace

std::optional<unsigned> parse_entry_number(const std::string& text) {
  constexpr int64_t kMost = 999999999;
  const std::optional<int64_t> number = number_in(text);
  if (!number || *number < 1 || *number > kMost) return std::nullopt;
  return static_cast<unsigned>(*number);
}

std::string entry_refusal(const std::string& text) {
  return parse_entry_number(text) ? "" : "\"" + text + "\" is no entry; wlanctl log lists their numbers";
}

bool look_at_history(History* history, Report& report) {
  if (history_folder().empty()) {
    report.problem({"no history is kept", std::string(kHistoryVariable) + " names a folder for it"});
    return false;
  }
  *history = read_history();
  for (size_t i = 0; i < history->skipped.size(); ++i) {
    const Skipped& skipped = history->skipped[i];
    if (i == kMostTold) {
      report.note("and " + std::to_string(history->skipped.size() - i) + " more files are skipped");
      break;
    }
    report.note(skipped.path + " is skipped: " + skipped.reason);
  }
  if (history->failure.empty()) return true;
  report.problem(
      {history->failure, std::string(kHistoryVariable) + " names another folder", {{"file", history_folder()}}});
  return false;
}

const Entry* find_entry(const History& history, unsigned number) {
  const auto found = std::find_if(history.entries.begin(), history.entries.end(),
                                  [&](const Entry& entry) { return entry.number == number; });
  return found == history.entries.end() ? nullptr : &*found;
}

Problem no_such_entry(unsigned number) {
  return {"there is no entry " + std::to_string(number), "wlanctl log lists them; the oldest go"};
}

std::vector<std::string> result_words(const History& history, const Entry& entry) {
  std::vector<std::string> words;
  if (entry.about != 0) words.push_back("of " + std::to_string(entry.about));
  if (entry.weight != "nothing") words.push_back(meaning_of(entry));
  const Entry* const other = taken_back_by(history.entries, entry);
  switch (entry.state) {
    case State::kBegun:
      words.emplace_back("not finished");
      break;
    case State::kFailed:
      words.push_back("failed with exit code " + std::to_string(entry.exit_code));
      break;
    case State::kDone:
    case State::kWaiting:
    case State::kConfirmed:
      if (entry.deed == Deed::kApply || entry.deed == Deed::kRollback) {
        words.emplace_back(entry.is_in_force ? "in force" : "not in force");
      }
      if (entry.exit_code != kDone) words.push_back("exit code " + std::to_string(entry.exit_code));
      if (entry.state == State::kConfirmed) words.emplace_back("confirmed");
      if (entry.state == State::kWaiting && other == nullptr) words.push_back(undecided_words(entry));
      break;
  }
  if (other != nullptr) {
    words.push_back((other->deed == Deed::kUndo ? "undone by " : "rolled back by ") + std::to_string(other->number));
  }
  if (words.empty()) words.emplace_back("done");
  return words;
}

std::string shown_value(const SettingChange& change, const std::string& value, bool secrets) {
  return change.is_secret() && !secrets && !value.empty() ? kMasked : value;
}

Json json_value(const SettingChange& change, const std::string& value, bool secrets) {
  const std::string shown = shown_value(change, value, secrets);
  const Key* const key = find_key(change.key());
  return key == nullptr ? Json(shown) : json_value(*key, shown);
}

Json json_of(const History& history, const Entry& entry, bool secrets) {
  Json changes = Json::array();
  for (const SettingChange& change : entry.changes) {
    changes.push_back({{"key", change.key()},
                       {"index", change.index()},
                       {"from", json_value(change, change.from, secrets)},
                       {"to", json_value(change, change.to, secrets)}});
  }
  const Entry* const other = taken_back_by(history.entries, entry);
  return {{"entry", entry.number},
          {"when", utc_time(entry.when)},
          {"user", entry.user},
          {"terminal", entry.terminal.empty() ? Json() : Json(entry.terminal)},
          {"band", label_of(entry.band)},
          {"operation", word_for(entry.deed)},
          {"by", word_for(entry.by)},
          {"meaning", entry.weight},
          {"state", word_for(entry.state)},
          {"exit_code", entry.exit_code},
          {"in_force", entry.is_in_force},
          {"about", entry.about == 0 ? Json() : Json(entry.about)},
          {"taken_back_by", other == nullptr ? Json() : Json(other->number)},
          {"left_out", entry.left_out},
          {"changes", std::move(changes)}};
}

}  // namespace wlanctl
