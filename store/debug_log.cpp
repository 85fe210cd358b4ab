// The debug switches and the kernel's debug log.
#include <fcntl.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

enum class Outcome { kWritten, kCut, kNotOpened };

Outcome write_to(store::Stream& file, const char* text, size_t length) {
  if (!file) return Outcome::kNotOpened;
  (void)std::fwrite(text, 1, length, file.get());
  return file.close() ? Outcome::kWritten : Outcome::kCut;
}

// Of a folder in which everybody may plant a link: what one leads to must not be overwritten. Otherwise as fopen with
// "w+" does.
Outcome write_switch(const char* path, const char* text, size_t length) {
  const int descriptor = open(path, O_RDWR | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666);
  if (descriptor < 0) return Outcome::kNotOpened;
  store::Stream file(fdopen(descriptor, "w+"));
  if (!file) (void)close(descriptor);
  return write_to(file, text, length);
}

}  // namespace

extern "C" int wifimgr_lib_set_dbg_level(const char* level) {
  trace::enter(__func__);
  // Five bytes, the three NULs included: that is the file's format.
  if (write_switch("/tmp/wifi_lib_dbg_enable", "1\n\0\0", 5) != Outcome::kWritten) return trace::fail(__func__);
  // Without a level the file above still counts, and the result is still a failure; deliberate.
  if (level == nullptr) return trace::fail(__func__);
  if (write_switch("/tmp/vexalib_dbg", level, std::strlen(level)) == Outcome::kCut) return trace::fail(__func__);
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
  constexpr char kLog[] = "/proc/zq2810/dbg_msg";
  // A message that the kernel does not take is lost without a word.
  const bool is_lost = doCmdWrite(kLog, message) != 0;
  if (is_lost && !store::Stream(std::fopen(kLog, "we"))) (void)std::puts("open /proc/zq2810/dbg_msg fail");
}

extern "C" int doCmdWrite(const char* path, const char* text) {
  if (path == nullptr || text == nullptr) return -1;
  store::Stream file(std::fopen(path, "we"));
  return write_to(file, text, std::strlen(text)) == Outcome::kWritten ? 0 : -1;
}
