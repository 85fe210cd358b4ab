// The shared-memory segment of each band, as this process has it attached.
#pragma once

#include <sys/types.h>

#include "store/record.h"

namespace store {

constexpr key_t segment_key(int band) {
  return band == 0 ? 0x12345 : 0x12346;
}

// Whether this process has found or created the band's segment through init_shm.
bool has_segment(int band);

// How many records this process loads and clears: the largest record count that the dat file has had in this process.
unsigned capacity(int band);

// The band's records where the exported address says they are, null while it is null.
Record* records(int band);

// How many records the segment behind records(band) has room for. Asks the kernel only when the exported address is not
// the one it last asked about: once at attach, or once for a program that attached the segment itself.
unsigned room(int band);

// Zeroes the band's first `count` records under its lock, which is also held while they are counted. Returns null, or why
// the lock could not be taken or given back.
const char* clear(int band, int semaphore, unsigned (*count)(int band));

// The same as room for an address that a caller passed in; without limit when it is none of the two bands'.
unsigned room_at(const char* segment);

}  // namespace store
