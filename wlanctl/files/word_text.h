// Any bytes as one word of a line, and back.
#pragma once

#include <optional>
#include <string>

namespace wlanctl {

// Without blanks, line ends and what a terminal would act on; an empty text is a word too.
std::string word_of(const std::string& text);

// None when it is no such word.
std::optional<std::string> text_of_word(const std::string& word);

}  // namespace wlanctl
