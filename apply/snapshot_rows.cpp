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

void store_rows(BandRows rows, Snapshot& record, uint32_t wifi_type) {
  for (const BandRow& row : rows) {
    int32_t number = 0;
    if (read_number(row.getter, wifi_type, number)) store_number(record, row.offset, number);
  }
}

bool rows_differ(BandRows rows, const Snapshot& record, uint32_t wifi_type) {
  for (const BandRow& row : rows) {
    int32_t number = 0;
    if (read_number(row.getter, wifi_type, number) && number != load_number(record, row.offset)) return true;
  }
  return false;
}

}  // namespace apply
