#include "wlanctl/base/colour.h"

#include <unistd.h>

#include <cstdlib>

namespace wlanctl {
namespace {

constexpr char kBegin[] = "\033[";
constexpr char kOff[] = "\033[0m";

bool g_on = false;

const char* on(Paint paint) {
  switch (paint) {
    case Paint::kRed:
      return "\033[31m";
    case Paint::kGreen:
      return "\033[32m";
    case Paint::kYellow:
      return "\033[33m";
  }
  return "";
}

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

void choose_colours(Colours colours) {
  const auto is_wanted = [] {
    return isatty(STDOUT_FILENO) != 0 && variable("NO_COLOR").empty() && variable("TERM") != "dumb" &&
           !variable("TERM").empty();
  };
  g_on = colours == Colours::kAlways || (colours == Colours::kAuto && is_wanted());
}

std::string painted(Paint paint, const std::string& text) {
  return g_on && !text.empty() ? on(paint) + text + kOff : text;
}

size_t length_of_paint(const std::string& text, size_t at) {
  if (text.compare(at, sizeof kBegin - 1, kBegin) != 0) return 0;
  const size_t end = text.find('m', at);
  return end == std::string::npos ? 0 : end + 1 - at;
}

size_t width_of(const std::string& text) {
  size_t width = text.size();
  for (size_t at = 0; (at = text.find(kBegin, at)) != std::string::npos;) {
    const size_t length = length_of_paint(text, at);
    if (length == 0) break;
    width -= length;
    at += length;
  }
  return width;
}

}  // namespace wlanctl
