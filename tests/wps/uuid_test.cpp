// The UUIDs of WPS, which are stored only.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

#include "support/seams.h"
#include "wps/wps_setting.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

struct Uuid {
  const char* function;
  const char* key;
  wps::Setter set;
};

constexpr Uuid kUuids[] = {
    {"wifimgr_lib_set_WscUUIDE", "WSC_UUID_E", wifimgr_lib_set_WscUUIDE},
    {"wifimgr_lib_set_WscUUIDStr", "WSC_UUID_Str", wifimgr_lib_set_WscUUIDStr},
};

std::string key_of(const Uuid& uuid, int ssid_index) {
  return uuid.key + std::to_string(ssid_index);
}

class WpsUuid : public testing::Test {
 protected:
  void SetUp() override { wps::load(); }
  void TearDown() override { EXPECT_THAT(seams::commands, IsEmpty()); }
};

TEST_F(WpsUuid, IsStoredUnderItsSsidsKeyAndNothingElseChanges) {
  for (const Uuid& uuid : kUuids) {
    for (const int band : {0, 1}) {
      for (int ssid_index = 1; ssid_index <= 8; ++ssid_index) {
        SCOPED_TRACE(key_of(uuid, ssid_index));
        Texts expected = wps::both_segments();
        std::string& changed = expected[static_cast<size_t>(band)];
        changed = wps::with_field(changed, key_of(uuid, ssid_index), 1, "28802880-2880-1880-a880-020000000001");
        EXPECT_EQ(0u, uuid.set(static_cast<uint32_t>(band), ssid_index, "28802880-2880-1880-a880-020000000001"));
        EXPECT_TRUE(expected == wps::both_segments());
      }
    }
  }
}

TEST_F(WpsUuid, IsAnyText) {
  for (const Uuid& uuid : kUuids) {
    for (const std::string& value :
         Texts{"", " ", "-1", "x;y=z", "a\nb", "; touch /tmp/ran", "$(x)`y`'\"\\", std::string(149, 'u'), "\xff\x01"}) {
      EXPECT_EQ(0u, uuid.set(0, 2, value.c_str()));
      EXPECT_EQ(value, sandbox::field(0, key_of(uuid, 2), 1));
    }
  }
}

TEST_F(WpsUuid, IsCutTo149Characters) {
  for (const Uuid& uuid : kUuids) {
    const std::string expected = wps::with_field(sandbox::segment_bytes(0), key_of(uuid, 1), 1, std::string(149, 'u'));
    EXPECT_EQ(0u, uuid.set(0, 1, std::string(200, 'u').c_str()));
    EXPECT_TRUE(expected == sandbox::segment_bytes(0));
  }
}

TEST_F(WpsUuid, OfAnotherIndexIsRefusedAheadOfTheStore) {
  const Texts before = wps::both_segments();
  for (const Uuid& uuid : kUuids) {
    for (const int32_t index : {0, -1, 9, 10, 257, INT32_MAX, INT32_MIN}) {
      for (const uint32_t band : {0U, 1U, 2U}) {
        EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, uuid.set(band, index, "u")); }),
                    ElementsAre(wps::refusal(uuid.function, "The ssid index is invalid.")));
      }
    }
  }
  EXPECT_TRUE(before == wps::both_segments());
}

TEST_F(WpsUuid, MissingIsRefusedAheadOfTheIndex) {
  const Texts before = wps::both_segments();
  for (const Uuid& uuid : kUuids) {
    const std::string name = std::string("[") + uuid.function + "]:===";
    for (const int32_t index : {1, 0}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1u, uuid.set(0, index, nullptr)); }),
                  ElementsAre(name + "Enter===\n", name + "Fail Exit===\n"));
    }
  }
  EXPECT_TRUE(before == wps::both_segments());
}

TEST_F(WpsUuid, OfAnotherBandIsRefusedByTheStoreAlone) {
  const Texts before = wps::both_segments();
  for (const Uuid& uuid : kUuids) {
    for (const uint32_t band : {2U, 256U, 0x80000000U, 0xffffffffU}) {
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, uuid.set(band, 1, "u")); }),
                  ElementsAre(wps::refusal("update_attr", "The wifi_type is wrong.")));
      const auto trace = seams::trace_of([&] { EXPECT_EQ(1u, uuid.set(band, 1, "u")); });
      EXPECT_EQ(wps::refusal(uuid.function, ""), trace.back());
    }
  }
  EXPECT_TRUE(before == wps::both_segments());
}

TEST_F(WpsUuid, ThatTheStoreLacksIsAPlainFailure) {
  for (const Uuid& uuid : kUuids) {
    sandbox::load(0, wps::dat_text_without(key_of(uuid, 3)));
    const std::string before = sandbox::segment_bytes(0);
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1u, uuid.set(0, 3, "u")); }),
                ElementsAre(wps::refusal("update_attr", "The attr_name do not exist.")));
    const auto trace = seams::trace_of([&] { EXPECT_EQ(1u, uuid.set(0, 3, "u")); });
    EXPECT_EQ(wps::refusal(uuid.function, ""), trace.back());
    EXPECT_TRUE(before == sandbox::segment_bytes(0));
  }
}

TEST_F(WpsUuid, TracesEntryAndSuccess) {
  for (const Uuid& uuid : kUuids) {
    const auto trace = seams::trace_of([&] { EXPECT_EQ(0u, uuid.set(0, 1, "u")); });
    EXPECT_EQ(std::string("[") + uuid.function + "]:===Enter===\n", trace.front());
    EXPECT_EQ(std::string("[") + uuid.function + "]:===Success Exit===\n", trace.back());
  }
}

}  // namespace
