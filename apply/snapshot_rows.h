// The watched numbers of the snapshot, as rows: the getter of a value and the field of the record that keeps it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "apply/band_number.h"
#include "wifimgr_lib.h"

namespace apply {

using Snapshot = wifimgr_band_snapshot;

struct BandRow {
  BandGetter getter;
  size_t offset;
};

struct SsidRow {
  SsidGetter getter;
  size_t offset;
};

// The fields are packed, hence not aligned.
int32_t load_number(const Snapshot& record, size_t offset);
void store_number(Snapshot& record, size_t offset, int32_t number);

// Keeps every row's current number; a row whose getter fails keeps what it had.
template <size_t kRows>
void store_rows(const BandRow (&rows)[kRows], Snapshot& record, uint32_t wifi_type) {
  for (const BandRow& row : rows) {
    int32_t number = 0;
    if (read_number(row.getter, wifi_type, number)) store_number(record, row.offset, number);
  }
}

// Whether a row's current number differs from the kept one; a row whose getter fails does not.
template <size_t kRows>
bool rows_differ(const BandRow (&rows)[kRows], const Snapshot& record, uint32_t wifi_type) {
  for (const BandRow& row : rows) {
    int32_t number = 0;
    if (read_number(row.getter, wifi_type, number) && number != load_number(record, row.offset)) return true;
  }
  return false;
}

}  // namespace apply
