// The command line against the rows of verb.h. The one file behind this pays for the argument parser.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/command_line/verb.h"

namespace wlanctl {

struct Parsed {
  enum class Asks { kVerb, kHelp, kVersion, kNothing };
  Asks asks = Asks::kNothing;
  const Verb* verb = nullptr;  // for kVerb
  std::string path;            // its name, "wps pbc"; where the words were wrong, that of the first verb, or ""
  std::string text;            // the help, or what is wrong
};

// Fills `said`, as far as it came.
Parsed parse(const Program& program, const std::vector<std::string>& words, Words* said);

}  // namespace wlanctl
