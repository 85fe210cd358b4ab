// The settings of a dat file, as the loader takes them.
#pragma once

#include <string>

#include "wlanctl/exchange/settings_text.h"

namespace wlanctl {

// What the loader would not take as it is written is a problem. Values behind the file's count of SSIDs are nobody's, and
// left out with a note.
SettingsText read_dat_settings(const std::string& bytes, Band band);

// Whether a line of it has the key of a setting, of whichever band.
bool has_dat_setting(const std::string& bytes);

}  // namespace wlanctl
