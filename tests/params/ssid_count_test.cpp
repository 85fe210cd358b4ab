// How many SSIDs a band serves, and the reload flag that a change of it sets.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <climits>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using settings::Buffer;
using settings::entered;
using settings::failed;
using settings::Image;
using settings::own_lines;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kSetter[] = "wifimgr_lib_set_bssidNum";
constexpr char kSetFlag[] = "wifimgr_lib_set_reloadFlag";
constexpr char kGetFlag[] = "wifimgr_lib_get_reloadFlag";

struct Change {
  const char* current;
  const char* value;
  const char* flag;
};

// The new text is compared with as much of the stored one as it is long.
constexpr Change kChanges[] = {
    {"2", "2", "0"},   {"3", "2", "1"},  {"2", "3", "1"},   {"12", "1", "0"},   {"1", "12", "1"},
    {"12", "12", "0"}, {"12", "2", "1"}, {"2", "02", "1"},  {"02", "0", "0"},   {"2", "", "0"},
    {"2", "x", "1"},   {"8", "8 ", "1"}, {"8", "8\n", "0"}, {"8", "8\n1", "1"},
};

TEST(SsidCount, ChangeSetsTheReloadFlagAndStoresTheCount) {
  for (const Change& change : kChanges) {
    for (const uint32_t band : {0U, 1U}) {
      SCOPED_TRACE(std::string(change.current) + " to " + change.value + " of band " + std::to_string(band));
      settings::load_with("BssidNum", change.current);
      EXPECT_EQ(0U, wifimgr_lib_set_reloadFlag(band, "old"));
      Image image;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(band, -1, change.value)); }),
                  IsEmpty());
      image.set(static_cast<int>(band), "BssidNum", 1, change.value);
      image.set(static_cast<int>(band), "ReloadFlag", 1, change.flag);
      EXPECT_EQ("", image.difference());
    }
  }
}

TEST(SsidCount, ChangeRemembersThePreviousCountOfItsBand) {
  settings::load_with("BssidNum", "5");
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(1, -1, "3"));
  EXPECT_THAT(pre_wlan_state, ElementsAre(5, 5));
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(1, -1, "7"));
  EXPECT_THAT(pre_wlan_state, ElementsAre(5, 3));
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(0, -1, "1"));
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(0, -1, "2"));
  EXPECT_THAT(pre_wlan_state, ElementsAre(1, 3));
}

TEST(SsidCount, RemembersZeroForATextThatIsNoNumber) {
  settings::load_with("BssidNum", "5");
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(0, -1, "many"));
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(0, -1, "2"));
  EXPECT_EQ(0, pre_wlan_state[0]);
}

TEST(SsidCount, TakesAnyText) {
  settings::load_distinct();
  for (const std::string& value : settings::any_text().accepted) {
    EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(0, -1, value.c_str()));
    EXPECT_EQ(value.substr(0, 149), sandbox::field(0, "BssidNum", 1));
  }
}

TEST(SsidCount, RefusesAnyIndexButMinusOne) {
  settings::load_distinct();
  const Image image;
  for (const int32_t index : {0, 1, 8, -2, INT_MAX, INT_MIN}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_bssidNum(0, index, "2")); }),
                ElementsAre(failed(kSetter, "The ssid index here should be -1.")));
  }
  EXPECT_EQ("", image.difference());
  EXPECT_EQ(8, pre_wlan_state[0]);
}

TEST(SsidCount, LooksAtTheIndexBeforeTheBand) {
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_bssidNum(2, 0, "2")); }),
              ElementsAre(failed(kSetter, "The ssid index here should be -1.")));
}

TEST(SsidCount, RefusesANullValueFirst) {
  settings::load_distinct();
  const Image image;
  for (const int32_t index : {-1, 0}) {
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_bssidNum(0, index, nullptr)); }),
                ElementsAre(entered(kSetter), failed(kSetter)));
  }
  EXPECT_EQ("", image.difference());
}

TEST(SsidCount, RefusesAnUnknownBandAndRemembersNothing) {
  settings::load_distinct();
  const Image image;
  for (const uint32_t band : {2U, 0xffffffffU, 0x80000000U}) {
    EXPECT_THAT(
        seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_bssidNum(band, -1, "2")); }),
        ElementsAre(failed("read_attr", "The wifi_type is wrong."), failed("update_attr", "The wifi_type is wrong.")));
  }
  EXPECT_EQ("", image.difference());
  EXPECT_THAT(pre_wlan_state, ElementsAre(8, 8));
}

TEST(SsidCount, WithoutAReloadFlagIsNotChangedButThePreviousCountIsRemembered) {
  settings::load_without("ReloadFlag");
  pre_wlan_state[0] = 77;
  const Image image;
  EXPECT_THAT(
      seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_bssidNum(0, -1, "4")); }),
      ElementsAre(failed("update_attr", "The attr_name do not exist."), failed(kSetter, "Set the ReloadFlag failed.")));
  EXPECT_EQ("", image.difference());
  EXPECT_EQ(2, pre_wlan_state[0]);
}

TEST(SsidCount, ThatIsMissingIsNotAddedAndLeavesTheFlagAlone) {
  settings::load_without("BssidNum");
  pre_wlan_state[0] = 77;
  const Image image;
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_bssidNum(0, -1, "4")); }),
              ElementsAre(failed("read_attr", "The attr_name do not exist."),
                          failed("update_attr", "The attr_name do not exist.")));
  EXPECT_EQ("", image.difference());
  EXPECT_EQ(77, pre_wlan_state[0]);
}

TEST(SsidCount, ThatCannotBeReadIsWrittenAllTheSame) {
  settings::load_with("ReloadFlag", "7");
  pre_wlan_state[0] = 77;
  Image image;
  seams::fail(seams::semop_fault, 1, EINTR);
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(0, -1, "4"));
  image.set(0, "BssidNum", 1, "4");
  EXPECT_EQ("", image.difference());
  EXPECT_EQ(77, pre_wlan_state[0]);
}

TEST(SsidCount, ThatCannotBeWrittenLeavesTheFlagAndThePreviousCount) {
  settings::load_with("ReloadFlag", "7");
  pre_wlan_state[0] = 77;
  Image image;
  // The fifth: reading the count and setting the flag take two each.
  seams::fail(seams::semop_fault, 5, EINTR);
  EXPECT_THAT(own_lines(kSetter, seams::trace_of([] { EXPECT_EQ(1U, wifimgr_lib_set_bssidNum(0, -1, "4")); })),
              ElementsAre(entered(kSetter), failed(kSetter)));
  image.set(0, "ReloadFlag", 1, "1");
  EXPECT_EQ("", image.difference());
  EXPECT_EQ(2, pre_wlan_state[0]);
}

TEST(SsidCount, TracesItsSteps) {
  settings::load_distinct();
  const auto lines = seams::trace_of([] { EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(0, -1, "4")); });
  EXPECT_THAT(own_lines(kSetter, lines), ElementsAre(entered(kSetter), succeeded(kSetter)));
  EXPECT_THAT(own_lines("wifimgr_lib_get_bssidnum", lines),
              ElementsAre(entered("wifimgr_lib_get_bssidnum"), succeeded("wifimgr_lib_get_bssidnum")));
  EXPECT_THAT(own_lines(kSetFlag, lines), ElementsAre(entered(kSetFlag), succeeded(kSetFlag)));
}

TEST(SsidCount, ThatIsHigherWidensTheIndexes) {
  settings::load_with("BssidNum", "2");
  EXPECT_EQ(1U, wifimgr_lib_set_hideSSID(0, 3, "1"));
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(0, -1, "3"));
  EXPECT_EQ(0U, wifimgr_lib_set_hideSSID(0, 3, "1"));
  EXPECT_EQ("1", sandbox::field(0, "HideSSID", 3));
}

TEST(ReloadFlag, TakesAnyTextInItsBandAlone) {
  settings::load_distinct();
  Image image;
  for (const int band : {0, 1}) {
    for (const std::string& value : settings::any_text().accepted) {
      EXPECT_EQ(0, wifimgr_lib_set_reloadFlag(static_cast<uint32_t>(band), value.c_str()));
      image.set(band, "ReloadFlag", 1, value);
      ASSERT_EQ("", image.difference());
    }
  }
}

TEST(ReloadFlag, IsReadFromItsBand) {
  settings::load_distinct();
  for (const int band : {0, 1}) {
    Buffer buffer;
    EXPECT_EQ(0, wifimgr_lib_get_reloadFlag(static_cast<uint32_t>(band), buffer.bytes, 151));
    EXPECT_EQ(sandbox::field(band, "ReloadFlag", 1), buffer.text());
    EXPECT_EQ("ZZZZZZZZZZ", buffer.rest(WIFIMGR_FIELD_SIZE));
  }
}

TEST(ReloadFlag, LeavesBandKeyAndBufferSizeToTheStore) {
  settings::load_without("ReloadFlag");
  Buffer buffer;
  EXPECT_THAT(
      seams::errors_of([&] {
        EXPECT_EQ(1, wifimgr_lib_get_reloadFlag(2, buffer.bytes, 160));
        EXPECT_EQ(1, wifimgr_lib_set_reloadFlag(2, "1"));
        EXPECT_EQ(1, wifimgr_lib_get_reloadFlag(0, buffer.bytes, 160));
        EXPECT_EQ(1, wifimgr_lib_set_reloadFlag(1, "1"));
      }),
      ElementsAre(failed("read_attr", "The wifi_type is wrong."), failed("update_attr", "The wifi_type is wrong."),
                  failed("read_attr", "The attr_name do not exist."),
                  failed("update_attr", "The attr_name do not exist.")));
  settings::load_distinct();
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_reloadFlag(0, buffer.bytes, 150)); }),
              ElementsAre(failed("read_attr", "The size of buffer is too small!")));
  EXPECT_TRUE(buffer.is_untouched());
}

TEST(ReloadFlag, RefusesNullFirst) {
  settings::load_distinct();
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(1, wifimgr_lib_get_reloadFlag(2, nullptr, 160)); }),
              ElementsAre(entered(kGetFlag), failed(kGetFlag)));
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(1, wifimgr_lib_set_reloadFlag(2, nullptr)); }),
              ElementsAre(entered(kSetFlag), failed(kSetFlag)));
}

TEST(ReloadFlag, TracesItsEntryAndItsExit) {
  settings::load_distinct();
  Buffer buffer;
  EXPECT_THAT(own_lines(kGetFlag, seams::trace_of([&] {
                          (void)wifimgr_lib_get_reloadFlag(0, buffer.bytes, 160);
                          (void)wifimgr_lib_get_reloadFlag(2, buffer.bytes, 160);
                        })),
              ElementsAre(entered(kGetFlag), succeeded(kGetFlag), entered(kGetFlag), failed(kGetFlag)));
  EXPECT_THAT(own_lines(kSetFlag, seams::trace_of([] {
                          (void)wifimgr_lib_set_reloadFlag(0, "1");
                          (void)wifimgr_lib_set_reloadFlag(2, "1");
                        })),
              ElementsAre(entered(kSetFlag), succeeded(kSetFlag), entered(kSetFlag), failed(kSetFlag)));
}

}  // namespace
