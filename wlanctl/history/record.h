// Leaving entries. None of it is in the way of what is recorded: where it fails, a note says so.
#pragma once

#include "wlanctl/history/entry.h"

namespace wlanctl {

class Report;

// Before the first change: an operation that is killed leaves what it was about to do. The caller holds the tool lock.
Entry begin_entry(Entry entry, Report& report);

// With its result.
void finish_entry(Entry entry, Report& report);

// Likewise of a save or a revert, which leave what is in force as it is. One that failed has changed nothing.
Entry begin_quiet_entry(Band band, Deed deed, const std::vector<SettingChange>& changes, Report& report);
void finish_quiet_entry(Entry entry, int exit_code, Report& report);

// The band's newest apply has its confirmation.
void note_confirmed(Band band, Report& report);

// The same where nothing waits any more: the confirmation may have been killed before it came to this. Only of an apply
// that waited for it, and behind which nothing else was done to the band.
void make_up_for_confirmation(Band band, Report& report);

// The number of the band's apply that is under way or waits for its confirmation; 0 for none.
unsigned undecided_entry(Band band);

}  // namespace wlanctl
