// The exported list of names, and its copy.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "params/setting_checks.h"
#include "support/seams.h"

namespace {

using settings::entered;
using settings::failed;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(NameList, HasSevenNamesInSlotsOf20PaddedWithNul) {
  const char* const names[] = {"CountryRegion", "Channel",    "BeaconPeriod", "RTSThreshold",
                               "FragThreshold", "DtimPeriod", "IgmpSnEnable", ""};
  std::string expected;
  for (const char* name : names) {
    std::string slot = name;
    slot.resize(20, '\0');
    expected += slot;
  }
  ASSERT_EQ(160U, expected.size());
  EXPECT_TRUE(expected == std::string(wlan_script_com_attr[0], 160));
}

TEST(NameList, IsWritable) {
  for (auto& slot : wlan_script_com_attr) {
    std::memset(slot, 'x', sizeof slot);
    EXPECT_EQ(std::string(20, 'x'), std::string(slot, sizeof slot));
  }
}

struct Names {
  Names() { std::memset(slots, 'Z', sizeof slots); }
  std::string bytes() const { return std::string(slots[0], sizeof slots); }
  char slots[9][20];
};

// Untouched slots with these names in front.
std::string slots_with(const std::vector<std::string>& names) {
  std::string bytes = Names().bytes();
  for (size_t i = 0; i < names.size(); ++i)
    bytes.replace(i * 20, names[i].size() + 1, names[i].c_str(), names[i].size() + 1);
  return bytes;
}

TEST(NameCopy, GivesSevenNamesAndTouchesNothingElse) {
  Names out;
  EXPECT_EQ(7, wifimgr_lib_get_wlan_script_attr(out.slots));
  EXPECT_TRUE(slots_with({"CountryRegion", "Channel", "BeaconPeriod", "RTSThreshold", "FragThreshold", "DtimPeriod",
                          "IgmpSnEnable"}) == out.bytes());
  EXPECT_STREQ("IgmpSnEnable", out.slots[6]);
}

TEST(NameCopy, GivesNothingToANullPointer) {
  EXPECT_EQ(0, wifimgr_lib_get_wlan_script_attr(nullptr));
}

TEST(NameCopy, StopsAtTheFirstEmptySlot) {
  wlan_script_com_attr[2][0] = '\0';
  Names out;
  EXPECT_EQ(2, wifimgr_lib_get_wlan_script_attr(out.slots));
  EXPECT_TRUE(slots_with({"CountryRegion", "Channel"}) == out.bytes());
  wlan_script_com_attr[0][0] = '\0';
  Names none;
  EXPECT_EQ(0, wifimgr_lib_get_wlan_script_attr(none.slots));
  EXPECT_TRUE(Names().bytes() == none.bytes());
}

TEST(NameCopy, CutsANameWithoutAnEndTo19Characters) {
  std::memset(wlan_script_com_attr[0], 'n', 20);
  wlan_script_com_attr[1][0] = '\0';
  Names out;
  EXPECT_EQ(1, wifimgr_lib_get_wlan_script_attr(out.slots));
  EXPECT_TRUE(slots_with({settings::repeat("n", 19)}) == out.bytes());
}

TEST(NameCopy, LeavesOutTheEighthSlotWhenACallerFilledIt) {
  std::strcpy(wlan_script_com_attr[7], "Eighth");
  std::vector<char> out(7 * 20);
  EXPECT_EQ(7, wifimgr_lib_get_wlan_script_attr(reinterpret_cast<char(*)[20]>(out.data())));
}

TEST(NameCopy, TracesItsEntryAndItsExit) {
  const char function[] = "wifimgr_lib_get_wlan_script_attr";
  Names out;
  EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_wlan_script_attr(out.slots); }),
              ElementsAre(entered(function), succeeded(function)));
  EXPECT_THAT(seams::trace_of([] { (void)wifimgr_lib_get_wlan_script_attr(nullptr); }),
              ElementsAre(entered(function), failed(function)));
  EXPECT_THAT(seams::trace_of(
                  [&] {
                    (void)wifimgr_lib_get_wlan_script_attr(out.slots);
                    (void)wifimgr_lib_get_wlan_script_attr(nullptr);
                  },
                  7),
              IsEmpty());
}

}  // namespace
