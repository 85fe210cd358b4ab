// One setting put into the store by the library's own setter.
#pragma once

#include <string>

#include "wlanctl/keys/assignment.h"

namespace wlanctl {

// Asks the setter, and only that; library/messages.h has its reason for a refusal. Some setters tell the driver too,
// whose tool prints: library/shell.h has how that went.
bool set_by_library(Band band, const Target& target, const std::string& value);

// Settings that were stored, with what was there before.
struct Stored {
  Target target;
  std::string before;
};

// Puts back what was before, the last one first.
void take_back(Band band, const std::vector<Stored>& stored);

}  // namespace wlanctl
