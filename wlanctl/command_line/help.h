// The help texts, for a terminal.
#pragma once

#include <string>

namespace wlanctl {

// Its long lines wrapped: descriptions below where they begin, other lines a little further in.
std::string wrapped_help(const std::string& help);

}  // namespace wlanctl
