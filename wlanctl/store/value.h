// The values in the store that the library works on.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/keys/key.h"

namespace wlanctl {

// A record of a store or a dat file: a dat key and its fields, without line ends, empty ones at the end cut.
struct StoreRecord {
  std::string key;
  std::vector<std::string> fields;
};
std::vector<StoreRecord> records_of(const std::vector<wifimgr_attr_record>& table);

// The same with the CR that a file of another system puts in front of its line ends: it is no part of a value that anybody
// wanted, yet the library and the driver see it.
std::vector<StoreRecord> exact_records_of(const std::vector<wifimgr_attr_record>& table);

// Without their line end; a list as a whole. None when the key is not in the store.
std::optional<std::string> read_value(Band band, const Key& key, int index);

// The same with what stands behind a line end in it: only the one at its end is left out, and a list is its first field.
std::optional<std::string> read_raw_value(Band band, const Key& key, int index);

// Puts a value into its place, unasked.
void write_value(Band band, const Key& key, int index, const std::string& value);

// Spreads the list that a setter left in one place over the fields, as the loader does with the dat file's line: what is
// left of a longer list would come behind it. Does nothing where a list has a record of its own.
void spread_list(Band band, const Key& key, const std::string& value);

int ssid_count(Band band);

// Whether an apply brings the SSID's interface up.
bool is_switched_on(Band band, int ssid);

// The count as it stands there, where it is none that a band can have.
std::optional<std::string> senseless_count(Band band);

}  // namespace wlanctl
