#include "wlanctl/command_line/hint.h"

#include "wlanctl/base/band.h"
#include "wlanctl/base/similar.h"
#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

std::vector<std::string> options_of(const Verb& verb) {
  std::vector<std::string> names = {"-h", "--help", "-V", "--version"};
  const auto add = [&](const Word& word) {
    if (!word.is_option()) return;
    for (const std::string& name : split_at(word.name, ',')) names.push_back(name);
  };
  for (const Word& word : verb.words) add(word);
  for (const Word& word : kCommonWords) add(word);
  return names;
}

bool has_name(const Word& word, const std::string& name) {
  for (const std::string& one : split_at(word.name, ',')) {
    if (one == name) return true;
  }
  return false;
}

// Null where the verb has no words for the option: --help and --version have none.
const Word* option_named(const Verb& verb, const std::string& name) {
  for (const std::span<const Word> words : {verb.words, std::span<const Word>(kCommonWords)}) {
    for (const Word& word : words) {
      if (word.is_option() && has_name(word, name)) return &word;
    }
  }
  return nullptr;
}

bool takes_value(const Word& word) {
  return word.place.flag == nullptr && word.place.maybe_seconds == nullptr;
}

bool may_take_value(const Word& word) {
  return word.place.maybe_seconds != nullptr;
}

std::string without_dashes(const std::string& name) {
  const size_t begin = name.find_first_not_of('-');
  return begin == std::string::npos ? "" : name.substr(begin);
}

bool contains(const std::vector<std::string>& words, const std::string& word) {
  for (const std::string& one : words) {
    if (one == word) return true;
  }
  return false;
}

// "" where it is an option. A short one may have its value behind it.
std::string unknown_option(const Verb& verb, const std::string& word) {
  const std::string name = word.substr(0, word.find('='));
  const std::vector<std::string> known = options_of(verb);
  const bool is_short = name.size() > 2 && name[1] != '-' && contains(known, name.substr(0, 2));
  return is_short || contains(known, name) ? "" : name;
}

std::string nearest_option(const Verb& verb, const std::string& name) {
  std::vector<std::string> names;
  for (const std::string& option : options_of(verb)) names.push_back(without_dashes(option));
  const std::string meant = nearest(names, without_dashes(name));
  return meant.empty() ? "" : "--" + meant;
}

const Verb* verb_below(const Verb& verb, const std::string& name) {
  for (const Verb* const below : verb.verbs) {
    if (below->name == name) return below;
  }
  return nullptr;
}

std::string in_small_letters(std::string text) {
  for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

// Who types the beginning of one alone means that, however near another one is.
std::string nearest_verb(const Verb& verb, const std::string& name) {
  std::vector<std::string> names;
  std::vector<std::string> begun;
  for (const Verb* const below : verb.verbs) {
    names.emplace_back(below->name);
    if (!name.empty() && names.back().starts_with(in_small_letters(name))) begun.push_back(names.back());
  }
  return begun.size() == 1 ? begun.front() : nearest(begun.empty() ? names : begun, name);
}

std::vector<std::string> choices_of(const Word& word) {
  std::string text = word.rules.choices == nullptr ? "" : word.rules.choices();
  std::erase(text, ' ');
  return split_at(text, ',');
}

// Of a word that is one of a few.
Mistake mistake_in_value(const Word& word, const std::string& value, const std::string& path) {
  const Rules& rules = word.rules;
  const std::vector<std::string> choices = choices_of(word);
  std::string reason = rules.refusal == nullptr ? "" : rules.refusal(value);
  const bool is_choice = rules.refusal != nullptr || choices.empty() ||
                         contains(choices, rules.any_case ? in_small_letters(value) : value);
  if (!is_choice) reason = std::string(word.name) + ": \"" + value + "\" is none of " + joined(choices, ", ");
  if (reason.empty()) return {};
  std::string meant = nearest(choices, value);
  if (rules.offers != nullptr && std::string(rules.offers) == "band") {
    meant = value.starts_with('2') ? "2.4g" : value.starts_with('5') ? "5g" : "";
  }
  return {reason, meant, path};
}

bool is_plain(const std::string& word) {
  return word.find_first_not_of("0123456789.:_-abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ") ==
         std::string::npos;
}

// "radio 2.4g off" as it is typed: "wlanctl radio off 2.4g". "" where it is no band that stands in front of a verb.
std::string verb_before_band(const Verb& verb, const std::string& path, const std::vector<std::string>& words,
                             size_t band) {
  if (!parse_band(words[band])) return "";
  std::string call = "wlanctl" + (path.empty() ? "" : " " + path);
  size_t next = band + 1;
  for (const Verb* named = &verb; next < words.size() && (named = verb_below(*named, words[next])) != nullptr; ++next) {
    call += " " + words[next];
  }
  if (next == band + 1) return "";
  call += " " + words[band];
  for (; next < words.size(); ++next) {
    // What a shell would not take as it stands is the operator's to write.
    if (!is_plain(words[next])) return call + " ...";
    call += " " + words[next];
  }
  return call;
}

// "log 3", which is the argument of a verb below: "wlanctl log show 3". "" where it is of none.
std::string verb_for_argument(const Verb& verb, const std::string& path, const std::string& word) {
  for (const Verb* const below : verb.verbs) {
    const Word* const first = below->words.empty() ? nullptr : &below->words.front();
    const bool is_judged = first != nullptr && !first->is_option() && first->rules.refusal != nullptr;
    if (is_judged && first->rules.refusal(word).empty()) return "wlanctl " + path + " " + below->name + " " + word;
  }
  return "";
}

// The argument at a place; the last one where it repeats.
const Word* argument_at(const Verb& verb, size_t place) {
  const Word* last = nullptr;
  for (const Word& word : verb.words) {
    if (word.is_option()) continue;
    if (place == 0) return &word;
    --place;
    last = &word;
  }
  return last != nullptr && last->place.texts != nullptr ? last : nullptr;
}

}  // namespace

Mistake mistake_in(const Program& program, const std::vector<std::string>& words) {
  const Verb* verb = &program.verb;
  std::string path;
  size_t place = 0;
  for (size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word == "--") break;
    if (word.size() > 1 && word[0] == '-') {
      const std::string unknown = unknown_option(*verb, word);
      if (!unknown.empty()) {
        return {path.empty() ? "there is no option " + unknown : path + " has no option " + unknown,
                nearest_option(*verb, unknown), path};
      }
      const size_t equals = word.find('=');
      const Word* const option = option_named(*verb, word.substr(0, equals));
      if (option == nullptr) continue;
      if (!takes_value(*option)) {
        const bool has_value = equals != std::string::npos;
        const bool is_followed = !has_value && i + 1 < words.size() && !words[i + 1].starts_with('-');
        if (!may_take_value(*option) || (!has_value && !is_followed)) continue;
        const std::string value = has_value ? word.substr(equals + 1) : words[++i];
        if (!number_in(value)) {
          return {word.substr(0, equals) + " takes a number, and \"" + value + "\" is none", "", path};
        }
        continue;
      }
      if (equals == std::string::npos && ++i == words.size()) break;
      Mistake mistake =
          mistake_in_value(*option, equals == std::string::npos ? words[i] : word.substr(equals + 1), path);
      if (!mistake.message.empty()) return mistake;
    } else if (!verb->verbs.empty() && (verb->run == nullptr || verb_below(*verb, word) != nullptr)) {
      const Verb* const below = verb_below(*verb, word);
      if (below == nullptr) {
        const std::string name = word.substr(0, word.find('='));
        const std::string turned = verb_before_band(*verb, path, words, i);
        return {"there is no verb \"" + path + (path.empty() ? "" : " ") + name + "\"",
                turned.empty() ? nearest_verb(*verb, name) : turned, path};
      }
      verb = below;
      path += (path.empty() ? "" : " ") + word;
    } else if (const Word* const argument = argument_at(*verb, place++)) {
      Mistake mistake = mistake_in_value(*argument, word, path);
      if (mistake.message.empty()) continue;
      if (mistake.meant.empty()) mistake.meant = verb_for_argument(*verb, path, word);
      // A verb that takes words too may have others below it.
      if (mistake.meant.empty() && place == 1) mistake.meant = nearest_verb(*verb, word);
      return mistake;
    }
  }
  return {};
}

}  // namespace wlanctl
