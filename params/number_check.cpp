// Predicates on number texts. Two conventions coexist: the check_* functions say 0 for valid, the others 1.
#include <cstring>

#include "store/record.h"
#include "store/trace.h"

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// Up to the first NUL or line end.
template <typename Predicate>
bool all_of_first_line(const char* s, Predicate accepts) {
  for (; *s != '\0' && *s != '\n'; ++s) {
    if (!accepts(*s)) return false;
  }
  return true;
}

}  // namespace

extern "C" int doStrDecCheck(const char* s) {
  if (s == nullptr) return 0;
  for (; *s != '\0'; ++s) {
    if (!is_digit(*s)) return 0;
  }
  return 1;
}

extern "C" int doHexCheck(char c) {
  return is_digit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f') ? 1 : -1;
}

extern "C" int doStrHexCheck(const char* s) {
  if (s == nullptr) return 0;
  for (; *s != '\0'; ++s) {
    if (doHexCheck(*s) != 1) return 0;
  }
  return 1;
}

extern "C" int check_is_num(const char* s) {
  if (s == nullptr) return 1;
  return all_of_first_line(s, is_digit) ? 0 : 1;
}

extern "C" int check_hex_valid(const char* s) {
  if (s == nullptr) return 1;
  return all_of_first_line(s, [](char c) { return doHexCheck(c) == 1; }) ? 0 : 1;
}

extern "C" int charCnt(const char* s, char c) {
  if (s == nullptr) return 0;
  int count = 0;
  for (; *s != '\0'; ++s) {
    if (*s == c) ++count;
  }
  return count;
}

namespace {

constexpr int kListFields = 4;

// Splits at ';' into the callers' buffers, of WIFIMGR_FIELD_SIZE bytes each; the last field takes all up to the next
// ';'. False when a field is empty or longer than its buffer.
bool split_list(const char* s, char* const (&fields)[kListFields]) {
  for (int i = 0; i < kListFields; ++i) {
    const size_t length = std::strcspn(s, ";");
    if (length == 0 || length >= store::kFieldSize) return false;
    std::memcpy(fields[i], s, length);
    fields[i][length] = '\0';
    s += length;
    if (*s == ';') ++s;
  }
  return true;
}

// Exactly three separators in the first line; an empty field, and so a leading or doubled ';', fails the split.
bool is_number_list(const char* s, char* const (&fields)[kListFields]) {
  int separators = 0;
  for (const char* scan = s; *scan != '\0' && *scan != '\n'; ++scan) {
    if (*scan == ';') ++separators;
  }
  if (separators != kListFields - 1 || !split_list(s, fields)) return false;
  for (const char* field : fields) {
    if (check_is_num(field) != 0) return false;
  }
  return true;
}

}  // namespace

extern "C" int check_para_valid(const char* s, char* f1, char* f2, char* f3, char* f4) {
  trace::enter(__func__);
  char* const fields[kListFields] = {f1, f2, f3, f4};
  bool complete = s != nullptr;
  for (const char* field : fields) complete = complete && field != nullptr;
  if (!complete || !is_number_list(s, fields)) return trace::fail(__func__, "The input parameter is invalid.");
  return trace::success(__func__);
}
