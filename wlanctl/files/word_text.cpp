#include "wlanctl/files/word_text.h"

#include <cctype>
#include <cstdio>

namespace wlanctl {
namespace {

// Stands before every word, so that an empty one is one too.
constexpr char kWord = ':';

bool is_digit(char c) {
  return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

}  // namespace

std::string word_of(const std::string& text) {
  std::string word(1, kWord);
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte > ' ' && byte < 0x7f && byte != '%') {
      word += c;
      continue;
    }
    char code[4];
    std::snprintf(code, sizeof code, "%%%02x", byte);
    word += code;
  }
  return word;
}

std::optional<std::string> text_of_word(const std::string& word) {
  if (word.empty() || word[0] != kWord) return std::nullopt;
  std::string text;
  for (size_t i = 1; i < word.size(); ++i) {
    if (word[i] != '%') {
      text += word[i];
      continue;
    }
    if (i + 2 >= word.size() || !is_digit(word[i + 1]) || !is_digit(word[i + 2])) return std::nullopt;
    text += static_cast<char>(std::stoi(word.substr(i + 1, 2), nullptr, 16));
    i += 2;
  }
  return text;
}

}  // namespace wlanctl
