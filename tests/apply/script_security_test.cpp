// The security part of the execute script.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "apply/dat_text.h"
#include "apply/script_text.h"
#include "store/ipc_objects.h"

namespace {

using script::joined;
using script::lines;
using script::Settings;
using script::written;
using ScriptSecurity = script::Script;
using ScriptWep = script::Script;

// The platform's default of IEEE 802.1X.
std::string platform_default = "0";

constexpr const char* kPersonal[] = {"WPAPSK", "WPA2PSK", "WPAPSKWPA2PSK", "WPA3PSK", "WPA2PSKWPA3PSK"};
constexpr const char* kEnterprise[] = {"WPA", "WPA2", "WPA1WPA2", "WPA3", "WPA3-192"};
constexpr const char* kLineEnds[] = {"", "\n", "\r\n", "\r"};

std::string interface(int band, int number) {
  return (band == 0 ? "ra" : "rai") + std::to_string(number);
}

// SSID 1 of a band in a wireless mode without a WMM part on 2.4G, with values that have no line ends.
void load(int band, const char* without = nullptr) {
  sandbox::load(band, without == nullptr ? sandbox::full_dat(band) : sandbox::full_dat_without(band, without));
  script::take_snapshot(band);
  const std::pair<const char*, const char*> values[] = {{"AccessPolicy0", "0"},
                                                        {"AccessControlList0", "list"},
                                                        {"RADIUS_Server", "10.0.0.1"},
                                                        {"RADIUS_Port", "1812"},
                                                        {"RADIUS_Key1", "secret"},
                                                        {"RekeyInterval", "60"},
                                                        {"EncrypType", "AES"},
                                                        {"SSID1", "net"},
                                                        {"WPAPSK1", "pass"},
                                                        {"DefaultKeyID", "3"},
                                                        {"Key1Str1", "k1"},
                                                        {"Key2Str1", "k2"},
                                                        {"Key3Str1", "k3"},
                                                        {"Key4Str1", "k4"}};
  for (const auto& [key, value] : values) {
    if (without == nullptr || std::strcmp(key, without) != 0) dat::put(band, 1, key, value);
  }
}

const Settings kBefore = {"AccessPolicy=0", "ACLClearAll=1", "ACLAddEntry=list", "HideSSID=0"};
const Settings kRadius = {"RADIUS_Server=10.0.0.1", "RADIUS_Port=1812", "RADIUS_Key=secret", "RekeyInterval=60"};
const Settings kWpaEnd = {"EncrypType=AES", "SSID=\"net\"", "WPAPSK=\"pass\"", "DefaultKeyID=2"};
const Settings kWepType = {"AuthMode=WEPAUTO", "EncrypType=WEP"};
const Settings kWepKeys = {"Key1=\"k1\"", "Key2=\"k2\"", "Key3=\"k3\"", "Key4=\"k4\""};
const Settings kOpen = {"AuthMode=OPEN", "EncrypType=NONE", "IEEE8021X=0"};

// The whole script of SSID 1 with this security part.
std::string whole(int band, const Settings& security) {
  const Settings wmm = band == 0 ? Settings() : Settings{"WmmCapable=1", "TxBurst=1"};
  return lines(interface(band, 0), joined({kBefore, security, wmm, {"SSID=\"net\""}}));
}

Settings without(Settings settings, const std::string& key) {
  const auto is_of_key = [&](const std::string& setting) { return setting.rfind(key + "=", 0) == 0; };
  settings.erase(std::remove_if(settings.begin(), settings.end(), is_of_key), settings.end());
  return settings;
}

// Leaves text where the next call has its variables.
[[gnu::noinline]] void fill_the_stack() {
  volatile char text[16384];
  for (volatile char& one : text) one = 'z';
}

TEST_F(ScriptSecurity, TakesNoMoreThanTheFieldThatAnotherProgramFilledToItsWidth) {
  const std::string wide(150, 'h');
  for (const char* key : {"HideSSID", "RADIUS_Server", "RADIUS_Port", "RekeyInterval", "EncrypType"}) {
    load(0);
    dat::put(0, 1, "AuthMode", "WPA2PSK");
    ipc::replace_record(0, key, ipc::record(key, {wide}));
    fill_the_stack();
    EXPECT_THAT(written(0, 0), testing::HasSubstr(std::string(key) + "=" + wide + "\n"));
  }
}

TEST_F(ScriptSecurity, OfPersonalModes) {
  for (const int band : {0, 1}) {
    load(band);
    for (const char* mode : kPersonal) {
      for (const char* line_end : kLineEnds) {
        dat::put(band, 1, "AuthMode", std::string(mode) + line_end);
        EXPECT_EQ(whole(band, joined({{std::string("AuthMode=") + mode + line_end}, kRadius, kWpaEnd})),
                  written(band, 0));
      }
    }
  }
}

TEST_F(ScriptSecurity, OfPersonalModesClearsAPlatformDefaultOfOne) {
  for (const int band : {0, 1}) {
    load(band);
    for (const char* mode : kPersonal) {
      for (const char* value : {"1", "", "01", "2", "1\n"}) {
        SCOPED_TRACE(testing::PrintToString(value) + mode);
        platform_default = value;
        dat::put(band, 1, "AuthMode", mode);
        const Settings clear = platform_default == "1" ? Settings{"IEEE8021X=0"} : Settings();
        EXPECT_EQ(whole(band, joined({{std::string("AuthMode=") + mode}, clear, kRadius, kWpaEnd})), written(band, 0));
      }
    }
  }
}

TEST_F(ScriptSecurity, OfEnterpriseModesTakesThePlatformDefault) {
  for (const int band : {0, 1}) {
    load(band);
    for (const char* mode : kEnterprise) {
      for (const char* value : {"0", "1", "", "2"}) {
        for (const char* line_end : kLineEnds) {
          SCOPED_TRACE(testing::PrintToString(value) + mode);
          platform_default = value;
          dat::put(band, 1, "AuthMode", std::string(mode) + line_end);
          EXPECT_EQ(whole(band, joined({{std::string("AuthMode=") + mode + line_end, "IEEE8021X=" + platform_default},
                                        kRadius,
                                        kWpaEnd})),
                    written(band, 0));
        }
      }
    }
  }
}

TEST_F(ScriptSecurity, OfAnythingElseIsOpen) {
  for (const int band : {0, 1}) {
    load(band);
    for (const char* mode : {"OPEN", "SHARED", "", "\n", "WPA3-192Bit", "WPA2PSK ", " WPA2PSK", "wpa2psk", "WPA1",
                             "WPA22", "WPAPSKWPA2PSKWPA3PSK", "PSK", "wep", "WE P", "OWE", "WPA2PSK\n\n\n"}) {
      SCOPED_TRACE(testing::PrintToString(mode));
      dat::put(band, 1, "AuthMode", mode);
      EXPECT_EQ(whole(band, kOpen), written(band, 0));
    }
  }
}

TEST_F(ScriptSecurity, OfAnOpenSsidAsksNothingElse) {
  for (const char* key : {"RADIUS_Server", "WPAPSK1", "EncrypType", "DefaultKeyID", "Key1Str1", "IEEE8021X"}) {
    load(0, key);
    dat::put(0, 1, "AuthMode", "OPEN");
    platform_default = "1";
    EXPECT_EQ(whole(0, kOpen), written(0, 0)) << key;
  }
}

TEST_F(ScriptSecurity, UnreadableWpaSettingOnlyLosesItsLine) {
  for (const int band : {0, 1}) {
    for (const auto& [store_key, key] :
         std::initializer_list<std::pair<const char*, const char*>>{{"RADIUS_Server", "RADIUS_Server"},
                                                                    {"RADIUS_Port", "RADIUS_Port"},
                                                                    {"RADIUS_Key1", "RADIUS_Key"},
                                                                    {"RekeyInterval", "RekeyInterval"},
                                                                    {"EncrypType", "EncrypType"},
                                                                    {"WPAPSK1", "WPAPSK"}}) {
      for (const char* mode : {"WPA2PSK", "WPA2"}) {
        load(band, store_key);
        dat::put(band, 1, "AuthMode", mode);
        const Settings all = joined({{std::string("AuthMode=") + mode},
                                     std::strcmp(mode, "WPA2") == 0 ? Settings{"IEEE8021X=0"} : Settings(),
                                     kRadius,
                                     kWpaEnd});
        EXPECT_EQ(whole(band, without(all, key)), written(band, 0)) << key;
      }
    }
    // The SSID has two lines to lose.
    load(band, "SSID1");
    dat::put(band, 1, "AuthMode", "WPA3");
    const Settings wmm = band == 0 ? Settings() : Settings{"WmmCapable=1", "TxBurst=1"};
    EXPECT_EQ(lines(interface(band, 0),
                    joined({kBefore, {"AuthMode=WPA3", "IEEE8021X=0"}, kRadius, without(kWpaEnd, "SSID"), wmm})),
              written(band, 0));
  }
}

TEST_F(ScriptSecurity, UnquotedValuesKeepTheirLineEnds) {
  load(0);
  for (const char* key : {"RADIUS_Server", "RADIUS_Port", "RADIUS_Key1", "RekeyInterval", "EncrypType"}) {
    dat::put(0, 1, key, "a\"\\\r\n");
  }
  dat::put(0, 1, "AuthMode", "WPA");
  EXPECT_EQ(whole(0, {"AuthMode=WPA", "IEEE8021X=0", "RADIUS_Server=a\"\\\r\n", "RADIUS_Port=a\"\\\r\n",
                      "RADIUS_Key=a\"\\\r\n", "RekeyInterval=a\"\\\r\n", "EncrypType=a\"\\\r\n", "SSID=\"net\"",
                      "WPAPSK=\"pass\"", "DefaultKeyID=2"}),
            written(0, 0));
}

TEST_F(ScriptSecurity, OfTheLastSsidIsThatOfItsMode) {
  for (const int band : {0, 1}) {
    for (const auto& [modes, line] :
         std::initializer_list<std::pair<const char*, const char*>>{{"OPEN;WPA2PSK", "AuthMode=WPA2PSK\n"},
                                                                    {"OPEN;WPA3-192\r", "AuthMode=WPA3-192\r\n"},
                                                                    {"OPEN;WEP", "AuthMode=WEPAUTO"},
                                                                    {"WPA2PSK;OPEN", "AuthMode=OPEN"}}) {
      dat::load(band, {{"AuthMode", modes}});
      script::take_snapshot(band);
      EXPECT_THAT(written(band, 1), testing::HasSubstr(lines(interface(band, 1), {line}))) << modes;
    }
  }
}

TEST_F(ScriptWep, IsWhateverContainsTheWord) {
  for (const int band : {0, 1}) {
    load(band);
    for (const char* mode : {"WEP", "WEP\n", "OPENWEP", "WEPAUTO", "SHAREDWEP\r\n", "WPA2PSKWEP"}) {
      dat::put(band, 1, "AuthMode", mode);
      EXPECT_EQ(whole(band, joined({{"IEEE8021X=0"}, kWepType, {"DefaultKeyID=3"}, kWepKeys})), written(band, 0))
          << mode;
    }
  }
}

TEST_F(ScriptWep, WithIeee8021XHasTheRadiusLinesFirst) {
  for (const int band : {0, 1}) {
    load(band);
    dat::put(band, 1, "AuthMode", "WEP");
    for (const auto& [value, on] : std::initializer_list<std::pair<const char*, bool>>{{"1", true},
                                                                                       {"1\n", true},
                                                                                       {"1\r\n", true},
                                                                                       {"0", false},
                                                                                       {"0\n", false},
                                                                                       {"", false},
                                                                                       {"01", false},
                                                                                       {"11", false},
                                                                                       {"1 ", false},
                                                                                       {"1\n\n\n", false}}) {
      SCOPED_TRACE(testing::PrintToString(value));
      dat::put(band, 1, "IEEE8021X", value);
      EXPECT_EQ(whole(band, joined({on ? joined({{"IEEE8021X=1"}, kRadius}) : Settings{"IEEE8021X=0"},
                                    kWepType,
                                    {"DefaultKeyID=3"},
                                    kWepKeys})),
                written(band, 0));
    }
    load(band, "IEEE8021X");
    dat::put(band, 1, "AuthMode", "WEP");
    EXPECT_EQ(whole(band, joined({{"IEEE8021X=0"}, kWepType, {"DefaultKeyID=3"}, kWepKeys})), written(band, 0));
  }
}

TEST_F(ScriptWep, TakesNothingFromThePlatformDefault) {
  for (const char* value : {"1", "2"}) {
    load(0);
    platform_default = value;
    dat::put(0, 1, "AuthMode", "WEP");
    EXPECT_EQ(whole(0, joined({{"IEEE8021X=0"}, kWepType, {"DefaultKeyID=3"}, kWepKeys})), written(0, 0));
  }
}

TEST_F(ScriptWep, UnreadableRadiusSettingOnlyLosesItsLine) {
  for (const auto& [store_key, key] :
       std::initializer_list<std::pair<const char*, const char*>>{{"RADIUS_Server", "RADIUS_Server"},
                                                                  {"RADIUS_Port", "RADIUS_Port"},
                                                                  {"RADIUS_Key1", "RADIUS_Key"},
                                                                  {"RekeyInterval", "RekeyInterval"}}) {
    load(0, store_key);
    dat::put(0, 1, "AuthMode", "WEP");
    dat::put(0, 1, "IEEE8021X", "1");
    EXPECT_EQ(whole(0, joined({{"IEEE8021X=1"}, without(kRadius, key), kWepType, {"DefaultKeyID=3"}, kWepKeys})),
              written(0, 0));
  }
}

TEST_F(ScriptWep, DefaultKeyIsTheFirstWhenItCannotBeRead) {
  load(0, "DefaultKeyID");
  dat::put(0, 1, "AuthMode", "WEP");
  EXPECT_EQ(whole(0, joined({{"IEEE8021X=0"}, kWepType, {"DefaultKeyID=1"}, kWepKeys})), written(0, 0));
  for (const char* value : {"", "4\n", "9"}) {
    load(0);
    dat::put(0, 1, "AuthMode", "WEP");
    dat::put(0, 1, "DefaultKeyID", value);
    const std::string line = std::string("DefaultKeyID=") + value;
    EXPECT_EQ(whole(0, joined({{"IEEE8021X=0"}, kWepType, {line}, kWepKeys})), written(0, 0));
  }
}

TEST_F(ScriptWep, EmptyAndUnreadableKeysHaveNoLine) {
  for (int key = 1; key <= 4; ++key) {
    const std::string name = "Key" + std::to_string(key);
    const Settings left = joined({{"IEEE8021X=0"}, kWepType, {"DefaultKeyID=3"}, without(kWepKeys, name)});
    load(0);
    dat::put(0, 1, "AuthMode", "WEP");
    dat::put(0, 1, name + "Str1", "");
    EXPECT_EQ(whole(0, left), written(0, 0)) << name;
    load(0, (name + "Str1").c_str());
    dat::put(0, 1, "AuthMode", "WEP");
    EXPECT_EQ(whole(0, left), written(0, 0)) << name;
  }
}

TEST_F(ScriptWep, KeyThatIsALineEndIsWrittenEmpty) {
  load(0);
  dat::put(0, 1, "AuthMode", "WEP");
  dat::put(0, 1, "Key2Str1", "\n");
  dat::put(0, 1, "Key4Str1", "\r\n");
  EXPECT_EQ(whole(0, joined({{"IEEE8021X=0"},
                             kWepType,
                             {"DefaultKeyID=3", "Key1=\"k1\"", "Key2=\"\"", "Key3=\"k3\"", "Key4=\"\""}})),
            written(0, 0));
}

}  // namespace

int wifimgr_lib_get_IEEE8021X_VAL(char* out, int size) {
  EXPECT_EQ(160, size);
  return std::snprintf(out, static_cast<size_t>(size), "%s", platform_default.c_str()) < 0 ? 1 : 0;
}
