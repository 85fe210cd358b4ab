// One operation in several processes at once.
#pragma once

namespace bench {

// Runs `operation` so often in each of so many processes, all starting together; returns the seconds until the last is
// done.
double seconds_of(int processes, int times, void (*operation)());

}  // namespace bench
