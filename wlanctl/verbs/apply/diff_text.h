// How differences between two tables of settings are shown.
#pragma once

#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/report.h"
#include "wlanctl/store/difference.h"

namespace wlanctl {

// "2 values differ".
std::string verb_for(size_t count);

struct ShownChange {
  std::string name;
  std::string from;
  std::string to;
};

// "  NAME  FROM -> TO" for each; two long values do not fit beside each other, and stand below each other.
std::string table_of(const std::vector<ShownChange>& changes);

// Both, masked where they are secret and `secrets` is not wanted.
void mask(const std::string& dat_key, bool secrets, std::string* left, std::string* right);

// What a store is compared with.
struct OtherSide {
  const char* name;  // in the documents
  size_t ssids = WIFIMGR_FIELDS;
};

// Shows what differs between the store, on the left, and something else. Of an SSID that the store alone has, the text has
// what tells about it, and how much more there is.
Json tell_changes(const std::vector<Difference>& found, const OtherSide& other, bool secrets, Text& text);

}  // namespace wlanctl
