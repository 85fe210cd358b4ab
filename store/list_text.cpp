// String helpers for ';'-separated value lists.
#include <cstring>

#include "wifimgr_lib.h"

char* __rstrtok = nullptr;

extern "C" char* rstrtok(char* str, const char* delims) {
  char* scan = str != nullptr ? str : __rstrtok;
  if (scan == nullptr || delims == nullptr) {
    __rstrtok = nullptr;
    return nullptr;
  }
  scan += std::strspn(scan, delims);
  if (*scan == '\0') {
    __rstrtok = nullptr;
    return nullptr;
  }
  char* const token = scan;
  scan = std::strpbrk(scan, delims);
  if (scan != nullptr) *scan++ = '\0';
  __rstrtok = scan;
  return token;
}

namespace {

char to_lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

extern "C" int rtstrcasecmp(const char* a, const char* b) {
  if (a == nullptr || b == nullptr) return 0;
  for (; to_lower(*a) == to_lower(*b); ++a, ++b) {
    if (*a == '\0') return 1;
  }
  return 0;
}

// Does not stop at a NUL: the caller vouches for four ';' in the source.
extern "C" void strextract(char* dst, const char* src) {
  if (dst == nullptr || src == nullptr) return;
  for (int separators = 0;; ++dst, ++src) {
    if (*src == ';' && ++separators == 4) break;
    *dst = *src;
  }
  *dst = '\0';
}
