// What a shell or the dat file would make of a value that the library itself takes.
#pragma once

#include <string>

namespace wlanctl {

struct Key;

// Whether the driver's script has the setting's values at all.
bool is_in_script(const Key& key);

// Why a shell would act on the value when the driver's script is run; "" when none would.
std::string shell_danger_of(const Key& key, const std::string& value);

// Why a value must not be stored though the library would take it: a shell would act on it, or the dat file cannot hold
// it. "" when nothing speaks against it.
std::string danger_of(const Key& key, const std::string& value);

}  // namespace wlanctl
