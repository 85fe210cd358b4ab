// Texts for a console of 80 columns.
#pragma once

#include <string>
#include <vector>

namespace wlanctl {

inline constexpr size_t kColumns = 80;

// The text in lines of at most `width` characters, cut between words; a longer word stands alone.
std::vector<std::string> wrapped(const std::string& text, size_t width);

// A help text, its long lines wrapped: descriptions below where they begin, other lines a little further in.
std::string wrapped_help(const std::string& help);

}  // namespace wlanctl
