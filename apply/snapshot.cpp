// Change detection: a snapshot of what was last applied, compared with the store.
//
// It traces nothing but one failure; the getters it asks trace as always.
#include <cstring>

#include "apply/snapshot_rows.h"
#include "params/repeated_value.h"
#include "store/band.h"
#include "store/decimal.h"
#include "store/record.h"
#include "store/trace.h"

wifimgr_band_snapshot store_global[2];

static_assert(sizeof(apply::Snapshot) == 432 && alignof(apply::Snapshot) == 1);
static_assert(offsetof(apply::Snapshot, bss_count) == 16);
static_assert(offsetof(apply::Snapshot, channel) == 24);
static_assert(offsetof(apply::Snapshot, wireless_mode) == 56);
static_assert(offsetof(apply::Snapshot, vht_bw) == 72);
static_assert(offsetof(apply::Snapshot, tx_power) == 80);
static_assert(offsetof(apply::Snapshot, frag_threshold) == 116);
static_assert(offsetof(apply::Snapshot, wds_enable) == 120);
static_assert(offsetof(apply::Snapshot, wds_encryp_type) == 121);
static_assert(offsetof(apply::Snapshot, wds_key) == 153);
static_assert(offsetof(apply::Snapshot, wds_list) == 218);
static_assert(offsetof(apply::Snapshot, wep_key) == 298);
static_assert(offsetof(apply::Snapshot, apsd_capable) == 406);
static_assert(offsetof(apply::Snapshot, wsc_v2_support) == 414);
static_assert(offsetof(apply::Snapshot, ssid_enable) == 422);
static_assert(offsetof(apply::Snapshot, filling) == 426);

namespace {

using apply::BandRow;
using apply::Snapshot;
using apply::SsidRow;

constexpr uint64_t kSame = 0;
constexpr uint64_t kRadioChange = 1;
constexpr uint64_t kRebootChange = 2;

constexpr BandRow kCommonRows[] = {
    {wifimgr_lib_get_channel, offsetof(Snapshot, channel)},
    {wifimgr_lib_get_beaconPeriod, offsetof(Snapshot, beacon_period)},
    {wifimgr_lib_get_dtimPeriod, offsetof(Snapshot, dtim_period)},
    {wifimgr_lib_get_HT_TxStream, offsetof(Snapshot, ht_tx_stream)},
    {wifimgr_lib_get_HT_RxStream, offsetof(Snapshot, ht_rx_stream)},
    {wifimgr_lib_get_wirelessMode, offsetof(Snapshot, wireless_mode)},
    {wifimgr_lib_get_txPower, offsetof(Snapshot, tx_power)},
    {wifimgr_lib_get_fragThreshold, offsetof(Snapshot, frag_threshold)},
};

constexpr SsidRow kEntryRows[] = {
    {wifimgr_lib_get_apsdCapable, offsetof(Snapshot, apsd_capable)},
    {wifimgr_lib_get_wscV2Support, offsetof(Snapshot, wsc_v2_support)},
    {wifimgr_lib_get_enableSsid, offsetof(Snapshot, ssid_enable)},
};

constexpr BandRow kHtRows[] = {
    {wifimgr_lib_get_HT_BSSCoexistence, offsetof(Snapshot, ht_bss_coexistence)},
    {wifimgr_lib_get_HT_EXTCHA, offsetof(Snapshot, ht_extcha)},
    {wifimgr_lib_get_HT_BW, offsetof(Snapshot, ht_bw)},
    {wifimgr_lib_get_HT_GI, offsetof(Snapshot, ht_gi)},
};

constexpr BandRow kHeRows[] = {
    {wifimgr_lib_get_MuOfdmaDlEnable, offsetof(Snapshot, mu_ofdma_dl_enable)},
    {wifimgr_lib_get_MuOfdmaUlEnable, offsetof(Snapshot, mu_ofdma_ul_enable)},
    {wifimgr_lib_get_MuMimoDlEnable, offsetof(Snapshot, mu_mimo_dl_enable)},
    {wifimgr_lib_get_MuMimoUlEnable, offsetof(Snapshot, mu_mimo_ul_enable)},
    {wifimgr_lib_get_TWTSupport, offsetof(Snapshot, twt_support)},
    {wifimgr_lib_get_SREnable, offsetof(Snapshot, sr_enable)},
    {wifimgr_lib_get_SRMode, offsetof(Snapshot, sr_mode)},
    {wifimgr_lib_get_SRSDEnable, offsetof(Snapshot, srsd_enable)},
};

// The band's regulatory region; each band has a key and a field of its own. The getter's answer is not looked at: a
// value that was not read is empty, and so 0.
int32_t read_region(store::Band band) {
  const apply::BandGetter getter =
      band == store::k2_4G ? wifimgr_lib_get_countryRegion : wifimgr_lib_get_countryRegionABand;
  char text[store::kValueSize] = "";
  (void)getter(band, -1, text, sizeof text);
  return store::decimal(text);
}

constexpr size_t region_offset(store::Band band) {
  return band == store::k2_4G ? offsetof(Snapshot, country_region) : offsetof(Snapshot, country_region_a_band);
}

// The value repeated once per BSS, reduced to its first number; deliberate, no BSS counts as 0.
int32_t read_spread_number(apply::BandGetter getter, store::Band band, int bss_count) {
  char text[store::kValueSize] = "";
  if (getter(band, -1, text, sizeof text) != 0) text[0] = '\0';
  char list[store::kValueSize];
  params::repeat_value(list, text, bss_count);
  return store::decimal(list);
}

// Calls `visit` for every row with the number that its getter gives for the first BSS, until it returns true. Only the
// first, however many there are; deliberate, as the fields of the others would overlap the next slot.
template <typename Visit>
bool visit_entry_rows(uint32_t wifi_type, const char* bss_count, Visit visit) {
  if (store::decimal(bss_count) < 1) return false;
  for (const SsidRow& row : kEntryRows) {
    char text[store::kValueSize] = "";
    if (row.getter(wifi_type, 1, text, sizeof text) != 0) continue;
    if (visit(row.offset, store::decimal(text))) return true;
  }
  return false;
}

bool read_bss_count(store::Band band, char (&text)[store::kValueSize]) {
  return wifimgr_lib_get_bssidnum(band, -1, text, sizeof text) == 0;
}

}  // namespace

extern "C" uint64_t systemreboot_store(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record == nullptr) return 0;
  int32_t number = 0;
  if (!apply::read_number(wifimgr_lib_get_bssidnum, wifi_type, number)) return 0;
  record->bss_count = number;
  if (apply::read_number(wifimgr_lib_get_WHNAT, wifi_type, number)) record->whnat = number;
  return 0;
}

extern "C" uint64_t systemreboot_compare(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record == nullptr) return kSame;
  int32_t number = 0;
  if (apply::read_number(wifimgr_lib_get_bssidnum, wifi_type, number) && number != record->bss_count)
    return kRebootChange;
  if (!apply::read_number(wifimgr_lib_get_WHNAT, wifi_type, number)) return kSame;
  return number != record->whnat ? kRebootChange : kSame;
}

extern "C" uint64_t commoncap_store(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record == nullptr) return 0;
  apply::store_rows(kCommonRows, *record, wifi_type);
  if (store::is_band(wifi_type)) {
    apply::store_number(*record, region_offset(wifi_type), read_region(wifi_type));
  }
  return 0;
}

extern "C" uint64_t commoncap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record == nullptr) return kSame;
  if (apply::rows_differ(kCommonRows, *record, wifi_type)) return kRadioChange;
  if (!store::is_band(wifi_type)) return kSame;
  return read_region(wifi_type) != apply::load_number(*record, region_offset(wifi_type)) ? kRadioChange : kSame;
}

extern "C" uint64_t entrycap_store(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  char count[store::kValueSize] = "";
  if (record == nullptr || !read_bss_count(wifi_type, count)) return 0;
  (void)visit_entry_rows(wifi_type, count, [record](size_t offset, int32_t number) {
    apply::store_number(*record, offset, number);
    return false;
  });
  return 0;
}

extern "C" uint64_t entrycap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record == nullptr) return kSame;
  char count[store::kValueSize] = "";
  if (!read_bss_count(wifi_type, count)) return trace::fail(__func__);
  const bool differs = visit_entry_rows(wifi_type, count, [record](size_t offset, int32_t number) {
    return number != apply::load_number(*record, offset);
  });
  return differs ? kRadioChange : kSame;
}

extern "C" uint64_t htcap_store(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record != nullptr) apply::store_rows(kHtRows, *record, wifi_type);
  return 0;
}

extern "C" uint64_t htcap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  return record != nullptr && apply::rows_differ(kHtRows, *record, wifi_type) ? kRadioChange : kSame;
}

extern "C" uint64_t vhtcap_store(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  int32_t count = 0;
  if (record == nullptr || wifi_type == store::k2_4G) return 0;
  if (!apply::read_number(wifimgr_lib_get_bssidnum, wifi_type, count)) return 0;
  record->vht_bw = read_spread_number(wifimgr_lib_get_VHT_BW, wifi_type, count);
  record->vht_sgi = read_spread_number(wifimgr_lib_get_VHT_SGI, wifi_type, count);
  return 0;
}

extern "C" uint64_t vhtcap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  int32_t count = 0;
  if (record == nullptr || wifi_type == store::k2_4G) return kSame;
  if (!apply::read_number(wifimgr_lib_get_bssidnum, wifi_type, count)) return kSame;
  if (read_spread_number(wifimgr_lib_get_VHT_BW, wifi_type, count) != record->vht_bw) return kRadioChange;
  return read_spread_number(wifimgr_lib_get_VHT_SGI, wifi_type, count) != record->vht_sgi ? kRadioChange : kSame;
}

extern "C" uint64_t hecap_store(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  if (record != nullptr) apply::store_rows(kHeRows, *record, wifi_type);
  return 0;
}

extern "C" uint64_t hecap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type) {
  return record != nullptr && apply::rows_differ(kHeRows, *record, wifi_type) ? kRadioChange : kSame;
}

// The two hold the place of chip-specific checks; the store hands its record back.
extern "C" uint64_t chipspecial_store(wifimgr_band_snapshot* record, uint32_t) {
  return static_cast<uint64_t>(reinterpret_cast<uintptr_t>(record));
}

extern "C" uint64_t chipspecial_compare(wifimgr_band_snapshot*, uint32_t) {
  return kSame;
}

namespace {

using Operation = uint64_t (*)(wifimgr_band_snapshot*, uint32_t);

struct Group {
  char label[32];
  Operation store;
  Operation compare;
};

// In order of weight: a change that needs a reboot is found before any other.
constexpr Group kGroups[] = {
    {"systemreboot", systemreboot_store, systemreboot_compare},
    {"commoncap", commoncap_store, commoncap_compare},
    {"entrycap", entrycap_store, entrycap_compare},
    {"htcap", htcap_store, htcap_compare},
    {"vhtcap", vhtcap_store, vhtcap_compare},
    {"hecap", hecap_store, hecap_compare},
    {"wds", wds_store, wds_compare},
    {"chipspecial", chipspecial_store, chipspecial_compare},
    {"", nullptr, nullptr},
};

void take_snapshot(Snapshot& record, uint32_t wifi_type) {
  std::memset(&record, 0, sizeof record);
  std::memcpy(record.prefix, wifi_type == store::k2_4G ? "ra" : "rai", wifi_type == store::k2_4G ? 2 : 3);
  for (const Group* group = kGroups; group->label[0] != '\0'; ++group) (void)group->store(&record, wifi_type);
}

uint64_t compare_with_snapshot(Snapshot& record, uint32_t wifi_type) {
  for (const Group* group = kGroups; group->label[0] != '\0'; ++group) {
    const uint64_t change = group->compare(&record, wifi_type);
    if (change != kSame) return change;
  }
  return kSame;
}

}  // namespace

extern "C" uint64_t wifimgr_lib_wifi_config_oper(uint32_t wifi_type, int32_t oper) {
  if (!store::is_band(wifi_type)) return kSame;
  Snapshot& record = store_global[wifi_type];
  if (oper == 0) {
    take_snapshot(record, wifi_type);
    return kSame;
  }
  return oper == 1 ? compare_with_snapshot(record, wifi_type) : kSame;
}
