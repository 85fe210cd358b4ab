#include "wlanctl/files/record_text.h"

#include <algorithm>
#include <cstring>

#include "wlanctl/base/text.h"
#include "wlanctl/files/word_text.h"

namespace wlanctl {
namespace {

std::string escaped(const char* text, size_t most) {
  return word_of(std::string(text, strnlen(text, most)));
}

// The whole of a store's field may be filled, without a NUL at its end.
bool unescape(const std::string& word, char* field, size_t size) {
  const std::optional<std::string> text = text_of_word(word);
  if (!text || text->size() > size) return false;
  std::copy(text->begin(), text->end(), field);
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
