// A monitor that is watched while things happen.
#pragma once

#include <string>

#include "wlanctl.h"

namespace wlanctl_test {

// A monitor in the background that is ready; `comes TEXT` waits for a line with it, and ends the test's script with what
// was told where none comes. Each waits for lines behind those that were waited for before.
std::string watched(const std::string& words, const std::string& script, const std::string& before = "");

}  // namespace wlanctl_test
