// The security fields that follow an SSID's authentication mode.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply/calls.h"
#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

Lines calls_of(uint32_t band, uint32_t ssid) {
  return calls::made_by([=] { update_auth_mode(band, ssid); });
}

// "get_authMode", then what the mode asks for, all on SSID 1 of 2.4G.
Lines after_reading(const Lines& rest) {
  Lines all = {"get_authMode(0,1)"};
  all.insert(all.end(), rest.begin(), rest.end());
  return all;
}

const Lines kClearedKeys = {"set_defaultKeyID(0,1,2)", "set_keyStr(0,1,1,0)",  "set_keyType(0,1,1,0)",
                            "set_keyStr(0,1,2,0)",     "set_keyType(0,1,2,0)", "set_keyStr(0,1,3,0)",
                            "set_keyType(0,1,3,0)",    "set_keyStr(0,1,4,0)",  "set_keyType(0,1,4,0)"};

const Lines kOpened = {"set_authMode(0,1,OPEN)", "set_encrypType(0,1,NONE)", "set_defaultKeyID(0,1,0)",
                       "set_WPAPSK(0,1,0)",      "set_keyType(0,1,1,0)",     "set_keyStr(0,1,1,0)",
                       "set_keyType(0,1,2,0)",   "set_keyStr(0,1,2,0)",      "set_keyType(0,1,3,0)",
                       "set_keyStr(0,1,3,0)",    "set_keyType(0,1,4,0)",     "set_keyStr(0,1,4,0)"};

Lines with_cleared_keys(Lines first) {
  first.insert(first.end(), kClearedKeys.begin(), kClearedKeys.end());
  return first;
}

void put_mode(const std::string& mode) {
  dat::put(0, 1, "AuthMode", mode);
}

TEST(AuthMode, PersonalModesLoseTheirWepKeysAlone) {
  dat::load(0, {});
  for (const char* mode : {"WPAPSK", "WPA2PSK", "WPAPSKWPA2PSK", "WPA3PSK", "WPA2PSKWPA3PSK"}) {
    SCOPED_TRACE(mode);
    put_mode(mode);
    EXPECT_THAT(calls_of(0, 1), ElementsAreArray(after_reading(kClearedKeys)));
    EXPECT_EQ(mode, sandbox::field(0, "AuthMode", 1));
  }
}

TEST(AuthMode, EnterpriseModesLoseIeee8021xAndTheirWepKeys) {
  dat::load(0, {});
  for (const char* mode : {"WPA", "WPA2", "WPA1WPA2", "WPA3"}) {
    SCOPED_TRACE(mode);
    put_mode(mode);
    EXPECT_THAT(calls_of(0, 1), ElementsAreArray(after_reading(with_cleared_keys({"set_ieee8021x(0,1,0)"}))));
    EXPECT_EQ(mode, sandbox::field(0, "AuthMode", 1));
  }
}

TEST(AuthMode, Wpa3With192BitChangesItsName) {
  dat::load(0, {});
  put_mode("WPA3-192Bit");
  EXPECT_THAT(
      calls_of(0, 1),
      ElementsAreArray(after_reading(with_cleared_keys({"set_authMode(0,1,WPA3-192)", "set_ieee8021x(0,1,0)"}))));
  EXPECT_EQ("WPA3-192", sandbox::field(0, "AuthMode", 1));
}

TEST(AuthMode, SecondRunOpensWpa3With192Bit) {
  dat::load(0, {});
  put_mode("WPA3-192Bit");
  update_auth_mode(0, 1);
  EXPECT_THAT(calls_of(0, 1), ElementsAreArray(after_reading(kOpened)));
  EXPECT_EQ("OPEN", sandbox::field(0, "AuthMode", 1));
}

TEST(AuthMode, AnythingElseBecomesOpen) {
  dat::load(0, {});
  for (const char* mode :
       {"OPEN", "OPEN\n", "", "\n", "SHARED", "wpa2psk", "WPA2PSK ", " WPA2PSK", "WPA2PSKx", "WPA2PS", "WPA4",
        "WPA3-192", "WPA3-192Bits", "WPAPSK;WPA2PSK", "wep", "We P", "OWE", "Radius", "WPAWPA2"}) {
    SCOPED_TRACE(testing::PrintToString(mode));
    put_mode(mode);
    EXPECT_THAT(calls_of(0, 1), ElementsAreArray(after_reading(kOpened)));
  }
}

TEST(AuthMode, WepModesBecomeWepAuto) {
  struct Case {
    const char* mode;
    const char* ieee8021x;
  };
  dat::load(0, {});
  for (const Case& c : std::initializer_list<Case>{{"WEP", "0"},
                                                   {"WEPAUTO", "0"},
                                                   {"WEP\n", "0"},
                                                   {"OPENWEP", "0"},
                                                   {"xWEPx", "0"},
                                                   {"WEPradius", "0"},
                                                   {"WEPRadius", "1"},
                                                   {"RadiusWEP", "1"},
                                                   {"Radius with WEP\r\n", "1"},
                                                   {"WPA2PSKWEP", "0"}}) {
    SCOPED_TRACE(testing::PrintToString(c.mode));
    put_mode(c.mode);
    EXPECT_THAT(calls_of(0, 1), ElementsAreArray(after_reading(
                                    {std::string("set_ieee8021x(0,1,") + c.ieee8021x + ")", "set_authMode(0,1,WEPAUTO)",
                                     "set_encrypType(0,1,WEP)", "get_keyStr(0,1,1)", "set_keyType(0,1,1,1)",
                                     "get_keyStr(0,1,2)", "set_keyType(0,1,2,1)", "get_keyStr(0,1,3)",
                                     "set_keyType(0,1,3,1)", "get_keyStr(0,1,4)", "set_keyType(0,1,4,1)"})));
  }
}

TEST(AuthMode, SecondRunOfWepWithRadiusForgetsTheRadius) {
  dat::load(0, {});
  put_mode("WEPRadius");
  update_auth_mode(0, 1);
  EXPECT_EQ("1", sandbox::field(0, "IEEE8021X", 1));
  update_auth_mode(0, 1);
  EXPECT_EQ("0", sandbox::field(0, "IEEE8021X", 1));
  EXPECT_EQ("WEPAUTO", sandbox::field(0, "AuthMode", 1));
}

TEST(AuthMode, SecondRunOfOtherModesChangesNothing) {
  for (const char* mode : {"WPA2PSK", "WPA2", "OPEN", "WEPAUTO"}) {
    SCOPED_TRACE(mode);
    dat::load(0, {});
    put_mode(mode);
    update_auth_mode(0, 1);
    const std::string store = sandbox::segment_bytes(0);
    update_auth_mode(0, 1);
    EXPECT_EQ(store, sandbox::segment_bytes(0));
  }
}

TEST(AuthMode, WepKeyTypeFollowsTheLengthOfTheKey) {
  struct Case {
    std::string key;
    const char* type;
  };
  dat::load(0, {});
  put_mode("WEP");
  for (const Case& c : std::vector<Case>{{"", "0"},
                                         {"1", "1"},
                                         {"12345", "1"},
                                         {"123456789", "1"},
                                         {"0123456789", "0"},
                                         {"not hex at", "0"},
                                         {"0123456789a", "1"},
                                         {"1234567890123", "1"},
                                         {std::string(25, 'a'), "1"},
                                         {std::string(26, 'a'), "0"},
                                         {std::string(26, 'z'), "0"},
                                         {std::string(27, 'a'), "1"},
                                         {std::string(149, 'a'), "1"}}) {
    for (const char* end : {"", "\n", "\r\n", "\r"}) {
      SCOPED_TRACE(testing::PrintToString(c.key + end));
      for (int key = 1; key <= 4; ++key) {
        const std::string number = std::to_string(key);
        dat::put(0, 1, "Key" + number + "Type", "x");
        dat::put(0, 1, "Key" + number + "Str1", c.key.size() > 140 ? c.key : c.key + end);
      }
      update_auth_mode(0, 1);
      for (int key = 1; key <= 4; ++key) EXPECT_EQ(c.type, sandbox::field(0, "Key" + std::to_string(key) + "Type", 1));
    }
  }
}

TEST(AuthMode, EachWepKeyHasItsOwnType) {
  dat::load(0, {});
  put_mode("WEP");
  const char* const keys[] = {"0123456789", "12345", "", "01234567890123456789abcdef"};
  for (int key = 1; key <= 4; ++key) {
    dat::put(0, 1, "Key" + std::to_string(key) + "Type", "x");
    dat::put(0, 1, "Key" + std::to_string(key) + "Str1", keys[key - 1]);
  }
  update_auth_mode(0, 1);
  EXPECT_EQ("0", sandbox::field(0, "Key1Type", 1));
  EXPECT_EQ("1", sandbox::field(0, "Key2Type", 1));
  EXPECT_EQ("0", sandbox::field(0, "Key3Type", 1));
  EXPECT_EQ("0", sandbox::field(0, "Key4Type", 1));
}

TEST(AuthMode, WepKeyThatCannotBeReadKeepsItsType) {
  sandbox::load(0, sandbox::full_dat_without(0, "Key2Str1"));
  put_mode("WEP");
  dat::put(0, 1, "Key2Type", "x");
  EXPECT_THAT(sandbox::stdout_of([] { update_auth_mode(0, 1); }), IsEmpty());
  EXPECT_EQ("1", sandbox::field(0, "Key1Type", 1));
  EXPECT_EQ("x", sandbox::field(0, "Key2Type", 1));
  EXPECT_EQ("1", sandbox::field(0, "Key3Type", 1));
}

// A secured SSID must not become open because its value is the last one of its line.
TEST(AuthMode, IsReadWithoutItsLineEnd) {
  struct Case {
    const char* stored;
    bool known;
  };
  dat::load(0, {});
  for (const char* mode : {"WPA2PSK", "WPA2", "WPA3-192Bit"}) {
    for (const Case& c : std::initializer_list<Case>{{"", true},
                                                     {"\n", true},
                                                     {"\r", true},
                                                     {"\r\n", true},
                                                     {"\n\n", true},
                                                     {"\nx", true},
                                                     {"\rx", true},
                                                     {"\nxy", false},
                                                     {"\n\r\n", false},
                                                     {" \n", false}}) {
      SCOPED_TRACE(mode + testing::PrintToString(c.stored));
      put_mode(mode + std::string(c.stored));
      update_auth_mode(0, 1);
      EXPECT_EQ(c.known ? "2" : "0", sandbox::field(0, "DefaultKeyID", 1));
    }
  }
}

TEST(AuthMode, LastSsidOfTheFileStaysSecured) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    dat::load(band, {{"AuthMode", "OPEN;WPA2PSK"}});
    EXPECT_EQ("WPA2PSK\n", sandbox::field(band, "AuthMode", 2));
    update_auth_mode(static_cast<uint32_t>(band), 2);
    EXPECT_EQ("WPA2PSK\n", sandbox::field(band, "AuthMode", 2));
    EXPECT_EQ("passphrase2\n", sandbox::field(band, "WPAPSK2", 1));
    EXPECT_EQ("2", sandbox::field(band, "DefaultKeyID", 2));
    EXPECT_EQ("0", sandbox::field(band, "Key4Str2", 1));
    EXPECT_EQ("0", sandbox::field(band, "Key4Type", 2));
  }
}

TEST(AuthMode, ServesTheSsidAndBandItIsAskedForAlone) {
  for (const int band : {0, 1}) {
    SCOPED_TRACE(band);
    for (const int each : {0, 1}) dat::load(each, {{"AuthMode", "OPEN;OPEN"}});
    const std::string other = sandbox::segment_bytes(1 - band);
    update_auth_mode(static_cast<uint32_t>(band), 2);
    EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
    EXPECT_EQ("AES", sandbox::field(band, "EncrypType", 1));
    EXPECT_EQ("NONE", sandbox::field(band, "EncrypType", 2));
    EXPECT_EQ("passphrase1\n", sandbox::field(band, "WPAPSK1", 1));
    EXPECT_EQ("0", sandbox::field(band, "WPAPSK2", 1));
    EXPECT_EQ("key1-1\n", sandbox::field(band, "Key1Str1", 1));
    EXPECT_EQ("0", sandbox::field(band, "Key1Str2", 1));
  }
}

TEST(AuthMode, ThatCannotBeReadChangesNothing) {
  dat::load(0, {});
  const std::string store = sandbox::segment_bytes(0);
  for (const uint32_t ssid : {0U, 3U, 0xffffffffU}) {
    EXPECT_THAT(sandbox::stdout_of([=] { update_auth_mode(0, ssid); }), IsEmpty());
  }
  for (const uint32_t band : {2U, 0xffffffffU}) {
    EXPECT_THAT(sandbox::stdout_of([=] { update_auth_mode(band, 1); }), IsEmpty());
  }
  EXPECT_EQ(store, sandbox::segment_bytes(0));
  EXPECT_THAT(calls_of(0, 3), ElementsAre("get_authMode(0,3)"));
}

}  // namespace
