// A save as the verb save does it: judged first, and with what was in the file kept where some of it goes.
#pragma once

#include <string>

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// Writes the store that the library works on to the band's dat file. The caller holds the tool lock. The exit code, with
// a problem where that is not kDone.
int save_guarded(Band band, bool force, Report& report);

// The same with a text of it that a save would not make: one that holds lists whole. The file as it was is kept beside the
// tool's state, and put back where the text cannot be written.
int write_guarded(Band band, const std::string& text, bool force, Report& report);

}  // namespace wlanctl
