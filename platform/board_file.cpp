// The board's files: buttons and the AHB status, read and written as they are.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr char kWpsButton[] = "/proc/zq2810/wps_button";
constexpr char kWps5gButton[] = "/proc/zq2810/wps_5g_button";
constexpr char kAhbStatus[] = "/proc/zq2810/ahb_status";
constexpr char kWlanWpsButton[] = "/proc/zq2810/wlan_wps_button";
constexpr char kWlan11acButton[] = "/proc/zq2810/wlan11ac_button";

// Reads up to `size` bytes and ends the buffer with a NUL in its last byte, whatever was read. False when the file
// cannot be opened; `result` receives what read returned.
bool read_file(const char* path, char* buffer, int size, ssize_t* result) {
  if (path == nullptr || buffer == nullptr) return false;
  const int file = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return false;
  *result = read(file, buffer, size > 0 ? static_cast<size_t>(size) : 0);
  if (size > 0) buffer[size - 1] = '\0';
  (void)close(file);
  return true;
}

int read_board(char* buffer, int size, uint32_t* count, const char* function, const char* path) {
  trace::enter(function);
  ssize_t result = 0;
  if (count == nullptr || !read_file(path, buffer, size, &result)) return trace::fail(function).as(-1);
  *count = static_cast<uint32_t>(result);
  return trace::success(function);
}

// A board without the file is no failure; deliberate.
int write_board(const char* text, const char* function, const char* path) {
  trace::enter(function);
  if (text != nullptr) {
    const store::Stream file(std::fopen(path, "we"));
    if (file) (void)std::fputs(text, file.get());
  }
  return trace::success(function);
}

}  // namespace

extern "C" int wifimgr_lib_get_WPS_BUTTON(char* buffer, int size, uint32_t* count) {
  return read_board(buffer, size, count, __func__, kWpsButton);
}

extern "C" int wifimgr_lib_get_AHB_STATUS(char* buffer, int size, uint32_t* count) {
  return read_board(buffer, size, count, __func__, kAhbStatus);
}

extern "C" int wifimgr_lib_get_WLAN11AC_BUTTON(char* buffer, int size, uint32_t* count) {
  return read_board(buffer, size, count, __func__, kWlan11acButton);
}

extern "C" int wifimgr_lib_set_WPS_BUTTON(const char* text) {
  return write_board(text, __func__, kWpsButton);
}

extern "C" int wifimgr_lib_set_WPS_5G_BUTTON(const char* text) {
  return write_board(text, __func__, kWps5gButton);
}

extern "C" int wifimgr_lib_set_AHB_STATUS(const char* text) {
  return write_board(text, __func__, kAhbStatus);
}

extern "C" int wifimgr_lib_set_WLAN_WPS_BUTTON(const char* text) {
  return write_board(text, __func__, kWlanWpsButton);
}

// The two modes report a file that cannot be opened differently; deliberate.
extern "C" int wifimgr_lib_get_button_state(int mode, const char* path, char* buffer, int size) {
  trace::enter(__func__);
  if (mode != 0 && mode != 1) return trace::fail(__func__).as(-2);
  ssize_t result = 0;
  if (!read_file(path, buffer, size, &result)) return trace::fail(__func__).as(mode == 0 ? -2 : -1);
  // An error while reading counts as something read in mode 0 and is the result in mode 1.
  if (mode == 1 && result < 0) return trace::fail(__func__).as(-1);
  (void)trace::success(__func__);
  if (mode == 0) return result != 0 ? 2 : 0;
  return static_cast<int>(result);
}
