// What the tests of the WPS service share: its four actions, the scripts they write, and the store they read.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "support/sandbox.h"
#include "wifimgr_lib.h"

namespace wps {

inline constexpr char kScript[] = "/tmp/wps.sh";
inline constexpr uint32_t kPushButton[] = {1};

struct Action {
  const char* function;
  int (*run)(const char* path, int wifi_type, int ssid_index);
};

inline int start_with_push_button(const char* path, int wifi_type, int ssid_index) {
  return wifimgr_lib_service_start_wps(path, wifi_type, ssid_index, kPushButton);
}

inline constexpr Action kActions[] = {
    {"wifimgr_lib_service_stop_wps", wifimgr_lib_service_stop_wps},
    {"wifimgr_lib_service_genpincode", wifimgr_lib_service_genpincode},
    {"wifimgr_lib_service_resetoob", wifimgr_lib_service_resetoob},
    {"wifimgr_lib_service_start_wps", start_with_push_button},
};

// A band of two SSIDs with these values, and its snapshot.
inline void load(int band, const std::string& modes, const std::string& states) {
  sandbox::load(band, "BssidNum=2\nWscConfMode=" + modes + "\nWscConfStatus=" + states + "\n");
  wifimgr_lib_wifi_config_oper(static_cast<uint32_t>(band), 0);
}

// Changes a loaded value of an SSID past every check.
inline void put(int band, int ssid_index, const char* key, const std::string& value) {
  ASSERT_EQ(0, update_attr(band, ssid_index, key, value.c_str()));
}

inline std::string interface(int band, int number) {
  return (band == 0 ? "ra" : "rai") + std::to_string(number);
}

}  // namespace wps
