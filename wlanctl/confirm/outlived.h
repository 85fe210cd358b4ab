// An apply whose confirmation was waited for when the gateway went down. What it would have put back is kept in a folder
// that outlives a boot, as the dat file with the unconfirmed settings does; who confirms or rolls back decides.
#pragma once

#include <optional>

#include "wlanctl/base/report.h"
#include "wlanctl/confirm/pending.h"

namespace wlanctl {

// Where; "" where nothing is kept over a boot.
std::string path_over_boot(Band band);

// Written once for each apply that is to be confirmed, as many bytes as the dat file and the settings have. What cannot
// be written becomes a note: the apply itself can go on.
void keep_over_boot(const Pending& pending, Report& report);

// False with a problem when it cannot be removed.
bool forget_over_boot(Band band, Report& report);

// Writes down that its roll back begins, in both places, before anything is put back: whatever cuts that off then, nobody
// takes what is left for what was to be confirmed. What cannot be written becomes a note. What others have written into
// the dat file is kept first.
void begin_going_back(Pending* pending, TakenFor reason, Report& report);

// What a boot interrupted; none when nothing was, or when the dat file is as it was before. Of this boot it is one whose
// file under /var/run somebody has removed, or a roll back after a boot that was killed.
std::optional<Pending> interrupted(Band band);

// Says of that what is known, and how to decide.
Problem cut_off(const Pending& interrupted);

// A roll back that had begun when the gateway went down, and that the boot has finished: it took the old dat file.
std::optional<Pending> taken_back_over_boot(Band band);

// Whether what was kept cannot be read any more, while nothing else says what was before: nobody knows then whether it was
// confirmed. And a problem that says so.
bool is_way_back_damaged(Band band);
Problem damaged_way_back(Band band);

// Whether there is anything to confirm or to roll back: an apply that waits, or waited when the gateway went down, be what
// it kept damaged.
bool is_undecided(Band band);

// Removes what another boot has left and nobody has to decide on, before the dat file changes.
void forget_settled(Band band);

// What was kept of an apply of this boot or another, whatever became of it.
std::optional<Pending> kept_over_boot(Band band);

// Whether somebody must decide first: an apply waits for its confirmation, or waited for it when the gateway went down.
// With a problem that says how.
bool refuse_undecided(Band band, Report& report);

// Says that somebody must decide, where somebody must.
void note_interrupted(Band band, Report& report);

}  // namespace wlanctl
