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

// Rows, as many as a table has.
struct BandRows {
  template <size_t kRows>
  constexpr BandRows(const BandRow (&rows)[kRows]) : first(rows), last(rows + kRows) {}
  const BandRow* begin() const { return first; }
  const BandRow* end() const { return last; }

  const BandRow* first;
  const BandRow* last;
};

// Keeps every row's current number; a row whose getter fails keeps what it had.
void store_rows(BandRows rows, Snapshot& record, uint32_t wifi_type);

// Whether a row's current number differs from the kept one; a row whose getter fails does not.
bool rows_differ(BandRows rows, const Snapshot& record, uint32_t wifi_type);

}  // namespace apply
