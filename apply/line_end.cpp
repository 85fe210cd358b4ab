#include "apply/line_end.h"

#include <cstring>

namespace apply {
namespace {

bool is_line_end(char c) {
  return c == '\n' || c == '\r';
}

}  // namespace

void strip_line_end(char* text) {
  const size_t length = std::strlen(text);
  if (length >= 2 && is_line_end(text[length - 2])) {
    text[length - 2] = '\0';
  } else if (length >= 1 && is_line_end(text[length - 1])) {
    text[length - 1] = '\0';
  }
}

}  // namespace apply
