#include "wlanctl/library/messages.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace wlanctl {
namespace {

constexpr int kErrorLevel = 1;
constexpr char kFailExit[] = "===Fail Exit===";

std::string& reason() {
  static std::string text;
  return text;
}

}  // namespace

void clear_messages() {
  reason().clear();
}

std::string first_reason() {
  std::string text = reason();
  // What the value may be, the tool says itself.
  for (const char* const advice : {".Please ", ". Please "}) text.resize(std::min(text.find(advice), text.size()));
  while (text.ends_with('.')) text.pop_back();
  return text;
}

}  // namespace wlanctl

// The two functions that the library imports from the platform; those of the program come first.
extern "C" {

int get_itf_dbg_switch(int level, int /*module*/) {
  return level <= wlanctl::kErrorLevel ? 1 : 0;
}

int vexa_itf_printf(const char* format, ...) {
  char line[1024];
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(line, sizeof line, format, arguments);
  va_end(arguments);
  std::string text = line;
  const size_t exit = text.find(wlanctl::kFailExit);
  if (exit != std::string::npos) text = text.substr(exit + sizeof wlanctl::kFailExit - 1);
  while (!text.empty() && text.back() == '\n') text.pop_back();
  if (wlanctl::reason().empty()) wlanctl::reason() = text;
  return length;
}

}  // extern "C"
