// The machine's mount points, as seen before the simulation leaves them behind.
#pragma once

#include <string>
#include <vector>

namespace gateway {

class MountTable {
 public:
  MountTable();

  // Mount points somewhere below `folder`, those of other such mount points left out.
  std::vector<std::string> topmost_below(const std::string& folder) const;

 private:
  std::vector<std::string> points_;
};

}  // namespace gateway
