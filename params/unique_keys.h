// A compile-time check that no two rows of a table are for one key.
#pragma once

#include <cstddef>
#include <string_view>

namespace params {

template <size_t kRows>
constexpr bool are_unique(const char* const (&keys)[kRows]) {
  for (size_t i = 0; i < kRows; ++i) {
    for (size_t j = i + 1; j < kRows; ++j) {
      if (std::string_view(keys[i]) == std::string_view(keys[j])) return false;
    }
  }
  return true;
}

}  // namespace params
