// Settings as text: JSON that keeps every byte, or a dat file.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/exchange/settings_text.h"

namespace wlanctl {

class Report;

enum class Secrets { kShown, kLeftOut };

// Of one band or both; a value that is no UTF-8 is an object with its bytes.
Json json_of_settings(const std::vector<Band>& bands, Secrets secrets);

// The band's dat file. Problems where that cannot hold a value as it is, and "" then.
std::string dat_of_settings(Band band, Secrets secrets, Report& report);

}  // namespace wlanctl
