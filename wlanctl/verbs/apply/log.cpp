// log: what was applied, saved, reverted, rolled back and undone.
#include <utility>

#include "wlanctl/base/terminal.h"
#include "wlanctl/base/time_text.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/verbs/apply/diff_text.h"
#include "wlanctl/verbs/apply/entry_words.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr size_t kMostNames = 12;

std::vector<std::string> who_of(const Entry& entry) {
  if (entry.by == By::kGuardian) return {"by its guardian"};
  if (entry.by == By::kRecovery) return {"by the next wlanctl"};
  if (entry.by == By::kApply) return {"by the apply itself"};
  std::vector<std::string> who = {"by " + printable(entry.user)};
  if (!entry.terminal.empty()) who.push_back("on " + printable(entry.terminal));
  return who;
}

std::string names_of(const Entry& entry) {
  std::vector<std::string> names;
  for (const SettingChange& change : entry.changes) {
    if (names.size() == kMostNames) {
      names.push_back("and " + std::to_string(entry.changes.size() - kMostNames) + " more");
      break;
    }
    names.push_back(printable(change.name));
  }
  return names.empty() ? "    no change of a setting\n" : wrapped_below("  ", names);
}

void tell_in_short(const History& history, const Entry& entry, Text& text) {
  std::vector<std::string> pieces = who_of(entry);
  for (std::string& word : result_words(history, entry)) pieces.push_back(std::move(word));
  text << wrapped_below(std::to_string(entry.number) + "  " + local_time(entry.when) + "  " + label_of(entry.band) +
                            "  " + word_for(entry.deed),
                        pieces)
       << names_of(entry);
}

int list(const Words& words, Report& report) {
  Json entries = Json::array();
  report.data() = {{"entries", entries}};
  History history;
  if (!look_at_history(&history, report)) return kWrongUsage;
  const std::optional<Band> band = parse_band(words.band);
  unsigned left = words.count;
  for (auto entry = history.entries.rbegin(); entry != history.entries.rend() && left > 0; ++entry) {
    if (band && entry->band != *band) continue;
    tell_in_short(history, *entry, report.text());
    entries.push_back(json_of(history, *entry, words.secrets));
    --left;
  }
  if (entries.empty()) report.text() << "no entries\n";
  report.data() = {{"entries", std::move(entries)}};
  return kDone;
}

int show(const Words& words, Report& report) {
  History history;
  report.data() = {{"entries", Json::array()}};
  if (!look_at_history(&history, report)) return kWrongUsage;
  const unsigned number = parse_entry_number(words.entry).value_or(0);
  const Entry* const entry = find_entry(history, number);
  if (entry == nullptr) {
    report.problem(no_such_entry(number));
    return kWrongUsage;
  }
  Text& text = report.text();
  text << "entry   " << entry->number << "\nwhen    " << local_time(entry->when) << "\nband    "
       << label_of(entry->band) << "\nwhat    " << word_for(entry->deed) << ' ' << joined(who_of(*entry), " ") << '\n'
       << wrapped_below("result", result_words(history, *entry));
  std::vector<ShownChange> rows;
  for (const SettingChange& change : entry->changes) {
    const std::string from = shown_value(change, change.from, words.secrets);
    std::string to = shown_value(change, change.to, words.secrets);
    if (change.is_secret() && !words.secrets && !from.empty() && !to.empty()) to += " (new)";
    rows.push_back({change.name, from, to});
  }
  text << table_of(rows);
  if (rows.empty()) text << "  no change of a setting\n";
  if (entry->left_out > 0) text << "  and " << count_of(entry->left_out, "change") << " more that found no room\n";
  Json entries = Json::array();
  entries.push_back(json_of(history, *entry, words.secrets));
  report.data() = {{"entries", std::move(entries)}};
  return kDone;
}

constexpr Word kListWords[] = {word::kBand,
                               {"-n",
                                &Words::count,
                                "So many entries at most",
                                {.lowest = 1, .highest = kMostEntries, .value_name = "N", .shows_default = true}},
                               word::kSecrets};
constexpr Word kShowWords[] = {
    {"ENTRY", &Words::entry, "Its number", {.required = true, .refusal = entry_refusal, .offers = "entry"}},
    word::kSecrets};

constexpr Verb kShowEntry = {"show", "Show one entry with its values", "Examples:\n  wlanctl log show 17", kShowWords,
                             show};
constexpr const Verb* kBelow[] = {&kShowEntry};

}  // namespace

const Verb kLog = {"log",
                   "Show what was done, the newest first",
                   "Every apply, save, revert, roll back and undo leaves an entry: who, when, which\n"
                   "settings, and what became of it. Entries are kept in /etc/Wireless/\n"
                   "wlanctl-history, or in the folder that WLANCTL_HISTORY names; off keeps none.\n"
                   "They are at most 100, and the oldest go.\n\n"
                   "Examples:\n"
                   "  wlanctl log\n"
                   "  wlanctl log 5g -n 3\n"
                   "  wlanctl log show 17",
                   kListWords,
                   list,
                   kBelow,
                   true};

}  // namespace wlanctl
