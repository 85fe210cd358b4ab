#include "wlanctl/completion/words.h"

#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

constexpr unsigned kMostChoices = 16;

WordKind kind_of(const Word& word) {
  const Rules& rules = word.rules;
  if (rules.offers != nullptr) return rules.offers;
  std::string choices = rules.choices == nullptr ? "" : rules.choices();
  std::erase(choices, ' ');
  if (rules.highest != 0 && rules.highest - rules.lowest < kMostChoices) {
    for (unsigned i = rules.lowest; i <= rules.highest; ++i) {
      choices += (choices.empty() ? "" : ",") + std::to_string(i);
    }
  }
  return choices.empty() ? "text" : choices;
}

// One for each of its names, as in "-n,--events".
void add_option(const Word& word, std::vector<OptionWords>* options) {
  const bool takes_value = word.place.flag == nullptr && word.place.maybe_seconds == nullptr;
  for (const std::string& name : split_at(word.name, ',')) {
    options->push_back({name, word.help, takes_value ? kind_of(word) : WordKind()});
  }
}

VerbWords words_below(const Verb& verb, const std::string& path) {
  VerbWords words = {path, verb.name, verb.help, {{"--help", kHelpMeaning, ""}}, {}, {}};
  for (const Word& word : verb.words) {
    if (word.is_option()) {
      add_option(word, &words.options);
    } else {
      for (const std::string& kind : split_at(kind_of(word), ' ')) words.arguments.push_back(kind);
      if (word.place.texts != nullptr) words.arguments.back() += "...";
    }
  }
  if (verb.run != nullptr) {
    for (const Word& word : kCommonWords) add_option(word, &words.options);
  }
  for (const Verb* const below : verb.verbs) {
    words.verbs.push_back(words_below(*below, path + (path.empty() ? "" : " ") + below->name));
  }
  return words;
}

}  // namespace

VerbWords words_of(const Program& program) {
  VerbWords words = words_below(program.verb, "");
  words.options.push_back({"--version", kVersionMeaning, ""});
  return words;
}

}  // namespace wlanctl
