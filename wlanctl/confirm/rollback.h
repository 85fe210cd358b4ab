// Putting back what was in force before an apply that nobody confirmed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/history/entry.h"

namespace wlanctl {

// Puts the settings back into the store, restarts the interfaces with them, tells the driver, and puts the dat file back
// as it was; the pending apply is gone then. False with a problem when radio or file cannot be put back: the pending
// apply stays, and the next wlanctl tries again. A store that cannot take the settings stays as it is, with a problem.
// What the kernel then says is not in force is kept for lacks_of, and the reason for taken_back; the history gets an
// entry of it. The caller holds the tool lock, and the band's store is open. `booted` is what the dat file had before the
// caller put it back, where a boot has come since: no store knows of that any more.
using Settings = std::optional<std::vector<wifimgr_attr_record>>;
bool roll_back(Pending pending, By by, TakenFor reason, Report& report, const Settings& booted = std::nullopt);

// Why a roll back could not be ended, so that it would be begun again and again; "" when nothing speaks against it.
std::string reason_against_roll_back(const Pending& pending);

// Whether driver and kernel have what the roll back that was just done has put back.
bool is_back_in_force(Band band);

// Of that, once it is back in force, the interfaces that the driver makes at the next boot only: nothing serves their SSIDs
// before, as a note has said.
std::vector<std::string> interfaces_to_come(Band band);

// As roll_back, where anything was begun.
bool undo(const Pending& pending, By by, TakenFor reason, Report& report, const Settings& booted = std::nullopt);

// Puts a dat file in its place: a link or a bound file at its path stays one. False with errno; the other with a problem.
bool write_dat_file(Band band, const std::string& bytes);
bool restore_dat_file(Band band, const std::string& bytes, Report& report);

}  // namespace wlanctl
