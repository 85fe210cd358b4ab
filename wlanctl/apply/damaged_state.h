// What the tool has kept of a band's applies and cannot read any more.
#pragma once

#include "wlanctl/base/band.h"

namespace wlanctl {

class Report;

// Notes each such file, and what nobody knows then.
void note_damaged_state(Band band, Report& report);

}  // namespace wlanctl
