// keys: every setting with its scope, what it takes and what it means.
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
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

int run(const Words& words, Report& report) {
  Text& text = report.text();
  print_row(text, "KEY", "OF", "ACCEPTS");
  Json keys = Json::array();
  const std::optional<Band> only = parse_band(words.band);
  for (const Key& key : all_keys()) {
    if (only && !key.is_on(*only)) continue;
    print_row(text, key.name, word_for(key.scope), served_words(key));
    for (const std::string& line : wrapped(key.meaning, kColumns - kIndentation)) {
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
                    {"choices", choices_of(served(key))},
                    {"meaning", key.meaning},
                    {"secret", key.secret}});
  }
  report.data() = {{"keys", std::move(keys)}};
  return kDone;
}

constexpr Word kWords[] = {word::kBand};

}  // namespace

const Verb kKeys = {"keys",
                    "List the settings: whose, what they take and mean",
                    "Examples:\n  wlanctl keys\n  wlanctl keys 5g | grep VHT",
                    kWords,
                    run,
                    {},
                    true};

}  // namespace wlanctl
