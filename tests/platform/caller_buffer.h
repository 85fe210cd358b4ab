// A caller's buffer, filled with 'Z' to show what was written.
#pragma once

#include <cstring>
#include <string>

namespace board {

struct Buffer {
  static constexpr size_t kSize = 100;

  Buffer() { std::memset(bytes, 'Z', sizeof bytes); }
  std::string all() const { return std::string(bytes, sizeof bytes); }
  bool is_untouched() const { return all() == with(""); }

  // The whole buffer with `front` at its start.
  static std::string with(const std::string& front) { return front + std::string(kSize - front.size(), 'Z'); }

  char bytes[kSize];
};

// What a read of `size` bytes leaves: the text without an end of its own, and a NUL in the last byte.
inline std::string read_into(size_t size, const std::string& text) {
  std::string bytes = text.substr(0, size);
  bytes.resize(size, 'Z');
  if (size > 0) bytes[size - 1] = '\0';
  return Buffer::with(bytes);
}

}  // namespace board
