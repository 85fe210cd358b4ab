// The driver's memory as its own commands and the interfaces' coming and going change it. The caller holds the state's lock.
#pragma once

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "box/driver/bands.h"
#include "box/driver/text.h"

// Where the texts are kept; DRIVER_SETTINGS and DRIVER_LISTS are such folders. 0, or an errno.
int store_state(const char* folder, const char* name, const char* text);

uint32_t random_number(void);

// What a loaded driver starts with: settings of so many BSSs, the neighbours that it hears, no stations.
int start_radio(int band, const char* dat, int bss_count);

// The first BSS came up: the dat file counts again.
int read_dat_anew(int band, const char* dat, int bss_count);

int stations_leave(int band, const char* interface);

// "Key=Value" of `iwpriv INTERFACE set`. 0, or an errno.
int set_private(int band, const char* interface, int bss_count, const char* argument);

// What `iwpriv INTERFACE get_site_survey` prints after the interface's and its own name.
char* site_survey(int band);
