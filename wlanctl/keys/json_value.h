// The values of settings in JSON.
#pragma once

#include <string>

#include "wlanctl/base/report.h"
#include "wlanctl/keys/key.h"

namespace wlanctl {

// A number where the key holds numbers and this is one, else text.
Json json_value(const Key& key, const std::string& value);

// The same for a key of a dat file, known or not.
Json json_value(const std::string& dat_key, const std::string& value);

}  // namespace wlanctl
