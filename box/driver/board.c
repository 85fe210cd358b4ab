/* The board: what lies on its PCI bus, and its files in /proc/zq2810. The radios' modules stand on this one. */
#include <linux/module.h>
#include <linux/pci.h>
#include <linux/platform_device.h>
#include <linux/random.h>

#include "box/driver/pci_bus.h"
#include "box/driver/radio.h"
#include "box/driver/radio_state.h"
#include "box/driver/texts.h"

static char* chips = "7603,7663";
module_param(chips, charp, 0444);
MODULE_PARM_DESC(chips, "the WLAN chips on the board, such as 7603,7663");

static struct platform_device* board;

static const struct {
  const char* name;
  const char* text;
  bool is_button;
} kFiles[] = {
    {"dbg_msg", "", false},        {"wlan_button", "", true},
    {"wps_button", "", true},      {"wps_5g_button", "", true},
    {"ahb_status", "1\n", false},  {"wlan_wps_button", "", true},
    {"wlan11ac_button", "", true}, {"led_wlan", "1\n", false},
    {"chip_id", "24\n", false},    {"wlanshare", "0 0 none none\n", false},
};

static const struct {
  const char* name;
  const char* text;
} kLists[] = {
    {"processes", "steerd 412 1\ndot1xd 418 1\nscand 0 0\n"},
    {"faults", ""},
    {"faults.lock", ""},
    {"tool-faults", ""},
};

uint32_t random_number(void) {
  return get_random_u32();
}

/* Which of the chips serves which band, the first that is there. */
static const struct {
  unsigned int chip;
  unsigned int bands;
} kChips[] = {{0x7603, 1}, {0x7612, 2}, {0x7663, 2}, {0x7615, 3}, {0x7915, 3}};

unsigned int board_bands_of(unsigned int chip) {
  unsigned int left = 3;
  int i;
  for (i = 0; i < ARRAY_SIZE(kChips); ++i) {
    if (kChips[i].chip == chip) return kChips[i].bands & left;
    if (pci_bus_has(kChips[i].chip)) left &= ~kChips[i].bands;
  }
  return 0;
}
EXPORT_SYMBOL_GPL(board_bands_of);

static int add_files(void) {
  int error = 0;
  int i;
  for (i = 0; i < ARRAY_SIZE(kFiles) && !error; ++i) {
    error = text_create(FOLDER_BOARD, kFiles[i].name, kFiles[i].text, kFiles[i].is_button);
  }
  for (i = 0; i < ARRAY_SIZE(kLists) && !error; ++i) {
    error = text_create(FOLDER_LISTS, kLists[i].name, kLists[i].text, false);
  }
  return error;
}

static int __init board_start(void) {
  int error = texts_start();
  if (error) return error;
  error = add_files();
  if (!error) {
    board = platform_device_register_simple("zq2810", -1, NULL, 0);
    error = PTR_ERR_OR_ZERO(board);
  }
  if (!error) {
    error = pci_bus_start(&board->dev, chips);
    if (error) platform_device_unregister(board);
  }
  if (error) texts_stop();
  return error;
}

static void __exit board_stop(void) {
  pci_bus_stop();
  platform_device_unregister(board);
  texts_stop();
}

module_init(board_start);
module_exit(board_stop);
MODULE_DESCRIPTION("The gateway's board, and what its radios' drivers have in common");
MODULE_LICENSE("Dual BSD/GPL");
