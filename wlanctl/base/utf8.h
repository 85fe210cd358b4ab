// Texts in UTF-8.
#pragma once

#include <string>

namespace wlanctl {

// The length of the character at `at`; 0 where none begins there, or it is longer than it needs to be.
size_t length_of_character(const std::string& text, size_t at);

bool is_utf8(const std::string& text);

}  // namespace wlanctl
