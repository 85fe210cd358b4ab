#include "params/accepted.h"

#include <cstring>

#include "store/decimal.h"
#include "wifimgr_lib.h"

namespace params {
namespace {

bool is_within(Accepted accepted, const char* value) {
  const long long number = store::wide_decimal(value);
  return number >= accepted.lowest && number <= accepted.highest;
}

bool is_one_of(const char* words, const char* value) {
  const size_t length = std::strlen(value);
  for (;;) {
    const size_t word = std::strcspn(words, " ");
    if (word == length && std::strncmp(words, value, word) == 0) return true;
    if (words[word] == '\0') return false;
    words += word + 1;
  }
}

bool is_passphrase(const char* value) {
  const size_t length = std::strlen(value);
  if (length >= 8 && length <= 63) return true;
  return length == 64 && doStrHexCheck(value) != 0;
}

}  // namespace

bool accepts(Accepted accepted, const char* value) {
  switch (accepted.kind) {
    case Accepted::Kind::kAnyText:
      return true;
    case Accepted::Kind::kDigits:
      return doStrDecCheck(value) != 0;
    case Accepted::Kind::kNumber:
      return doStrDecCheck(value) != 0 && is_within(accepted, value);
    case Accepted::Kind::kTenDigits:
      return doStrDecCheck(value) != 0 && std::strlen(value) <= 10 && is_within(accepted, value);
    case Accepted::Kind::kOneDigit:
      return std::strlen(value) == 1 && doStrDecCheck(value) != 0 && is_within(accepted, value);
    case Accepted::Kind::kLeadingNumber:
      return is_within(accepted, value);
    case Accepted::Kind::kAtMostCharacters:
      return std::strlen(value) <= static_cast<size_t>(accepted.highest);
    case Accepted::Kind::kWords:
      return is_one_of(accepted.words, value);
    case Accepted::Kind::kAddress:
      return IPV4check(value) != 0;
    case Accepted::Kind::kPassphrase:
      return is_passphrase(value);
    case Accepted::Kind::kNothing:
      return MacCheck(value) != 0;
  }
  return false;
}

}  // namespace params
