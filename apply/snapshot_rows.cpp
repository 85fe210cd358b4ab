#include "apply/snapshot_rows.h"

#include <cstring>

#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"

namespace apply {

int32_t load_number(const Snapshot& record, size_t offset) {
  int32_t number = 0;
  std::memcpy(&number, reinterpret_cast<const char*>(&record) + offset, sizeof number);
  return number;
}

void store_number(Snapshot& record, size_t offset, int32_t number) {
  std::memcpy(reinterpret_cast<char*>(&record) + offset, &number, sizeof number);
}

bool read_number(BandGetter getter, uint32_t wifi_type, int32_t& number) {
  char text[store::kValueSize] = "";
  if (getter(store::band_number(wifi_type), -1, text, sizeof text) != 0) return false;
  number = store::decimal(text);
  return true;
}

}  // namespace apply
