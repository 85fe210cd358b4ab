// An entry as text: a line for each of its facts, and for each change.
#include <algorithm>
#include <iterator>

#include "wlanctl/base/text.h"
#include "wlanctl/files/word_text.h"
#include "wlanctl/history/entry.h"

namespace wlanctl {
namespace {

constexpr const char* kDeeds[] = {"apply", "save", "revert", "rollback", "undo"};
constexpr const char* kBys[] = {"operator", "apply", "guardian", "recovery"};
constexpr const char* kStates[] = {"begun", "done", "failed", "waiting", "confirmed"};
constexpr const char* kWeights[] = {"nothing", "save", "radio", "reboot"};
constexpr int64_t kHighestExitCode = 7;

template <typename Choice, size_t count>
bool parse_word(const char* const (&words)[count], const std::string& word, Choice* choice) {
  const auto found = std::find(std::begin(words), std::end(words), word);
  if (found == std::end(words)) return false;
  *choice = static_cast<Choice>(found - std::begin(words));
  return true;
}

template <typename Number>
bool parse_number(const std::string& word, int64_t highest, Number* number) {
  const std::optional<int64_t> value = number_in(word);
  if (!value || *value < 0 || *value > highest) return false;
  *number = static_cast<Number>(*value);
  return true;
}

bool parse_text(const std::string& word, std::string* text) {
  const std::optional<std::string> value = text_of_word(word);
  if (!value) return false;
  *text = *value;
  return true;
}

// The words of the first line, in their order.
bool parse_head(const std::vector<std::string>& words, Entry* entry) {
  constexpr int64_t kMost = 999999999;
  constexpr int64_t kLastSecond = int64_t{1} << 40;
  if (words.size() != 13) return false;
  const std::optional<Band> band = parse_band(words[1]);
  if (!band) return false;
  entry->band = *band;
  size_t weight = 0;
  const bool is_parsed =
      parse_number(words[0], kMost, &entry->number) && parse_word(kDeeds, words[2], &entry->deed) &&
      parse_word(kBys, words[3], &entry->by) && parse_number(words[4], kLastSecond, &entry->when) &&
      parse_text(words[5], &entry->user) && parse_text(words[6], &entry->terminal) &&
      parse_word(kWeights, words[7], &weight) && parse_word(kStates, words[8], &entry->state) &&
      parse_number(words[9], kHighestExitCode, &entry->exit_code) && parse_number(words[10], 1, &entry->is_in_force) &&
      parse_number(words[11], kMost, &entry->about) && parse_number(words[12], kMost, &entry->left_out);
  if (!is_parsed) return false;
  entry->weight = kWeights[weight];
  // It can only be about an older one.
  return entry->number > entry->about;
}

bool parse_change(const std::string& line, SettingChange* change) {
  const std::vector<std::string> words = words_of(line);
  return words.size() == 3 && parse_text(words[0], &change->name) && parse_text(words[1], &change->from) &&
         parse_text(words[2], &change->to);
}

}  // namespace

const char* word_for(Deed deed) {
  return kDeeds[static_cast<size_t>(deed)];
}

const char* word_for(By by) {
  return kBys[static_cast<size_t>(by)];
}

const char* word_for(State state) {
  return kStates[static_cast<size_t>(state)];
}

std::string text_of(const Entry& entry) {
  Text text;
  text << entry.number << ' ' << label_of(entry.band) << ' ' << word_for(entry.deed) << ' ' << word_for(entry.by) << ' '
       << std::to_string(entry.when) << ' ' << word_of(entry.user) << ' ' << word_of(entry.terminal) << ' '
       << entry.weight << ' ' << word_for(entry.state) << ' ' << entry.exit_code << ' '
       << (entry.is_in_force ? '1' : '0') << ' ' << entry.about << ' ' << entry.left_out << '\n';
  for (const SettingChange& change : entry.changes) {
    text << word_of(change.name) << ' ' << word_of(change.from) << ' ' << word_of(change.to) << '\n';
  }
  return text.str();
}

std::optional<Entry> parse_entry(const std::string& text) {
  const std::vector<std::string> lines = lines_of(text);
  Entry entry;
  if (lines.empty() || !parse_head(words_of(lines.front()), &entry)) return std::nullopt;
  for (size_t i = 1; i < lines.size(); ++i) {
    if (!parse_change(lines[i], &entry.changes.emplace_back())) return std::nullopt;
  }
  return entry;
}

}  // namespace wlanctl
