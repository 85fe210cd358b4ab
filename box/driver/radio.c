#include "box/driver/radio.h"

#include <linux/err.h>
#include <linux/etherdevice.h>
#include <linux/kernel_read_file.h>
#include <linux/module.h>
#include <linux/vmalloc.h>

#include "box/driver/dat.h"
#include "box/driver/radio_state.h"
#include "box/driver/texts.h"
#include "sim/driver/counter.h"

enum { MOST_DAT_BYTES = 1 << 20 };

static const char* const kPayloads[] = {"OuiFilter", "ProbeResponse"};

/* A file that cannot be read counts as an empty one: the driver then runs on its defaults. Null when there is no memory. */
static char* read_dat(int band) {
  void* bytes = NULL;
  const ssize_t size =
      kernel_read_file_from_path_initns(kBandTraits[band].dat_file, 0, &bytes, MOST_DAT_BYTES, NULL, READING_FIRMWARE);
  char* const text = kvmalloc(max_t(ssize_t, size, 0) + 1, GFP_KERNEL);
  if (text) {
    if (size > 0) memcpy(text, bytes, size);
    text[max_t(ssize_t, size, 0)] = '\0';
  }
  if (size >= 0) vfree(bytes);
  return text;
}

static bool is_any_bss_up(const struct radio* radio, const struct net_device* but) {
  int i;
  for (i = 0; i < radio->bss_count; ++i) {
    if (radio->device[i] && radio->device[i] != but && (radio->device[i]->flags & IFF_UP)) return true;
  }
  return false;
}

static int interface_open(struct net_device* device) {
  const struct interface* const own = netdev_priv(device);
  struct radio* const radio = own->radio;
  int error = 0;
  if (own->number >= 0 && !is_any_bss_up(radio, device)) {
    char* const dat = read_dat(radio->band);
    if (!dat) return -ENOMEM;
    mutex_lock(&texts_lock);
    error = -read_dat_anew(radio->band, dat, radio->bss_count);
    mutex_unlock(&texts_lock);
    kvfree(dat);
  }
  if (!error) netif_start_queue(device);
  return error;
}

static int interface_stop(struct net_device* device) {
  const struct interface* const own = netdev_priv(device);
  netif_stop_queue(device);
  if (own->number < 0) return 0;
  mutex_lock(&texts_lock);
  stations_leave(own->radio->band, device->name);
  mutex_unlock(&texts_lock);
  return 0;
}

/* Nobody is on the air: what is sent is counted, and gone. */
static netdev_tx_t interface_transmit(struct sk_buff* packet, struct net_device* device) {
  dev_lstats_add(device, packet->len);
  dev_kfree_skb(packet);
  return NETDEV_TX_OK;
}

static void interface_counters(struct net_device* device, struct rtnl_link_stats64* counters) {
  dev_lstats_read(device, &counters->tx_packets, &counters->tx_bytes);
}

static int interface_init(struct net_device* device) {
  device->lstats = netdev_alloc_pcpu_stats(struct pcpu_lstats);
  return device->lstats ? 0 : -ENOMEM;
}

static void interface_uninit(struct net_device* device) {
  free_percpu(device->lstats);
}

static const struct net_device_ops kInterface = {
    .ndo_init = interface_init,
    .ndo_uninit = interface_uninit,
    .ndo_open = interface_open,
    .ndo_stop = interface_stop,
    .ndo_start_xmit = interface_transmit,
    .ndo_get_stats64 = interface_counters,
    .ndo_set_mac_address = eth_mac_addr,
    .ndo_validate_addr = eth_validate_addr,
};

uint64_t interface_counter(const char* interface, const char* counter) {
  struct rtnl_link_stats64 counters = {};
  struct net_device* const device = __dev_get_by_name(&init_net, interface);
  if (!device) return 0;
  dev_get_stats(device, &counters);
  if (strcmp(counter, "tx_packets") == 0) return counters.tx_packets;
  if (strcmp(counter, "rx_packets") == 0) return counters.rx_packets;
  if (strcmp(counter, "tx_bytes") == 0) return counters.tx_bytes;
  if (strcmp(counter, "rx_bytes") == 0) return counters.rx_bytes;
  if (strcmp(counter, "tx_errors") == 0) return counters.tx_errors;
  if (strcmp(counter, "rx_errors") == 0) return counters.rx_errors;
  return 0;
}

static void set_up(struct net_device* device) {
  ether_setup(device);
  device->netdev_ops = &kInterface;
  device->min_mtu = ETH_MIN_MTU;
  device->max_mtu = ETH_MAX_MTU;
}

static struct net_device* add_interface(struct radio* radio, struct device* parent, const char* name, int number,
                                        int place) {
  const u8 address[ETH_ALEN] = {0x02, 0x28, 0x10, kBandTraits[radio->band].address_byte, 0, place};
  struct net_device* const device = alloc_netdev(sizeof(struct interface), name, NET_NAME_PREDICTABLE, set_up);
  struct interface* own;
  int error;
  if (!device) return ERR_PTR(-ENOMEM);
  own = netdev_priv(device);
  own->radio = radio;
  own->number = number;
  eth_hw_addr_set(device, address);
  SET_NETDEV_DEV(device, parent);
  if (number >= 0) device->wireless_handlers = &radio_requests;
  error = register_netdev(device);
  if (!error) return device;
  free_netdev(device);
  return ERR_PTR(error);
}

static int add_texts(const struct radio* radio) {
  const char* const prefix = kBandTraits[radio->band].bss_prefix;
  char name[40];
  int error = 0;
  int i;
  int kind;
  for (i = 0; i < radio->bss_count && !error; ++i) {
    snprintf(name, sizeof name, "%s%d", prefix, i);
    error = text_create(FOLDER_SETTINGS, name, "", false);
    for (kind = 0; kind < ARRAY_SIZE(kPayloads) && !error; ++kind) {
      snprintf(name, sizeof name, "%s%d.%s", prefix, i, kPayloads[kind]);
      error = text_create(FOLDER_PAYLOADS, name, "", false);
    }
  }
  snprintf(name, sizeof name, "stations-%s", prefix);
  if (!error) error = text_create(FOLDER_LISTS, name, "", false);
  snprintf(name, sizeof name, "neighbours-%s", prefix);
  if (!error) error = text_create(FOLDER_LISTS, name, "", false);
  return error;
}

static void remove_texts(const struct radio* radio) {
  const char* const prefix = kBandTraits[radio->band].bss_prefix;
  char name[40];
  int i;
  int kind;
  for (i = 0; i < radio->bss_count; ++i) {
    snprintf(name, sizeof name, "%s%d", prefix, i);
    texts_remove(FOLDER_SETTINGS, name);
    for (kind = 0; kind < ARRAY_SIZE(kPayloads); ++kind) {
      snprintf(name, sizeof name, "%s%d.%s", prefix, i, kPayloads[kind]);
      texts_remove(FOLDER_PAYLOADS, name);
    }
  }
  for (i = 0; i < 2; ++i) {
    snprintf(name, sizeof name, "%s-%s", i ? "neighbours" : "stations", prefix);
    texts_remove(FOLDER_LISTS, name);
  }
}

static int add_interfaces(struct radio* radio, struct device* parent) {
  const struct BandTraits* const traits = &kBandTraits[radio->band];
  int i;
  for (i = 0; i < kMostBsss + kWdsLinks; ++i) {
    const bool is_link = i >= kMostBsss;
    char name[IFNAMSIZ];
    struct net_device* device;
    if (!is_link && i >= radio->bss_count) continue;
    snprintf(name, sizeof name, "%s%d", is_link ? traits->wds_prefix : traits->bss_prefix, is_link ? i - kMostBsss : i);
    device = add_interface(radio, parent, name, is_link ? -1 : i, i);
    if (IS_ERR(device)) return PTR_ERR(device);
    radio->device[i] = device;
  }
  return 0;
}

void radio_stop(struct radio* radio) {
  int i;
  for (i = 0; i < kMostBsss + kWdsLinks; ++i) {
    if (!radio->device[i]) continue;
    unregister_netdev(radio->device[i]);
    free_netdev(radio->device[i]);
    radio->device[i] = NULL;
  }
  remove_texts(radio);
  kfree(radio);
}
EXPORT_SYMBOL_GPL(radio_stop);

struct radio* radio_start(int band, struct device* parent) {
  char* const dat = read_dat(band);
  struct radio* const radio = kzalloc(sizeof *radio, GFP_KERNEL);
  int error = -ENOMEM;
  if (dat && radio) {
    radio->band = band;
    radio->bss_count = dat_ssid_count(dat);
    error = add_texts(radio);
    if (!error) {
      mutex_lock(&texts_lock);
      error = -start_radio(band, dat, radio->bss_count);
      mutex_unlock(&texts_lock);
    }
    if (!error) error = add_interfaces(radio, parent);
  }
  kvfree(dat);
  if (!error) return radio;
  if (radio) radio_stop(radio);
  return ERR_PTR(error);
}
EXPORT_SYMBOL_GPL(radio_start);
