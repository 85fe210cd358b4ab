// Texts for a terminal of 80 columns.
#pragma once

#include <string>
#include <vector>

namespace wlanctl {

inline constexpr size_t kColumns = 80;

// A text without what a terminal would act on: control characters, and bytes that are no UTF-8, become '?'.
std::string printable(const std::string& text);

// With blanks for its line ends.
std::string on_one_line(std::string text);

using Rows = std::vector<std::vector<std::string>>;

// Columns as wide as needed, the last one cut only by the terminal.
std::string table(const Rows& rows);

// The text in lines of at most `width` characters, cut between words; a longer word stands alone.
std::vector<std::string> wrapped(const std::string& text, size_t width);

// A message in lines of a terminal's width, cut at blanks, which stay as they are elsewhere; further ones are indented.
// A longer word stands alone.
std::string message_lines(const std::string& text);

// The head and the pieces behind it, two blanks between them, in lines of a terminal's width; further ones below the
// first piece.
std::string wrapped_below(const std::string& head, const std::vector<std::string>& pieces);

}  // namespace wlanctl
