/* What the steps of the library probe share. */
#pragma once

#include <stddef.h>
#include <stdint.h>

/* The next word of the command line; ends the program when there is none. */
const char* next(void);
int next_number(void);

/* A function of the library by its name. */
void* exported(const char* name);

/* The next word's bytes, from hexadecimal; returns how many. */
size_t next_bytes(uint8_t* bytes, size_t size);
void print_bytes(const uint8_t* bytes, size_t size);

/* Carry out a step; 0 when it is none of theirs. */
int do_driver(const char* step);
int do_wps(const char* step);
int do_board(const char* step);
