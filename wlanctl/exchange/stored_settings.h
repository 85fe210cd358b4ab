// Settings as a store has them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/exchange/settings_text.h"

namespace wlanctl {

// As it stands there, but for a line end behind it, and as the setter takes it; a list as a whole.
std::optional<std::string> exact_value(Band band, const Target& target);

// Of the SSIDs that the band serves, in the order of the keys. An SSID's empty field is no value. Behind them what no
// setting has: the dat file's other keys, but for the one that the library notes its own work in.
std::vector<FileSetting> settings_of_store(Band band);

}  // namespace wlanctl
