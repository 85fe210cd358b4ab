// The WEP keys: four types and four strings for each SSID, by key number or by the number in the function's name.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using settings::any_text;
using settings::Buffer;
using settings::entered;
using settings::failed;
using settings::Image;
using settings::own_lines;
using settings::repeat;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

// The general functions, with the key number as third argument.
struct Family {
  const char* getter;
  uint64_t (*get)(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, char* buf, uint32_t len);
  const char* setter;
  uint64_t (*set)(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, const char* value);
  bool has_own_keys;  // else a field per SSID

  std::string key(int key_number, int ssid) const {
    const std::string number = std::to_string(key_number);
    return has_own_keys ? std::string("Key") + number + "Str" + std::to_string(ssid)
                        : std::string("Key") + number + "Type";
  }
  int field(int ssid) const { return has_own_keys ? 1 : ssid; }
};

const Family kType = {"wifimgr_lib_get_keyType", wifimgr_lib_get_keyType, "wifimgr_lib_set_keyType",
                      wifimgr_lib_set_keyType, false};
const Family kString = {"wifimgr_lib_get_keyStr", wifimgr_lib_get_keyStr, "wifimgr_lib_set_keyStr",
                        wifimgr_lib_set_keyStr, true};
const Family kFamilies[] = {kType, kString};

struct Wrapper {
  const Family& family;
  int key_number;
  const char* getter;
  uint64_t (*get)(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
  const char* setter;
  wifimgr_setter_t set;
};

#define WRAPPER(family, number, suffix)                                                               \
  {                                                                                                   \
    family, number, "wifimgr_lib_get_" #suffix, wifimgr_lib_get_##suffix, "wifimgr_lib_set_" #suffix, \
        wifimgr_lib_set_##suffix                                                                      \
  }

const Wrapper kWrappers[] = {
    WRAPPER(kType, 1, key1Type),  WRAPPER(kType, 2, key2Type),  WRAPPER(kType, 3, key3Type),
    WRAPPER(kType, 4, key4Type),  WRAPPER(kString, 1, key1Str), WRAPPER(kString, 2, key2Str),
    WRAPPER(kString, 3, key3Str), WRAPPER(kString, 4, key4Str),
};

// Runs `check` with each family, band, key number and SSID.
template <typename Check>
void for_each_key(Check check) {
  for (const Family& family : kFamilies) {
    for (const uint32_t band : {0U, 1U}) {
      for (int number = 1; number <= 4; ++number) {
        for (int ssid = 1; ssid <= 8; ++ssid) {
          SCOPED_TRACE(family.key(number, ssid) + " of SSID " + std::to_string(ssid) + " band " + std::to_string(band));
          check(family, band, number, ssid);
        }
      }
    }
  }
}

TEST(WepKey, GetterReadsTheKeyOfItsNumberAndSsid) {
  settings::load_distinct();
  for_each_key([](const Family& family, uint32_t band, int number, int ssid) {
    const std::string stored = sandbox::field(static_cast<int>(band), family.key(number, ssid), family.field(ssid));
    ASSERT_NE("", stored);
    Buffer buffer;
    EXPECT_EQ(0U, family.get(band, ssid, number, buffer.bytes, WIFIMGR_FIELD_SIZE + 1));
    EXPECT_EQ(stored, buffer.text());
  });
}

TEST(WepKey, SetterWritesTheKeyOfItsNumberAndSsidAlone) {
  settings::load_distinct();
  Image image;
  for_each_key([&](const Family& family, uint32_t band, int number, int ssid) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, family.set(band, ssid, number, "1")); }), IsEmpty());
    image.set(static_cast<int>(band), family.key(number, ssid), family.field(ssid), "1");
    ASSERT_EQ("", image.difference());
  });
}

TEST(WepKey, TypeIsOneCharacterZeroOrOne) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_keyType(0, 1, 1, "1"));
  EXPECT_EQ("1", sandbox::field(0, "Key1Type", 1));
  EXPECT_EQ(0U, wifimgr_lib_set_keyType(0, 1, 1, "0"));
  EXPECT_EQ("0", sandbox::field(0, "Key1Type", 1));
}

TEST(WepKey, TypeRefusesAnythingElseWithItsMessage) {
  settings::load_distinct();
  const Image image;
  for (const char* const value : {"", "2", "9", "00", "01", "10", "11", "a", "-", "-1", "1 ", " 1", "1\n", "/", ":"}) {
    SCOPED_TRACE(value);
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_keyType(0, 1, 1, value)); }),
                ElementsAre(failed("wifimgr_lib_set_keyType", "The KeyType value is invalid.")));
  }
  EXPECT_EQ("", image.difference());
}

TEST(WepKey, StringIsAnyText) {
  settings::load_distinct();
  Image image;
  for (const std::string& value : any_text().accepted) {
    EXPECT_EQ(0U, wifimgr_lib_set_keyStr(1, 3, 4, value.c_str()));
    image.set(1, "Key4Str3", 1, value);
    ASSERT_EQ("", image.difference());
  }
}

TEST(WepKey, StringIsCopiedAsFarAsItFits) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_keyStr(0, 1, 1, "abcdefghijklm"));
  Buffer buffer;
  EXPECT_EQ(0U, wifimgr_lib_get_keyStr(0, 1, 1, buffer.bytes, 5));
  EXPECT_EQ("abcdeZZ", buffer.text().substr(0, 7));
}

TEST(WepKey, TypeNeedsABufferOf151Bytes) {
  settings::load_distinct();
  Buffer buffer;
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_get_keyType(0, 1, 1, buffer.bytes, 150)); }),
              ElementsAre(failed("read_attr", "The size of buffer is too small!")));
  EXPECT_TRUE(buffer.is_untouched());
}

TEST(WepKey, NumberThatTheFileDoesNotHaveFailsInTheStore) {
  settings::load_distinct();
  const Image image;
  for (const Family& family : kFamilies) {
    for (const int number : {0, 5, 10, -1, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(number);
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, family.get(0, 1, number, buffer.bytes, 160)); }),
                  ElementsAre(failed("read_attr", "The attr_name do not exist.")));
      EXPECT_TRUE(buffer.is_untouched());
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, family.set(0, 1, number, "1")); }),
                  ElementsAre(failed("update_attr", "The attr_name do not exist.")));
    }
  }
  EXPECT_EQ("", image.difference());
}

TEST(WepKey, NumberThatTheFileHasIsServed) {
  sandbox::load(0, sandbox::full_dat(0) + "Key7Type=0;1\nKey12Str2=seven\n");
  Buffer buffer;
  EXPECT_EQ(0U, wifimgr_lib_get_keyType(0, 2, 7, buffer.bytes, 160));
  EXPECT_EQ("1\n", buffer.text());
  EXPECT_EQ(0U, wifimgr_lib_set_keyStr(0, 2, 12, "twelve"));
  EXPECT_EQ("twelve", sandbox::field(0, "Key12Str2", 2));
}

TEST(WepKey, TakesTheIndexesFrom1ToTheSsidCount) {
  settings::load_distinct("3");
  for (const Family& family : kFamilies) {
    EXPECT_EQ(0U, family.set(0, 3, 1, "1"));
    const Image image;
    for (const int32_t ssid : {0, 4, -1, INT_MAX, INT_MIN}) {
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, family.get(0, ssid, 1, buffer.bytes, 160)); }),
                  ElementsAre(failed(family.getter, "The ssid index should be from 1 to BssidNum:3.")));
      // An unusable value as well: the index comes first.
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, family.set(0, ssid, 1, "22")); }),
                  ElementsAre(failed(family.setter, "The ssid index should be from 1 to BssidNum:3.")));
      EXPECT_TRUE(buffer.is_untouched());
    }
    EXPECT_EQ("", image.difference());
  }
}

TEST(WepKey, LooksAtTheTypeBeforeTheStore) {
  settings::load_distinct();
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_keyType(0, 1, 5, "2")); }),
              ElementsAre(failed("wifimgr_lib_set_keyType", "The KeyType value is invalid.")));
}

TEST(WepKey, RefusesNullFirst) {
  settings::load_distinct();
  const Image image;
  for (const Family& family : kFamilies) {
    for (const uint32_t band : {0U, 2U}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, family.get(band, 0, 1, nullptr, 160)); }),
                  ElementsAre(entered(family.getter), failed(family.getter)));
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, family.set(band, 0, 1, nullptr)); }),
                  ElementsAre(entered(family.setter), failed(family.setter)));
    }
  }
  EXPECT_EQ("", image.difference());
}

TEST(WepKey, RefusesAnUnknownBandAndAMissingCountWithAPlainExit) {
  settings::load_without("BssidNum");
  for (const Family& family : kFamilies) {
    for (const uint32_t band : {0U, 1U, 2U, 0xffffffffU}) {
      Buffer buffer;
      EXPECT_THAT(
          own_lines(family.getter, seams::trace_of([&] { EXPECT_EQ(1U, family.get(band, 1, 1, buffer.bytes, 160)); })),
          ElementsAre(entered(family.getter), failed(family.getter)));
      EXPECT_THAT(own_lines(family.setter, seams::trace_of([&] { EXPECT_EQ(1U, family.set(band, 1, 1, "22")); })),
                  ElementsAre(entered(family.setter), failed(family.setter)));
      EXPECT_TRUE(buffer.is_untouched());
    }
  }
}

TEST(WepKeyByName, ReadsAndWritesWhatTheGeneralFunctionDoes) {
  settings::load_distinct();
  Image image;
  for (const Wrapper& wrapper : kWrappers) {
    for (const int band : {0, 1}) {
      for (int ssid = 1; ssid <= 8; ++ssid) {
        SCOPED_TRACE(std::string(wrapper.setter) + " of SSID " + std::to_string(ssid));
        const std::string key = wrapper.family.key(wrapper.key_number, ssid);
        const std::string stored = sandbox::field(band, key, wrapper.family.field(ssid));
        Buffer buffer;
        EXPECT_EQ(0U, wrapper.get(static_cast<uint32_t>(band), ssid, buffer.bytes, sizeof buffer.bytes));
        EXPECT_EQ(stored, buffer.text());
        EXPECT_EQ(0U, wrapper.set(static_cast<uint32_t>(band), ssid, "0"));
        image.set(band, key, wrapper.family.field(ssid), "0");
        ASSERT_EQ("", image.difference());
      }
    }
  }
}

TEST(WepKeyByName, TracesAnEntryAndAnExitOfItsOwn) {
  settings::load_distinct();
  for (const Wrapper& wrapper : kWrappers) {
    SCOPED_TRACE(wrapper.setter);
    Buffer buffer;
    const auto reading = seams::trace_of([&] { (void)wrapper.get(0, 1, buffer.bytes, sizeof buffer.bytes); });
    EXPECT_THAT(own_lines(wrapper.getter, reading), ElementsAre(entered(wrapper.getter), succeeded(wrapper.getter)));
    EXPECT_THAT(own_lines(wrapper.family.getter, reading),
                ElementsAre(entered(wrapper.family.getter), succeeded(wrapper.family.getter)));
    const auto writing = seams::trace_of([&] { (void)wrapper.set(0, 1, "1"); });
    EXPECT_THAT(own_lines(wrapper.setter, writing), ElementsAre(entered(wrapper.setter), succeeded(wrapper.setter)));
    EXPECT_THAT(own_lines(wrapper.family.setter, writing),
                ElementsAre(entered(wrapper.family.setter), succeeded(wrapper.family.setter)));
  }
}

TEST(WepKeyByName, ReportsTheReasonOfTheGeneralFunctionAndAPlainExit) {
  settings::load_distinct("3");
  const Image image;
  const std::string reason = "The ssid index should be from 1 to BssidNum:3.";
  for (const Wrapper& wrapper : kWrappers) {
    SCOPED_TRACE(wrapper.setter);
    Buffer buffer;
    const auto reading = seams::trace_of([&] { EXPECT_EQ(1U, wrapper.get(0, 4, buffer.bytes, 160)); });
    EXPECT_THAT(own_lines(wrapper.getter, reading), ElementsAre(entered(wrapper.getter), failed(wrapper.getter)));
    EXPECT_THAT(own_lines(wrapper.family.getter, reading),
                ElementsAre(entered(wrapper.family.getter), failed(wrapper.family.getter, reason)));
    const auto writing = seams::trace_of([&] { EXPECT_EQ(1U, wrapper.set(0, 4, "1")); });
    EXPECT_THAT(own_lines(wrapper.setter, writing), ElementsAre(entered(wrapper.setter), failed(wrapper.setter)));
    EXPECT_THAT(own_lines(wrapper.family.setter, writing),
                ElementsAre(entered(wrapper.family.setter), failed(wrapper.family.setter, reason)));
    EXPECT_TRUE(buffer.is_untouched());
  }
  EXPECT_EQ("", image.difference());
}

TEST(WepKeyByName, RefusesNull) {
  settings::load_distinct();
  for (const Wrapper& wrapper : kWrappers) {
    EXPECT_THAT(own_lines(wrapper.getter, seams::trace_of([&] { EXPECT_EQ(1U, wrapper.get(0, 1, nullptr, 160)); })),
                ElementsAre(entered(wrapper.getter), failed(wrapper.getter)));
    EXPECT_THAT(own_lines(wrapper.setter, seams::trace_of([&] { EXPECT_EQ(1U, wrapper.set(0, 1, nullptr)); })),
                ElementsAre(entered(wrapper.setter), failed(wrapper.setter)));
  }
}

}  // namespace
