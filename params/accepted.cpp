#include "params/accepted.h"

#include <cstring>

#include "store/decimal.h"
#include "wifimgr_lib.h"

namespace params {

bool accepts(Accepted accepted, const char* value) {
  switch (accepted.kind) {
    case Accepted::Kind::kAnyText:
      return true;
    case Accepted::Kind::kDigits:
      return doStrDecCheck(value) != 0;
    case Accepted::Kind::kNumber: {
      if (doStrDecCheck(value) == 0) return false;
      const long long number = store::wide_decimal(value);
      return number >= accepted.lowest && number <= accepted.highest;
    }
    case Accepted::Kind::kAtMostCharacters:
      return std::strlen(value) <= static_cast<size_t>(accepted.highest);
    case Accepted::Kind::kPassing:
      return accepted.check(value) != 0;
  }
  return false;
}

}  // namespace params
