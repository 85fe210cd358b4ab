// A terminal for programs that look whether they have one.
#pragma once

#include <string>

#include "wlanctl.h"

namespace wlanctl_test {

// A shell's script as a word of a shell that runs it on a terminal of so many rows, with its exit code. What a test says of
// colours and pagers counts, not what the machine does.
std::string on_terminal(const std::string& script, int rows);

// Runs it outside a simulation, with wlanctl on the path; without the carriage returns that a terminal adds.
Result run_on_terminal(const std::string& script, int rows = 10);

std::string without_carriage_returns(std::string text);

}  // namespace wlanctl_test
