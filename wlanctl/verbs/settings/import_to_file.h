// import --to-file: settings into the dat file, also of a gateway that has none yet.
#pragma once

#include <vector>

#include "wlanctl/command_line/verb.h"
#include "wlanctl/exchange/settings_text.h"

namespace wlanctl {

class Report;

// All of the bands or none, under the tool's lock.
int import_to_file(const SettingsText& text, const std::vector<Band>& bands, const Words& words, Report& report);

}  // namespace wlanctl
