// The kernel counts what passes an interface.
#pragma once

#include <stdint.h>

// A counter by its name in /sys/class/net/INTERFACE/statistics, 0 when there is none.
uint64_t interface_counter(const char* interface, const char* counter);
