#include "wlanctl/command_line/parse.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "wlanctl/command_line/help.h"

namespace wlanctl {
namespace {

using CommandLine = std::vector<std::string>;

class Parser {
 public:
  Parser(const Program& program, const CommandLine& words, Words* said)
      : words_(words), said_(said), app_(program.verb.help, program.verb.name) {
    app_.set_help_flag("-h,--help", kHelpMeaning);
    app_.set_version_flag("-V,--version", program.version, kVersionMeaning);
    add_below(app_, program.verb, "", words_.begin());
  }

  Parsed parse() {
    try {
      app_.parse(CommandLine(words_.rbegin(), words_.rend()));
    } catch (const CLI::CallForHelp&) {
      return {Parsed::Asks::kHelp, nullptr, "help", wrapped_help(app_.help())};
    } catch (const CLI::CallForVersion&) {
      return {Parsed::Asks::kVersion, nullptr, "version", ""};
    } catch (const CLI::ParseError& error) {
      const auto begun = app_.get_subcommands();
      return {Parsed::Asks::kNothing, nullptr, begun.empty() ? "" : begun.front()->get_name(), error.what()};
    }
    const std::string empty = option_without_value();
    if (!empty.empty()) return {Parsed::Asks::kNothing, nullptr, chosen_.path, empty + " has no value behind ="};
    return chosen_;
  }

 private:
  // "--watch=", which the parser takes for "--watch"; "" where there is none.
  std::string option_without_value() const {
    if (chosen_.verb == nullptr) return "";
    for (const Word& word : chosen_.verb->words) {
      const bool may_lack_value = word.place.maybe_seconds != nullptr;
      if (may_lack_value && std::find(words_.begin(), words_.end(), word.name + std::string("=")) != words_.end()) {
        return word.name;
      }
    }
    return "";
  }

  // The verb below that the words name, where the first one that is no option does; to make the rows of all the others is
  // most of what a short verb takes. Null where they are needed: for the help that lists them, and for what is wrong.
  const Verb* named_below(const Verb& verb, CommandLine::const_iterator* next) const {
    const auto word =
        std::find_if_not(*next, words_.end(), [](const std::string& one) { return one.starts_with('-'); });
    if (word == words_.end()) return nullptr;
    for (const Verb* const below : verb.verbs) {
      if (*word != below->name) continue;
      *next = word + 1;
      return below;
    }
    return nullptr;
  }

  // `next` is the first of the words that may name a verb below.
  void add_below(CLI::App& app, const Verb& verb, const std::string& path, CommandLine::const_iterator next) {
    app.footer(verb.footer);
    app.require_subcommand(verb.run == nullptr ? 1 : 0, 1);
    const Verb* const named = named_below(verb, &next);
    for (const Verb* const below : verb.verbs) {
      if (named != nullptr && below != named) continue;
      CLI::App& added = *app.add_subcommand(below->name, below->help);
      const std::string path_below = (path.empty() ? "" : path + " ") + below->name;
      if (!below->verbs.empty()) add_below(added, *below, path_below, next);
      if (below->run != nullptr) add_verb(added, *below, path_below);
    }
  }

  void add_verb(CLI::App& app, const Verb& verb, const std::string& path) {
    app.footer(verb.footer);
    for (const Word& word : verb.words) add_word(app, word);
    for (const Word& word : kCommonWords) add_word(app, word);
    app.callback([this, &app, &verb, path] {
      if (!app.get_subcommands().empty()) return;
      for (const Word& word : verb.words) {
        if (word.rules.is_given != nullptr) said_->*word.rules.is_given = app.count(word.name) > 0;
      }
      chosen_ = {Parsed::Asks::kVerb, &verb, path, ""};
    });
  }

  void add_word(CLI::App& app, const Word& word) {
    CLI::Option& option = option_for(app, word);
    const Rules& rules = word.rules;
    option.required(rules.required);
    if (rules.value_name != nullptr) option.type_name(rules.value_name);
    if (rules.shows_default) option.capture_default_str();
    if (rules.refusal != nullptr) {
      option.check(CLI::Validator([refusal = rules.refusal](std::string& value) { return refusal(value); },
                                  rules.choices == nullptr ? "" : "{" + rules.choices() + "}"));
    } else if (rules.choices != nullptr) {
      add_choices(option, rules);
    }
    if (rules.needs != nullptr) option.needs(app.get_option(rules.needs));
  }

  CLI::Option& option_for(CLI::App& app, const Word& word) {
    const Place& place = word.place;
    if (place.flag != nullptr) return *app.add_flag(word.name, said_->*place.flag, word.help);
    if (place.text != nullptr) return *app.add_option(word.name, said_->*place.text, word.help);
    if (place.texts != nullptr) {
      CLI::Option& option = *app.add_option(word.name, said_->*place.texts, word.help);
      // An option is said again for each value, else it would take the arguments behind it.
      return word.is_option() ? *option.allow_extra_args(false) : option;
    }
    if (place.number != nullptr)
      return in_range<int>(*app.add_option(word.name, said_->*place.number, word.help), word);
    if (place.seconds != nullptr) {
      return in_range<unsigned>(*app.add_option(word.name, said_->*place.seconds, word.help), word);
    }
    CLI::Option& option = *app.add_option(word.name, said_->*place.maybe_seconds, word.help)->expected(0, 1);
    return in_range<unsigned>(*option.allow_extra_args(false), word);
  }

  template <typename Number>
  static CLI::Option& in_range(CLI::Option& option, const Word& word) {
    if (word.rules.highest == 0) return option;
    return *option.check(CLI::Range(static_cast<Number>(word.rules.lowest), static_cast<Number>(word.rules.highest)));
  }

  static void add_choices(CLI::Option& option, const Rules& rules) {
    const std::vector<std::string> choices = CLI::detail::split(rules.choices(), ',');
    if (rules.any_case) {
      option.check(CLI::IsMember(choices, CLI::ignore_case));
    } else {
      option.check(CLI::IsMember(choices));
    }
  }

  const CommandLine& words_;
  Words* said_;
  CLI::App app_;
  Parsed chosen_;
};

}  // namespace

Parsed parse(const Program& program, const std::vector<std::string>& words, Words* said) {
  return Parser(program, words, said).parse();
}

}  // namespace wlanctl
