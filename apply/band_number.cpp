#include "apply/band_number.h"

#include <cstdio>

#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"

namespace apply {

bool read_number(BandGetter getter, store::Band band, int32_t& number) {
  char text[store::kValueSize] = "";
  if (getter(band, -1, text, sizeof text) != 0) return false;
  number = store::decimal(text);
  return true;
}

int32_t read_number_or_report(BandGetter getter, store::Band band, const char* failure) {
  int32_t number = 0;
  if (read_number(getter, band, number)) return number;
  if (failure != nullptr) (void)std::puts(failure);
  return 0;
}

}  // namespace apply
