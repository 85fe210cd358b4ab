// Values that the driver wants once per SSID, spread from one.
#pragma once

#include "store/record.h"

namespace params {

// "1;1;1" for value "1" and count 3, cut at the buffer's end; empty for a count of 0 or less.
void repeat_value(char (&list)[store::kValueSize], const char* value, int count);

// The same, but only whole values: it stops at the first copy that would not keep the list below 159 characters.
void repeat_whole_value(char (&list)[store::kValueSize], const char* value, int count);

}  // namespace params
