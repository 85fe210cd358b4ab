// Settings as text for the tool's own files: a line per record, whatever bytes the values have.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wifimgr_lib.h"

namespace wlanctl {

std::string text_of_records(const std::vector<wifimgr_attr_record>& records);

// None when a line is no record.
std::optional<std::vector<wifimgr_attr_record>> parse_records(const std::string& text);

}  // namespace wlanctl
