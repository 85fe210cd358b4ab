// The radios' calibration images, between flash and the file that the driver loads.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "store/band.h"
#include "store/shell.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

// Which of the two numbers is a length and which a place is the tool's business.
constexpr unsigned long kFirstNumber = 0x20000;
constexpr char kPartition[] = "reservearea";
constexpr size_t kImageSize = 1024;

constexpr bool is_2_4g_chip(unsigned id) {
  const unsigned family = id & 0xFFF0U;
  return family == 0x3390 || family == 0x5390 || family == 0x3090 || family == 0x7600 || id == 0x7615 || id == 0x7592 ||
         id == 0x7915 || id == 0x7916;
}

// The 7615 is of the first family.
constexpr bool is_5g_chip(unsigned id) {
  return (id & 0xFFF0U) == 0x7610 || id == 0x7662 || id == 0x7663 || id == 0x7915 || id == 0x7916;
}

struct Radio {
  unsigned long second_number;
  char temporary[24];
  char image[44];
  char copy_command[72];
  char open_refusal[36];
  char default_kept[56];
};
// The missing slash of the 5G message is kept, as callers match the text.
constexpr Radio kRadios[store::kBands] = {
    {0x280000, "/tmp/RT30xxEEPROM.bin", "/etc/RT30xxEEPROM.bin", "cat /tmp/RT30xxEEPROM.bin > /etc/RT30xxEEPROM.bin",
     "open tmp/RT30xxEEPROM.bin fail!!!", "use default RT30xxEEPROM.bin"},
    {0x20000, "/tmp/MT7610EEPROM.bin", "/etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin",
     "cat /tmp/MT7610EEPROM.bin > /etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin", "open tmp/MT7610EEPROM.bin fail!!!",
     "use default etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin"},
};

constexpr char kWrongBand[] = "The wifi type is invalid.";

void run_tool(const char* direction, const char* file, const Radio& radio) {
  store::run_shell("/userfs/bin/mtd %s %s %lu %lu %s", direction, file, kFirstNumber, radio.second_number, kPartition);
}

// Reads the image's first bytes over `image`; returns what read returned, or -2 when the file cannot be opened.
ssize_t read_image(const char* path, uint8_t (&image)[kImageSize]) {
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return -2;
  const ssize_t length = read(file, image, sizeof image);
  (void)close(file);
  return length;
}

}  // namespace

extern "C" int wifimgr_lib_get_wifi_calibration(int wifi_type) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, kWrongBand);
  const Radio& radio = kRadios[wifi_type];
  run_tool("readflash", radio.temporary, radio);
  uint8_t image[kImageSize] = {};
  const ssize_t length = read_image(radio.temporary, image);
  if (length == -2) return trace::fail(__func__, radio.open_refusal);
  // Without an image the file stays; deliberate, and a success.
  if (length <= 0) return trace::success(__func__);
  const unsigned id = image[0] | static_cast<unsigned>(image[1]) << 8;
  if (wifi_type == store::k2_4G ? is_2_4g_chip(id) : is_5g_chip(id)) {
    (void)store::run_line(radio.copy_command);
  } else {
    (void)std::puts(radio.default_kept);
  }
  (void)unlink(radio.temporary);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_set_wifi_calibration(int wifi_type) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, kWrongBand);
  run_tool("writeflash", kRadios[wifi_type].image, kRadios[wifi_type]);
  return trace::success(__func__);
}
