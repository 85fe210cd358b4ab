#include "store/trace.h"

#include <cstdarg>
#include <cstdio>

namespace trace {

void print_enter(const char* function) {
  (void)vexa_itf_printf("[%s]:===Enter===\n", function);
}

void print_success(const char* function) {
  (void)vexa_itf_printf("[%s]:===Success Exit===\n", function);
}

void enter(const char* function) {
  enter_often(function);
}

Result success(const char* function) {
  return success_often(function);
}

Result fail(const char* function) {
  WIFIMGR_TRACE(kTraceLevel, "[%s]:===Fail Exit===\n", function);
  return {1};
}

namespace {

void print_failure(const char* function, const char* why) {
  (void)vexa_itf_printf("[%s]:===Fail Exit===%s\n", function, why);
}

}  // namespace

Result fail(const char* function, const char* why) {
  if (why == nullptr) return fail(function);
  if (is_on(kErrorLevel)) print_failure(function, why);
  return {1};
}

Result fail_printing(const char* function, const char* format, ...) {
  if (!is_on(kErrorLevel)) return {1};
  char why[kReasonSize];
  std::va_list values;
  va_start(values, format);
  (void)std::vsnprintf(why, sizeof why, format, values);
  va_end(values);
  print_failure(function, why);
  return {1};
}

Result debug_exit(const char* function, const char* why) {
  WIFIMGR_TRACE(kTraceLevel, "[%s]:===Debug Exit===%s\n", function, why);
  return {1};
}

}  // namespace trace
