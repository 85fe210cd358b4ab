/* A PCI bus of its own that shows the board's chips. */
#pragma once

#include <linux/device.h>

/* `chips` is a list such as "7603,7663". */
int pci_bus_start(struct device* parent, const char* chips);
void pci_bus_stop(void);

bool pci_bus_has(unsigned int chip);
