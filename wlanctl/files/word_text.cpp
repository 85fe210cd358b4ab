#include "wlanctl/files/word_text.h"

#include "wlanctl/base/hex.h"

namespace wlanctl {
namespace {

// Stands before every word, so that an empty one is one too.
constexpr char kWord = ':';

}  // namespace

std::string word_of(const std::string& text) {
  std::string word(1, kWord);
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte > ' ' && byte < 0x7f && byte != '%') {
      word += c;
      continue;
    }
    word += '%' + hex_of(std::string(1, c));
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
    const std::string digits = word.substr(i + 1, 2);
    const std::optional<std::string> byte = bytes_of_hex(digits);
    if (!byte || byte->size() != 1) return std::nullopt;
    text += *byte;
    i += 2;
  }
  return text;
}

}  // namespace wlanctl
