#include "wlanctl/base/terminal.h"

#include <algorithm>

#include "wlanctl/base/colour.h"
#include "wlanctl/base/text.h"
#include "wlanctl/base/utf8.h"

namespace wlanctl {
namespace {

// The length of the character at `at`; 0 when there is none that a terminal can show.
size_t length_shown(const std::string& text, size_t at) {
  return length_of_control(text, at) > 0 ? 0 : length_of_character(text, at);
}

bool begins_character(char byte) {
  return (static_cast<unsigned char>(byte) & 0xc0U) != 0x80;
}

size_t columns_of(const std::string& text) {
  return static_cast<size_t>(std::count_if(text.begin(), text.end(), begins_character));
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
    const size_t length = length_shown(text, at);
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

std::string text_lines(const std::string& text, size_t indentation) {
  const std::string further = '\n' + std::string(indentation, ' ');
  std::string lines;
  size_t begin = 0;
  size_t blank = 0;  // the last one behind `begin`
  size_t columns = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] == ' ' && columns > 0) blank = at;
    const size_t paint = length_of_paint(text, at);
    if (paint > 0) {
      at += paint - 1;
      continue;
    }
    if (begins_character(text[at])) ++columns;
    if (columns + (begin == 0 ? 0 : indentation) <= kColumns || blank <= begin) continue;
    lines += text.substr(begin, blank - begin) + further;
    begin = blank + 1;
    at = blank;
    columns = 0;
  }
  return lines + text.substr(begin) + '\n';
}

std::string message_lines(const std::string& text) {
  return text_lines(text, sizeof "wlanctl: " - 1);
}

std::string change_lines(const std::string& name, const std::string& after, const std::string& before) {
  constexpr size_t kIndentation = 2;
  const std::string was = "(was " + before + ")";
  const std::string line = name + " = " + after;
  const std::string further = '\n' + std::string(kIndentation, ' ');
  if (columns_of(line) + 2 + columns_of(was) <= kColumns) return line + "  " + was + '\n';
  return (columns_of(line) <= kColumns ? line : name + " =" + further + after) + further + was + '\n';
}

std::vector<std::string> list_lines(const std::string& list, size_t width) {
  std::vector<std::string> lines(1);
  for (size_t at = 0; at < list.size();) {
    const size_t semicolon = list.find(';', at);
    const size_t end = semicolon == std::string::npos ? list.size() : semicolon + 1;
    if (!lines.back().empty() && columns_of(lines.back()) + columns_of(list.substr(at, end - at)) > width) {
      lines.emplace_back();
    }
    lines.back() += list.substr(at, end - at);
    at = end;
  }
  return lines;
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
