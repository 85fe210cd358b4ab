// What a file's settings mean for a store.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/exchange/settings_text.h"
#include "wlanctl/exchange/try_out.h"

namespace wlanctl {

// What is not set, with the reason.
struct LeftAlone {
  std::string name;
  std::string file;
  int line = 0;
  std::string reason;
};

struct Wishes {
  std::vector<Wish> wishes;
  std::vector<LeftAlone> left;  // differs in the store, but is not for anybody to set
};

// Of the text's settings of the band. Secrets that were left out stay as they are. What no setter takes (keys of the dat
// file without a setting, and settings that are only read) is compared; where it differs it is left alone.
// `place` says where that is, for the reason.
Wishes wishes_of(const SettingsText& text, const std::string& file, Band band,
                 const std::string& place = "in the store");

// The defaults of the settings that the text does not have, for the SSIDs that there will be. What has no default on the
// band, or no record in the store, is left out.
std::vector<Wish> default_wishes(const SettingsText& text, const std::string& file, Band band);

}  // namespace wlanctl
