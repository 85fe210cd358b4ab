// The semaphore of each band: a mutex between all processes that use the band's segment.
#pragma once

#include <sys/types.h>

namespace store {

// Why an operation failed that could not take the lock, or not give it back.
inline constexpr char kPFailed[] = "p operation failed.";
inline constexpr char kVFailed[] = "v operation failed.";

constexpr key_t semaphore_key(int band) {
  return band == 0 ? 0x12348 : 0x12349;
}

// Looks the band's semaphore up by its fixed key, anew at each operation. Returns -1 when there is none; a P on that
// fails, so a missing semaphore shows as a failing P.
int look_up_semaphore(int band);

}  // namespace store
