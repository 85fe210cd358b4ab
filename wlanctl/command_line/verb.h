// What stands on the command line, as data: a verb is a row, and so is each of its words. They are parsed, shown as help
// and completed from here.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace wlanctl {

class Report;

// What was said. A verb looks at what its own words fill.
struct Words {
  bool json = false;
  std::string colour = "auto";
  bool no_pager = false;
  std::string band;
  int ssid = 0;
  bool secrets = false;
  bool force = false;
  unsigned wait_seconds = 10;

  std::vector<std::string> keys;         // of get
  std::vector<std::string> assignments;  // of set
  std::vector<std::string> files;        // of set --file, and of check
  std::vector<std::string> operands;     // of diff: a band, a file
  bool in_force = false;
  bool exit_code = false;
  std::string entry;  // of the history
  unsigned count = 20;
  bool literal = false;
  bool dry_run = false;
  bool again = false;
  bool keep = false;
  unsigned command_seconds = 60;  // each command of the library may take
  unsigned confirm_seconds = 0;
  bool is_watching = false;
  std::vector<unsigned> watch_seconds;  // none, or one, 0 for the default
  bool all = false;                     // of doctor
  unsigned for_seconds = 0;             // 0 for no end
  unsigned events = 0;                  // likewise
  bool has_pin = false;
  std::string pin;
  std::string led_text;
  std::string button;
  bool yes = false;
  int level = 0;
  std::string shell;
  std::string format = "json";  // of export
  bool no_secrets = false;
  std::string output;
  std::string file;  // of import
  bool replace = false;
  bool merge = false;
  std::string from;  // of set

  std::string key;      // of explain
  std::string pattern;  // of keys
  std::string scope;
  std::string about;

  bool both = false;
  std::vector<std::string> names;  // of ssid: behind the band
  std::string security;
  std::string passphrase_file;
  bool hide = false;
  bool isolate = false;
  bool to_file = false;
  std::string topic;        // of help
  std::string topic_below;  // likewise
};

// The member that a word fills: one of them.
struct Place {
  constexpr Place(bool Words::*place) : flag(place) {}
  constexpr Place(int Words::*place) : number(place) {}
  constexpr Place(unsigned Words::*place) : seconds(place) {}
  constexpr Place(std::string Words::*place) : text(place) {}
  constexpr Place(std::vector<std::string> Words::*place) : texts(place) {}
  constexpr Place(std::vector<unsigned> Words::*place) : maybe_seconds(place) {}

  bool Words::*flag = nullptr;
  int Words::*number = nullptr;
  unsigned Words::*seconds = nullptr;
  std::string Words::*text = nullptr;
  std::vector<std::string> Words::*texts = nullptr;
  std::vector<unsigned> Words::*maybe_seconds = nullptr;  // the value may be left out
};

struct Rules {
  bool required = false;
  unsigned lowest = 0;  // of a number; both 0 where any will do
  unsigned highest = 0;
  std::string (*choices)() = nullptr;  // "bash,zsh"
  bool any_case = false;               // of the choices
  // Why the value is none; "" when it is one.
  std::string (*refusal)(const std::string& value) = nullptr;
  const char* value_name = nullptr;  // in the help, where the value's kind does not tell enough
  bool shows_default = false;        // in the help
  const char* needs = nullptr;       // the name of another word
  bool Words::*is_given = nullptr;   // set when it was said
  const char* offers = nullptr;      // what Tab offers, see completion/words.h; else what the rules tell
};

// "BAND", an argument by its place; "--force", an option.
struct Word {
  const char* name;
  Place place;
  const char* help;
  Rules rules = {};

  constexpr bool is_option() const { return name[0] == '-'; }
};

struct Verb {
  const char* name;
  const char* help;
  const char* footer;
  std::span<const Word> words = {};
  int (*run)(const Words& words, Report& report) = nullptr;  // returns the exit code
  std::span<const Verb* const> verbs = {};                   // the verbs below, instead of words and run or besides
  bool is_long = false;                                      // what it prints may want a pager
};

// The program itself is one, with its version.
struct Program {
  Verb verb;
  const char* version;
};

// Of every program, and of every verb behind its own words.
std::string colour_choices();
inline constexpr char kHelpMeaning[] = "Print this help message and exit";
inline constexpr char kVersionMeaning[] = "Display program version information and exit";
inline constexpr Word kCommonWords[] = {
    {"--json", &Words::json, "Print one JSON document, on errors too"},
    {"--color", &Words::colour, "Colours: auto, always or never", {.choices = colour_choices, .value_name = "WHEN"}},
    {"--no-pager", &Words::no_pager, "Print all of it, whatever the screen holds"},
};

}  // namespace wlanctl
