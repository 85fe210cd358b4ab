// The process that started gateway-sim. A simulation that runs a command for it is of no use to anybody else, and ends
// with it; who means it to go on says so as usual, with setsid or nohup.
#pragma once

#include "sim/base/file.h"

namespace gateway {

// Can be read from when it has ended; none where its end is nothing to look at. To be asked before signals are blocked.
UniqueFd starter_to_watch(bool is_interactive);

}  // namespace gateway
