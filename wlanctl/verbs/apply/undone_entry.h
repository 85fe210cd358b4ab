// Which entries of the history an undo is about.
#pragma once

#include <vector>

#include "wlanctl/command_line/verb.h"
#include "wlanctl/history/folder.h"

namespace wlanctl {

class Report;

// What its words ask for: an entry by its number; or the newest one that changed something and is not taken back, of both
// bands, of one or, with --both, one of each. Undos and roll backs are meant by their numbers alone: else an undo would go
// back and forth. None with a problem; `code` receives the exit code then. The entries live in the history.
std::vector<const Entry*> entries_to_undo(const Words& words, const History& history, Report& report, int* code);

// Where neither band nor entry was said, the entry of the other band that the same operation left, and --both would have
// undone too; else null.
const Entry* entry_left_out(const Words& words, const History& history, const Entry& chosen);

// The next one on the way back where this one cannot be undone: the newest of its band before it that could be chosen; else
// null.
const Entry* entry_before(const History& history, const Entry& entry);

}  // namespace wlanctl
