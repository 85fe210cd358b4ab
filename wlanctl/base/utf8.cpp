#include "wlanctl/base/utf8.h"

#include <algorithm>
#include <iterator>

namespace wlanctl {
namespace {

struct Span {
  unsigned first;
  unsigned last;
};

constexpr Span kControls[] = {
    {0x00, 0x1f},      // the first block
    {0x7f, 0x9f},      // DEL and the second block
    {0x061c, 0x061c},  // ARABIC LETTER MARK
    {0x200e, 0x200f},  // LEFT-TO-RIGHT MARK, RIGHT-TO-LEFT MARK
    {0x2028, 0x2029},  // LINE SEPARATOR, PARAGRAPH SEPARATOR
    {0x202a, 0x202e},  // embeddings and overrides of the direction
    {0x2066, 0x2069},  // isolates of it
    {0xfeff, 0xfeff},  // ZERO WIDTH NO-BREAK SPACE
};

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

unsigned number_of_character(const std::string& text, size_t at, size_t length) {
  const auto byte = [&](size_t i) { return static_cast<unsigned>(static_cast<unsigned char>(text[i])); };
  // What is left of the lead byte behind the bits that tell the length.
  unsigned number = length == 1 ? byte(at) : byte(at) & (0xffU >> (length + 1));
  for (size_t i = 1; i < length; ++i) number = number << 6U | (byte(at + i) & 0x3fU);
  return number;
}

size_t length_of_control(const std::string& text, size_t at) {
  const size_t length = length_of_character(text, at);
  if (length == 0) return 0;
  const unsigned number = number_of_character(text, at, length);
  const auto has = [&](const Span& span) { return number >= span.first && number <= span.last; };
  return std::any_of(std::begin(kControls), std::end(kControls), has) ? length : 0;
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
