// The WDS settings of a band: what their getters and setters have in common, and the switch.
#include "apply/wds_checks.h"

namespace {

using testing::ElementsAre;
using wds::expect_refused;
using wds::expect_stored;
using wds::fail_exit;
using wds::kSettings;
using wds::Setting;

TEST(WdsGetter, ReadsItsKeyOfItsBand) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const Setting& setting : kSettings) {
    SCOPED_TRACE(setting.name);
    dat::put(0, -1, setting.key, "of-2.4G");
    dat::put(1, -1, setting.key, "of-5G");
    char text[WIFIMGR_VALUE_SIZE] = "";
    EXPECT_EQ(0, setting.get(0, -1, text, sizeof text));
    EXPECT_STREQ("of-2.4G", text);
    EXPECT_EQ(0, setting.get(1, -1, text, 151));
    EXPECT_STREQ("of-5G", text);
  }
}

TEST(WdsGetter, TracesEntryAndExit) {
  dat::load(0, {});
  for (const Setting& setting : kSettings) {
    const std::string function = std::string("wifimgr_lib_get_") + setting.name;
    char text[WIFIMGR_VALUE_SIZE] = "";
    const auto trace = seams::trace_of([&] { setting.get(0, -1, text, sizeof text); });
    EXPECT_EQ("[" + function + "]:===Enter===\n", trace.front());
    EXPECT_EQ("[" + function + "]:===Success Exit===\n", trace.back());
  }
}

TEST(WdsGetter, RefusesWithTheBufferUntouched) {
  dat::load(0, {});
  char text[WIFIMGR_VALUE_SIZE] = "untouched";
  for (const Setting& setting : kSettings) {
    SCOPED_TRACE(setting.name);
    const std::string function = std::string("wifimgr_lib_get_") + setting.name;
    for (const int index : {0, 1, 8, -2, INT32_MAX, INT32_MIN}) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, setting.get(0, index, text, sizeof text)); }),
                  ElementsAre(fail_exit(function, "The index should be -1.")));
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, setting.get(2, index, text, sizeof text)); }),
                  ElementsAre(fail_exit(function, "The index should be -1.")));
    }
    for (const int band : {2, -1}) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, setting.get(band, -1, text, sizeof text)); }),
                  ElementsAre(fail_exit("read_attr", "The wifi_type is wrong.")));
    }
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, setting.get(0, -1, text, 150)); }),
                ElementsAre(fail_exit("read_attr", "The size of buffer is too small!")));
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, setting.get(1, -1, text, sizeof text)); }),
                ElementsAre(fail_exit("read_attr", "The attr_name do not exist.")));
    EXPECT_EQ(fail_exit(function, ""), seams::trace_of([&] { setting.get(1, -1, text, sizeof text); }).back());
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, setting.get(0, 5, nullptr, 160)); }),
                ElementsAre("[" + function + "]:===Enter===\n", fail_exit(function, "")));
  }
  EXPECT_STREQ("untouched", text);
}

TEST(WdsSetter, WritesItsKeyOfItsBandAlone) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const Setting& setting : kSettings) {
    SCOPED_TRACE(setting.name);
    for (const int band : {0, 1}) {
      dat::put(band, -1, setting.key, setting.accepted);
      const std::string expected = sandbox::segment_bytes(band);
      dat::put(band, -1, setting.key, "before");
      const std::string other = sandbox::segment_bytes(1 - band);
      EXPECT_EQ(0U, setting.set(static_cast<uint32_t>(band), -1, setting.accepted));
      EXPECT_EQ(expected, sandbox::segment_bytes(band));
      EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
    }
  }
}

TEST(WdsSetter, TracesEntryAndExit) {
  dat::load(0, {});
  for (const Setting& setting : kSettings) {
    const std::string function = std::string("wifimgr_lib_set_") + setting.name;
    const auto trace = seams::trace_of([&] { setting.set(0, -1, setting.accepted); });
    EXPECT_EQ("[" + function + "]:===Enter===\n", trace.front());
    EXPECT_EQ("[" + function + "]:===Success Exit===\n", trace.back());
  }
}

TEST(WdsSetter, ChecksPresenceThenIndexThenValueThenStore) {
  dat::load(0, {});
  const std::string store = sandbox::segment_bytes(0);
  for (const Setting& setting : kSettings) {
    SCOPED_TRACE(setting.name);
    const std::string function = std::string("wifimgr_lib_set_") + setting.name;
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, setting.set(2, 5, nullptr)); }),
                ElementsAre("[" + function + "]:===Enter===\n", fail_exit(function, "")));
    for (const int32_t index : {0, 1, 8, -2, INT32_MAX, INT32_MIN}) {
      for (const char* value : {setting.accepted, "refused"}) {
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(2, index, value)); }),
                    ElementsAre(fail_exit(function, "The ssid index here should be -1.")));
      }
    }
    for (const uint32_t band : {2U, 0xffffffffU}) {
      const auto errors = seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, -1, "refused")); });
      EXPECT_THAT(errors, ElementsAre(testing::HasSubstr("[" + function + "]:===Fail Exit===Please input ")));
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(band, -1, setting.accepted)); }),
                  ElementsAre(fail_exit("update_attr", "The wifi_type is wrong.")));
    }
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(1, -1, setting.accepted)); }),
                ElementsAre(fail_exit("update_attr", "The attr_name do not exist.")));
    EXPECT_EQ(fail_exit(function, ""), seams::trace_of([&] { setting.set(1, -1, setting.accepted); }).back());
  }
  EXPECT_EQ(store, sandbox::segment_bytes(0));
}

TEST(WdsSetter, FailsWhenTheBandsFileHasNoSuchKey) {
  for (const Setting& setting : kSettings) {
    SCOPED_TRACE(setting.name);
    sandbox::load(0, sandbox::full_dat_without(0, setting.key));
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, setting.set(0, -1, setting.accepted)); }),
                ElementsAre(fail_exit("update_attr", "The attr_name do not exist.")));
  }
}

TEST(WdsEnable, IsOneDigitFromZeroToFour) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const char* value : {"0", "1", "2", "3", "4"}) expect_stored(kSettings[0], value);
  for (const char* value :
       {"5", "9", "10", "00", "01", "a", "-", "-1", "+1", " 1", "1 ", "1\n", "", " ", ":", "/", "4294967297"}) {
    expect_refused(wifimgr_lib_set_wdsenable, value,
                   "[wifimgr_lib_set_wdsenable]:===Fail Exit===Please input value from 0 to "
                   "4(0:disable;1-4:diffrent modes,recommend 1).\n");
  }
}

}  // namespace
