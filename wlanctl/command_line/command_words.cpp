#include "wlanctl/command_line/command_words.h"

#include <CLI/CLI.hpp>
#include <cstdlib>

namespace wlanctl {
namespace {

constexpr long kMostChoices = 16;

struct Named {
  const char* name;
  const char* kind;
};
constexpr Named kNamed[] = {
    {"BAND", "band"}, {"KEY", "key"}, {"KEY=VALUE", "assignment"}, {"KEY=PATH", "file-assignment"}, {"FILE", "file"}};

// A check on the value describes itself behind the type: "TEXT:{2.4g,5g}", "INT:INT in [1 - 8]".
WordKind described(const std::string& type) {
  const size_t open = type.find('{');
  const size_t close = type.find('}', open);
  if (open != std::string::npos && close != std::string::npos) {
    std::string choices = type.substr(open + 1, close - open - 1);
    std::erase(choices, ' ');
    return choices;
  }
  const size_t range = type.find(" in [");
  const size_t dash = type.find(" - ", range);
  if (range == std::string::npos || dash == std::string::npos) return "text";
  const long first = std::strtol(type.c_str() + range + 5, nullptr, 10);
  const long last = std::strtol(type.c_str() + dash + 3, nullptr, 10);
  if (last - first >= kMostChoices) return "text";
  std::string choices;
  for (long i = first; i <= last; ++i) choices += (choices.empty() ? "" : ",") + std::to_string(i);
  return choices;
}

WordKind kind_of(const CLI::Option& option) {
  const std::string type = option.get_type_name();
  for (const Named& named : kNamed) {
    if (option.get_positional() ? option.get_name(true) == named.name : type == named.name) return named.kind;
  }
  return described(type);
}

OptionWords option_words(const CLI::Option& option) {
  const bool takes_value = option.get_items_expected_min() > 0;
  return {"--" + option.get_lnames().front(), option.get_description(), takes_value ? kind_of(option) : WordKind()};
}

WordKind argument_kind(const CLI::Option& option) {
  return kind_of(option) + (option.get_items_expected_max() > 1 ? "..." : "");
}

VerbWords words_below(const CLI::App& app, const std::string& path) {
  VerbWords words = {path, app.get_name(), app.get_description(), {}, {}, {}};
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional()) {
      words.arguments.push_back(argument_kind(*option));
    } else if (!option->get_lnames().empty()) {
      words.options.push_back(option_words(*option));
    }
  }
  for (const CLI::App* verb : app.get_subcommands([](const CLI::App*) { return true; })) {
    words.verbs.push_back(words_below(*verb, path + (path.empty() ? "" : " ") + verb->get_name()));
  }
  return words;
}

}  // namespace

VerbWords words_of(const CLI::App& app) {
  return words_below(app, "");
}

}  // namespace wlanctl
