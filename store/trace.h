// The debug trace that every function of the library follows, and the result that goes with each exit.
//
// A trace point costs one call of the platform's switch while tracing is off, and never changes a result.
#pragma once

#include <cstdint>

#include "platform_libs/vexa_lib_dbg.h"

// Prints a message of an unusual shape: WIFIMGR_TRACE(trace::kErrorLevel, "[%s]:...\n", function, ...).
#define WIFIMGR_TRACE(level, ...)                                                           \
  do {                                                                                      \
    if (get_itf_dbg_switch(level, trace::kModule) != 0) (void)vexa_itf_printf(__VA_ARGS__); \
  } while (false)

namespace trace {

inline constexpr int kModule = 6;
inline constexpr int kErrorLevel = 1;
inline constexpr int kTraceLevel = 8;
inline constexpr int kReasonSize = 256;

// What an exported function returns: some are declared int, some uint64_t.
struct [[nodiscard]] Result {
  int code;
  constexpr operator int() const { return code; }
  constexpr operator uint64_t() const { return static_cast<uint64_t>(code); }
};

void enter(const char* function);
int fail_as(const char* function, int result);       // the plain "Fail Exit", the given result
Result success(const char* function);                // "Success Exit", 0
Result fail(const char* function);                   // the plain "Fail Exit", 1
Result fail(const char* function, const char* why);  // "Fail Exit", the reason and a line end, 1
// The same, the reason being a format: "%d" prints a number. kReasonSize holds what is printed, NUL included.
[[gnu::format(printf, 2, 3)]] Result fail_printing(const char* function, const char* why, ...);
Result debug_exit(const char* function, const char* why);  // "Debug Exit", the reason and a line end, 1

}  // namespace trace
