// The getters of the per-SSID settings, all of one template.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <iterator>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "support/settings_table.h"

namespace {

using settings::Buffer;
using settings::entered;
using settings::failed;
using settings::Image;
using settings::own_lines;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

struct Getter {
  const char* name;
  uint64_t (*call)(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
  const char* key;  // an own key without its number
  int number_of_1;  // the own key's number for SSID 1; kShared for a key that all SSIDs share
};

constexpr int kShared = -1;

#define SHARED(suffix, key) \
  { "wifimgr_lib_get_" #suffix, wifimgr_lib_get_##suffix, key, kShared }
#define OWN(suffix, key, number_of_1) \
  { "wifimgr_lib_get_" #suffix, wifimgr_lib_get_##suffix, key, number_of_1 }

const Getter kGetters[] = {
    SHARED(enableSsid, "EnableSSID"),
    OWN(ssid, "SSID", 1),
    SHARED(hideSSID, "HideSSID"),
    SHARED(noForwarding, "NoForwarding"),
    SHARED(wmmCapable, "WmmCapable"),
    SHARED(apsdCapable, "APSDCapable"),
    SHARED(preAuth, "PreAuth"),
    SHARED(PMFMFPC, "PMFMFPC"),
    SHARED(PMFMFPR, "PMFMFPR"),
    SHARED(PMFSHA256, "PMFSHA256"),
    SHARED(igmpSnEnable, "IgmpSnEnable"),
    SHARED(fixedTxMode, "FixedTxMode"),
    SHARED(txRate, "TxRate"),
    SHARED(HT_MCS, "HT_MCS"),
    SHARED(maxStaNum, "MaxStaNum"),
    SHARED(mbssMaxStaNum, "MbssMaxStaNum"),
    SHARED(authMode, "AuthMode"),
    SHARED(encrypType, "EncrypType"),
    SHARED(wepAuthType, "WEPAuthType"),
    SHARED(ieee8021x, "IEEE8021X"),
    OWN(WPAPSK, "WPAPSK", 1),
    SHARED(defaultKeyID, "DefaultKeyID"),
    SHARED(rekeyMethod, "RekeyMethod"),
    SHARED(rekeyInterval, "RekeyInterval"),
    SHARED(radiusserver, "RADIUS_Server"),
    SHARED(radiusport, "RADIUS_Port"),
    OWN(radiuskey, "RADIUS_Key", 1),
    OWN(accessPolicy, "AccessPolicy", 0),
    OWN(accessControlList, "AccessControlList", 0),
    OWN(wscDefaultSSID, "WscDefaultSSID", 1),
    SHARED(wscConfMode, "WscConfMode"),
    SHARED(WscConfStatus, "WscConfStatus"),
    SHARED(wscV2Support, "WscV2Support"),
};

bool is_shared(const Getter& get) {
  return get.number_of_1 == kShared;
}

std::string key_of(const Getter& get, int ssid) {
  return is_shared(get) ? get.key : std::string(get.key) + std::to_string(ssid - 1 + get.number_of_1);
}

// What the store holds for an SSID.
std::string stored(const Getter& get, uint32_t band, int ssid) {
  return sandbox::field(static_cast<int>(band), key_of(get, ssid), is_shared(get) ? ssid : 1);
}

// Runs `check` with each getter and band.
template <typename Check>
void for_each_getter(Check check) {
  for (const Getter& getter : kGetters) {
    for (const uint32_t band : {0U, 1U}) {
      SCOPED_TRACE(std::string(getter.name) + " of band " + std::to_string(band));
      check(getter, band);
    }
  }
}

TEST(SsidGetter, IsExpectedHereForEveryRowOfTheTable) {
  for (const sandbox::SettingRow& row : sandbox::kSettings) {
    if (row.reads != "SSID") continue;
    EXPECT_TRUE(std::any_of(std::begin(kGetters), std::end(kGetters),
                            [&](const Getter& it) { return std::string_view(it.name) == row.getter; }))
        << "write " << row.getter << " into the list above";
  }
}

TEST(SsidGetter, ReadsTheValueOfItsSsidInItsBand) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, uint32_t band) {
    for (int ssid = 1; ssid <= 8; ++ssid) {
      SCOPED_TRACE(ssid);
      const std::string value = stored(get, band, ssid);
      ASSERT_NE("", value);
      Buffer buffer;
      EXPECT_EQ(0U, get.call(band, ssid, buffer.bytes, sizeof buffer.bytes));
      EXPECT_EQ(value, buffer.text());
    }
  });
}

TEST(SsidGetter, CopiesTheWholeFieldOfASharedKey) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, uint32_t band) {
    if (!is_shared(get)) return;
    Buffer buffer;
    EXPECT_EQ(0U, get.call(band, 2, buffer.bytes, WIFIMGR_FIELD_SIZE + 1));
    std::string slot = stored(get, band, 2);
    slot.resize(WIFIMGR_FIELD_SIZE, '\0');
    EXPECT_EQ(slot, std::string(buffer.bytes, WIFIMGR_FIELD_SIZE));
    EXPECT_EQ("ZZZZZZZZZZ", buffer.rest(WIFIMGR_FIELD_SIZE));
  });
}

TEST(SsidGetter, RefusesABufferBelow151BytesForASharedKey) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, uint32_t band) {
    if (!is_shared(get)) return;
    for (const uint32_t length : {0U, 100U, 150U}) {
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get.call(band, 2, buffer.bytes, length)); }),
                  ElementsAre(failed("read_attr", "The size of buffer is too small!")));
      EXPECT_TRUE(buffer.is_untouched());
    }
  });
}

TEST(SsidGetter, CopiesWhatFitsOfAnOwnKey) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, uint32_t band) {
    if (is_shared(get)) return;
    Buffer buffer;
    EXPECT_EQ(0U, get.call(band, 2, buffer.bytes, 3));
    EXPECT_EQ(stored(get, band, 2).substr(0, 3) + "ZZZ", buffer.text().substr(0, 6));
  });
}

TEST(SsidGetter, TakesTheIndexesFrom1ToTheSsidCount) {
  settings::load_distinct("3");
  for_each_getter([](const Getter& get, uint32_t band) {
    for (const int32_t ssid : {1, 3}) {
      Buffer buffer;
      EXPECT_EQ(0U, get.call(band, ssid, buffer.bytes, sizeof buffer.bytes));
    }
    for (const int32_t ssid : {0, 4, -1, 8, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(ssid);
      Buffer buffer;
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get.call(band, ssid, buffer.bytes, sizeof buffer.bytes)); }),
                  ElementsAre(failed(get.name, "The ssid index should be from 1 to BssidNum:3.")));
      EXPECT_TRUE(buffer.is_untouched());
    }
  });
}

TEST(SsidGetter, FollowsTheCountOfItsOwnBand) {
  settings::load_distinct("2");
  EXPECT_EQ(0U, wifimgr_lib_set_bssidNum(1, -1, "4"));
  Buffer buffer;
  EXPECT_EQ(0U, wifimgr_lib_get_hideSSID(1, 4, buffer.bytes, sizeof buffer.bytes));
  EXPECT_EQ(1U, wifimgr_lib_get_hideSSID(0, 3, buffer.bytes, sizeof buffer.bytes));
}

TEST(SsidGetter, TakesACountThatIsNoNumberForZero) {
  for (const char* const count : {"x", ";", " ", "0", "-2"}) {
    settings::load_with("BssidNum", count);
    const std::string shown = std::string(count) == "-2" ? "-2" : "0";
    Buffer buffer;
    EXPECT_THAT(
        seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_get_hideSSID(0, 1, buffer.bytes, sizeof buffer.bytes)); }),
        ElementsAre(failed("wifimgr_lib_get_hideSSID", "The ssid index should be from 1 to BssidNum:" + shown + ".")));
  }
}

TEST(SsidGetter, CopiesNothingOfASharedKeyBeyondTheEighthSsid) {
  settings::load_distinct("10");
  for_each_getter([](const Getter& get, uint32_t band) {
    if (!is_shared(get)) return;
    Buffer buffer;
    EXPECT_EQ(0U, get.call(band, 9, buffer.bytes, sizeof buffer.bytes));
    EXPECT_TRUE(buffer.is_untouched());
  });
}

TEST(SsidGetter, ReadsAnOwnKeyBeyondTheEighthSsid) {
  sandbox::load(0, sandbox::full_dat_with(0, "BssidNum", "10") + "SSID9=Ninth\n");
  Buffer buffer;
  EXPECT_EQ(0U, wifimgr_lib_get_ssid(0, 9, buffer.bytes, sizeof buffer.bytes));
  EXPECT_EQ("Ninth\n", buffer.text());
}

TEST(SsidGetter, RefusesAnUnknownBand) {
  settings::load_distinct();
  for (const Getter& get : kGetters) {
    SCOPED_TRACE(get.name);
    const bool has_own_words = get.name == std::string("wifimgr_lib_get_accessPolicy");
    for (const uint32_t band : {2U, 0xffffffffU, 0x80000000U}) {
      Buffer buffer;
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, get.call(band, 1, buffer.bytes, sizeof buffer.bytes)); }),
                  ElementsAre(entered(get.name), entered("wifimgr_lib_get_bssidnum"), entered("read_attr"),
                              failed("read_attr", "The wifi_type is wrong."), failed("wifimgr_lib_get_bssidnum"),
                              failed(get.name, has_own_words ? "get_bssidnum err." : "")));
      EXPECT_TRUE(buffer.is_untouched());
    }
  }
}

TEST(SsidGetter, RefusesABandWithoutAnSsidCount) {
  settings::load_without("BssidNum");
  for_each_getter([](const Getter& get, uint32_t band) {
    const bool has_own_words = get.name == std::string("wifimgr_lib_get_accessPolicy");
    // Index 0 as well: the count comes first.
    for (const int32_t ssid : {1, 0}) {
      Buffer buffer;
      EXPECT_THAT(own_lines(get.name, seams::trace_of([&] {
                              EXPECT_EQ(1U, get.call(band, ssid, buffer.bytes, sizeof buffer.bytes));
                            })),
                  ElementsAre(entered(get.name), failed(get.name, has_own_words ? "get_bssidnum err." : "")));
      EXPECT_TRUE(buffer.is_untouched());
    }
  });
}

TEST(SsidGetter, RefusesAMissingKey) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\n");
  for_each_getter([](const Getter& get, uint32_t band) {
    Buffer buffer;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, get.call(band, 1, buffer.bytes, sizeof buffer.bytes)); }),
                ElementsAre(failed("read_attr", "The attr_name do not exist.")));
    EXPECT_THAT(
        own_lines(get.name, seams::trace_of([&] { (void)get.call(band, 1, buffer.bytes, sizeof buffer.bytes); })),
        ElementsAre(entered(get.name), failed(get.name)));
    EXPECT_TRUE(buffer.is_untouched());
  });
}

TEST(SsidGetter, RefusesANullBufferFirst) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, uint32_t band) {
    for (const int32_t ssid : {1, 0}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, get.call(band, ssid, nullptr, WIFIMGR_VALUE_SIZE)); }),
                  ElementsAre(entered(get.name), failed(get.name)));
    }
  });
}

TEST(SsidGetter, TracesItsEntryAndItsSuccess) {
  settings::load_distinct();
  for_each_getter([](const Getter& get, uint32_t band) {
    Buffer buffer;
    EXPECT_THAT(
        own_lines(get.name, seams::trace_of([&] { (void)get.call(band, 1, buffer.bytes, sizeof buffer.bytes); })),
        ElementsAre(entered(get.name), succeeded(get.name)));
  });
}

TEST(SsidGetter, TracesNothingOfItsOwnBelowLevel8ButReasons) {
  settings::load_distinct();
  for (const Getter& get : kGetters) {
    Buffer buffer;
    EXPECT_THAT(seams::trace_of(
                    [&] {
                      (void)get.call(0, 1, buffer.bytes, sizeof buffer.bytes);
                      (void)get.call(0, 1, nullptr, 0);
                    },
                    7),
                IsEmpty());
  }
}

TEST(SsidGetter, ChangesNothing) {
  settings::load_distinct();
  const Image image;
  for_each_getter([](const Getter& get, uint32_t band) {
    Buffer buffer;
    (void)get.call(band, 8, buffer.bytes, sizeof buffer.bytes);
    (void)get.call(band, 9, buffer.bytes, sizeof buffer.bytes);
  });
  EXPECT_EQ("", image.difference());
}

}  // namespace
