#include "box/driver/pci_bus.h"

#include <linux/pci.h>
#include <linux/string.h>

enum { MOST_CHIPS = 4, VENDOR = 0x14c3, DOMAIN = 1, NETWORK_CLASS = 0x0280 };

static unsigned int present[MOST_CHIPS];
static struct pci_host_bridge* bridge;

#ifdef CONFIG_X86
static struct pci_sysdata sysdata = {.domain = DOMAIN, .node = NUMA_NO_NODE};
#endif

bool pci_bus_has(unsigned int chip) {
  int i;
  for (i = 0; i < MOST_CHIPS; ++i) {
    if (present[i] == chip) return true;
  }
  return false;
}

/* The configuration space of the device in a slot: an identity and a class, no memory, no interrupt. */
static u32 word_of(unsigned int devfn, int where) {
  const unsigned int slot = PCI_SLOT(devfn);
  const unsigned int chip = slot >= 1 && slot <= MOST_CHIPS && PCI_FUNC(devfn) == 0 ? present[slot - 1] : 0;
  if (!chip) return ~0U;
  switch (where & ~3) {
    case PCI_VENDOR_ID:
      return chip << 16 | VENDOR;
    case PCI_CLASS_REVISION:
      return NETWORK_CLASS << 16;
    default:
      return 0;
  }
}

static int read_config(struct pci_bus* bus, unsigned int devfn, int where, int size, u32* value) {
  const u32 word = word_of(devfn, where) >> 8 * (where & 3);
  *value = size == 4 ? word : word & ((1U << 8 * size) - 1);
  return PCIBIOS_SUCCESSFUL;
}

static int write_config(struct pci_bus* bus, unsigned int devfn, int where, int size, u32 value) {
  return PCIBIOS_SUCCESSFUL;
}

static struct pci_ops kOps = {.read = read_config, .write = write_config};

static int parse(const char* chips) {
  int count = 0;
  while (*chips) {
    unsigned int chip = 0;
    int used = 0;
    if (count == MOST_CHIPS || sscanf(chips, "%4x%n", &chip, &used) != 1 || chip == 0) return -EINVAL;
    present[count++] = chip;
    chips += used;
    if (*chips == ',') ++chips;
  }
  return count ? 0 : -EINVAL;
}

int pci_bus_start(struct device* parent, const char* chips) {
  int error = parse(chips);
  if (error) return error;
  bridge = pci_alloc_host_bridge(0);
  if (!bridge) return -ENOMEM;
  bridge->dev.parent = parent;
  bridge->ops = &kOps;
  bridge->busnr = 0;
#ifdef CONFIG_X86
  bridge->sysdata = &sysdata;
#else
  bridge->domain_nr = DOMAIN;
#endif
  error = pci_host_probe(bridge);
  if (error) pci_free_host_bridge(bridge);
  return error;
}

void pci_bus_stop(void) {
  pci_lock_rescan_remove();
  pci_stop_root_bus(bridge->bus);
  pci_remove_root_bus(bridge->bus);
  pci_unlock_rescan_remove();
  pci_free_host_bridge(bridge);
}
