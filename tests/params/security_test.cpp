// The security settings of an SSID: what holds between them. Their rows are with the per-SSID and band-wide settings.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using settings::Buffer;
using settings::failed;
using settings::Image;
using settings::repeat;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kTimeout[] = "wifimgr_lib_set_session_timeout_interval";

TEST(Security, ModesAreStoredOneByOne) {
  settings::load_distinct();
  Image image;
  EXPECT_EQ(0U, wifimgr_lib_set_authMode(0, 1, "WPA2"));
  image.set(0, "AuthMode", 1, "WPA2");
  EXPECT_EQ("", image.difference());
  EXPECT_EQ(0U, wifimgr_lib_set_key1Str(0, 1, "abcde"));
  image.set(0, "Key1Str1", 1, "abcde");
  EXPECT_EQ("", image.difference());
  EXPECT_EQ(0U, wifimgr_lib_set_encrypType(0, 1, "NONE"));
  image.set(0, "EncrypType", 1, "NONE");
  EXPECT_EQ("", image.difference());
}

TEST(Security, ModeOfAnyNameIsStored) {
  settings::load_distinct();
  for (const char* const mode : {"OPEN", "WPAPSKWPA2PSK", "wpa2psk", "no such mode", "a;b", ""}) {
    EXPECT_EQ(0U, wifimgr_lib_set_authMode(1, 8, mode));
    EXPECT_EQ(mode, sandbox::field(1, "AuthMode", 8));
    EXPECT_EQ(0U, wifimgr_lib_set_wepAuthType(1, 8, mode));
    EXPECT_EQ(mode, sandbox::field(1, "WEPAuthType", 8));
  }
}

TEST(Security, CipherThatTheMessageLeavesOutIsTaken) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_encrypType(0, 1, "GCMP256"));
  EXPECT_EQ("GCMP256", sandbox::field(0, "EncrypType", 1));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_encrypType(0, 1, "GCMP128")); }),
              ElementsAre("[wifimgr_lib_set_encrypType]:===Fail Exit===The EncrypType value should be chosed from "
                          "NONE,WEP,TKIP,AES,TKIPAES.\n"));
}

TEST(Security, WpaKeyIsCheckedLessThanTheRadiusSecret) {
  settings::load_distinct();
  for (const std::string& key : {std::string(), repeat("k", 7), repeat("z", 64)}) {
    EXPECT_EQ(0U, wifimgr_lib_set_WPAPSK(0, 2, key.c_str()));
    EXPECT_EQ(key, sandbox::field(0, "WPAPSK2", 1));
    EXPECT_EQ(1U, wifimgr_lib_set_radiuskey(0, 2, key.c_str()));
  }
}

TEST(Security, RadiusSecretOf64CharactersIsHexadecimalInEveryPlace) {
  settings::load_distinct();
  for (size_t place = 0; place < 64; ++place) {
    std::string key = repeat("a", 64);
    EXPECT_EQ(0U, wifimgr_lib_set_radiuskey(0, 1, key.c_str()));
    key[place] = 'g';
    EXPECT_EQ(1U, wifimgr_lib_set_radiuskey(0, 1, key.c_str())) << place;
  }
}

TEST(Security, RadiusSecretOfEveryLength) {
  settings::load_distinct();
  for (int length = 0; length <= 160; ++length) {
    const bool fits_as_text = length >= 8 && length <= 63;
    EXPECT_EQ(fits_as_text ? 0U : 1U, wifimgr_lib_set_radiuskey(0, 1, repeat("g", length).c_str())) << length;
    EXPECT_EQ(fits_as_text || length == 64 ? 0U : 1U, wifimgr_lib_set_radiuskey(0, 1, repeat("f", length).c_str()))
        << length;
  }
}

TEST(Security, WpaKeyOfEveryLength) {
  settings::load_distinct();
  for (int length = 0; length <= 160; ++length) {
    EXPECT_EQ(length <= 64 ? 0U : 1U, wifimgr_lib_set_WPAPSK(0, 1, repeat("k", length).c_str())) << length;
  }
}

TEST(Security, OwnKeysAreReadBackWholeWithTheirSeparators) {
  settings::load_distinct();
  const std::string value = "12345;678;";
  struct Pair {
    wifimgr_setter_t set;
    uint64_t (*get)(uint32_t, int32_t, char*, uint32_t);
  };
  for (const Pair& pair : {Pair{wifimgr_lib_set_WPAPSK, wifimgr_lib_get_WPAPSK},
                           Pair{wifimgr_lib_set_radiuskey, wifimgr_lib_get_radiuskey},
                           Pair{wifimgr_lib_set_key3Str, wifimgr_lib_get_key3Str},
                           Pair{wifimgr_lib_set_accessControlList, wifimgr_lib_get_accessControlList}}) {
    Buffer buffer;
    EXPECT_EQ(0U, pair.set(1, 2, value.c_str()));
    EXPECT_EQ(0U, pair.get(1, 2, buffer.bytes, sizeof buffer.bytes));
    EXPECT_EQ(value, buffer.text());
  }
}

TEST(Security, AccessListsAreNumberedFromZero) {
  settings::load_distinct();
  Image image;
  EXPECT_EQ(0U, wifimgr_lib_set_accessPolicy(1, 2, "1"));
  image.set(1, "AccessPolicy1", 1, "1");
  EXPECT_EQ("", image.difference());
  EXPECT_EQ(0U, wifimgr_lib_set_accessControlList(0, 1, "02:00:00:00:00:09;02:00:00:00:00:0a"));
  image.set(0, "AccessControlList0", 1, "02:00:00:00:00:09;02:00:00:00:00:0a");
  EXPECT_EQ("", image.difference());
}

TEST(Security, DefaultKeyZeroIsTaken) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_defaultKeyID(0, 1, "0"));
  EXPECT_EQ("0", sandbox::field(0, "DefaultKeyID", 1));
}

TEST(Security, SettingsOfSessionsAreBandWide) {
  settings::load_distinct();
  Image image;
  for (const int band : {0, 1}) {
    const auto wifi_type = static_cast<uint32_t>(band);
    EXPECT_EQ(0U, wifimgr_lib_set_session_timeout_interval(wifi_type, -1, "3600"));
    EXPECT_EQ(0U, wifimgr_lib_set_EAPifname(wifi_type, -1, "br-lan;br0"));
    EXPECT_EQ(0U, wifimgr_lib_set_PreAuthifname(wifi_type, -1, "br0"));
    image.set(band, "session_timeout_interval", 1, "3600");
    image.set(band, "EAPifname", 1, "br-lan;br0");
    image.set(band, "PreAuthifname", 1, "br0");
    EXPECT_EQ("", image.difference());
  }
}

TEST(Security, SessionTimeoutIsJudgedAsText) {
  settings::load_distinct();
  for (const char* const value : {"2147483647", "0000000001", "", "999999999"}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(0U, wifimgr_lib_set_session_timeout_interval(0, -1, value)); }),
                IsEmpty());
    EXPECT_EQ(value, sandbox::field(0, "session_timeout_interval", 1));
  }
  const Image image;
  for (const char* const value : {"2147483648", "10000000000", "00000000001", "-1"}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_session_timeout_interval(0, -1, value)); }),
                ElementsAre(failed(kTimeout, "The timeout value is invalid.\nPlease input from 0 to 2147483647.")));
  }
  EXPECT_EQ("", image.difference());
}

TEST(Security, SettersOfOneSsidLeaveTheOthersAlone) {
  settings::load_distinct();
  EXPECT_EQ(0U, wifimgr_lib_set_rekeyInterval(0, 3, "4194303"));
  EXPECT_EQ("4194303", sandbox::field(0, "RekeyInterval", 3));
  Buffer before;
  Buffer after;
  EXPECT_EQ(0U, wifimgr_lib_get_rekeyInterval(0, 2, before.bytes, sizeof before.bytes));
  EXPECT_EQ(0U, wifimgr_lib_set_rekeyInterval(0, 3, "0"));
  EXPECT_EQ(0U, wifimgr_lib_get_rekeyInterval(0, 2, after.bytes, sizeof after.bytes));
  EXPECT_EQ(before.text(), after.text());
}

TEST(Security, WritesASsidBehindAnEmptyOne) {
  sandbox::load(0, "Default\nBssidNum=4\nAuthMode=OPEN\n");
  EXPECT_EQ(0U, wifimgr_lib_set_authMode(0, 4, "WPA2PSK"));
  EXPECT_EQ("WPA2PSK", sandbox::field(0, "AuthMode", 4));
  EXPECT_EQ("", sandbox::field(0, "AuthMode", 3));
}

}  // namespace
