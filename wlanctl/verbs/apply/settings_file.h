// Settings from a file that somebody names.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"
#include "wlanctl/store/value.h"

namespace wlanctl {

class Report;

struct BandSettings {
  std::optional<Band> band;  // none where the file does not tell
  std::vector<StoreRecord> records;
};

// A dat file's text. None with a problem when it cannot be read, or has no settings.
std::optional<std::vector<BandSettings>> read_settings_file(const std::string& path, Report& report);

}  // namespace wlanctl
