// The folder with the entries: a file for each, of a bounded number and size.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/history/entry.h"

namespace wlanctl {

inline constexpr char kHistoryVariable[] = "WLANCTL_HISTORY";
inline constexpr size_t kMostEntries = 100;
inline constexpr size_t kMostBytesOfAll = size_t{256} << 10;
inline constexpr size_t kMostBytesOfEntry = size_t{64} << 10;

// "" where no history is kept.
std::string history_folder();

struct Skipped {
  std::string path;
  std::string reason;
};

struct History {
  std::vector<Entry> entries;  // from the oldest to the newest
  std::vector<Skipped> skipped;
  std::string failure;  // why the folder cannot be read; "" when it can, or when there is none yet
};

// Follows no link and waits for nothing.
History read_history();

// Writes an entry, in place of the one of its number, and drops the oldest ones where it is too much. One without a
// number gets the next. The caller holds the tool lock. What was in the way; "" when it is written.
std::string write_entry(Entry* entry);

}  // namespace wlanctl
