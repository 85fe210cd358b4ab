// Two tables of settings, value by value.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/store/value.h"

namespace wlanctl {

// One value that is not the same in both.
struct Difference {
  std::string dat_key;
  size_t field = 0;   // from 0
  size_t fields = 0;  // that the key has, in the larger one
  std::string left;
  std::string right;

  // As the command line names it: "Channel", "HideSSID:2".
  std::string name() const;
};

// Which of two tables is a dat file's: where a save has made it of the other one, a list of the whole band has as many
// values there as there are SSIDs, and that is no difference.
enum class DatFile { kNeither, kLeft, kRight };

// In the order of their keys. What belongs to an SSID behind the first `ssids` is left out.
std::vector<Difference> differences(const std::vector<StoreRecord>& left, const std::vector<StoreRecord>& right,
                                    size_t ssids, DatFile dat_file = DatFile::kNeither);

// What a table has behind its own count of SSIDs is nobody's.
std::vector<StoreRecord> served_part(std::vector<StoreRecord> records);

// With the served part of the other side.
std::vector<Difference> served_differences(const std::vector<StoreRecord>& left, const std::vector<StoreRecord>& right,
                                           DatFile dat_file = DatFile::kNeither);

// The number of the SSID that a field of a key belongs to, from 1; 0 where it belongs to none.
size_t ssid_of(const std::string& dat_key, size_t field);

// The count of SSIDs in a table; 1 at least, as a band without a count still has one field.
size_t ssids_in(const std::vector<StoreRecord>& records);

}  // namespace wlanctl
