// The words of the command line, verb by verb: what Tab completes.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/command_line/verb.h"

namespace wlanctl {

// What a word may be: "band", "verb", "verb-below" (the verb before it), "key", "band-or-name" (of a key, without its
// SSID), "assignment" (KEY=VALUE), "file", "file-assignment" (KEY=PATH), "entry" (of the history), "band-or-file",
// "band-or-entry", the words themselves joined by commas, or "text" where there is nothing to offer.
using WordKind = std::string;

struct OptionWords {
  std::string name;  // "--json"
  std::string description;
  WordKind value;  // "" for a flag; also where the value may be left out
};

struct VerbWords {
  std::string path;  // "" for the program, "wps pbc"
  std::string name;  // "pbc"
  std::string description;
  std::vector<OptionWords> options;
  std::vector<WordKind> arguments;  // the last one's ends in "..." where it repeats
  std::vector<VerbWords> verbs;
};

VerbWords words_of(const Program& program);

}  // namespace wlanctl
