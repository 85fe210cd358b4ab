// What the driver knows of a BSS: a text of Key=Value lines in the order of their keys. A line feed in a value is written \n, a
// backslash \\.
#pragma once

#include <stdbool.h>
#include <stddef.h>

#include "box/driver/text.h"

// What a BSS starts with when the driver reads the dat file; `ssid` counts from 1. Reported values of `before` stay as they are;
// without `before` they are those of a driver that has just been loaded. Null when memory ran out; the caller frees it.
char* settings_from_dat(const char* dat, bool is_5g, int ssid, const char* before);

// The same settings with this one. The value is plain.
char* settings_with(const char* settings, const char* key, const char* value);

// The plain value; the caller frees it. Null when there is none, or no memory.
char* plain_setting(const char* settings, const char* key);

// As `show` prints them: with plain values.
void add_plain_settings(Text* text, const char* settings);

// Whether a key belongs to the radio, so that setting it for one BSS sets it for all.
bool is_radio_wide(const char* key, size_t length);

// Where the radio goes when it is told this channel.
int channel_for(bool is_5g, long wanted);

// The PIN that begins with these seven digits: its eighth is a check digit.
void format_pin(unsigned seven_digits, char text[9]);
