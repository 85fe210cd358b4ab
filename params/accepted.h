// What a setter accepts: plain data, so that it can stand in a row, and small enough to be passed in two registers, so
// that hundreds of rows are code without relocations.
#pragma once

#include <cstdint>

namespace params {

struct Accepted {
  enum class Kind : uint8_t { kAnyText, kDigits, kNumber, kAtMostCharacters, kPassing };

  int32_t highest;
  int16_t lowest;
  Kind kind;
  int (*check)(const char* value);  // non-zero for valid
};
static_assert(sizeof(Accepted) <= 16);

inline constexpr int32_t kNoUpperLimit = INT32_MAX;

constexpr Accepted any_text() {
  return {0, 0, Accepted::Kind::kAnyText, nullptr};
}

// Digits only, however many; the empty text passes.
constexpr Accepted digits() {
  return {0, 0, Accepted::Kind::kDigits, nullptr};
}

// Digits only and a number within both bounds; the empty text counts as 0.
constexpr Accepted number(int16_t lowest, int32_t highest) {
  return {highest, lowest, Accepted::Kind::kNumber, nullptr};
}

constexpr Accepted at_most_characters(int32_t count) {
  return {count, 0, Accepted::Kind::kAtMostCharacters, nullptr};
}

constexpr Accepted passing(int (*check)(const char* value)) {
  return {0, 0, Accepted::Kind::kPassing, check};
}

bool accepts(Accepted accepted, const char* value);

}  // namespace params
