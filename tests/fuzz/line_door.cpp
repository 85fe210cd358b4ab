#include <cstring>
#include <memory>

#include "fuzz/library_stand.h"

namespace {

using Line = std::unique_ptr<char[]>;

// Of its own size, so that a byte read behind it is found.
Line copy_of(const std::string& text) {
  Line copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  return copy;
}

void parse(const std::string& text) {
  const Line line = copy_of(text);
  wifimgr_attr_record record = {};
  const wifimgr_attr_record untouched = {};
  const int result = parse_data_from_line(line.get(), &record);
  fuzz::require(text == line.get(), "a line stays as it is");
  if (result != 0) {
    fuzz::require(result == 1, "a line is parsed or refused");
    fuzz::require(std::memcmp(&record, &untouched, sizeof record) == 0, "what is no attribute touches nothing");
    return;
  }
  fuzz::require(memchr(record.key, '\0', sizeof record.key) != nullptr, "a key ends");
  fuzz::require(text.compare(0, std::strlen(record.key), record.key) == 0, "a key is the line's beginning");
  bool is_behind_the_last = false;
  for (const auto& field : record.field) {
    fuzz::require(memchr(field, '\0', sizeof field) != nullptr, "a field ends");
    fuzz::require(!is_behind_the_last || field[0] == '\0', "no field is left out");
    is_behind_the_last = field[0] == '\0';
    fuzz::require(text.find(field) != std::string::npos, "a field is part of the line");
  }
}

void split(const std::string& key, const std::string& text) {
  const Line value = copy_of(text);
  unsigned count = 0;
  char* fields[WIFIMGR_FIELDS] = {};
  fuzz::require(attr_value_parser(key.c_str(), value.get(), &count, fields) == 0, "a value is always split");
  fuzz::require(count >= 1 && count <= WIFIMGR_FIELDS, "there are one to eight fields");
  for (unsigned i = 0; i < count; ++i) {
    if (fields[i] == nullptr) continue;
    fuzz::require(fields[i] >= value.get() && fields[i] <= value.get() + text.size(), "a field lies in the value");
  }
}

void scan(const std::string& delimiters, const std::string& text) {
  const Line list = copy_of(text);
  size_t tokens = 0;
  for (char* token = rstrtok(list.get(), delimiters.c_str()); token != nullptr;
       token = rstrtok(nullptr, delimiters.c_str())) {
    fuzz::require(token >= list.get() && token <= list.get() + text.size(), "a token lies in the text");
    fuzz::require(++tokens <= text.size() + 1, "a scan ends");
  }
}

void judge(const std::string& text) {
  const Line copy = copy_of(text);
  const char* const s = copy.get();
  (void)doStrDecCheck(s);
  (void)doStrHexCheck(s);
  (void)check_is_num(s);
  (void)check_hex_valid(s);
  (void)checkV4(s);
  (void)charCnt(s, ';');
  (void)IPV4check(s);
  fuzz::require(MacCheck(s) == 0, "no text is a MAC address");
  for (const int length : {5, 10, 13, 26, 32, 63, 64}) {
    (void)wdskey_check(length, s);
    (void)wdskey_check_for_wep(length, s);
  }
  char parts[4][WIFIMGR_FIELD_SIZE];
  (void)check_para_valid(s, parts[0], parts[1], parts[2], parts[3]);
  unsigned number = 0;
  (void)get_attr_num(s, s, &number);
  (void)get_attr_num_extended(s, s, &number);
  for (const int length : {0, 1, 2, 3, static_cast<int>(text.size())}) {
    const Line cut = copy_of(text);
    if (static_cast<size_t>(length) <= text.size()) (void)parserstr(cut.get(), length);
  }
}

}  // namespace

// A text, a NUL, and a second one.
void fuzz::try_line(std::string_view input) {
  Bytes bytes(input);
  const std::string first = bytes.text();
  const std::string second = bytes.text();
  parse(first);
  split(second, first);
  scan(second, first);
  judge(first);
  (void)rtstrcasecmp(first.c_str(), second.c_str());
}
