// The search for a record by its key.
#pragma once

#include <cstdint>

#include "store/record.h"

namespace store {

// A key to look for. Most keys differ from it in their first bytes, which are compared as one word before anything is
// called; every record is looked at, as an earlier one of the same key or an empty key decides.
class SoughtKey {
 public:
  explicit SoughtKey(const char* name);

  // Exact, bounded by the key's width: a foreign writer may have left a key without its NUL.
  [[gnu::always_inline]] bool is_of(const Record& record) const {
    uint64_t word;
    std::memcpy(&word, record.key, sizeof word);
    return (word & mask_) == word_ && length_ <= kKeySize && std::memcmp(record.key, name_, size()) == 0;
  }

 private:
  // The NUL counts, but for a key of full width.
  size_t size() const { return length_ < kKeySize ? length_ + 1 : kKeySize; }

  const char* name_;
  size_t length_;
  uint64_t word_ = 0;
  uint64_t mask_ = 0;
};

inline bool has_key(const Record& record, const char* name) {
  return SoughtKey(name).is_of(record);
}

}  // namespace store
