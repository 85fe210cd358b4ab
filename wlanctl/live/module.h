// The kernel's modules.
#pragma once

#include <optional>
#include <string>

namespace wlanctl {

// None where the kernel does not list them.
std::optional<bool> is_module_loaded(const std::string& name);

}  // namespace wlanctl
