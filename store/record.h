// The attribute record: its layout is shared by every process that maps a band's segment.
#pragma once

#include <cstddef>
#include <cstdint>
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
  const size_t length = strnlen(text, kFieldSize - 1);
  std::memset(field + length, 0, kFieldSize - length);
  std::memcpy(field, text, length);
}

// A key to look for. Most keys differ from it in their first bytes, which are compared as one word before anything is
// called; every record is looked at, as an earlier one of the same key or an empty key decides.
class SoughtKey {
 public:
  explicit SoughtKey(const char* name) : name_(name), length_(strnlen(name, kKeySize + 1)) {
    char first[sizeof word_] = {};
    char mask[sizeof word_] = {};
    const size_t compared = size() < sizeof word_ ? size() : sizeof word_;
    std::memcpy(first, name, compared);
    std::memset(mask, 0xff, compared);
    std::memcpy(&word_, first, sizeof word_);
    std::memcpy(&mask_, mask, sizeof mask_);
  }

  // Exact, bounded by the key's width: a foreign writer may have left a key without its NUL.
  bool is_of(const Record& record) const {
    uint64_t word;
    std::memcpy(&word, record.key, sizeof word);
    return (word & mask_) == word_ && length_ <= kKeySize && std::memcmp(record.key, name_, size()) == 0;
  }

 private:
  // The NUL counts, but for a key of full width.
  size_t size() const { return length_ < kKeySize ? length_ + 1 : kKeySize; }

  const char* name_;
  size_t length_;
  uint64_t word_;
  uint64_t mask_;
};

inline bool has_key(const Record& record, const char* name) {
  return SoughtKey(name).is_of(record);
}

}  // namespace store
