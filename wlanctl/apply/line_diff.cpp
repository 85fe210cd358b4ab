#include "wlanctl/apply/line_diff.h"

#include <algorithm>

namespace wlanctl {

// The longest common subsequence, by the table: dat files have some hundred lines.
std::vector<LineChange> changed_lines(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  const size_t columns = after.size() + 1;
  std::vector<size_t> common((before.size() + 1) * columns);
  for (size_t i = before.size(); i-- > 0;) {
    for (size_t j = after.size(); j-- > 0;) {
      common[i * columns + j] = before[i] == after[j]
                                    ? common[(i + 1) * columns + j + 1] + 1
                                    : std::max(common[(i + 1) * columns + j], common[i * columns + j + 1]);
    }
  }
  std::vector<LineChange> changes;
  size_t i = 0;
  size_t j = 0;
  while (i < before.size() || j < after.size()) {
    if (i < before.size() && j < after.size() && before[i] == after[j]) {
      ++i;
      ++j;
    } else if (j == after.size() ||
               (i < before.size() && common[(i + 1) * columns + j] >= common[i * columns + j + 1])) {
      changes.push_back({false, before[i++]});
    } else {
      changes.push_back({true, after[j++]});
    }
  }
  return changes;
}

}  // namespace wlanctl
