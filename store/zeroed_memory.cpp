// Zeroed memory for callers that count on it.
#include <cstdlib>

#include "wifimgr_lib.h"

extern "C" void* os_zalloc(size_t size) {
  return std::calloc(1, size);
}
