// The setters of the per-SSID settings, all of one template.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <iterator>

#include "params/rule_values.h"
#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "support/settings_table.h"

namespace {

using settings::address;
using settings::any_text;
using settings::binary_digit;
using settings::ciphers;
using settings::entered;
using settings::failed;
using settings::Image;
using settings::no_text;
using settings::number;
using settings::own_lines;
using settings::radius_secret;
using settings::rekey_methods;
using settings::succeeded;
using settings::text_of;
using settings::Values;
using testing::ElementsAre;
using testing::IsEmpty;

struct Setter {
  const char* name;
  wifimgr_setter_t call;
  const char* key;  // an own key without its number
  int number_of_1;  // the own key's number for SSID 1; kShared for a key that all SSIDs share
  Values values;
  const char* refusal;  // "%d" stands for the refused number
};

constexpr int kShared = -1;

#define SHARED(suffix, key, values, refusal) \
  { "wifimgr_lib_set_" #suffix, wifimgr_lib_set_##suffix, key, kShared, values, refusal }
#define OWN(suffix, key, number_of_1, values, refusal) \
  { "wifimgr_lib_set_" #suffix, wifimgr_lib_set_##suffix, key, number_of_1, values, refusal }

// clang-format off
const Setter kSetters[] = {
    SHARED(enableSsid, "EnableSSID", any_text(), nullptr),
    OWN(ssid, "SSID", 1, any_text(), nullptr),
    SHARED(hideSSID, "HideSSID", number(0, 1), "The HideSSID value should be 0 or 1."),
    SHARED(noForwarding, "NoForwarding", number(0, 1), "The NoForwarding value is invalid."),
    SHARED(wmmCapable, "WmmCapable", number(0, 1), "The WmmCapable value should be 0 or 1."),
    SHARED(apsdCapable, "APSDCapable", number(0, 1), "The APSDCapable value should be 0 or 1."),
    SHARED(preAuth, "PreAuth", number(0, 1), "The PreAuth value should be 0 or 1."),
    SHARED(PMFMFPC, "PMFMFPC", number(0, 1), "The PMFMFPC value is invalid."),
    SHARED(PMFMFPR, "PMFMFPR", number(0, 1), "The PMFMFPR value is invalid."),
    SHARED(PMFSHA256, "PMFSHA256", number(0, 1), "The PMFSHA256 value is invalid."),
    SHARED(ftSupport, "FtSupport", number(0, 1), "The FtSupport value should be 0 or 1."),
    SHARED(ftotd, "FtOtd", number(0, 1), "The FtOtd value should be 0 or 1."),
    SHARED(rrmEnable, "RRMEnable", number(0, 1), "The rrmEnable value should be 0 or 1."),
    SHARED(wnmEnable, "WNMEnable", number(0, 1), "The rrmEnable value should be 0 or 1."),
    SHARED(ApCliMac_Manual_Flag, "ApCliMacManual_Flag", number(0, 1), "The ApCliMac_Manual_Flag value should be 0 or 1."),
    SHARED(ApCliMac_Manual, "ApCliMacManual", no_text(), "Please input correct MacAddress, such as 00:1a:22:aa:dc:a1."),
    SHARED(igmpSnEnable, "IgmpSnEnable", number(0, 1), "The IgmpSnEnable value should be 0 or 1."),
    SHARED(fixedTxMode, "FixedTxMode", number(0, 2), "The FixedTxMode value should be between 0 and 2."),
    SHARED(txRate, "TxRate", number(0, INT_MAX), "The TxRate value is invalid."),
    SHARED(maxStaNum, "MaxStaNum", number(0, 45), "The MaxStaNum value is invalid."),
    SHARED(mbssMaxStaNum, "MbssMaxStaNum", number(0, 64), "The MbssMaxStaNum value is invalid,%d."),
    SHARED(authMode, "AuthMode", any_text(), nullptr),
    SHARED(encrypType, "EncrypType", ciphers(), "The EncrypType value should be chosed from NONE,WEP,TKIP,AES,TKIPAES."),
    SHARED(wepAuthType, "WEPAuthType", any_text(), nullptr),
    SHARED(ieee8021x, "IEEE8021X", binary_digit(), "The IEEE8021X value is invalid.\nPlease input 0 or 1."),
    OWN(WPAPSK, "WPAPSK", 1, text_of(0, 64), "The WPAPSK value is invalid."),
    SHARED(defaultKeyID, "DefaultKeyID", number(0, 4), "The DefaultKeyID value is invalid."),
    SHARED(rekeyMethod, "RekeyMethod", rekey_methods(), "The RekeyMethod value is invalid."),
    SHARED(rekeyInterval, "RekeyInterval", number(0, 4194303), "The RekeyInterval value is invalid."),
    SHARED(radiusserver, "RADIUS_Server", address(), "The RADIUS_Server IP value is invalid.Please input from 0.0.0.0 to 255.255.255.255"),
    SHARED(radiusport, "RADIUS_Port", number(1, 65535), "The RADIUS_Port value is invalid.\nPlease input DecNum from 1 - 65535"),
    OWN(radiuskey, "RADIUS_Key", 1, radius_secret(), "The RADIUS_Key is invalid.\nPlease input 8-63 characters or 64 Hex string."),
    OWN(accessPolicy, "AccessPolicy", 0, number(0, 2), "The AccessPolicy value is invalid."),
    OWN(accessControlList, "AccessControlList", 0, any_text(), nullptr),
    OWN(wscDefaultSSID, "WscDefaultSSID", 1, text_of(0, 32), "The input value is invalid."),
};
// clang-format on

bool is_shared(const Setter& set) {
  return set.number_of_1 == kShared;
}

std::string key_of(const Setter& set, int ssid) {
  return is_shared(set) ? set.key : std::string(set.key) + std::to_string(ssid - 1 + set.number_of_1);
}

std::string refusal_of(const Setter& set, const std::string& value) {
  std::string text = set.refusal;
  const size_t at = text.find("%d");
  if (at != std::string::npos) {
    text.replace(at, 2, std::to_string(static_cast<int>(std::strtol(value.c_str(), nullptr, 10))));
  }
  return failed(set.name, text);
}

const char* good_value(const Setter& set) {
  return set.values.accepted.empty() ? nullptr : set.values.accepted.front().c_str();
}

// A value that is at least not null.
const char* some_value(const Setter& set) {
  return set.values.accepted.empty() ? "x" : good_value(set);
}

// Runs `check` with each setter and band.
template <typename Check>
void for_each_setter(Check check) {
  for (const Setter& setter : kSetters) {
    for (const uint32_t band : {0U, 1U}) {
      SCOPED_TRACE(std::string(setter.name) + " of band " + std::to_string(band));
      check(setter, band);
    }
  }
}

TEST(SsidSetter, IsExpectedHereForEveryRowOfTheTable) {
  for (const sandbox::SettingRow& row : sandbox::kSettings) {
    if (row.writes != "SSID") continue;
    EXPECT_TRUE(std::any_of(std::begin(kSetters), std::end(kSetters),
                            [&](const Setter& it) { return std::string_view(it.name) == row.setter; }))
        << "write " << row.setter << " into the list above";
  }
}

TEST(SsidSetter, WritesAnAcceptedValueOfItsSsidInItsBandAlone) {
  settings::load_distinct();
  Image image;
  for_each_setter([&](const Setter& set, uint32_t band) {
    int ssid = 0;
    const auto write = [&](const std::string& value) {
      SCOPED_TRACE("value " + value + " of SSID " + std::to_string(ssid));
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, set.call(band, ssid, value.c_str())); }), IsEmpty());
      image.set(static_cast<int>(band), key_of(set, ssid), is_shared(set) ? ssid : 1, value);
      ASSERT_EQ("", image.difference());
    };
    for (ssid = 1; ssid <= 8 && good_value(set) != nullptr; ++ssid) write(good_value(set));
    ssid = 2;
    for (const std::string& value : set.values.accepted) write(value);
  });
}

TEST(SsidSetter, KeepsTheOldValueWhenTheNewOneIsRefused) {
  settings::load_distinct();
  const Image image;
  for_each_setter([&](const Setter& set, uint32_t band) {
    for (const std::string& value : set.values.refused) {
      SCOPED_TRACE("value " + value);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, 2, value.c_str())); }),
                  ElementsAre(refusal_of(set, value)));
    }
    ASSERT_EQ("", image.difference());
  });
}

TEST(SsidSetter, TakesTheIndexesFrom1ToTheSsidCount) {
  settings::load_distinct("3");
  for_each_setter([](const Setter& set, uint32_t band) {
    for (const int32_t ssid : {1, 3}) {
      EXPECT_EQ(good_value(set) != nullptr ? 0U : 1U, set.call(band, ssid, some_value(set)));
    }
    const Image image;
    for (const int32_t ssid : {0, 4, -1, 8, INT_MAX, INT_MIN}) {
      SCOPED_TRACE(ssid);
      EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, ssid, some_value(set))); }),
                  ElementsAre(failed(set.name, "The ssid index should be from 1 to BssidNum:3.")));
    }
    ASSERT_EQ("", image.difference());
  });
}

TEST(SsidSetter, WritesNothingBeyondTheEighthSsid) {
  for (const int band : {0, 1}) {
    sandbox::load(band, sandbox::full_dat_with(band, "BssidNum", "10") + "SSID9=Ninth\nAccessPolicy8=0\n");
  }
  const Image image;
  for_each_setter([](const Setter& set, uint32_t band) {
    const std::string key = key_of(set, 9);
    const bool is_there = is_shared(set) || key == "SSID9" || key == "AccessPolicy8";
    if (good_value(set) == nullptr) return;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, 9, good_value(set))); }),
                ElementsAre(failed("update_attr", is_there ? "The index is invalid." : "The attr_name do not exist.")));
  });
  EXPECT_EQ("", image.difference());
}

TEST(SsidSetter, RefusesANullValueFirst) {
  settings::load_distinct();
  const Image image;
  for_each_setter([](const Setter& set, uint32_t band) {
    for (const int32_t ssid : {1, 0}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, set.call(band, ssid, nullptr)); }),
                  ElementsAre(entered(set.name), failed(set.name)));
    }
  });
  EXPECT_EQ("", image.difference());
}

TEST(SsidSetter, LooksAtTheIndexBeforeTheValue) {
  settings::load_distinct();
  for_each_setter([](const Setter& set, uint32_t band) {
    if (set.values.refused.empty()) return;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, 9, set.values.refused[0].c_str())); }),
                ElementsAre(failed(set.name, "The ssid index should be from 1 to BssidNum:8.")));
  });
}

TEST(SsidSetter, LooksAtTheValueBeforeTheStore) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\n");
  for_each_setter([](const Setter& set, uint32_t band) {
    if (set.values.refused.empty()) return;
    const std::string& value = set.values.refused[0];
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, 1, value.c_str())); }),
                ElementsAre(refusal_of(set, value)));
  });
}

TEST(SsidSetter, RefusesABandWithoutAnSsidCountBeforeIndexAndValue) {
  settings::load_without("BssidNum");
  const Image image;
  for_each_setter([](const Setter& set, uint32_t band) {
    for (const int32_t ssid : {1, 0}) {
      const char* const value = set.values.refused.empty() ? "x" : set.values.refused[0].c_str();
      EXPECT_THAT(own_lines(set.name, seams::trace_of([&] { EXPECT_EQ(1U, set.call(band, ssid, value)); })),
                  ElementsAre(entered(set.name), failed(set.name)));
    }
  });
  EXPECT_EQ("", image.difference());
}

TEST(SsidSetter, RefusesAnUnknownBand) {
  settings::load_distinct();
  const Image image;
  for (const Setter& set : kSetters) {
    SCOPED_TRACE(set.name);
    for (const uint32_t band : {2U, 0xffffffffU, 0x80000000U}) {
      EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1U, set.call(band, 1, some_value(set))); }),
                  ElementsAre(entered(set.name), entered("wifimgr_lib_get_bssidnum"), entered("read_attr"),
                              failed("read_attr", "The wifi_type is wrong."), failed("wifimgr_lib_get_bssidnum"),
                              failed(set.name)));
    }
  }
  EXPECT_EQ("", image.difference());
}

TEST(SsidSetter, AddsNoMissingKey) {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\n");
  const Image image;
  for_each_setter([](const Setter& set, uint32_t band) {
    if (good_value(set) == nullptr) return;
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, set.call(band, 1, good_value(set))); }),
                ElementsAre(failed("update_attr", "The attr_name do not exist.")));
    EXPECT_THAT(own_lines(set.name, seams::trace_of([&] { (void)set.call(band, 1, good_value(set)); })),
                ElementsAre(entered(set.name), failed(set.name)));
  });
  EXPECT_EQ("", image.difference());
}

TEST(SsidSetter, TracesItsEntryAndItsSuccess) {
  settings::load_distinct();
  for_each_setter([](const Setter& set, uint32_t band) {
    if (good_value(set) == nullptr) return;
    EXPECT_THAT(own_lines(set.name, seams::trace_of([&] { (void)set.call(band, 1, good_value(set)); })),
                ElementsAre(entered(set.name), succeeded(set.name)));
  });
}

TEST(SsidSetter, TracesNothingOfItsOwnBelowLevel8ButReasons) {
  settings::load_distinct();
  for (const Setter& set : kSetters) {
    EXPECT_THAT(own_lines(set.name, seams::trace_of(
                                        [&] {
                                          if (good_value(set) != nullptr) (void)set.call(0, 1, good_value(set));
                                          (void)set.call(2, 1, some_value(set));
                                          (void)set.call(0, 1, nullptr);
                                        },
                                        7)),
                IsEmpty());
  }
}

TEST(SsidSetter, AsksForNoReloadAndRunsNothing) {
  settings::load_with("ReloadFlag", "7");
  for_each_setter([](const Setter& set, uint32_t band) {
    (void)set.call(band, 1, some_value(set));
    EXPECT_EQ("7\n", sandbox::field(static_cast<int>(band), "ReloadFlag", 1));
  });
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace
