// The setter of a band-wide value: the template of a whole family.
#pragma once

#include <cstdint>

#include "params/accepted.h"
#include "store/trace.h"

namespace params {

// Refusals are whole messages with "[%s]" for the function's name.
#define WIFIMGR_REFUSAL(text) "[%s]:===Fail Exit===" text "\n"

// The family refuses another index than -1 in two ways; which one a setter has is history and part of its contract.
inline constexpr char kIndexShouldBeMinusOne[] = "The ssid index here should be -1.";
inline constexpr char kIndexIsInvalid[] = "The ssid index is invalid.";

struct BandSetting {
  const char* function;
  const char* key;
  const char* index_refusal;
  Accepted accepted;
  const char* refusal;
};

// Checks the value's presence, the index and the value, in this order, then replaces field 1 of the key.
trace::Result set_band_value(const BandSetting& setting, uint32_t wifi_type, int32_t index, const char* value);

}  // namespace params
