// A zeroed record on the heap, freed with its owner: for replies whose missing memory callers are told about.
#pragma once

#include <cstdlib>
#include <type_traits>

#include "wifimgr_lib.h"

namespace driver {

template <typename Record>
class Allocated {
  static_assert(std::is_trivial_v<Record>);

 public:
  Allocated() : record_(static_cast<Record*>(os_zalloc(sizeof(Record)))) {}
  Allocated(const Allocated&) = delete;
  Allocated& operator=(const Allocated&) = delete;
  ~Allocated() { std::free(record_); }

  explicit operator bool() const { return record_ != nullptr; }
  Record* get() const { return record_; }
  Record* operator->() const { return record_; }

 private:
  Record* record_;
};

}  // namespace driver
