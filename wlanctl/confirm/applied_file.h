// The dat file against what the apply left in it that waits for its confirmation.
#pragma once

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;
struct Pending;

// Whether the file still has what was applied: as the apply left it or, where others have changed it since, with all of
// its keys. Else a boot would come up without them, and a problem says which. The band's store is open, unless the gateway
// has booted since.
bool has_what_was_applied(const Pending& pending, Report& report);

// Before a roll back overwrites the file: what others have written into it since the apply is kept beside the tool's state,
// and that is noted. So is a file that cannot be kept: the way back goes on all the same.
void keep_foreign_file(const Pending& pending, Report& report);

}  // namespace wlanctl
