// The WDS settings, and checks that all their setters share.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "apply/dat_text.h"
#include "support/seams.h"

namespace wds {

using BandGetter = int (*)(int, int, char*, unsigned);

// A setting with one value that its setter accepts.
struct Setting {
  const char* name;  // after "wifimgr_lib_get_" and "wifimgr_lib_set_"
  const char* key;
  BandGetter get;
  wifimgr_setter_t set;
  const char* accepted;
};

inline constexpr Setting kSettings[] = {
    {"wdsenable", "WdsEnable", wifimgr_lib_get_wdsenable, wifimgr_lib_set_wdsenable, "1"},
    {"wdsencryptype", "WdsEncrypType", wifimgr_lib_get_wdsencryptype, wifimgr_lib_set_wdsencryptype, "AES;AES;AES;WEP"},
    {"wdsphymode", "WdsPhyMode", wifimgr_lib_get_wdsphymode, wifimgr_lib_set_wdsphymode, "CCK;CCK;CCK;OFDM"},
    {"wdslist", "WdsList", wifimgr_lib_get_wdslist, wifimgr_lib_set_wdslist,
     "02:00:00:00:00:01;02:00:00:00:00:02;02:00:00:00:00:03;02:00:00:00:00:04"},
};

inline constexpr char kZero[] = "00:00:00:00:00:00";

inline std::string fail_exit(const std::string& function, const std::string& why) {
  return "[" + function + "]:===Fail Exit===" + why + "\n";
}

// Gives every setting's value to its setter and expects this one error, and the stores as they were.
inline void expect_refused(wifimgr_setter_t set, const std::string& value, const std::string& error) {
  SCOPED_TRACE(testing::PrintToString(value));
  const std::string stores = sandbox::segment_bytes(0) + sandbox::segment_bytes(1);
  for (const uint32_t band : {0U, 1U}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set(band, -1, value.c_str())); }), testing::ElementsAre(error));
  }
  EXPECT_EQ(stores, sandbox::segment_bytes(0) + sandbox::segment_bytes(1));
}

inline void expect_stored(const Setting& setting, const std::string& value) {
  SCOPED_TRACE(testing::PrintToString(value));
  for (const int band : {0, 1}) {
    dat::put(band, -1, setting.key, "before");
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, setting.set(static_cast<uint32_t>(band), -1, value.c_str())); }),
                testing::IsEmpty());
    EXPECT_EQ(value, sandbox::field(band, setting.key, 1));
  }
}

}  // namespace wds
