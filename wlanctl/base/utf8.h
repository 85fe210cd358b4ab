// Texts in UTF-8.
#pragma once

#include <string>

namespace wlanctl {

// The length of the character at `at`; 0 where none begins there, or it is longer than it needs to be.
size_t length_of_character(const std::string& text, size_t at);

// What a text makes a terminal do instead of show: the length of such a character at `at`, 0 where none begins there. The
// control characters of both blocks, and what turns the direction of the text behind it, ends lines or has no width, so that
// a value could look like another one.
size_t length_of_control(const std::string& text, size_t at);

// The number of the character at `at`, of so many bytes.
unsigned number_of_character(const std::string& text, size_t at, size_t length);

bool is_utf8(const std::string& text);

}  // namespace wlanctl
