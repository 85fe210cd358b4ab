/* A radio as the rest of the gateway sees it: a network interface for each BSS, four for WDS, and the requests that they answer. */
#pragma once

#include <linux/netdevice.h>

#include "box/driver/bands.h"

struct radio {
  int band;
  int bss_count;
  struct net_device* device[kMostBsss + kWdsLinks]; /* BSSs, then links */
};

/* Reads the band's dat file and makes the interfaces; null or an error pointer when that cannot be. */
struct radio* radio_start(int band, struct device* parent);
void radio_stop(struct radio* radio);

/* What an interface's private memory holds. */
struct interface {
  struct radio* radio;
  int number; /* of a link: -1 */
};

/* Requests of the interfaces (requests.c). */
extern const struct iw_handler_def radio_requests;

/* Bands that the chip of this PCI device id serves, as bits; the board knows which chips there are. */
unsigned int board_bands_of(unsigned int chip);
