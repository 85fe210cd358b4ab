// What a setter accepts: plain data, so that it can stand in a row.
#pragma once

#include <cstdint>

namespace params {

struct Accepted {
  enum class Kind : uint8_t { kAnyText, kDigits, kNumber, kAtMostCharacters, kPassing };

  Kind kind;
  int32_t lowest;
  int32_t highest;
  int (*check)(const char* value);  // non-zero for valid
};

inline constexpr int32_t kNoUpperLimit = INT32_MAX;

constexpr Accepted any_text() {
  return {Accepted::Kind::kAnyText, 0, 0, nullptr};
}

// Digits only, however many; the empty text passes.
constexpr Accepted digits() {
  return {Accepted::Kind::kDigits, 0, 0, nullptr};
}

// Digits only and a number within both bounds; the empty text counts as 0.
constexpr Accepted number(int32_t lowest, int32_t highest) {
  return {Accepted::Kind::kNumber, lowest, highest, nullptr};
}

constexpr Accepted at_most_characters(int32_t count) {
  return {Accepted::Kind::kAtMostCharacters, 0, count, nullptr};
}

constexpr Accepted passing(int (*check)(const char* value)) {
  return {Accepted::Kind::kPassing, 0, 0, check};
}

bool accepts(const Accepted& accepted, const char* value);

}  // namespace params
