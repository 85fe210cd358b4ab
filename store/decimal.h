// Decimal numbers in value texts.
#pragma once

#include <cstdlib>

namespace store {

// The leading number of a text as an int, 0 where there is none: what atoi gives, but defined for numbers of any
// length.
inline int decimal(const char* text) {
  return static_cast<int>(std::strtoll(text, nullptr, 10));
}

// The same before it is narrowed, for range checks: a number that an int cannot hold stays out of every range.
inline long long wide_decimal(const char* text) {
  return std::strtoll(text, nullptr, 10);
}

}  // namespace store
