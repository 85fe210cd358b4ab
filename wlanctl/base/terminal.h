// Texts for a terminal of 80 columns.
#pragma once

#include <string>
#include <vector>

namespace wlanctl {

inline constexpr size_t kColumns = 80;

// A text without what a terminal would act on: the bytes of control characters (see base/utf8.h), and those that are no
// UTF-8, become '?'.
std::string printable(const std::string& text);

// With blanks for its line ends.
std::string on_one_line(std::string text);

using Rows = std::vector<std::vector<std::string>>;

// Columns as wide as needed, the last one cut only by the terminal.
std::string table(const Rows& rows);

// The text in lines of at most `width` characters, cut between words; a longer word stands alone.
std::vector<std::string> wrapped(const std::string& text, size_t width);

// The text in lines of a terminal's width, cut at blanks, which stay as they are elsewhere; further ones are indented by
// so many. A longer word stands alone.
std::string text_lines(const std::string& text, size_t indentation);

// A message likewise, further lines below its first word behind "wlanctl: ".
std::string message_lines(const std::string& text);

// "2.4g Channel = 11  (was 6)"; what a line has no room for stands below.
std::string change_lines(const std::string& name, const std::string& after, const std::string& before);

// A list in pieces of at most `width`, cut behind a ;. A longer value stands alone.
std::vector<std::string> list_lines(const std::string& list, size_t width);

// The head and the pieces behind it, two blanks between them, in lines of a terminal's width; further ones below the
// first piece.
std::string wrapped_below(const std::string& head, const std::vector<std::string>& pieces);

}  // namespace wlanctl
