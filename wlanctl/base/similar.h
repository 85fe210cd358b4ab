// Guessing what a mistyped word was meant to be.
#pragma once

#include <string>

namespace wlanctl {

// Whether the text may be meant to be the word; capitals do not matter.
bool is_mistyped(const std::string& word, const std::string& text);

}  // namespace wlanctl
