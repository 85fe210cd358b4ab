#include "wlanctl/base/terminal.h"

#include <algorithm>

#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

// The length of the UTF-8 character at `at`; 0 when there is none that a terminal can show. The second block of control
// characters comes as two bytes, and acts on some terminals as the first does.
size_t length_of_character(const std::string& text, size_t at) {
  const auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned lead = byte(at);
  if (lead < 0x80) return lead >= ' ' && lead != 0x7f ? 1 : 0;
  if (lead < 0xc2 || lead > 0xf4 || (lead == 0xc2 && byte(at + 1) < 0xa0)) return 0;
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
    for (size_t i = 0; i + 1 < row.size(); ++i) widths[i] = std::max(widths[i], row[i].size());
  }
  std::string text;
  for (const auto& row : rows) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
      line += row[i];
      if (i + 1 < row.size()) line.append(widths[i] - row[i].size() + 2, ' ');
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
  }
  return text;
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
