// The attribute record: its layout is shared by every process that maps a band's segment.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "wifimgr_lib.h"

namespace store {

using Record = wifimgr_attr_record;

inline constexpr size_t kKeySize = WIFIMGR_KEY_SIZE;
inline constexpr size_t kFieldSize = WIFIMGR_FIELD_SIZE;
inline constexpr int kFields = WIFIMGR_FIELDS;
inline constexpr size_t kLineSize = WIFIMGR_DAT_LINE_SIZE;
inline constexpr size_t kValueSize = WIFIMGR_VALUE_SIZE;

static_assert(std::is_trivially_copyable_v<Record> && std::is_standard_layout_v<Record>);
static_assert(sizeof(Record) == 1236 && alignof(Record) == 1);
static_assert(offsetof(Record, key) == 0 && offsetof(Record, field) == 36);

// Copies at most kFieldSize - 1 characters and fills the rest with NUL. The last byte is never anything but NUL, so a
// reader finds a terminated text even when a writer was killed half-way.
inline void set_field(char (&field)[kFieldSize], const char* text) {
  std::strncpy(field, text, kFieldSize - 1);
  field[kFieldSize - 1] = '\0';
}

}  // namespace store
