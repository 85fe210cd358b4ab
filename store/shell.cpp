#include "store/shell.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace store {

int run_shell(const char* format, ...) {
  char line[kCommandSize];
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(line, sizeof line, format, arguments);
  va_end(arguments);
  if (length < 0 || length >= kCommandSize) std::abort();
  return run_line(line);
}

int run_line(const char* line) {
  return std::system(line);
}

}  // namespace store
