#include "wlanctl/base/text.h"

#include <algorithm>
#include <charconv>

namespace wlanctl {

Text& Text::operator<<(const std::string& piece) {
  text_ += piece;
  return *this;
}

Text& Text::operator<<(const char* piece) {
  text_ += piece;
  return *this;
}

Text& Text::operator<<(char piece) {
  text_ += piece;
  return *this;
}

Text& Text::operator<<(int number) {
  return *this << std::to_string(number);
}

Text& Text::operator<<(unsigned number) {
  return *this << std::to_string(number);
}

Text& Text::operator<<(long number) {
  return *this << std::to_string(number);
}

Text& Text::operator<<(unsigned long number) {
  return *this << std::to_string(number);
}

std::string joined(const std::vector<std::string>& pieces, const std::string& between) {
  std::string text;
  for (size_t i = 0; i < pieces.size(); ++i) text += (i == 0 ? "" : between) + pieces[i];
  return text;
}

std::vector<std::string> split_at(const std::string& text, char separator) {
  std::vector<std::string> pieces;
  for (size_t at = 0; at < text.size();) {
    const size_t found = text.find(separator, at);
    const size_t end = found == std::string::npos ? text.size() : found;
    pieces.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return pieces;
}

std::vector<std::string> lines_of(const std::string& text) {
  return split_at(text, '\n');
}

std::vector<std::string> words_of(const std::string& text) {
  const auto is_blank = [](char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); };
  std::vector<std::string> words;
  for (auto at = std::find_if_not(text.begin(), text.end(), is_blank); at != text.end();) {
    const auto end = std::find_if(at, text.end(), is_blank);
    words.emplace_back(at, end);
    at = std::find_if_not(end, text.end(), is_blank);
  }
  return words;
}

std::string without_line_end(const std::string& text) {
  return text.substr(0, text.find_first_of("\r\n"));
}

std::string because(const std::string& reason) {
  return reason.empty() ? "" : ": " + reason;
}

std::optional<int64_t> number_in(const std::string& text) {
  int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [parsed, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || parsed != end) return std::nullopt;
  return number;
}

std::string count_of(size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace wlanctl
