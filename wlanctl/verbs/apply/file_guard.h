// The dat file before a write of it: what the write would lose, and a copy of what is there.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/check/finding.h"

namespace wlanctl {

class Report;

enum class Writer {
  kLibrary,  // which leaves out what a save leaves out
  kTool,     // the text as it is
};

// Judges the band's dat file as it is, the store that the library works on, and the text that would be written. False
// with a problem for each line of which something would be lost, or misread at the next load. None for a text that
// cannot be made: the library says why. restore_applied comes first.
bool may_write_file(Band band, const std::optional<std::string>& text, Report& report,
                    Writer writer = Writer::kLibrary);

// What speaks against a write or an apply: problems or, where the operator insists on it, notes. Whether to go on.
bool may_go_on(const Report& objections, bool force, Report& report);

// Problems for the lines of a file that a revert would not put into the store as they are written, and for those that make
// it too large for the store.
void refuse_unsound(Band band, const std::string& file, Report& report);
void refuse_repeated(Band band, const std::vector<DatFinding>& lines, Report& report);

// Keeps the file as it is beside the tool's state, where the write leaves something of it out. False with a problem when
// it cannot be kept.
bool keep_file_of_now(Band band, const std::optional<std::string>& text, Report& report);

// The same, whatever the write makes of it.
bool keep_file_anyway(Band band, const std::string& file, Report& report);

// Beforehand: that a write leaves out what the file has for SSIDs that are not served.
void note_unused_values(Band band, Report& report);

}  // namespace wlanctl
