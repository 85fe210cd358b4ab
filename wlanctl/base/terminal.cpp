#include "wlanctl/base/terminal.h"

#include <algorithm>

#include "wlanctl/base/colour.h"
#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

// What may not follow a lead byte: a control character, a text longer than its character needs, by which a control
// character may be written too, half of a pair of another encoding, and what is beyond the last character.
bool is_no_second(unsigned lead, unsigned second) {
  switch (lead) {
    case 0xc2:
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

// The length of the UTF-8 character at `at`; 0 when there is none that a terminal can show. The second block of control
// characters comes as two bytes, and acts on some terminals as the first does.
size_t length_of_character(const std::string& text, size_t at) {
  const auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned lead = byte(at);
  if (lead < 0x80) return lead >= ' ' && lead != 0x7f ? 1 : 0;
  if (lead < 0xc2 || lead > 0xf4 || is_no_second(lead, byte(at + 1))) return 0;
  const size_t length = lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
  for (size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xc0U) != 0x80) return 0;
  }
  return length;
}

std::vector<std::string> filled(const std::vector<std::string>& pieces, const std::string& gap, size_t width) {
  std::vector<std::string> lines;
  for (const std::string& piece : pieces) {
    if (lines.empty() || lines.back().size() + gap.size() + piece.size() > width) {
      lines.push_back(piece);
    } else {
      lines.back() += gap + piece;
    }
  }
  return lines;
}

}  // namespace

std::string printable(const std::string& text) {
  std::string shown;
  for (size_t at = 0; at < text.size();) {
    const size_t length = length_of_character(text, at);
    shown += length == 0 ? std::string("?") : text.substr(at, length);
    at += std::max(length, size_t{1});
  }
  return shown;
}

std::string on_one_line(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

std::string table(const Rows& rows) {
  std::vector<size_t> widths;
  for (const auto& row : rows) {
    if (widths.size() < row.size()) widths.resize(row.size());
    for (size_t i = 0; i + 1 < row.size(); ++i) widths[i] = std::max(widths[i], width_of(row[i]));
  }
  std::string text;
  for (const auto& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - width_of(row[i]) + 2, ' ');
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
  }
  return text;
}

std::string message_lines(const std::string& text) {
  constexpr size_t kIndentation = sizeof "wlanctl: " - 1;
  const std::string further = '\n' + std::string(kIndentation, ' ');
  std::string lines;
  size_t begin = 0;
  size_t blank = 0;  // the last one behind `begin`
  size_t columns = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] == ' ' && columns > 0) blank = at;
    if ((static_cast<unsigned char>(text[at]) & 0xc0U) != 0x80) ++columns;
    if (columns + (begin == 0 ? 0 : kIndentation) <= kColumns || blank <= begin) continue;
    lines += text.substr(begin, blank - begin) + further;
    begin = blank + 1;
    at = blank;
    columns = 0;
  }
  return lines + text.substr(begin) + '\n';
}

std::vector<std::string> wrapped(const std::string& text, size_t width) {
  return filled(words_of(text), " ", width);
}

std::string wrapped_below(const std::string& head, const std::vector<std::string>& pieces) {
  const std::string gap = "  ";
  const std::string further = '\n' + std::string(head.size(), ' ') + gap;
  const std::vector<std::string> lines = filled(pieces, gap, kColumns - head.size() - gap.size());
  return head + (lines.empty() ? "" : gap) + joined(lines, further) + '\n';
}

}  // namespace wlanctl
