#include "store/sought_key.h"

namespace store {

SoughtKey::SoughtKey(const char* name) : name_(name), length_(strnlen(name, kKeySize + 1)) {
  const size_t compared = size() < sizeof word_ ? size() : sizeof word_;
  std::memcpy(&word_, name, compared);
  std::memset(&mask_, 0xff, compared);
}

}  // namespace store
