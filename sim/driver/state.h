// What the simulated driver knows. Its files are read at each request, without a lock: whoever changes one swaps it in
// whole.
#pragma once

#include <stdbool.h>
#include <stdint.h>

#define DRIVER_SETTINGS "/run/gateway-sim/driver"
#define DRIVER_LISTS "/run/gateway-sim/lists"
#define DRIVER_PAYLOADS "/run/gateway-sim/payloads"

// The text of a file, null when it cannot be read. The caller frees it.
char* read_state(const char* folder, const char* name);

// The list of that kind ("stations") that a radio ("ra", "rai") has, likewise.
char* read_radio_list(const char* kind, const char* radio);

// Waits until nobody else holds the file's lock, and takes it until the file is closed.
void lock_state(int fd);

// Opens past this library's own `open`.
int open_state(const char* path, int flags);

// What a key is set to, up to the end of the line; null when it is missing.
const char* setting_of(const char* settings, const char* key);

// The number that a key is set to, 0 when it is missing.
long number_of(const char* settings, const char* key);

// The next line of a list, ended with a NUL in place; null after the last one. `rest` starts as the whole text.
char* next_line(char** rest);
