// The execute script: its folders in a private /etc, and its lines.
#pragma once

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "support/sandbox.h"

namespace script {

using Settings = std::vector<std::string>;

inline std::string folder(int band) {
  return band == 0 ? "/etc/Wireless/RT2860AP" : "/etc/Wireless/RT2860AP_AC";
}

inline std::string path(int band) {
  return folder(band) + "/WLAN_exec.sh";
}

// An /etc for this test alone, with the folders that the scripts go to.
inline void make_folders() {
  ASSERT_EQ(0, mount("tmpfs", "/etc", "tmpfs", 0, "mode=755"));
  for (const std::string& name : {std::string("/etc/Wireless"), folder(0), folder(1)}) {
    ASSERT_EQ(0, mkdir(name.c_str(), 0755)) << name;
  }
}

// The script that is written for an SSID, by its number from 0.
inline std::string written(int band, uint32_t number) {
  EXPECT_EQ(0, wifimgr_lib_write_wifi_execute_sh(static_cast<uint32_t>(band), number));
  return sandbox::read_file(path(band));
}

// The lines for settings "Key=value" of an interface.
inline std::string lines(const std::string& interface, const Settings& settings) {
  std::string text;
  for (const std::string& setting : settings) text += "/userfs/bin/iwpriv " + interface + " set " + setting + "\n";
  return text;
}

inline Settings joined(std::initializer_list<Settings> parts) {
  Settings all;
  for (const Settings& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// Takes the band's snapshot, which is where the script has its interface names from.
inline void take_snapshot(int band) {
  ASSERT_EQ(0U, wifimgr_lib_wifi_config_oper(static_cast<uint32_t>(band), 0));
}

class Script : public testing::Test {
 protected:
  void SetUp() override { make_folders(); }
};

}  // namespace script
