// An apply that waits for its confirmation, or waited when the gateway went down: it is decided first.
#pragma once

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// True with a problem while one of the band does.
bool refuse_undecided(Band band, Report& report);

}  // namespace wlanctl
