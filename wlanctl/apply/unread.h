// What an apply without a restart saves and tells nobody: the driver reads it in the dat file when the radio starts.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/apply/run.h"
#include "wlanctl/keys/key.h"

namespace wlanctl {

// Whether the driver's scripts, or the setter itself, have a place for it.
bool is_told_without_restart(const Key& key);

// Names the values in force that are not as `before`, and that none of the scripts told, and keeps them until the radio
// has started.
void note_unread(Band band, const std::vector<wifimgr_attr_record>& before, const std::vector<Script>& scripts,
                 Report& report);

// Of those kept, what is in force and still not what the driver has read. restore_applied comes first.
void note_kept_unread(Band band, Report& report);

// Whether they were kept and cannot be read.
bool is_unread_damaged(Band band);

// The radio has started.
void forget_unread(Band band);

}  // namespace wlanctl
