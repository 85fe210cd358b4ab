// Command lines for the board's files: the WLAN LED's is run, that of WLAN sharing is the caller's.
#include <cstdio>

#include "store/shell.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

extern "C" int wifimgr_lib_set_LED_WLAN(const char* text) {
  trace::enter(__func__);
  if (text != nullptr) {
    // A longer line is cut as a whole, its redirection included; deliberate.
    char line[64];
    (void)std::snprintf(line, sizeof line, "echo %s > /proc/zq2810/led_wlan", text);
    (void)store::run_line(line);
  }
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_WLANSHARE_CMD(char* out, int a, int b, const char* text1, const char* text2) {
  trace::enter(__func__);
  if (out != nullptr && text1 != nullptr && text2 != nullptr) {
    (void)std::snprintf(out, WIFIMGR_WLANSHARE_CMD_SIZE, "echo %d %d %s %s > %s", a, b, text1, text2,
                        "/proc/zq2810/wlanshare");
  }
  return trace::success(__func__);
}
