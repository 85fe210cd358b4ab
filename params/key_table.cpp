// The exported tables of keys that callers walk, each key with the setter that writes it, and their copies.
//
// The tables are writable, as callers may fill the global record; the library itself never walks them.
#include <cstdio>
#include <iterator>

#include "params/unique_keys.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

// Every row is compared with the setters' common type by the table's own element type.
#define ROW(key, setter) {key, setter},
#define END_RECORD \
  { "", nullptr }

wifimgr_key_setter wlan_common_default_parm[55] = {
#define COMMON_2_4G_ROW ROW
#include "params/key_table.def"
    END_RECORD};

wifimgr_key_setter wlan_ac_common_default_parm[64] = {
#define COMMON_5G_ROW ROW
#include "params/key_table.def"
    END_RECORD};

wifimgr_key_setter wlan_entry_default_parm[7] = {
#define ENTRY_ROW ROW
#include "params/key_table.def"
    END_RECORD};

wifimgr_key_setter wlan_ac_entry_default_parm[7] = {
#define ENTRY_ROW ROW
#include "params/key_table.def"
    END_RECORD};

wifimgr_key_setter wlan_script_com_attr_config[25] = {
#define SCRIPT_2_4G_ROW ROW
#include "params/key_table.def"
    END_RECORD};

wifimgr_key_setter wlan_ac_script_com_attr_config[33] = {
#define SCRIPT_5G_ROW ROW
#include "params/key_table.def"
    END_RECORD};

wifimgr_key_setter wlan_global_script_com_attr = END_RECORD;

char wlan_script_com_attr[8][WIFIMGR_ATTR_NAME_SIZE] = {"CountryRegion", "Channel",    "BeaconPeriod", "RTSThreshold",
                                                        "FragThreshold", "DtimPeriod", "IgmpSnEnable", ""};

static_assert(sizeof(wifimgr_key_setter) == WIFIMGR_TABLE_NAME_SIZE + sizeof(wifimgr_setter_t));

namespace {

#define KEY(key, setter) key,
constexpr const char* kCommonKeys2_4G[] = {
#define COMMON_2_4G_ROW KEY
#include "params/key_table.def"
};
constexpr const char* kCommonKeys5G[] = {
#define COMMON_5G_ROW KEY
#include "params/key_table.def"
};
constexpr const char* kEntryKeys[] = {
#define ENTRY_ROW KEY
#include "params/key_table.def"
};
constexpr const char* kScriptKeys2_4G[] = {
#define SCRIPT_2_4G_ROW KEY
#include "params/key_table.def"
};
constexpr const char* kScriptKeys5G[] = {
#define SCRIPT_5G_ROW KEY
#include "params/key_table.def"
};
static_assert(std::size(kCommonKeys2_4G) == 54 && std::size(kCommonKeys5G) == 63);
static_assert(std::size(kEntryKeys) == 6);
static_assert(std::size(kScriptKeys2_4G) == 24 && std::size(kScriptKeys5G) == 32);
static_assert(params::are_unique(kCommonKeys2_4G) && params::are_unique(kCommonKeys5G));
static_assert(params::are_unique(kEntryKeys));
static_assert(params::are_unique(kScriptKeys2_4G) && params::are_unique(kScriptKeys5G));

// Copies the records up to the first empty name, at most `most`; returns how many.
int copy_records(const wifimgr_key_setter* table, int most, wifimgr_key_setter* out) {
  int count = 0;
  for (; count < most && table[count].name[0] != '\0'; ++count) {
    (void)std::snprintf(out[count].name, sizeof out[count].name, "%.*s", WIFIMGR_TABLE_NAME_SIZE - 1,
                        table[count].name);
    out[count].setter = table[count].setter;
  }
  return count;
}

// Never the end record, even when a caller has written into it: `out` has no room for that many.
template <int kSize>
int copy_table(const wifimgr_key_setter (&table)[kSize], wifimgr_key_setter* out) {
  return copy_records(table, kSize - 1, out);
}

}  // namespace

extern "C" int wifimgr_lib_get_wlan_attr(int type, wifimgr_key_setter* out) {
  trace::enter(__func__);
  if (out == nullptr) return trace::fail(__func__).as(0);
  int count = 0;
  if (type == 0) count = copy_table(wlan_common_default_parm, out);
  if (type == 1) count = copy_table(wlan_ac_common_default_parm, out);
  if (type == 2) count = copy_records(&wlan_global_script_com_attr, 1, out);
  return trace::success(__func__).as(count);
}

extern "C" int wifimgr_lib_get_wlan_entry_attr(int type, wifimgr_key_setter* out) {
  trace::enter(__func__);
  if (out == nullptr) return trace::fail(__func__).as(0);
  int count = 0;
  if (type == 0) count = copy_table(wlan_entry_default_parm, out);
  if (type == 1) count = copy_table(wlan_ac_entry_default_parm, out);
  return trace::success(__func__).as(count);
}

extern "C" int wifimgr_lib_get_wlan_script_com_attr_config(int type, wifimgr_key_setter* out) {
  trace::enter(__func__);
  if (out == nullptr) return trace::fail(__func__).as(0);
  int count = 0;
  if (type == 0) count = copy_table(wlan_script_com_attr_config, out);
  if (type == 1) count = copy_table(wlan_ac_script_com_attr_config, out);
  return trace::success(__func__).as(count);
}

extern "C" int wifimgr_lib_get_wlan_script_attr(char (*out)[WIFIMGR_ATTR_NAME_SIZE]) {
  trace::enter(__func__);
  if (out == nullptr) return trace::fail(__func__).as(0);
  constexpr int kNames = 7;  // the eighth slot ends the list
  int count = 0;
  for (const auto& name : wlan_script_com_attr) {
    if (name[0] == '\0' || count == kNames) break;
    (void)std::snprintf(out[count++], WIFIMGR_ATTR_NAME_SIZE, "%.*s", WIFIMGR_ATTR_NAME_SIZE - 1, name);
  }
  return trace::success(__func__).as(count);
}
