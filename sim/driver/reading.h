// Readings of a live radio. One that is set to "-92" says so; one that is set to "~-92" wanders around it.
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

int64_t monotonic_ms(void);

// What the reading is at that time. `which` keeps different readings from moving in step.
long reading_at(const char* text, int64_t time_ms, unsigned which);

// "-92" or "~-92", and nothing after it.
bool is_reading(const char* text);

#ifdef __cplusplus
}
#endif
