// The getter of a band-wide value: the template of a whole family.
#pragma once

#include "store/trace.h"

namespace store {

// Copies field 1 of `key` to `buf`, tracing as `function`; `index` must be -1.
trace::Result get_band_value(const char* function, const char* key, int wifi_type, int index, char* buf, unsigned len);

}  // namespace store
