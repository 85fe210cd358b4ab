#include "apply/snapshot_rows.h"

#include <cstring>

namespace apply {

int32_t load_number(const Snapshot& record, size_t offset) {
  int32_t number = 0;
  std::memcpy(&number, reinterpret_cast<const char*>(&record) + offset, sizeof number);
  return number;
}

void store_number(Snapshot& record, size_t offset, int32_t number) {
  std::memcpy(reinterpret_cast<char*>(&record) + offset, &number, sizeof number);
}

}  // namespace apply
