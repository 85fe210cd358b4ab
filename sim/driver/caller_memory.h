// The memory that a caller names, as a kernel reads and writes it: a bad address is an error, not the caller's end.
#pragma once

#include <stdbool.h>
#include <stddef.h>

// False when some of it is not there for the caller.
bool copy_from_caller(void* to, const void* from, size_t size);
bool copy_to_caller(void* to, const void* from, size_t size);
