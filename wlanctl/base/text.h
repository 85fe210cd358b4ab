// Texts made of pieces, and taken apart again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace wlanctl {

// A text that grows.
class Text {
 public:
  Text& operator<<(const std::string& piece);
  Text& operator<<(const char* piece);
  Text& operator<<(char piece);
  Text& operator<<(int number);
  Text& operator<<(unsigned number);
  Text& operator<<(long number);
  Text& operator<<(unsigned long number);

  const std::string& str() const { return text_; }
  void clear() { text_.clear(); }

 private:
  std::string text_;
};

std::string joined(const std::vector<std::string>& pieces, const std::string& between);

// The pieces between the separators, empty ones too; none of an empty text, nor behind a separator that ends it.
std::vector<std::string> split_at(const std::string& text, char separator);
std::vector<std::string> lines_of(const std::string& text);

// What stands between blanks and line ends.
std::vector<std::string> words_of(const std::string& text);

std::string without_line_end(const std::string& text);  // what stands before the first "\r" or "\n"

// ": reason", or nothing where none was given.
std::string because(const std::string& reason);

// A decimal number and nothing else.
std::optional<int64_t> number_in(const std::string& text);

// "1 value", "2 values".
std::string count_of(size_t count, const std::string& what);

}  // namespace wlanctl
