#include "store/trace.h"

#include <cstdarg>
#include <cstdio>

namespace trace {

void enter(const char* function) {
  WIFIMGR_TRACE(kTraceLevel, "[%s]:===Enter===\n", function);
}

Result success(const char* function) {
  WIFIMGR_TRACE(kTraceLevel, "[%s]:===Success Exit===\n", function);
  return {0};
}

Result fail(const char* function) {
  WIFIMGR_TRACE(kTraceLevel, "[%s]:===Fail Exit===\n", function);
  return {1};
}

Result fail(const char* function, const char* why) {
  WIFIMGR_TRACE(kErrorLevel, "[%s]:===Fail Exit===%s\n", function, why);
  return {1};
}

int fail_as(const char* function, int result) {
  (void)fail(function);
  return result;
}

Result fail_printing(const char* function, const char* why, ...) {
  if (get_itf_dbg_switch(kErrorLevel, kModule) == 0) return {1};
  char words[kReasonSize];
  std::va_list values;
  va_start(values, why);
  (void)std::vsnprintf(words, sizeof words, why, values);
  va_end(values);
  return fail(function, words);
}

Result debug_exit(const char* function, const char* why) {
  WIFIMGR_TRACE(kTraceLevel, "[%s]:===Debug Exit===%s\n", function, why);
  return {1};
}

}  // namespace trace
