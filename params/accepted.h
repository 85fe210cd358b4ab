// What a setter accepts: plain data, so that it can stand in a row, and small enough to be passed in one register, so
// that hundreds of rows are code without relocations.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "store/trace.h"

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
};
static_assert(sizeof(Accepted) <= 8);

// One of these words, which single blanks separate. Apart from the others, so that their rows need no word for it.
struct AcceptedWords {
  const char* words;
};

// Digits only and a number within both bounds; the empty text counts as 0.
constexpr Accepted number(int16_t lowest, int32_t highest) {
  return {highest, lowest, Accepted::Kind::kNumber};
}

// A kind that no number goes with.
constexpr Accepted alone(Accepted::Kind kind) {
  return {0, 0, kind};
}

// What the rows of the settings' table accept, by its words; what a function by itself judges is none of these.

constexpr Accepted ACCEPTS_TEXT(int16_t, int32_t, const char*) {
  return alone(Accepted::Kind::kAnyText);
}

// Digits only, however many; the empty text passes.
constexpr Accepted ACCEPTS_DIGITS(int16_t, int32_t, const char*) {
  return alone(Accepted::Kind::kDigits);
}

constexpr Accepted ACCEPTS_NUMBER(int16_t lowest, int32_t highest, const char*) {
  return number(lowest, highest);
}

// The length is bounded too, so that no number overflows on the way.
constexpr Accepted ACCEPTS_TEN_DIGITS(int16_t lowest, int32_t highest, const char*) {
  return {highest, lowest, Accepted::Kind::kTenDigits};
}

constexpr Accepted ACCEPTS_ONE_DIGIT(int16_t lowest, int32_t highest, const char*) {
  return {highest, lowest, Accepted::Kind::kOneDigit};
}

// Only the number that the text begins with counts, so "x" is 0 and is stored; the weaker check is deliberate.
constexpr Accepted ACCEPTS_LEADING_NUMBER(int16_t lowest, int32_t highest, const char*) {
  return {highest, lowest, Accepted::Kind::kLeadingNumber};
}

constexpr Accepted ACCEPTS_LENGTH(int16_t, int32_t most, const char*) {
  return {most, 0, Accepted::Kind::kAtMostCharacters};
}

constexpr AcceptedWords ACCEPTS_WORDS(int16_t, int32_t, const char* words) {
  return {words};
}

// 8 to 63 characters, or a raw key of 64 hexadecimal digits.
constexpr Accepted ACCEPTS_PASSPHRASE(int16_t, int32_t, const char*) {
  return alone(Accepted::Kind::kPassphrase);
}

constexpr Accepted ACCEPTS_ADDRESS(int16_t, int32_t, const char*) {
  return alone(Accepted::Kind::kAddress);
}

// A MAC address that MacCheck accepts: none.
constexpr Accepted ACCEPTS_NOTHING(int16_t, int32_t, const char*) {
  return alone(Accepted::Kind::kNothing);
}

// `words` are those of the kind kWords.
bool accepts(Accepted accepted, const char* value, const char* words = nullptr);

// Most refusals name their key and end in one of these words, which the library then keeps once. Such a refusal is
// passed as its ending, which the blank tells from a whole one.
inline constexpr char kIsInvalid[] = " value is invalid.";
inline constexpr char kShouldBe0Or1[] = " value should be 0 or 1.";
inline constexpr char kShouldBe0To1[] = " value should be between 0 to 1.";
inline constexpr char kShouldBeNumber[] = " value should be number.";

constexpr bool is_ending(const char* refusal) {
  return refusal[0] == ' ';
}

// `refusal` as a row passes it on: its ending, when it is made that way.
constexpr const char* refusal_of(std::string_view key, const char* refusal) {
  const std::string_view text = refusal;
  key = key.substr(0, key.find('%'));
  if (text.starts_with("The ") && text.substr(4).starts_with(key)) {
    for (const char* const ending : {kIsInvalid, kShouldBe0Or1, kShouldBe0To1, kShouldBeNumber}) {
      if (text.substr(4 + key.size()) == ending) return ending;
    }
  }
  return refusal;
}

// The refusal of a value of `key`, or of the key format of an SSID; traced as `function`. A whole one may print the
// refused number with "%d".
trace::Result refuse(const char* function, const char* key, const char* refusal, const char* value);

}  // namespace params
