#include "store/key_family.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace store {
namespace {

// A name, cut to its width; its length is known while compiling.
struct Prefix {
  template <size_t kSize>
  constexpr Prefix(const char (&name)[kSize]) : text(), length(kSize - 1) {
    for (size_t i = 0; i < kSize; ++i) text[i] = name[i];
  }

  char text[19];
  uint8_t length;
};

constexpr Prefix kWholeValue[] = {"APAifsn",   "APCwmin",  "APCwmax",       "APTxop",    "APACM",
                                  "BSSAifsn",  "BSSCwmin", "BSSCwmax",      "BSSTxop",   "BSSACM",
                                  "AckPolicy", "WdsList",  "WdsEncrypType", "WdsPhyMode"};

constexpr Prefix kNumberedFromOne[] = {"SSID",    "RADIUS_Key", "WscDefaultSSID", "WPAPSK",     "Key1Str",
                                       "Key2Str", "Key3Str",    "Key4Str",        "WSC_UUID_E", "WSC_UUID_Str"};

constexpr Prefix kNumberedFromZero[] = {"AccessPolicy", "AccessControlList"};

constexpr uint32_t bit_of(char letter) {
  return 1U << (static_cast<unsigned char>(letter) & 31U);
}

// One bit for each first letter in the table: most keys begin with none of them.
template <size_t kRows>
constexpr uint32_t first_letters(const Prefix (&prefixes)[kRows]) {
  uint32_t letters = 0;
  for (const Prefix& prefix : prefixes) letters |= bit_of(prefix.text[0]);
  return letters;
}

const Prefix* find(const char* key, const Prefix* prefix, size_t rows) {
  for (const Prefix* const end = prefix + rows; prefix != end; ++prefix) {
    if (key[0] == prefix->text[0] && std::strncmp(key, prefix->text, prefix->length) == 0) return prefix;
  }
  return nullptr;
}

template <const auto& kPrefixes>
const char* prefix_of(const char* key) {
  constexpr uint32_t kLetters = first_letters(kPrefixes);
  if ((kLetters & bit_of(key[0])) == 0) return nullptr;
  const Prefix* const found = find(key, kPrefixes, std::size(kPrefixes));
  return found != nullptr ? found->text : nullptr;
}

}  // namespace

bool is_whole_value_key(const char* key) {
  return prefix_of<kWholeValue>(key) != nullptr;
}

const char* family_numbered_from_one(const char* key) {
  return prefix_of<kNumberedFromOne>(key);
}

const char* family_numbered_from_zero(const char* key) {
  return prefix_of<kNumberedFromZero>(key);
}

bool is_single_value_key(const char* key) {
  return family_numbered_from_one(key) != nullptr || family_numbered_from_zero(key) != nullptr;
}

}  // namespace store
