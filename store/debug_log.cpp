// The debug switches and the kernel's debug log.
#include <cstdarg>
#include <cstdio>

#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

extern "C" int wifimgr_lib_set_dbg_level(const char* level) {
  trace::enter(__func__);
  {
    const store::Stream enable(std::fopen("/tmp/wifi_lib_dbg_enable", "w+e"));
    if (!enable) return trace::fail(__func__);
    // Five bytes, the three NULs included: that is the file's format.
    (void)std::fwrite("1\n\0\0", 1, 5, enable.get());
  }
  // Without a level the file above still counts, and the result is still a failure; deliberate.
  if (level == nullptr) return trace::fail(__func__);
  const store::Stream number(std::fopen("/tmp/vexalib_dbg", "w+e"));
  if (number) (void)std::fputs(level, number.get());
  return trace::success(__func__);
}

extern "C" void zqdbg_blapi_printf(const char* fmt, ...) {
  if (fmt == nullptr) return;
  char message[256];
  va_list arguments;
  va_start(arguments, fmt);
  const int length = std::vsnprintf(message, sizeof message, fmt, arguments);
  va_end(arguments);
  if (length < 0) return;
  if (doCmdWrite("/proc/zq2810/dbg_msg", message) != 0) (void)std::puts("open /proc/zq2810/dbg_msg fail");
}

extern "C" int doCmdWrite(const char* path, const char* text) {
  if (path == nullptr || text == nullptr) return -1;
  const store::Stream file(std::fopen(path, "we"));
  if (!file) return -1;
  (void)std::fputs(text, file.get());
  return 0;
}
