// A line that a person types, or a script pipes in.
#pragma once

#include <optional>
#include <string>

namespace wlanctl {

// Without "\n" or "\r\n" at its end.
std::string without_end(std::string line);

// Of standard input. At a terminal it is asked for, and a passphrase is not to be seen there. None when there is none, or
// when a signal ends the tool.
std::optional<std::string> asked_line(const std::string& what, bool unseen_input);

}  // namespace wlanctl
