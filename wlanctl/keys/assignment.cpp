#include "wlanctl/keys/assignment.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "wlanctl/base/asked_line.h"
#include "wlanctl/base/text.h"
#include "wlanctl/files/input.h"

namespace wlanctl {
namespace {

constexpr size_t kMostHinted = 4;

// Of a word that stands in no key's name.
std::string hint_for_meaning(const std::string& word) {
  constexpr size_t kShortest = 3;
  const bool is_word = word.size() >= kShortest && word.find_first_not_of(
                                                       "abcdefghijklmnopqrstuvwxyz"
                                                       "ABCDEFGHIJKLMNOPQRSTUVWXYZ") == std::string::npos;
  std::vector<std::string> names;
  for (const Key& key : all_keys()) {
    if (is_word && strcasestr(key.meaning, word.c_str()) != nullptr) names.emplace_back(key.name);
  }
  if (names.empty()) return "wlanctl keys lists all";
  const std::string lists = "wlanctl keys --about " + word + " lists ";
  return lists + (names.size() > kMostHinted ? count_of(names.size(), "setting") : joined(names, ", "));
}

}  // namespace

std::string hint_for_key(const std::string& name) {
  std::vector<std::string> similar = similar_keys(name);
  if (similar.empty()) return hint_for_meaning(name);
  if (similar.size() > kMostHinted) similar.resize(kMostHinted);
  return "do you mean " + joined(similar, " or ") + "?";
}

namespace {

int highest_index(const Key& key) {
  return key.scope == Scope::kLink ? kLinks : WIFIMGR_FIELDS;
}

std::optional<int> parse_index(const std::string& text, const Key& key) {
  if (text.size() != 1 || text[0] < '1' || text[0] > '0' + highest_index(key)) return std::nullopt;
  return text[0] - '0';
}

std::optional<Assignment> split(const std::string& text, Band band, Report& report) {
  const size_t equals = text.find('=');
  if (equals == std::string::npos) {
    // Not repeated unless it is a key: a passphrase may have come here by mistake.
    const bool is_key = find_key(text.substr(0, text.find(':'))) != nullptr;
    const std::string shown = text.substr(0, text.find(':'));
    report.problem({(is_key ? "\"" + shown + "\"" : std::string("a word without =")) + " sets nothing",
                    "write KEY=VALUE or KEY:SSID=VALUE", is_key ? about_key(shown, band) : about(band)});
    return std::nullopt;
  }
  const std::optional<Target> target = parse_target(text.substr(0, equals), band, report);
  if (!target) return std::nullopt;
  return Assignment{*target, text.substr(equals + 1)};
}

}  // namespace

std::optional<Target> target_of_field(const std::string& dat_key, size_t field) {
  int index = 0;
  const Key* const key = find_dat_key(dat_key, &index);
  if (key == nullptr) return std::nullopt;
  if (index == 0) index = key->scope == Scope::kSsid ? static_cast<int>(field) + 1 : -1;
  return Target{key, index};
}

Json about_key(const std::string& key, Band band) {
  return {{"band", label_of(band)}, {"key", key}};
}

std::string Target::name() const {
  return index == -1 ? key->name : std::string(key->name) + ":" + std::to_string(index);
}

std::optional<Target> parse_target(const std::string& word, Band band, Report& report) {
  // A value behind = would be repeated in what is said.
  const std::string text = word.substr(0, word.find('='));
  const size_t colon = text.find(':');
  const std::string name = text.substr(0, colon);
  if (name.empty()) {
    report.problem(
        {"there is no key in front of " + (colon == std::string::npos ? std::string("=") : text.substr(colon)),
         "write KEY=VALUE or KEY:SSID=VALUE", about(band)});
    return std::nullopt;
  }
  const Key* const key = find_key(name);
  if (key == nullptr) {
    report.problem({std::string("there is no key \"") + name + "\"", hint_for_key(name), about_key(text, band)});
    return std::nullopt;
  }
  if (!key->is_on(band)) {
    report.problem({std::string(key->name) + " is no setting of " + label_of(band),
                    std::string("set it on ") + label_of(band == Band::k2_4G ? Band::k5G : Band::k2_4G),
                    about_key(text, band)});
    return std::nullopt;
  }
  const std::string owner = name_for(key->scope);
  if (colon == std::string::npos) {
    if (key->scope == Scope::kBand) return Target{key, -1};
    report.problem({std::string(key->name) + " is set for each " + owner, "write " + std::string(key->name) + ":1",
                    about_key(text, band)});
    return std::nullopt;
  }
  if (key->scope == Scope::kBand) {
    report.problem({std::string(key->name) + " is set for the whole band",
                    std::string("leave out \"") + text.substr(colon) + "\"", about_key(text, band)});
    return std::nullopt;
  }
  const std::optional<int> index = parse_index(text.substr(colon + 1), *key);
  if (!index) {
    // What stands there may be a passphrase, with a colon by mistake.
    const bool is_shown = !key->secret || text.size() - colon <= 2;
    const std::string named = std::string("write ") + key->name + ":1 to " + key->name + ":";
    report.problem({(is_shown ? "\"" + text.substr(colon + 1) + "\"" : std::string("what stands behind the colon")) +
                        " is the number of no " + owner,
                    named + std::to_string(highest_index(*key)), about_key(is_shown ? text : key->name, band)});
    return std::nullopt;
  }
  return Target{key, *index};
}

std::optional<Assignment> parse_assignment(const std::string& text, Band band, bool literal, Report& report) {
  std::optional<Assignment> assignment = split(text, band, report);
  if (!assignment || assignment->value != "-" || literal) return assignment;
  const std::optional<std::string> line = asked_line(assignment->target.name(), assignment->target.key->secret);
  if (!line) {
    report.problem({"standard input has no line for " + assignment->target.name(), "give one line for each \"-\"",
                    about_key(assignment->target.name(), band)});
    return std::nullopt;
  }
  assignment->value = *line;
  return assignment;
}

std::optional<Assignment> parse_file_assignment(const std::string& text, Band band, Report& report) {
  std::optional<Assignment> assignment = split(text, band, report);
  if (!assignment) return std::nullopt;
  const Input input = read_input(assignment->value, Until::kLineEnd);
  const std::optional<std::string> line = first_line_of(input);
  if (!line) {
    // A passphrase in the place of its file is not repeated.
    const std::string place = assignment->target.key->secret ? "the file" : assignment->value;
    report.problem({"cannot read a value for " + assignment->target.name() + " from " + place + because(input.reason),
                    "is the file there, and does it have a line?", about_key(assignment->target.name(), band)});
    return std::nullopt;
  }
  assignment->value = *line;
  return assignment;
}

}  // namespace wlanctl
