// A save as the verb save does it: judged first, and with what was in the file kept where some of it goes.
#pragma once

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// Writes the store that the library works on to the band's dat file. The caller holds the tool lock. The exit code, with
// a problem where that is not kDone.
int save_guarded(Band band, bool force, Report& report);

}  // namespace wlanctl
