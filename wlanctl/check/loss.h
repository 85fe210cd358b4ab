// What a write of a dat file would lose, or the next load of it misread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/check/finding.h"
#include "wlanctl/store/value.h"

namespace wlanctl {

// Lines that the loader does not take as they are written.
std::vector<DatFinding> losses_at_load(const std::string& bytes);

// Values behind an empty field: a shared key is written up to that one.
std::vector<DatFinding> losses_at_save(const std::vector<StoreRecord>& records, int ssids);

// Of the store that the library works on: the latter, and all that a save of it and the next load would lose. `text` is
// what a save makes.
std::vector<DatFinding> losses_of_store(Band band);
std::vector<DatFinding> losses_of_save(Band band, const std::optional<std::string>& text);

// Those that were not there before.
std::vector<DatFinding> added_losses(const std::vector<DatFinding>& before, const std::vector<DatFinding>& after);

// Lists of the whole band that a save cuts at the count of SSIDs, as if they were values of SSIDs.
std::vector<DatFinding> lists_cut_at_save(const std::vector<StoreRecord>& records, int ssids);

// Without those that an earlier save has cut in the file already, to what this one would keep.
std::vector<DatFinding> lists_to_be_cut(const std::vector<StoreRecord>& records, const std::vector<StoreRecord>& file,
                                        int ssids);

// Lines of SSIDs that the first file serves and the second does not: the save leaves them out. One finding at most.
std::vector<DatFinding> losses_behind_count(const std::string& before, const std::string& after);

// Lines of a file whose key the store has no record of, so that no save writes it. Not those of SSIDs that the file does
// not serve, which a save leaves out anyway.
std::vector<DatFinding> lines_without_record(const std::string& file, const std::vector<StoreRecord>& records);

// Whether an apply asks twice before it saves the store that the library works on, as that text: for that reason.
bool save_loses_ssids(Band band, const std::optional<std::string>& text);

// Whether a save leaves values out of the file that no SSID uses: those behind its count.
bool has_unused_values(const std::string& bytes);

}  // namespace wlanctl
