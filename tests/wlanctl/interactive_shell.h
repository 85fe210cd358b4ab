// Types into a real bash or zsh on a terminal, with the completion that wlanctl prints.
#pragma once

#include <string>

#include "wlanctl.h"

namespace wlanctl_test {

enum class Shell { kBash, kZsh };

bool is_there(Shell shell);

// A key that puts everything that Tab would offer into the line.
inline constexpr char kInsertAll[] =
    "\x18"
    "a";

// Types the lines, each ended with Enter, in an empty folder that has a file "a file" in it. Returns the words that
// wlanctl would have been called with, joined by "|", call by call.
Words type(Shell shell, const Words& lines);

}  // namespace wlanctl_test
