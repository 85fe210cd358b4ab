// Records that a live store lacks, put into its free room.
//
// Every SSID has keys of its own, such as SSID2 and WPAPSK2. A save leaves out those behind the count, so a store that was
// made of a saved file has none for more SSIDs, and no setter makes one.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

// The records of one SSID that the store lacks, with empty values: of the keys that SSID 1 has.
std::vector<wifimgr_attr_record> missing_records(Band band, int ssid);

std::string key_of(const wifimgr_attr_record& record);

enum class Adding {
  kDone,
  kNoLock,    // another process does not let go
  kNoRoom,    // nothing was added
  kNotThere,  // they were written, and the library does not find them: another process replaced the store
};

// Puts them behind the others, under the band's lock, and looks for them with the library's own reader. Those whose key
// is there already are left as they are. Works on whatever store the library works on, a private one too.
Adding add_records(Band band, const std::vector<wifimgr_attr_record>& records);

// How many more the store takes.
size_t free_records(Band band);

}  // namespace wlanctl
