// Guessing what a mistyped word was meant to be.
#pragma once

#include <string>
#include <vector>

namespace wlanctl {

// Whether the text may be meant to be the word; capitals do not matter.
bool is_mistyped(const std::string& word, const std::string& text);

// The nearest of the words that it may be meant to be; "" where there is none.
std::string nearest(const std::vector<std::string>& words, const std::string& text);

}  // namespace wlanctl
