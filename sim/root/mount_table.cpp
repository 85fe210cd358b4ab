#include "sim/root/mount_table.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "sim/base/file.h"

namespace gateway {
namespace {

// The kernel writes white space and backslashes as three octal digits.
std::string unescaped(const std::string& text) {
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 3 < text.size()) {
      plain += static_cast<char>(std::strtol(text.substr(i + 1, 3).c_str(), nullptr, 8));
      i += 3;
    } else {
      plain += text[i];
    }
  }
  return plain;
}

}  // namespace

MountTable::MountTable() {
  std::ifstream stream("/proc/self/mountinfo");
  for (std::string line; std::getline(stream, line);) {
    std::istringstream fields(line);
    std::string id, parent, device, root, point;
    if (fields >> id >> parent >> device >> root >> point) points_.push_back(unescaped(point));
  }
  std::sort(points_.begin(), points_.end());
  points_.erase(std::unique(points_.begin(), points_.end()), points_.end());
}

std::vector<std::string> MountTable::topmost_below(const std::string& folder) const {
  std::vector<std::string> found;
  for (const std::string& point : points_) {
    if (point == folder || !is_within(point, folder)) continue;
    const auto covers = [&](const std::string& other) { return is_within(point, other); };
    if (std::none_of(found.begin(), found.end(), covers)) found.push_back(point);
  }
  return found;
}

}  // namespace gateway
