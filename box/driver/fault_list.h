// The list of requests that are told to fail.
#pragma once

#include <stdint.h>

// The errno that a request fails with, 0 for none. When that uses one of a counted fault up, `*left` is the list without it,
// for the caller to free; else null.
int meet_fault(const char* faults, unsigned long request, uint16_t oid, const char* interface, char** left);
