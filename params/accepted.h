// What a setter accepts: plain data, so that it can stand in a row, and small enough to be passed in two registers, so
// that hundreds of rows are code without relocations.
#pragma once

#include <cstdint>

namespace params {

struct Accepted {
  enum class Kind : uint8_t {
    kAnyText,
    kDigits,
    kNumber,
    kTenDigits,
    kOneDigit,
    kLeadingNumber,
    kAtMostCharacters,
    kWords,
    kAddress,
    kPassphrase,
    kNothing,
  };

  int32_t highest;
  int16_t lowest;
  Kind kind;
  const char* words;  // kWords: separated by single blanks
};
static_assert(sizeof(Accepted) <= 16);

// Digits only and a number within both bounds; the empty text counts as 0.
constexpr Accepted number(int16_t lowest, int32_t highest) {
  return {highest, lowest, Accepted::Kind::kNumber, nullptr};
}

// What the rows of the settings' table accept, by its words; what a function by itself judges is none of these.

constexpr Accepted ACCEPTS_TEXT(int16_t, int32_t, const char*) {
  return {0, 0, Accepted::Kind::kAnyText, nullptr};
}

// Digits only, however many; the empty text passes.
constexpr Accepted ACCEPTS_DIGITS(int16_t, int32_t, const char*) {
  return {0, 0, Accepted::Kind::kDigits, nullptr};
}

constexpr Accepted ACCEPTS_NUMBER(int16_t lowest, int32_t highest, const char*) {
  return number(lowest, highest);
}

// The length is bounded too, so that no number overflows on the way.
constexpr Accepted ACCEPTS_TEN_DIGITS(int16_t lowest, int32_t highest, const char*) {
  return {highest, lowest, Accepted::Kind::kTenDigits, nullptr};
}

constexpr Accepted ACCEPTS_ONE_DIGIT(int16_t lowest, int32_t highest, const char*) {
  return {highest, lowest, Accepted::Kind::kOneDigit, nullptr};
}

// Only the number that the text begins with counts, so "x" is 0 and is stored; the weaker check is deliberate.
constexpr Accepted ACCEPTS_LEADING_NUMBER(int16_t lowest, int32_t highest, const char*) {
  return {highest, lowest, Accepted::Kind::kLeadingNumber, nullptr};
}

constexpr Accepted ACCEPTS_LENGTH(int16_t, int32_t most, const char*) {
  return {most, 0, Accepted::Kind::kAtMostCharacters, nullptr};
}

constexpr Accepted ACCEPTS_WORDS(int16_t, int32_t, const char* words) {
  return {0, 0, Accepted::Kind::kWords, words};
}

// 8 to 63 characters, or a raw key of 64 hexadecimal digits.
constexpr Accepted ACCEPTS_PASSPHRASE(int16_t, int32_t, const char*) {
  return {0, 0, Accepted::Kind::kPassphrase, nullptr};
}

constexpr Accepted ACCEPTS_ADDRESS(int16_t, int32_t, const char*) {
  return {0, 0, Accepted::Kind::kAddress, nullptr};
}

// A MAC address that MacCheck accepts: none.
constexpr Accepted ACCEPTS_NOTHING(int16_t, int32_t, const char*) {
  return {0, 0, Accepted::Kind::kNothing, nullptr};
}

bool accepts(Accepted accepted, const char* value);

}  // namespace params
