#include "wlanctl/base/utf8.h"

namespace wlanctl {
namespace {

// What may not follow a lead byte: a text longer than its character needs, half of a pair of another encoding, and what
// is beyond the last character.
bool is_no_second(unsigned lead, unsigned second) {
  switch (lead) {
    case 0xe0:
      return second < 0xa0;
    case 0xed:
      return second > 0x9f;
    case 0xf0:
      return second < 0x90;
    case 0xf4:
      return second > 0x8f;
    default:
      return false;
  }
}

}  // namespace

size_t length_of_character(const std::string& text, size_t at) {
  const auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned lead = byte(at);
  if (lead < 0x80) return 1;
  if (lead < 0xc2 || lead > 0xf4 || is_no_second(lead, byte(at + 1))) return 0;
  const size_t length = lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
  for (size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xc0U) != 0x80) return 0;
  }
  return length;
}

bool is_utf8(const std::string& text) {
  for (size_t at = 0; at < text.size();) {
    const size_t length = length_of_character(text, at);
    if (length == 0) return false;
    at += length;
  }
  return true;
}

}  // namespace wlanctl
