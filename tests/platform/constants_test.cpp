// Names and values of the platform that callers ask for.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

int get_max_sta_num_name_2_4g(char* out, int size) {
  return wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME(0, out, size);
}

int get_max_sta_num_name_5g(char* out, int size) {
  return wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME(1, out, size);
}

struct Text {
  const char* name;
  int (*get)(char* out, int size);
  std::string text;
};

const Text kTexts[] = {
    {"WLAN_BUTTON_PATH", wifimgr_lib_get_WLAN_BUTTON_PATH, "/proc/zq2810/wlan_button"},
    {"WPS_BUTTON_PATH", wifimgr_lib_get_WPS_BUTTON_PATH, "/proc/zq2810/wps_button"},
    {"WPS_5G_BUTTON_PATH", wifimgr_lib_get_WPS_5G_BUTTON_PATH, "/proc/zq2810/wps_5g_button"},
    {"WLAN11AC_BUTTON_PATH", wifimgr_lib_get_WLAN11AC_BUTTON_PATH, "/proc/zq2810/wlan11ac_button"},
    {"WLAN_MAX_STA_NUM_NAME of 2.4G", get_max_sta_num_name_2_4g, "MbssMaxStaNum"},
    {"WLAN_MAX_STA_NUM_NAME of 5G", get_max_sta_num_name_5g, "MbssMaxStaNum"},
    {"CHANNEL_SELECT_DEF", wifimgr_lib_get_CHANNEL_SELECT_DEF, "3"},
    {"IEEE8021X_VAL", wifimgr_lib_get_IEEE8021X_VAL, "0"},
};

struct Number {
  const char* name;
  int (*get)(uint32_t* value);
  uint32_t value;
};

const Number kNumbers[] = {
    {"MESH_TRIGGER_WAIT", wifimgr_lib_get_MESH_TRIGGER_WAIT, 15000},
    {"img_boot_flag_offset", wifimgr_lib_get_img_boot_flag_offset, 0x340000},
    {"img_commit_flag_offset", wifimgr_lib_get_img_commit_flag_offset, 0x340001},
};

// A caller's buffer, filled with 'Z' to show what was written.
struct Buffer {
  Buffer() { std::memset(bytes, 'Z', sizeof bytes); }
  std::string all() const { return std::string(bytes, sizeof bytes); }
  char bytes[64];
};

// The buffer with `text` and its NUL in front.
std::string filled_with(const std::string& text) {
  std::string bytes = Buffer().all();
  return bytes.replace(0, text.size() + 1, text.c_str(), text.size() + 1);
}

template <typename Check>
void for_each_text(Check check) {
  for (const Text& row : kTexts) {
    SCOPED_TRACE(row.name);
    check(row);
  }
}

TEST(PlatformText, IsWrittenWithItsEndAndNothingBehindIt) {
  for_each_text([](const Text& row) {
    Buffer buffer;
    EXPECT_EQ(0, row.get(buffer.bytes, sizeof buffer.bytes));
    EXPECT_EQ(filled_with(row.text), buffer.all());
  });
}

TEST(PlatformText, FillsABufferOfItsSize) {
  for_each_text([](const Text& row) {
    Buffer buffer;
    EXPECT_EQ(0, row.get(buffer.bytes, static_cast<int>(row.text.size()) + 1));
    EXPECT_EQ(filled_with(row.text), buffer.all());
  });
}

TEST(PlatformText, IsCutToTheSizeWithItsEnd) {
  for_each_text([](const Text& row) {
    for (size_t size = 1; size <= row.text.size(); ++size) {
      Buffer buffer;
      EXPECT_EQ(0, row.get(buffer.bytes, static_cast<int>(size)));
      EXPECT_EQ(filled_with(row.text.substr(0, size - 1)), buffer.all());
    }
  });
}

TEST(PlatformText, IsNotWrittenWithASizeOf0OrLess) {
  for_each_text([](const Text& row) {
    for (const int size : {0, -1, INT_MIN}) {
      Buffer buffer;
      EXPECT_EQ(0, row.get(buffer.bytes, size));
      EXPECT_EQ(Buffer().all(), buffer.all());
    }
  });
}

TEST(PlatformText, IsNotWrittenToANullPointer) {
  for_each_text([](const Text& row) {
    EXPECT_EQ(0, row.get(nullptr, 64));
    EXPECT_EQ(0, row.get(nullptr, 0));
  });
}

TEST(PlatformText, NamesNoKeyOfAnUnknownBand) {
  for (const int band : {2, -1, 256, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(band);
    Buffer buffer;
    EXPECT_EQ(0, wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME(band, buffer.bytes, sizeof buffer.bytes));
    EXPECT_EQ(Buffer().all(), buffer.all());
    EXPECT_EQ(0, wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME(band, nullptr, 64));
  }
}

TEST(PlatformNumber, IsWrittenToTheCallersVariable) {
  for (const Number& row : kNumbers) {
    SCOPED_TRACE(row.name);
    uint32_t variables[] = {0xffffffffU, 0xffffffffU, 0xffffffffU};
    EXPECT_EQ(0, row.get(&variables[1]));
    EXPECT_THAT(variables, ElementsAre(0xffffffffU, row.value, 0xffffffffU));
  }
}

TEST(PlatformNumber, IsNotWrittenToANullPointer) {
  for (const Number& row : kNumbers) EXPECT_EQ(0, row.get(nullptr));
}

TEST(IxiaFlag, IsMinusOne) {
  EXPECT_EQ(-1, ixia5gflag);
  EXPECT_EQ(-1, wifimgr_lib_get_ixia5gflag());
}

TEST(IxiaFlag, KeepsItsValueWhenItIsSet) {
  EXPECT_EQ(0, wifimgr_lib_set_ixia5gflag(1));
  EXPECT_EQ(-1, wifimgr_lib_get_ixia5gflag());
  EXPECT_EQ(-1, ixia5gflag);
}

TEST(IxiaFlag, IsTheObjectThatCallersSee) {
  for (const int32_t value : {0, 1, INT_MAX, INT_MIN}) {
    ixia5gflag = value;
    EXPECT_EQ(value, wifimgr_lib_get_ixia5gflag());
    EXPECT_EQ(0, wifimgr_lib_set_ixia5gflag(5));
    EXPECT_EQ(value, wifimgr_lib_get_ixia5gflag());
  }
}

TEST(PlatformSwitch, DoesNothingWhateverIsPassed) {
  char text[] = "text";
  EXPECT_EQ(0, wifimgr_lib_set_ixia5gflag());
  EXPECT_EQ(0, wifimgr_lib_set_ixia5gflag(text, 5));
  EXPECT_EQ(0, wifimgr_lib_check_wifi_ixia_test());
  EXPECT_EQ(0, wifimgr_lib_check_wifi_ixia_test(1));
  EXPECT_EQ(0, wifimgr_lib_check_wifi_ixia_test(text, 5));
  EXPECT_EQ(0, wifimgr_lib_set_needRebootFlag());
  EXPECT_EQ(0, wifimgr_lib_set_needRebootFlag(1));
  EXPECT_EQ(0, wifimgr_lib_set_needRebootFlag(text, 5));
  EXPECT_STREQ("text", text);
  EXPECT_EQ(-1, ixia5gflag);
}

TEST(PlatformConstant, TracesNothingAndRunsNothing) {
  EXPECT_THAT(seams::trace_of([] {
                for_each_text([](const Text& row) {
                  Buffer buffer;
                  (void)row.get(buffer.bytes, sizeof buffer.bytes);
                  (void)row.get(nullptr, 0);
                });
                for (const Number& row : kNumbers) {
                  uint32_t value = 0;
                  (void)row.get(&value);
                  (void)row.get(nullptr);
                }
                Buffer buffer;
                (void)wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME(2, buffer.bytes, sizeof buffer.bytes);
                (void)wifimgr_lib_get_ixia5gflag();
                (void)wifimgr_lib_set_ixia5gflag(1);
                (void)wifimgr_lib_check_wifi_ixia_test(1);
                (void)wifimgr_lib_set_needRebootFlag(1);
              }),
              IsEmpty());
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace
