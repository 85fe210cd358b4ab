// What was meant by a word that is none.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/command_line/verb.h"

namespace wlanctl {

// The first word that stands where a verb should; "" where there is none.
struct UnknownVerb {
  std::string word;
  std::string path;  // of the verb in front of it, "radio"; "" of the program's own
  std::string hint;  // "do you mean on? ", or nothing
};
UnknownVerb unknown_verb(const Program& program, const std::vector<std::string>& words);

// "do you mean --dry-run? ", where an option of the verb is near one that it does not have.
std::string hint_for_option(const Program& program, const std::vector<std::string>& words);

}  // namespace wlanctl
