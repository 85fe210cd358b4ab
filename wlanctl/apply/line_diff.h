// Two texts, line by line.
#pragma once

#include <string>
#include <vector>

namespace wlanctl {

struct LineChange {
  bool added;  // else removed
  std::string line;
};

// The lines that make `after` of `before`, in their order, those that stay left out. Of very many lines that are not the
// same all are told, also those that stay in between.
std::vector<LineChange> changed_lines(const std::vector<std::string>& before, const std::vector<std::string>& after);

}  // namespace wlanctl
