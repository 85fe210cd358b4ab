// The exported functions by their kind, as the public header declares them.
#pragma once

#include <cstdint>
#include <vector>

#include "wifimgr_lib.h"

namespace fuzz {

using Setter = uint64_t (*)(uint32_t wifi_type, int32_t index, const char* value);
using Getter = uint64_t (*)(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
using OtherGetter = int (*)(int wifi_type, int index, char* buf, unsigned len);
using SnapshotTaker = uint64_t (*)(wifimgr_band_snapshot* record, uint32_t wifi_type);

struct Functions {
  std::vector<Setter> setters;
  std::vector<Getter> getters;
  std::vector<OtherGetter> other_getters;
  std::vector<SnapshotTaker> snapshot_takers;
};

const Functions& functions();

// Calls every getter of a band, with one index.
void get_all(int band, int index);

}  // namespace fuzz
