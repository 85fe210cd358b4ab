#include "apply/script_value.h"

namespace apply {

void escape_script_value(char (&text)[store::kValueSize]) {
  char escaped[store::kValueSize];
  size_t used = 0;
  for (const char* scan = text; *scan != '\0'; ++scan) {
    const bool special = *scan == '"' || *scan == '\\';
    if (used + (special ? 2 : 1) > sizeof escaped - 1) break;
    if (special) escaped[used++] = '\\';
    escaped[used++] = *scan;
  }
  escaped[used] = '\0';
  std::memcpy(text, escaped, used + 1);
}

}  // namespace apply
