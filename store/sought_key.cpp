#include "store/sought_key.h"

namespace store {

SoughtKey::SoughtKey(const char* name) : name_(name), length_(strnlen(name, kKeySize + 1)) {
  if (size() >= sizeof word_) {
    std::memcpy(&word_, name, sizeof word_);
    mask_ = UINT64_MAX;
  } else {
    std::memcpy(&word_, name, size());
    std::memset(&mask_, 0xff, size());
  }
}

}  // namespace store
