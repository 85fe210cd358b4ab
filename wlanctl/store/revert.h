// The live store in line with the dat file again.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

// What a save of those records would have written to a dat file, and is not in that one.
std::vector<std::string> missing_keys(const std::vector<wifimgr_attr_record>& records,
                                      const std::vector<wifimgr_attr_record>& file);

// Whether a dat file has all that a save of the live store would have written.
bool is_complete(Band band, const std::vector<wifimgr_attr_record>& file);

enum class Reverting { kDone, kUnreadable, kUnsound, kIncomplete, kNoRoom };

struct Reverted {
  Reverting how = Reverting::kDone;
  std::vector<wifimgr_attr_record> before;
  std::string bytes;                 // of the file
  std::vector<std::string> missing;  // keys that the store has and the file should have
};

// Puts the band's dat file into the live store, in one step. A file that was cut off, or never written to its end, is
// refused unless `even_if_wrong`: the store may be all that is left of the settings. So is one that `is_sound` says no of.
Reverted revert_store(Band band, bool even_if_wrong, bool (*is_sound)(const std::string& bytes));

}  // namespace wlanctl
