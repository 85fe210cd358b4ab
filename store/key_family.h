// Keys whose values the store treats in a way of their own. All match as prefixes, so "SSIDTail" and "SSID" belong to
// the family of "SSID1".
#pragma once

namespace store {

// Lists that belong to the whole band (WMM, WDS): ';' does not separate SSIDs in them, the value is kept in field 1.
bool is_whole_value_key(const char* key);

// Keys of which every SSID has one of its own, the SSID's number being part of the key: they have one value, field 1,
// whatever index a caller reads or changes.
bool is_single_value_key(const char* key);

// The prefix of the family that `key` belongs to and whose keys are numbered from 1 (from 0); null for other keys.
const char* family_numbered_from_one(const char* key);
const char* family_numbered_from_zero(const char* key);

}  // namespace store
