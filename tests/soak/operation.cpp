#include "soak/operation.h"

#include <iterator>

#include "wifimgr_lib.h"

namespace soak {
namespace {

uint32_t number(int band) {
  return static_cast<uint32_t>(band);
}

char g_value[WIFIMGR_VALUE_SIZE];

int get_band_wide(int band) {
  return wifimgr_lib_get_channel(band, -1, g_value, sizeof g_value);
}

int get_of_ssid(int band) {
  return static_cast<int>(wifimgr_lib_get_hideSSID(number(band), 2, g_value, sizeof g_value));
}

int set_band_wide(int band) {
  return static_cast<int>(wifimgr_lib_set_beaconPeriod(number(band), -1, "200"));
}

int set_of_ssid(int band) {
  return static_cast<int>(wifimgr_lib_set_ssid(number(band), 2, "Another name"));
}

int set_shared(int band) {
  return static_cast<int>(wifimgr_lib_set_hideSSID(number(band), 3, "1"));
}

int save(int band) {
  return wifimgr_lib_save_dataFile(band);
}

int load(int band) {
  return wifimgr_lib_init(band);
}

int commit(int band) {
  return wifimgr_lib_commit(number(band), 1);
}

int dump(int band) {
  return wifimgr_lib_dump(band);
}

int judge(int band) {
  return wifimgr_lib_wifi_config_oper(number(band), 1) <= 2 ? 0 : 1;
}

int write_script(int band) {
  return wifimgr_lib_write_wifi_execute_sh(number(band), 1);
}

int ask_driver(int band) {
  wifimgr_ap_count count = {};
  return getAPCount(band, &count);
}

int set_level(int) {
  return wifimgr_lib_set_dbg_level("1");
}

}  // namespace

const Operation kOperations[] = {
    {"get", get_band_wide, false, false, false},
    {"get of an SSID", get_of_ssid, false, false, false},
    {"set", set_band_wide, false, false, true, "BeaconPeriod", 1, "200"},
    {"set of an SSID", set_of_ssid, false, false, true, "SSID2", 1, "Another name"},
    {"set of a shared key", set_shared, false, false, true, "HideSSID", 3, "1"},
    {"save", save, false, true, false},
    {"commit", commit, false, true, false},
    {"load", load, true, false, false},
    {"dump", dump, false, false, false},
    {"judge", judge, false, false, false},
    {"script", write_script, false, false, false},
    {"driver", ask_driver, false, false, false},
    {"level", set_level, false, false, false},
};
const int kOperationCount = static_cast<int>(std::size(kOperations));

}  // namespace soak
