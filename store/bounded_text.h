// Texts for a caller's buffer.
#pragma once

#include <cstdio>

namespace store {

// Writes `text`, cut to `size` bytes with its NUL; nothing for a null pointer or without room.
inline void write_text(char* out, int size, const char* text) {
  if (out != nullptr && size > 0) (void)std::snprintf(out, static_cast<size_t>(size), "%s", text);
}

}  // namespace store
