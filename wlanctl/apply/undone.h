// What no apply has failed to do, but somebody has undone since: the settings in the store against kernel and driver.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/apply/in_force.h"

namespace wlanctl {

// What does not hold at this moment: of enabled interfaces that are to be up, and the driver, which is to answer.
std::vector<Lack> look_now(Band band);

// The same, and of what an apply with a restart brings about: a bridge, the channel.
std::vector<Lack> look_closely(Band band);

// Notes what look_closely finds, with what brings it back; not what is told as lacking already.
void note_undone(Band band, const std::vector<Lack>& told, Report& report);

// The interfaces of enabled SSIDs that the kernel does not have: the driver makes new ones when it is loaded. And those that
// it has, but in no bridge.
std::vector<std::string> missing_interfaces(Band band);
std::vector<std::string> unbridged_interfaces(Band band);

// Says of interfaces that are missing, of SSIDs that are to be served, when they come.
void note_missing(Band band, const std::vector<std::string>& missing, bool is_reboot_advised, Report& report);

// Notes lists of which the dat file has what a save could keep: a boot comes up with that.
void note_lists_cut(Band band, Report& report);

// For who only looks: all of these notes, the others of the settings that are in force as far as is known.
// restore_applied comes first.
void note_system(Band band, const std::vector<Lack>& told, Report& report);

}  // namespace wlanctl
