// The setter of a band-wide value: the template of a whole family.
#pragma once

#include <cstdint>

#include "params/accepted.h"
#include "store/band.h"
#include "store/trace.h"

namespace params {

// The family refuses another index than -1 in two ways; which one a setter has is history and part of its contract.
inline constexpr char kIndexShouldBeMinusOne[] = "The ssid index here should be -1.";
inline constexpr char kIndexIsInvalid[] = "The ssid index is invalid.";

// Both check the value's presence, the index and the value, in this order, then replace field 1 of `key`; they trace as
// `function`. The caller's arguments come first and in its order, so that an exported setter only adds its row.
uint64_t set_band_value(store::Band band, int32_t index, const char* value, const char* function, const char* key,
                        const char* refusal, Accepted accepted);  // kIndexShouldBeMinusOne
uint64_t set_ht_group_value(store::Band band, int32_t index, const char* value, const char* function, const char* key,
                            const char* refusal, Accepted accepted);  // kIndexIsInvalid

}  // namespace params
