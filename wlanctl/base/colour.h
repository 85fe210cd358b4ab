// Colours for a terminal. Texts are painted behind `printable`, which lets none of the user's own through.
#pragma once

#include <string>

namespace wlanctl {

enum class Paint { kRed, kGreen, kYellow };

enum class Colours { kAuto, kAlways, kNever };

// Said once, before anything is painted. kAuto is for a terminal on standard output that knows colours, and an operator
// who has not said NO_COLOR.
void choose_colours(Colours colours);

// The text itself where there are no colours, and where it is empty.
std::string painted(Paint paint, const std::string& text);

// The length of what paints at `at`; 0 where that is text.
size_t length_of_paint(const std::string& text, size_t at);

// As many bytes as stand on the screen: what paints takes no room.
size_t width_of(const std::string& text);

}  // namespace wlanctl
