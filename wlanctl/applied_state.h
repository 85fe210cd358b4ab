// What this tool last applied, per band, and thereby what a change is compared with. The library keeps it in process
// memory; here it outlives the process.
#pragma once

#include "wlanctl/band.h"
#include "wlanctl/report.h"

namespace wlanctl {

// Puts what is in force into store_global and pre_wlan_state: what was last applied or, where that is not known or not
// believable, what the dat file says, with a note. The band's store must be open. False with a problem when neither is
// to be had.
bool restore_applied(Band band, Report& report);

// Keeps what store_global and pre_wlan_state say. False with a problem when it cannot be written.
bool keep_applied(Band band, Report& report);

// How heavy the library says that an apply would be; restore_applied comes first.
int weigh(Band band);
const char* word_for_weight(int weight);  // "nothing", "radio", "reboot"

}  // namespace wlanctl
