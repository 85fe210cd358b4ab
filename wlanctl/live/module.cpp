#include "wlanctl/live/module.h"

#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"

namespace wlanctl {

std::optional<bool> is_module_loaded(const std::string& name) {
  const std::optional<std::string> list = read_bytes("/proc/modules");
  if (!list) return std::nullopt;
  for (const std::string& line : lines_of(*list)) {
    if (line.starts_with(name + " ")) return true;
  }
  return false;
}

}  // namespace wlanctl
