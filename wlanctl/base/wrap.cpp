#include "wlanctl/base/wrap.h"

#include <sstream>

namespace wlanctl {
namespace {

// Where the parser's help puts the descriptions.
constexpr size_t kDescription = 30;

bool has_description(const std::string& line) {
  return line.size() > kDescription && line.compare(0, 2, "  ") == 0 && line[kDescription - 1] == ' ' &&
         line[kDescription] != ' ';
}

std::string wrapped_line(const std::string& line) {
  const size_t begin = has_description(line) ? kDescription : 0;
  const size_t indentation = begin == 0 ? line.find_first_not_of(' ') + 4 : begin;
  std::string text = line.substr(0, begin);
  bool is_first = true;
  for (const std::string& part : wrapped(line.substr(begin), kColumns - indentation)) {
    if (!is_first) text += '\n' + std::string(indentation, ' ');
    text += part;
    is_first = false;
  }
  return text;
}

}  // namespace

std::vector<std::string> wrapped(const std::string& text, size_t width) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string word; stream >> word;) {
    if (lines.empty() || lines.back().size() + 1 + word.size() > width) {
      lines.push_back(word);
    } else {
      lines.back() += ' ' + word;
    }
  }
  return lines;
}

std::string wrapped_help(const std::string& help) {
  std::string text;
  std::istringstream stream(help);
  for (std::string line; std::getline(stream, line);)
    text += (line.size() > kColumns ? wrapped_line(line) : line) + '\n';
  return text;
}

}  // namespace wlanctl
