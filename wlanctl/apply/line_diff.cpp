#include "wlanctl/apply/line_diff.h"

#include <algorithm>
#include <span>

namespace wlanctl {
namespace {

using Lines = std::span<const std::string>;

// What the table may have: dat files have some hundred lines, and one of thousands that are all others is told whole.
constexpr size_t kMostCells = size_t{4} << 20;

// The longest common subsequence, by the table.
void add_changes(Lines before, Lines after, std::vector<LineChange>* changes) {
  const size_t columns = after.size() + 1;
  std::vector<size_t> common((before.size() + 1) * columns);
  for (size_t i = before.size(); i-- > 0;) {
    for (size_t j = after.size(); j-- > 0;) {
      common[i * columns + j] = before[i] == after[j]
                                    ? common[(i + 1) * columns + j + 1] + 1
                                    : std::max(common[(i + 1) * columns + j], common[i * columns + j + 1]);
    }
  }
  size_t i = 0;
  size_t j = 0;
  while (i < before.size() || j < after.size()) {
    if (i < before.size() && j < after.size() && before[i] == after[j]) {
      ++i;
      ++j;
    } else if (j == after.size() ||
               (i < before.size() && common[(i + 1) * columns + j] >= common[i * columns + j + 1])) {
      changes->push_back({false, before[i++]});
    } else {
      changes->push_back({true, after[j++]});
    }
  }
}

}  // namespace

std::vector<LineChange> changed_lines(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  const auto [left, right] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  Lines rest_before(left, before.end());
  Lines rest_after(right, after.end());
  while (!rest_before.empty() && !rest_after.empty() && rest_before.back() == rest_after.back()) {
    rest_before = rest_before.first(rest_before.size() - 1);
    rest_after = rest_after.first(rest_after.size() - 1);
  }
  std::vector<LineChange> changes;
  if (rest_before.size() < kMostCells / (rest_after.size() + 1)) {
    add_changes(rest_before, rest_after, &changes);
    return changes;
  }
  for (const std::string& line : rest_before) changes.push_back({false, line});
  for (const std::string& line : rest_after) changes.push_back({true, line});
  return changes;
}

}  // namespace wlanctl
