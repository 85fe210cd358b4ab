// What does not fit the screen, page by page.
#pragma once

#include <string>

namespace wlanctl {

// Gives the text to the operator's pager: WLANCTL_PAGER, else PAGER, else less. False when that is not to be, and the
// text still has to be printed: no terminal, a screen that has room for all of it, or a pager that cannot be run.
bool show_in_pager(const std::string& text);

}  // namespace wlanctl
