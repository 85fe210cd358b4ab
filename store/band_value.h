// The getter of a band-wide value: the template of a whole family.
#pragma once

#include "store/trace.h"

namespace store {

inline constexpr char kIndexRefusal[] = "The index should be -1.";

// Copies field 1 of `key` to `buf`, tracing as `function`; an `index` other than -1 is refused with `index_refusal`.
int get_band_value(int wifi_type, int index, char* buf, unsigned len, const char* function, const char* key,
                   const char* index_refusal = kIndexRefusal);

}  // namespace store
