// What the library says about a refusal. The tool stands in for the platform's debug library, so that the reasons come
// here instead of to a log, and nothing of what an operator types is traced anywhere.
#pragma once

#include <string>

namespace wlanctl {

// Forgets what was said.
void clear_messages();

// The reason of the first failure since then, as a piece of a sentence: without the function's name, the stop at the end,
// and the advice behind it; "" when none was given.
std::string first_reason();

}  // namespace wlanctl
