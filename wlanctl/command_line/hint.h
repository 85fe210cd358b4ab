// What is wrong with words that the parser did not take, as far as it is a word that nobody knows, and which one may be
// meant.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/command_line/verb.h"

namespace wlanctl {

struct Mistake {
  std::string message;  // "show has no option --jsn"; "" where no word is to blame
  std::string meant;    // "--json"; "" where nothing is near
  std::string path;     // of the verb whose help tells more
};

Mistake mistake_in(const Program& program, const std::vector<std::string>& words);

}  // namespace wlanctl
