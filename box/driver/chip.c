/* The driver of one chip: the modules differ in CHIP, its PCI device id, alone. */
#include <linux/err.h>
#include <linux/module.h>
#include <linux/pci.h>

#include "box/driver/radio.h"

struct chip {
  struct radio* radio[kBands];
};

static void stop_radios(struct chip* chip) {
  int band;
  for (band = 0; band < kBands; ++band) {
    if (chip->radio[band]) radio_stop(chip->radio[band]);
  }
}

static int chip_probe(struct pci_dev* device, const struct pci_device_id* id) {
  const unsigned int bands = board_bands_of(CHIP);
  struct chip* const chip = devm_kzalloc(&device->dev, sizeof *chip, GFP_KERNEL);
  int band;
  if (!chip) return -ENOMEM;
  for (band = 0; band < kBands; ++band) {
    struct radio* radio;
    if (!(bands & 1U << band)) continue;
    radio = radio_start(band, &device->dev);
    if (IS_ERR(radio)) {
      stop_radios(chip);
      return PTR_ERR(radio);
    }
    chip->radio[band] = radio;
  }
  pci_set_drvdata(device, chip);
  return 0;
}

static void chip_remove(struct pci_dev* device) {
  stop_radios(pci_get_drvdata(device));
}

static const struct pci_device_id kIds[] = {{PCI_DEVICE(0x14c3, CHIP)}, {}};
MODULE_DEVICE_TABLE(pci, kIds);

static struct pci_driver chip_driver = {
    .name = KBUILD_MODNAME,
    .id_table = kIds,
    .probe = chip_probe,
    .remove = chip_remove,
};
module_pci_driver(chip_driver);

MODULE_DESCRIPTION("A radio of the gateway");
MODULE_LICENSE("Dual BSD/GPL");
