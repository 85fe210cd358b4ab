#include "wlanctl/files/record_text.h"

#include <cctype>
#include <cstdio>
#include <cstring>

#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

// Stands before every word, so that an empty one is one too.
constexpr char kWord = ':';

std::string escaped(const char* text, size_t most) {
  std::string word(1, kWord);
  for (size_t i = 0; i < strnlen(text, most); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte > ' ' && byte < 0x7f && byte != '%') {
      word += text[i];
      continue;
    }
    char code[4];
    std::snprintf(code, sizeof code, "%%%02x", byte);
    word += code;
  }
  return word;
}

// The whole of a store's field may be filled, without a NUL at its end.
bool unescape(const std::string& word, char* field, size_t size) {
  if (word.empty() || word[0] != kWord) return false;
  size_t length = 0;
  for (size_t i = 1; i < word.size(); ++i) {
    if (length == size) return false;
    if (word[i] != '%') {
      field[length++] = word[i];
      continue;
    }
    if (i + 2 >= word.size() || std::isxdigit(static_cast<unsigned char>(word[i + 1])) == 0 ||
        std::isxdigit(static_cast<unsigned char>(word[i + 2])) == 0) {
      return false;
    }
    field[length++] = static_cast<char>(std::stoi(word.substr(i + 1, 2), nullptr, 16));
    i += 2;
  }
  return true;
}

bool parse_record(const std::string& line, wifimgr_attr_record* record) {
  const std::vector<std::string> words = words_of(line);
  if (words.size() != 1 + WIFIMGR_FIELDS || !unescape(words[0], record->key, sizeof record->key)) return false;
  for (size_t i = 0; i < WIFIMGR_FIELDS; ++i) {
    if (!unescape(words[i + 1], record->field[i], WIFIMGR_FIELD_SIZE)) return false;
  }
  return true;
}

}  // namespace

std::string text_of_records(const std::vector<wifimgr_attr_record>& records) {
  std::string text;
  for (const wifimgr_attr_record& record : records) {
    text += escaped(record.key, sizeof record.key);
    for (const auto& field : record.field) text += ' ' + escaped(field, sizeof field);
    text += '\n';
  }
  return text;
}

std::optional<std::vector<wifimgr_attr_record>> parse_records(const std::string& text) {
  std::vector<wifimgr_attr_record> records;
  const std::vector<std::string> lines = lines_of(text);
  records.reserve(lines.size());
  for (const std::string& line : lines) {
    wifimgr_attr_record record = {};
    if (!parse_record(line, &record)) return std::nullopt;
    records.push_back(record);
  }
  return records;
}

}  // namespace wlanctl
