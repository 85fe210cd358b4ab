#include "store/band_value.h"

#include "wifimgr_lib.h"

namespace store {

int get_band_value(int wifi_type, int index, char* buf, unsigned len, const char* function, const char* key,
                   const char* index_refusal) {
  trace::enter_often(function);
  if (buf == nullptr) return trace::fail(function);
  if (index != -1) return trace::fail(function, index_refusal);
  if (read_attr(wifi_type, -1, key, buf, len) != 0) return trace::fail(function);
  return trace::success_often(function);
}

}  // namespace store
