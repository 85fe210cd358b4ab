// Shell command lines: formatted and run in one place.
#pragma once

namespace store {

inline constexpr int kCommandSize = 160;

// Formats a command line into a buffer of kCommandSize bytes and runs it with system; returns what system returned,
// which only one caller passes on. A line that does not fit aborts the process: running half of it could do harm.
int run_shell(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Runs a caller's own command line, of any length, as it stands.
int run_line(const char* line);

}  // namespace store
