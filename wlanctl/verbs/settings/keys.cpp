// keys: every setting with its scope, what it takes and what it means.
#include <algorithm>
#include <cstring>

#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/keys/assignment.h"
#include "wlanctl/keys/key.h"
#include "wlanctl/keys/value_rule.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr size_t kIndentation = 4;
constexpr size_t kNameWidth = 26;
constexpr size_t kScopeWidth = 6;

void print_row(Text& text, const std::string& name, const std::string& scope, const std::string& accepted) {
  std::string head = name + ' ';
  head.append(head.size() < kNameWidth ? kNameWidth - head.size() : 0, ' ');
  head += scope;
  head.append(kNameWidth + kScopeWidth > head.size() ? kNameWidth + kScopeWidth - head.size() : 0, ' ');
  for (const std::string& line : wrapped(accepted, kColumns - head.size())) {
    text << head << line << '\n';
    head.assign(head.size(), ' ');
  }
}

bool has_part(const char* text, const std::string& part) {
  return strcasestr(text, part.c_str()) != nullptr;
}

// A band in the place of the pattern is one.
std::vector<const Key*> asked_keys(const Words& words) {
  const std::optional<Band> first = parse_band(words.pattern);
  const std::optional<Band> second = parse_band(words.band);
  const std::string pattern = first ? "" : words.pattern;
  std::vector<const Key*> keys;
  for (const Key& key : all_keys()) {
    const bool is_asked = (!first || key.is_on(*first)) && (!second || key.is_on(*second)) &&
                          (words.scope.empty() || words.scope == word_for(key.scope)) && has_part(key.name, pattern) &&
                          has_part(key.meaning, words.about);
    if (is_asked) keys.push_back(&key);
  }
  return keys;
}

// Of both bands, where none is named.
std::vector<std::string> choices_of(const Key& key, const Words& words) {
  const std::optional<Band> first = parse_band(words.pattern);
  const std::optional<Band> only = first ? first : parse_band(words.band);
  std::vector<std::string> choices;
  for (const Band band : kBands) {
    if (!key.is_on(band) || only.value_or(band) != band) continue;
    for (const std::string& choice : choices_on(key, band)) {
      if (std::find(choices.begin(), choices.end(), choice) == choices.end()) choices.push_back(choice);
    }
  }
  return choices;
}

int run(const Words& words, Report& report) {
  const std::vector<const Key*> asked = asked_keys(words);
  if (asked.empty()) {
    report.problem({"no setting is like that" + (words.pattern.empty() ? "" : ": \"" + words.pattern + "\""),
                    words.pattern.empty() ? "wlanctl keys lists all" : hint_for_key(words.pattern)});
    return kWrongUsage;
  }
  Text& text = report.text();
  print_row(text, "KEY", "OF", "ACCEPTS");
  Json keys = Json::array();
  for (const Key* const one : asked) {
    const Key& key = *one;
    print_row(text, key.name, word_for(key.scope), served_words(key));
    for (const std::string& line : wrapped(told_meaning(key), kColumns - kIndentation)) {
      text << std::string(kIndentation, ' ') << line << '\n';
    }
    Json bands = Json::array();
    for (const Band band : kBands) {
      if (key.is_on(band)) bands.push_back(label_of(band));
    }
    keys.push_back({{"key", key.name},
                    {"scope", word_for(key.scope)},
                    {"bands", std::move(bands)},
                    {"accepted", served_words(key)},
                    {"choices", choices_of(key, words)},
                    {"meaning", told_meaning(key)},
                    {"secret", key.secret}});
  }
  report.data() = {{"keys", std::move(keys)}};
  return kDone;
}

std::string scopes() {
  return "band,ssid,link";
}

constexpr Word kWords[] = {
    {"PATTERN", &Words::pattern, "Part of a name; 2.4g and 5g stand for the band", {.offers = "band-or-name"}},
    {"--scope", &Words::scope, "What is set for the band, an SSID or a link", {.choices = scopes}},
    {"--band",
     &Words::band,
     "What the band has",
     {.refusal = word::band_refusal, .value_name = "BAND", .offers = "band"}},
    {"--about", &Words::about, "A word of its meaning", {.value_name = "WORD"}},
};

}  // namespace

const Verb kKeys = {"keys",
                    "List the settings: whose, what they take and mean",
                    "The filters go together, and capitals do not matter.\n\n"
                    "Examples:\n"
                    "  wlanctl keys\n"
                    "  wlanctl keys wpa --scope ssid\n"
                    "  wlanctl keys --about passphrase\n"
                    "  wlanctl keys --band 5g --about beam",
                    kWords,
                    run,
                    {},
                    true};

}  // namespace wlanctl
