// The debug trace that every function of the library follows, and the result that goes with each exit.
//
// A trace point costs one call of the platform's switch while tracing is off, and never changes a result.
#pragma once

#include <cstdint>

#include "platform_libs/vexa_lib_dbg.h"

// Prints a message of an unusual shape: WIFIMGR_TRACE(trace::kErrorLevel, "[%s]:...\n", function, ...).
#define WIFIMGR_TRACE(level, ...)                                \
  do {                                                           \
    if (trace::is_on(level)) (void)vexa_itf_printf(__VA_ARGS__); \
  } while (false)

namespace trace {

inline constexpr int kModule = 6;
inline constexpr int kErrorLevel = 1;
inline constexpr int kTraceLevel = 8;
inline constexpr int kReasonSize = 640;  // a path of a dat file and what is said about it

// What an exported function returns: some are declared int, some uint64_t. As wide as both, it needs no conversion.
struct [[nodiscard]] Result {
  uint64_t code;
  constexpr operator int() const { return static_cast<int>(code); }
  constexpr operator uint64_t() const { return code; }
  // Another result with the same exit.
  template <typename Other>
  constexpr Other as(Other other) const {
    return other;
  }
};

[[gnu::always_inline]] inline bool is_on(int level) {
  return get_itf_dbg_switch(level, kModule) != 0;
}

void enter(const char* function);
Result success(const char* function);  // "Success Exit", 0
Result fail(const char* function);     // the plain "Fail Exit", 1
Result fail(const char* function,
            const char* why);  // "Fail Exit", the reason and a line end, 1; plain without a reason
// The same, the reason being a format. kReasonSize holds what is printed, NUL included.
[[gnu::format(printf, 2, 3)]] Result fail_printing(const char* function, const char* format, ...);
Result debug_exit(const char* function, const char* why);  // "Debug Exit", the reason and a line end, 1

// As enter and success, for what every getter and every line of a load goes through: asks the switch in place, which
// takes more code and half the time.
void print_enter(const char* function);
void print_success(const char* function);

[[gnu::always_inline]] inline void enter_often(const char* function) {
  if (is_on(kTraceLevel)) [[unlikely]] {
    print_enter(function);
  }
}

[[gnu::always_inline]] inline Result success_often(const char* function) {
  if (is_on(kTraceLevel)) [[unlikely]] {
    print_success(function);
  }
  return {0};
}

}  // namespace trace
