// Waits for what happens on a gateway, and tells it line by line. It changes nothing, and takes no lock.
#pragma once

#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

struct MonitorLimits {
  unsigned seconds = 0;  // 0 for none
  unsigned events = 0;   // likewise
};

// Returns the exit code. Ends with 0 at a limit, when it is interrupted, and when nobody reads any more.
int monitor(const std::vector<Band>& bands, const MonitorLimits& limits, bool as_json, Report& report);

}  // namespace wlanctl
