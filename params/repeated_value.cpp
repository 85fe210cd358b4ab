#include "params/repeated_value.h"

namespace params {

void repeat_value(char (&list)[store::kValueSize], const char* value, int count) {
  const size_t length = std::strlen(value);
  size_t used = 0;
  for (int copy = 0; copy < count && used < sizeof list - 1; ++copy) {
    if (copy > 0) list[used++] = ';';
    const size_t room = sizeof list - 1 - used;
    const size_t taken = length < room ? length : room;
    std::memcpy(list + used, value, taken);
    used += taken;
  }
  list[used] = '\0';
}

void repeat_whole_value(char (&list)[store::kValueSize], const char* value, int count) {
  constexpr size_t kBelow = store::kValueSize - 1;
  const size_t length = std::strlen(value);
  size_t used = 0;
  for (int copy = 0; copy < count; ++copy) {
    const size_t separator = copy > 0 ? 1 : 0;
    if (used + separator + length >= kBelow) break;
    if (copy > 0) list[used++] = ';';
    std::memcpy(list + used, value, length);
    used += length;
  }
  list[used] = '\0';
}

}  // namespace params
