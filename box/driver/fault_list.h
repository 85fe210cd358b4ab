// The list of requests that are told to go wrong.
#pragma once

#include <stdbool.h>
#include <stdint.h>

#include "sim/driver/lists.h"

// The first fault that a request meets; false when there is none. When that uses one of a counted fault up, `*left` is the list
// without it, for the caller to free; else null.
bool find_fault(const char* faults, unsigned long request, uint16_t oid, const char* interface, Fault* met,
                char** left);
