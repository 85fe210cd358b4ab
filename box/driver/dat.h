// The dat file as the driver reads it: Key=Value lines, "#" begins a comment, of two lines with the same key the first counts.
#pragma once

#include <stdbool.h>
#include <stddef.h>

enum { kDatMostSsids = 8 };

// The whole value; null when the key is missing. It ends before `*length` bytes are over.
const char* dat_value(const char* dat, const char* key, size_t* length);

// Field `number`, counted from 1, of a value that holds one for each SSID. Empty fields do not count; null when it has fewer.
const char* dat_field(const char* dat, const char* key, int number, size_t* length);

// The number that such a field begins with; 0 when there is none.
long dat_number(const char* dat, const char* key, int number);

// 1 to 8, and 1 when the file does not say.
int dat_ssid_count(const char* dat);
