#include "store/sought_key.h"

#include <algorithm>
#include <array>
#include <bit>

namespace store {
namespace {

// How many records before its turn one is fetched: the processor does not foresee steps of this width.
constexpr unsigned kAhead = 12;

// A key's first byte within its first word.
constexpr auto kFirstByte = std::bit_cast<uint64_t>(std::array<unsigned char, sizeof(uint64_t)>{0xff});

uint64_t first_word(const Record& record) {
  uint64_t word;
  std::memcpy(&word, record.key, sizeof word);
  return word;
}

}  // namespace

// The NUL counts, but for a name of the key's full width.
SoughtKey::SoughtKey(const char* name) : name_(name), length_(strnlen(name, kKeySize + 1)) {
  const size_t size = std::min(length_ + 1, sizeof word_);
  std::memcpy(&word_, name, size);
  std::memset(&mask_, 0xff, size);
}

bool SoughtKey::is_of(const Record& record) const {
  if ((first_word(record) & mask_) != word_ || length_ > kKeySize) return false;
  return std::memcmp(record.key, name_, length_ < kKeySize ? length_ + 1 : kKeySize) == 0;
}

const Record* SoughtKey::find(const Record* record, unsigned count) const {
  const uint64_t word = word_, mask = mask_;
  const auto decides = [word, mask](const Record& one) {
    const uint64_t own = first_word(one);
    return (own & mask) == word || (own & kFirstByte) == 0;
  };
  for (;; --count, ++record) {
    // Four at a time while none of them can end the search. What lies behind the table is only asked for, never read.
    for (; count >= 4; count -= 4, record += 4) {
      for (unsigned i = 0; i < 4; ++i) __builtin_prefetch(record + kAhead + i);
      if (decides(record[0]) || decides(record[1]) || decides(record[2]) || decides(record[3])) break;
    }
    if (count == 0 || record->key[0] == '\0') return nullptr;
    if (is_of(*record)) return record;
  }
}

}  // namespace store
