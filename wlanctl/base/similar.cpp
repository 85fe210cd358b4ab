#include "wlanctl/base/similar.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>
#include <vector>

namespace wlanctl {
namespace {

constexpr size_t kMost = 2;

// How many characters must be added, left out or changed to make one of the other; capitals do not matter. More than
// kMost are not counted.
size_t typos_between(const std::string& left, const std::string& right) {
  std::vector<size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 1; i <= left.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= right.size(); ++j) {
      const bool same = std::tolower(static_cast<unsigned char>(left[i - 1])) ==
                        std::tolower(static_cast<unsigned char>(right[j - 1]));
      const size_t changed = diagonal + (same ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
    }
    if (*std::min_element(row.begin(), row.end()) > kMost) return kMost + 1;
  }
  return row[right.size()];
}

}  // namespace

bool is_mistyped(const std::string& word, const std::string& text) {
  if (text.size() <= kMost || text.size() > word.size() + kMost || word.size() > text.size() + kMost) return false;
  return typos_between(word, text) <= kMost;
}

std::string nearest(const std::vector<std::string>& words, const std::string& text) {
  // Letters that were swapped leave the length alone.
  const auto distance = [&](const std::string& word) {
    return std::pair(typos_between(word, text),
                     std::max(word.size(), text.size()) - std::min(word.size(), text.size()));
  };
  std::string found;
  for (const std::string& word : words) {
    if (is_mistyped(word, text) && (found.empty() || distance(word) < distance(found))) found = word;
  }
  return found;
}

}  // namespace wlanctl
