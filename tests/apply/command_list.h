// The command lines of a commit, by what they do.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "support/seams.h"
#include "wifimgr_lib.h"

namespace commands {

using Lines = std::vector<std::string>;

// How the chips are looked up.
inline constexpr char kChips[] = "cat /proc/bus/pci/devices > /tmp/devices";

// What a commit that succeeds runs.
inline Lines committed(uint32_t band, int32_t ssid_index = 1) {
  seams::commands.clear();
  EXPECT_EQ(0, wifimgr_lib_commit(band, ssid_index));
  return seams::commands;
}

// What differs between the bands' interface names; the tests count bands as int or as uint32_t.
template <typename Band>
std::string bss(Band band) {
  return band == 0 ? "ra" : "rai";
}
template <typename Band>
std::string wds(Band band) {
  return band == 0 ? "wds" : "wdsi";
}

// What is printed when the SSID count cannot be read.
inline constexpr char kNoCount[] = "write_wlan_config:wifimgr_lib_get_bssidnum fail.\n";

inline Lines joined(std::initializer_list<Lines> parts) {
  Lines all;
  for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// Interfaces prefix0 to prefix(count - 1), one after the other.
inline Lines down_from(const std::string& bridge, const std::string& prefix, int count) {
  Lines lines;
  for (int i = 0; i < count; ++i) {
    lines.push_back("ifconfig " + prefix + std::to_string(i) + " down");
    lines.push_back("brctl delif " + bridge + " " + prefix + std::to_string(i));
  }
  return lines;
}

inline Lines up_into(const std::string& bridge, const std::string& prefix, const std::vector<int>& numbers) {
  Lines lines;
  for (const int i : numbers) {
    lines.push_back("ifconfig " + prefix + std::to_string(i) + " up");
    lines.push_back("brctl addif " + bridge + " " + prefix + std::to_string(i));
  }
  return lines;
}

// The same with the bridge of the commit.
inline Lines down(const std::string& prefix, int count) {
  return down_from("br-lan", prefix, count);
}

inline Lines up(const std::string& prefix, const std::vector<int>& numbers) {
  return up_into("br-lan", prefix, numbers);
}

}  // namespace commands
