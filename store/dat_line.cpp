// One line of a dat file: how it is cut into a key and up to eight value fields.
#include <climits>
#include <cstring>

#include "store/key_family.h"
#include "store/record.h"
#include "store/trace.h"

namespace {

// What "%[^=]" takes: everything up to the next '=' or the end, bounded by the line's own size.
size_t cut_at_equals(const char* text, char (&out)[store::kLineSize]) {
  const size_t length = strnlen(text, store::kLineSize - 1);
  const void* const equals = std::memchr(text, '=', length);
  const size_t taken = equals != nullptr ? static_cast<size_t>(static_cast<const char*>(equals) - text) : length;
  std::memcpy(out, text, taken);
  out[taken] = '\0';
  return taken;
}

// Besides the file's first line this leaves out every empty line and, deliberately, any line that is a shorter prefix
// of the word. The last character is dropped whether it is a line end or not.
bool is_default_line(const char* line) {
  if (line[0] == '\0' || line[1] == '\0') return true;
  return line[0] == 'D' && std::strncmp(line, "Default", std::strlen(line) - 1) == 0;
}

}  // namespace

extern "C" int parserstr(char* str, int len) {
  // A value of one character and its line end keeps the line end; deliberate.
  if (str == nullptr || len < 3) return 5;
  const size_t length = strnlen(str, static_cast<size_t>(len));
  const size_t cut =
      (std::memchr(str, '\r', length) != nullptr ? 1U : 0U) + (std::memchr(str, '\n', length) != nullptr ? 1U : 0U);
  if (cut > 0) str[length - cut] = '\0';
  return 0;
}

extern "C" int attr_value_parser(const char* key, char* value, unsigned* count, char** fields) {
  if (key == nullptr || value == nullptr || count == nullptr || fields == nullptr) return 1;
  *count = 1;
  if (store::is_whole_value_key(key)) {
    (void)parserstr(value, static_cast<int>(strnlen(value, INT_MAX)));
    fields[0] = value;
    return 0;
  }
  unsigned kept = 0;
  char* start = nullptr;
  for (char* scan = value; *scan != '\0' && *scan != '\n' && kept < store::kFields; ++scan) {
    if (*scan != ';') {
      if (start == nullptr) start = scan;
    } else if (start != nullptr) {
      *scan = '\0';
      fields[kept++] = start;
      start = nullptr;
    }
  }
  // The last field keeps its line end: readers and the write-back expect it there.
  if (start != nullptr) fields[kept++] = start;
  if (kept > 1) *count = kept;
  return 0;
}

extern "C" int parse_data_from_line(char* line, wifimgr_attr_record* out) {
  trace::enter(__func__);
  if (line == nullptr || out == nullptr) return trace::fail(__func__);
  if (line[0] == '#') return trace::debug_exit(__func__, "This is a comment, and do not need to parse.");
  if (is_default_line(line)) return trace::debug_exit(__func__, "This is a \"Default\", and do not need to parse.");

  char key[store::kLineSize];
  char value[store::kLineSize];
  value[0] = '\0';
  const size_t key_length = cut_at_equals(line, key);
  // A line that begins with '=' has neither key nor value, yet it becomes a record.
  if (key_length > 0 && line[key_length] == '=') (void)cut_at_equals(line + key_length + 1, value);

  unsigned count = 0;
  char* fields[store::kFields] = {};
  if (attr_value_parser(key, value, &count, fields) != 0) return trace::fail(__func__, "Parse the attr_value failed.");

  std::strncpy(out->key, key, store::kKeySize - 1);
  out->key[store::kKeySize - 1] = '\0';
  for (int i = 0; i < store::kFields && fields[i] != nullptr; ++i) store::set_field(out->field[i], fields[i]);
  return trace::success(__func__);
}
