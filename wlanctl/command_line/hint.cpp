#include "wlanctl/command_line/hint.h"

#include <algorithm>

#include "wlanctl/base/similar.h"

namespace wlanctl {
namespace {

using CommandLine = std::vector<std::string>;

std::string hint_of(const CommandLine& names, const std::string& word) {
  const std::string nearest = nearest_of(names, word);
  return nearest.empty() ? "" : "do you mean " + nearest + "? ";
}

// How far the verbs of a command line are known.
struct Way {
  const Verb* verb;
  std::string path;
  std::string unknown;  // where a verb should stand
};

Way follow(const Program& program, const CommandLine& words) {
  Way way = {&program.verb, "", ""};
  for (const std::string& word : words) {
    if (way.verb->verbs.empty()) break;
    if (word.starts_with('-')) continue;
    const auto below = std::find_if(way.verb->verbs.begin(), way.verb->verbs.end(),
                                    [&](const Verb* verb) { return verb->name == word; });
    if (below == way.verb->verbs.end()) {
      way.unknown = word.substr(0, word.find('='));
      break;
    }
    way.verb = *below;
    way.path += (way.path.empty() ? "" : " ") + word;
  }
  return way;
}

}  // namespace

UnknownVerb unknown_verb(const Program& program, const CommandLine& words) {
  const Way way = follow(program, words);
  if (way.unknown.empty()) return {};
  CommandLine names;
  for (const Verb* const verb : way.verb->verbs) names.emplace_back(verb->name);
  return {way.unknown, way.path, hint_of(names, way.unknown)};
}

std::string hint_for_option(const Program& program, const CommandLine& words) {
  CommandLine names = {"--help", kJsonWord.name};
  for (const Word& word : follow(program, words).verb->words) {
    if (word.is_option()) names.emplace_back(word.name);
  }
  for (const std::string& word : words) {
    const std::string name = word.substr(0, word.find('='));
    if (!name.starts_with("--") || std::find(names.begin(), names.end(), name) != names.end()) continue;
    return hint_of(names, name);
  }
  return "";
}

}  // namespace wlanctl
