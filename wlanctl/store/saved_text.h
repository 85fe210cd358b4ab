// The dat file that a save would make.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wifimgr_lib.h"
#include "wlanctl/base/band.h"

namespace wlanctl {

// Of the store that the library works on; none where a save would be refused.
std::optional<std::string> saved_text(Band band);

// Of other records.
std::optional<std::string> saved_text(Band band, const std::vector<wifimgr_attr_record>& content);

}  // namespace wlanctl
