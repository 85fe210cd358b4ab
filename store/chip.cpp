// Which WLAN chips are on the PCI bus.
#include <cstdio>
#include <cstring>

#include "store/shell.h"
#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

// The position of a chip is the position of its flag.
constexpr char kChips[][5] = {"7603", "7612", "7615", "7663", "7915", "7916", "7905"};

}  // namespace

extern "C" int parse_driver(char* flags, int count) {
  trace::enter(__func__);
  (void)count;
  if (flags == nullptr) return trace::fail(__func__);
  (void)store::run_shell("cat /proc/bus/pci/devices > /tmp/devices");
  const store::Stream file(std::fopen("/tmp/devices", "r+e"));
  if (!file) return trace::fail(__func__, "Open the file /tmp/devices failed.");
  for (char line[1024]; std::fgets(line, sizeof line, file.get()) != nullptr;) {
    for (size_t chip = 0; chip < sizeof kChips / sizeof kChips[0]; ++chip) {
      // Anywhere in the line, a resource address included; deliberate.
      if (std::strstr(line, kChips[chip]) != nullptr) flags[chip] = '1';
    }
  }
  return trace::success(__func__);
}
