// Who watches over a pending apply once nobody is at the keyboard: a process of its own, away from every terminal.
#pragma once

#include "wlanctl/confirm/pending.h"

namespace wlanctl {

// Starts the guardian of the band's pending apply and gives it the guard. It rolls back at the deadline, and at once when
// the process that started it ends in the middle of the apply. The caller holds the tool lock, and the band's store is
// open. False with a problem when it cannot be started.
bool start_guardian(Band band, const Guard& guard, Report& report);

}  // namespace wlanctl
