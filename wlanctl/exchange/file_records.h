// Records that a dat file lacks for the settings that it is to hold.
#pragma once

#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/exchange/settings_text.h"

namespace wlanctl {

// Of the band's settings in the text, in their order: one for each dat key that `content` does not have. What a setter
// takes is left to it, so those are empty; what nothing sets has its value. With the flag without which the library sets no
// count of SSIDs.
std::vector<wifimgr_attr_record> lacking_records(const std::vector<wifimgr_attr_record>& content,
                                                 const SettingsText& text, Band band);

}  // namespace wlanctl
