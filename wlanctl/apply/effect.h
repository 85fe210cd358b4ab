// What a change of one setting would mean, found out by asking the library on private copies.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/apply/adjustment.h"

namespace wlanctl {

struct ChangeEffect {
  std::string condition;    // "WdsEnable=1", where it is asked with another setting changed first; "" for as it stands
  int index = -1;           // -1 for the band, else the SSID or link that it was asked of
  int weight = 0;           // of an apply, as the library has it
  bool is_at_once = false;  // the setter itself tells the driver
  std::optional<std::string> asked_with;  // a value; none where it is the settings' table that says so
};

// The band's store must be open. Of a setting of SSIDs or links the first two are asked where they differ. What cannot be
// asked, as no value is taken or the key is not in the store, is the table's word.
std::vector<ChangeEffect> effects_of(Band band, const Key& key);

// The table's word alone, where there is no store.
std::vector<ChangeEffect> table_effects_of(Band band, const Key& key);

// What an apply makes of settings by itself when this one has a value.
struct Consequence {
  std::vector<std::string> values;  // that all have it
  std::vector<Adjustment> adjustments;
};

// Those of a few values, and of every value where there are few. Of SSID 1, or of the band.
std::vector<Consequence> consequences_of(Band band, const Key& key);

}  // namespace wlanctl
