// Processes that use both bands at once, one of which is killed at random again and again, or which signals interrupt.
#pragma once

namespace soak {

// Returns how many were killed.
int kill_at_random(int kills, unsigned seed, bool (*is_over)());

// A signal every millisecond for so many milliseconds; every other process restarts its system calls. Returns how many
// operations succeeded.
long interrupt(int milliseconds, unsigned seed);

}  // namespace soak
