// What the tests of the WPS settings share: the setters, a store with all their keys, and how it changes.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "support/sandbox.h"
#include "wifimgr_lib.h"

namespace wps {

using Setter = uint64_t (*)(uint32_t wifi_type, int32_t ssid_index, const char* value);
using Order = uint64_t (*)(uint32_t wifi_type, int32_t ssid_index);

struct Setting {
  const char* function;
  const char* key;
  Setter set;
  const char* good;  // a value it takes and no test starts with
};

// Kept in the store and sent.
inline constexpr Setting kStored[] = {
    {"wifimgr_lib_set_wscConfMode", "WscConfMode", wifimgr_lib_set_wscConfMode, "4"},
    {"wifimgr_lib_set_wscConfStatus", "WscConfStatus", wifimgr_lib_set_wscConfStatus, "1"},
    {"wifimgr_lib_set_wscV2Support", "WscV2Support", wifimgr_lib_set_wscV2Support, "0"},
    {"wifimgr_lib_set_wscMaxPinAttack", "WscMaxPinAttack", wifimgr_lib_set_wscMaxPinAttack, "9"},
    {"wifimgr_lib_set_wscKeyASCII", "WscKeyASCII", wifimgr_lib_set_wscKeyASCII, "62"},
    {"wifimgr_lib_set_wscSetupLockTime", "WscSetupLockTime", wifimgr_lib_set_wscSetupLockTime, "61"},
};

// Only sent.
inline constexpr Setting kDirect[] = {
    {"wifimgr_lib_set_wscMode", "WscMode", wifimgr_lib_set_wscMode, "2"},
    {"wifimgr_lib_set_wscPinCode", "WscPinCode", wifimgr_lib_set_wscPinCode, "12345670"},
    {"wifimgr_lib_set_wscGenPinCode", "WscGenPinCode", wifimgr_lib_set_wscGenPinCode, "1"},
};

struct OrderSetting {
  const char* function;
  const char* key;
  Order order;
};

// Sent without a value.
inline constexpr OrderSetting kOrders[] = {
    {"wifimgr_lib_set_wscGetConf", "WscGetConf", wifimgr_lib_set_wscGetConf},
    {"wifimgr_lib_set_wscStop", "WscStop", wifimgr_lib_set_wscStop},
    {"wifimgr_lib_set_wscOOB", "WscOOB", wifimgr_lib_set_wscOOB},
};

inline std::vector<Setting> all_settings() {
  std::vector<Setting> all(std::begin(kStored), std::end(kStored));
  all.insert(all.end(), std::begin(kDirect), std::end(kDirect));
  return all;
}

// Every key of the settings, with a value for each of the eight SSIDs, though the band has two.
inline std::string dat_text() {
  std::string text =
      "BssidNum=2\n"
      "Channel=6\n"
      "WscConfMode=7;7;7;7;7;7;7;7\n"
      "WscConfStatus=2;2;2;2;2;2;2;2\n"
      "WscV2Support=1;1;1;1;1;1;1;1\n"
      "WscMaxPinAttack=3;3;3;3;3;3;3;3\n"
      "WscKeyASCII=8;8;8;8;8;8;8;8\n"
      "WscSetupLockTime=60;60;60;60;60;60;60;60\n";
  for (const char ssid : {'1', '2', '3', '4', '5', '6', '7', '8'}) {
    text = text + "WSC_UUID_E" + ssid + "=uuid-" + ssid + "\nWSC_UUID_Str" + ssid + "=text-" + ssid + "\n";
  }
  return text;
}

inline std::string dat_text_without(const std::string& key) {
  std::string text = dat_text();
  const size_t start = text.find("\n" + key + "=") + 1;
  EXPECT_NE(0u, start) << key;
  return text.erase(start, text.find('\n', start) + 1 - start);
}

// Loads both bands, so that either can be seen to stay as it is.
inline void load() {
  for (const int band : {0, 1}) sandbox::load(band, dat_text());
}

inline std::vector<std::string> both_segments() {
  return {sandbox::segment_bytes(0), sandbox::segment_bytes(1)};
}

// The segment with another text in one field, which is filled up with NUL.
inline std::string with_field(std::string segment, const std::string& key, int number, const std::string& value) {
  for (size_t at = 0; at + sizeof(wifimgr_attr_record) <= segment.size(); at += sizeof(wifimgr_attr_record)) {
    if (std::strcmp(segment.c_str() + at, key.c_str()) != 0) continue;
    std::string field = value;
    field.resize(WIFIMGR_FIELD_SIZE, '\0');
    return segment.replace(at + offsetof(wifimgr_attr_record, field) + static_cast<size_t>(number - 1) * field.size(),
                           field.size(), field);
  }
  ADD_FAILURE() << "no record " << key;
  return segment;
}

inline std::string command(int band, int ssid_index, const std::string& key, const std::string& word) {
  return std::string("/userfs/bin/iwpriv ") + (band == 0 ? "ra" : "rai") + std::to_string(ssid_index - 1) + " set " +
         key + "=" + word;
}

inline std::string refusal(const char* function, const char* why) {
  return std::string("[") + function + "]:===Fail Exit===" + why + "\n";
}

}  // namespace wps
