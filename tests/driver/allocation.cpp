#include "driver/allocation.h"

#include <cstdlib>

#include "wifimgr_lib.h"

namespace allocation {

bool fails;
std::vector<size_t> sizes;

}  // namespace allocation

extern "C" void* os_zalloc(size_t size) {
  allocation::sizes.push_back(size);
  return allocation::fails ? nullptr : std::calloc(1, size);
}
