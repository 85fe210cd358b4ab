// The dat file of a band, as the library's own parser reads it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

class StoreLock;

std::string dat_path_of(Band band);

// Of a dat file's text.
std::vector<wifimgr_attr_record> parse_dat_text(const std::string& bytes);

// "cannot read PATH: it is a pipe, not a file".
std::string unreadable_dat_file(Band band);

// ": it is a pipe, not a file", where it is there and the library must not be sent there; else "".
std::string reason_against_dat_file(Band band);

// Never in the middle of another process's save; none when it cannot be opened.
std::optional<std::vector<wifimgr_attr_record>> parse_dat_file(Band band);

// One look at the file, by who has the lock. A save empties the file before it takes the lock: what lacks records may be
// whole at the next look.
std::optional<std::vector<wifimgr_attr_record>> look_at_dat_file(Band band, const StoreLock& lock);
inline constexpr int kMostLooks = 11;
void pause_between_looks();

}  // namespace wlanctl
