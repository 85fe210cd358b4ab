// A compile-time check that no two rows of a table are for one key.
#pragma once

#include <cstddef>
#include <string_view>

namespace params {

template <size_t kRows>
constexpr bool are_unique(const char* const (&keys)[kRows]) {
  // Measured once each: compilers bound what they evaluate.
  std::string_view texts[kRows];
  for (size_t i = 0; i < kRows; ++i) texts[i] = keys[i];
  for (size_t i = 0; i < kRows; ++i) {
    for (size_t j = i + 1; j < kRows; ++j) {
      if (texts[i].size() == texts[j].size() && texts[i] == texts[j]) return false;
    }
  }
  return true;
}

}  // namespace params
