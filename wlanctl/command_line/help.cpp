#include "wlanctl/command_line/help.h"

#include "wlanctl/base/terminal.h"
#include "wlanctl/base/text.h"

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
  return line.substr(0, begin) +
         joined(wrapped(line.substr(begin), kColumns - indentation), '\n' + std::string(indentation, ' '));
}

}  // namespace

std::string wrapped_help(const std::string& help) {
  std::string text;
  for (const std::string& line : lines_of(help)) text += (line.size() > kColumns ? wrapped_line(line) : line) + '\n';
  return text;
}

}  // namespace wlanctl
