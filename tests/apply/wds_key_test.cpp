// The keys of the WDS links.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "apply/dat_text.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char kWepRefusal[] =
    "[wifimgr_lib_set_wdskey]:===Fail Exit===Please input 5 or 13 ASCII characters / 10 or 26 hexadecimal "
    "characters!\n";
const char kWpaRefusal[] = "[wifimgr_lib_set_wdskey]:===Fail Exit===Please input 8 to 64 hexadecimal characters!\n";
const char kTypeRefusal[] = "[wifimgr_lib_set_wdskey]:===Fail Exit===WdsEntryType in datfile is ERR.\n";
const char kCountRefusal[] = "[wifimgr_lib_set_wdskey]:===Fail Exit===The number of WdsEncrypType is should be 4.\n";
const char kLinkRefusal[] = "[wifimgr_lib_set_wdskey]:===Fail Exit===The wdskey index should be from 1 to 4.\n";

void load_with(const char* ciphers) {
  for (const int band : {0, 1}) {
    dat::load(band, {});
    dat::put(band, -1, "WdsEncrypType", ciphers);
  }
}

void expect_refused(int32_t link, const std::string& key, const std::string& error) {
  SCOPED_TRACE("link " + std::to_string(link) + ", key " + testing::PrintToString(key));
  const std::string stores = sandbox::segment_bytes(0) + sandbox::segment_bytes(1);
  for (const uint32_t band : {0U, 1U}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1U, wifimgr_lib_set_wdskey(band, link, key.c_str())); }),
                ElementsAre(error));
  }
  EXPECT_EQ(stores, sandbox::segment_bytes(0) + sandbox::segment_bytes(1));
}

std::string key_of(int32_t link) {
  return "Wds" + std::to_string(link - 1) + "Key";
}

void expect_stored(int32_t link, const std::string& key) {
  SCOPED_TRACE("link " + std::to_string(link) + ", key " + testing::PrintToString(key));
  for (const int band : {0, 1}) {
    dat::put(band, -1, key_of(link), "before");
    EXPECT_EQ(0U, wifimgr_lib_set_wdskey(static_cast<uint32_t>(band), link, key.c_str()));
    EXPECT_EQ(key, sandbox::field(band, key_of(link), 1));
  }
}

TEST(WdsKeyCheck, AcceptsWepKeysByLengthAndDigits) {
  const std::string hex = "0123456789abcdefABCDEF01234";
  for (int length = -1; length <= 70; ++length) {
    SCOPED_TRACE(length);
    const std::string digits(static_cast<size_t>(length < 0 ? 0 : length), 'F');
    const std::string characters(digits.size(), 'g');
    const bool any = length == 5 || length == 13;
    const bool hexadecimal = length == 10 || length == 26;
    EXPECT_EQ(any ? 0 : -1, wdskey_check_for_wep(length, characters.c_str()));
    EXPECT_EQ(any || hexadecimal ? 0 : -1, wdskey_check_for_wep(length, digits.c_str()));
  }
  EXPECT_EQ(0, wdskey_check_for_wep(26, hex.c_str()));
}

TEST(WdsKeyCheck, AcceptsWpaKeysByLengthAndAt64ByDigits) {
  for (int length = -1; length <= 70; ++length) {
    SCOPED_TRACE(length);
    const std::string digits(static_cast<size_t>(length < 0 ? 0 : length), 'a');
    const std::string characters(digits.size(), 'g');
    EXPECT_EQ(length >= 8 && length <= 63 ? 0 : -1, wdskey_check(length, characters.c_str()));
    EXPECT_EQ(length >= 8 && length <= 64 ? 0 : -1, wdskey_check(length, digits.c_str()));
  }
}

TEST(WdsKeyCheck, LooksAtEveryCharacterOfAHexadecimalKey) {
  for (const int length : {10, 26, 64}) {
    for (int at = 0; at < length; ++at) {
      std::string key(static_cast<size_t>(length), '0');
      key[static_cast<size_t>(at)] = 'g';
      EXPECT_EQ(-1, length == 64 ? wdskey_check(length, key.c_str()) : wdskey_check_for_wep(length, key.c_str())) << at;
    }
  }
}

TEST(WdsKeyCheck, RefusesNullAndNegativeLengths) {
  for (const int length : {5, 8, 10, 13, 64}) {
    EXPECT_EQ(-1, wdskey_check(length, nullptr));
    EXPECT_EQ(-1, wdskey_check_for_wep(length, nullptr));
  }
  EXPECT_EQ(-1, wdskey_check(INT32_MIN, "12345678"));
  EXPECT_EQ(-1, wdskey_check_for_wep(INT32_MIN, "12345"));
}

TEST(WdsKeySetter, WritesFieldOneOfTheLinksKeyAlone) {
  load_with("WEP;WEP;WEP;WEP");
  for (int32_t link = 1; link <= 4; ++link) {
    for (const int band : {0, 1}) {
      SCOPED_TRACE(link);
      dat::put(band, 1, key_of(link), "abcde");
      const std::string expected = sandbox::segment_bytes(band);
      dat::put(band, 1, key_of(link), "before");
      const std::string other = sandbox::segment_bytes(1 - band);
      EXPECT_EQ(0U, wifimgr_lib_set_wdskey(static_cast<uint32_t>(band), link, "abcde"));
      EXPECT_EQ(expected, sandbox::segment_bytes(band));
      EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
    }
  }
}

TEST(WdsKeySetter, TracesEntryAndExit) {
  load_with("WEP;WEP;WEP;WEP");
  const auto trace = seams::trace_of([] { wifimgr_lib_set_wdskey(0, 1, "abcde"); });
  EXPECT_EQ("[wifimgr_lib_set_wdskey]:===Enter===\n", trace.front());
  EXPECT_EQ("[wifimgr_lib_set_wdskey]:===Success Exit===\n", trace.back());
}

TEST(WdsKeySetter, WepLinkTakesWepKeysAlone) {
  load_with("WEP;WEP;WEP;WEP");
  for (int32_t link = 1; link <= 4; ++link) {
    for (const std::string& key :
         std::vector<std::string>{"g-k*;", "0123456789", "abcdefABCD", "13 characters", std::string(26, 'f')}) {
      expect_stored(link, key);
    }
    for (const std::string& key :
         std::vector<std::string>{"", "four", "sixsix", "123456789", "012345678g", "12345678901", "twelve chars",
                                  "14 characters.", std::string(25, 'f'), std::string(25, 'f') + "g",
                                  std::string(27, 'f'), std::string(64, 'f'), std::string(300, 'f')}) {
      expect_refused(link, key, kWepRefusal);
    }
  }
}

TEST(WdsKeySetter, TkipAndAesLinksTakeWpaKeysAlone) {
  for (const char* ciphers : {"TKIP;TKIP;TKIP;TKIP", "AES;AES;AES;AES"}) {
    SCOPED_TRACE(ciphers);
    load_with(ciphers);
    for (int32_t link = 1; link <= 4; ++link) {
      for (const std::string& key :
           std::vector<std::string>{"8 chars.", "nine char", std::string(63, 'z'), std::string(64, 'f')}) {
        expect_stored(link, key);
      }
      for (const std::string& key :
           std::vector<std::string>{"", "four", "7 chars", std::string(63, 'f') + "g", std::string(65, 'f'),
                                    std::string(149, 'f'), std::string(150, 'f'), std::string(1000, 'f')}) {
        expect_refused(link, key, kWpaRefusal);
      }
    }
  }
}

TEST(WdsKeySetter, EveryLinkIsJudgedByItsOwnCipher) {
  load_with("WEP;TKIP;AES;NONE");
  expect_stored(1, "abcde");
  expect_refused(1, "12345678", kWepRefusal);
  expect_stored(2, "12345678");
  expect_refused(2, "abcde", kWpaRefusal);
  expect_stored(3, "12345678");
  expect_refused(3, "abcde", kWpaRefusal);
  expect_refused(4, "abcde", kTypeRefusal);
  expect_refused(4, "12345678", kTypeRefusal);
}

TEST(WdsKeySetter, RefusesLinksOfOtherCiphers) {
  for (const char* cipher :
       {"NONE", "none", "wep", "Wep", "aes", "tkip", "TKIPAES", "WEP ", " WEP", "AE", "AESx", ""}) {
    SCOPED_TRACE(cipher);
    const std::string ciphers = std::string("WEP;") + cipher + ";WEP;WEP";
    load_with(ciphers.c_str());
    expect_refused(2, "12345", kTypeRefusal);
    expect_refused(2, "12345678", kTypeRefusal);
    expect_stored(3, "12345");
  }
}

TEST(WdsKeySetter, TakesTheCipherByPosition) {
  load_with("AES;;WEP;TKIP");
  expect_stored(1, "12345678");
  expect_refused(2, "12345678", kTypeRefusal);
  expect_stored(3, "12345");
  expect_stored(4, "12345678");
  load_with(";;;WEP");
  for (const int32_t link : {1, 2, 3}) expect_refused(link, "12345", kTypeRefusal);
  expect_stored(4, "12345");
  load_with(";;;");
  for (const int32_t link : {1, 2, 3, 4}) expect_refused(link, "12345", kTypeRefusal);
}

TEST(WdsKeySetter, ComparesTheCipherWithoutItsLineEnd) {
  for (const char* end : {"\n", "\r\n", "\r"}) {
    load_with((std::string("AES;AES;AES;WEP") + end).c_str());
    expect_stored(4, "12345");
    load_with((std::string("AES;AES;AES;AES") + end).c_str());
    expect_stored(4, "12345678");
  }
}

TEST(WdsKeySetter, NeedsExactlyFourCiphers) {
  for (const char* ciphers : {"", "WEP", "WEP;WEP;WEP", "WEP;WEP;WEP;WEP;", "WEP;WEP;WEP;WEP;WEP", ";;;;"}) {
    SCOPED_TRACE(ciphers);
    load_with(ciphers);
    expect_refused(1, "12345", kCountRefusal);
  }
}

TEST(WdsKeySetter, RefusesOtherLinksBeforeAnythingElse) {
  load_with("WEP;WEP");
  for (const int32_t link : {0, -1, 5, INT32_MAX, INT32_MIN}) expect_refused(link, "12345", kLinkRefusal);
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_wdskey(2, 5, "12345")); }),
              ElementsAre(kLinkRefusal));
}

TEST(WdsKeySetter, RefusesNullBeforeTheLink) {
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(1U, wifimgr_lib_set_wdskey(2, 5, nullptr)); }),
              ElementsAre("[wifimgr_lib_set_wdskey]:===Enter===\n", "[wifimgr_lib_set_wdskey]:===Fail Exit===\n"));
}

TEST(WdsKeySetter, FailsWhenTheCiphersCannotBeRead) {
  sandbox::load(0, sandbox::full_dat_without(0, "WdsEncrypType"));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wifimgr_lib_set_wdskey(0, 1, "12345")); }),
              ElementsAre("[read_attr]:===Fail Exit===The attr_name do not exist.\n",
                          "[wifimgr_lib_set_wdskey]:===Fail Exit===get_wdsencryptype err.\n"));
  for (const uint32_t band : {2U, 0xffffffffU}) {
    EXPECT_THAT(seams::errors_of([band] { EXPECT_EQ(1U, wifimgr_lib_set_wdskey(band, 1, "12345")); }),
                ElementsAre("[read_attr]:===Fail Exit===The wifi_type is wrong.\n",
                            "[wifimgr_lib_set_wdskey]:===Fail Exit===get_wdsencryptype err.\n"));
  }
}

TEST(WdsKeySetter, FailsPlainlyWhenTheFileHasNoSuchKey) {
  sandbox::load(0, dat::with(sandbox::full_dat_without(0, "Wds2Key"), "WdsEncrypType", "WEP;WEP;WEP;WEP"));
  const auto trace = seams::trace_of([] { EXPECT_EQ(1U, wifimgr_lib_set_wdskey(0, 3, "12345")); });
  EXPECT_EQ("[wifimgr_lib_set_wdskey]:===Fail Exit===\n", trace.back());
  EXPECT_THAT(seams::errors_of([] { wifimgr_lib_set_wdskey(0, 3, "12345"); }),
              ElementsAre("[update_attr]:===Fail Exit===The attr_name do not exist.\n"));
}

// Deliberately not what the setter of links 2 to 4 wrote.
TEST(WdsKeyGetter, ReadsTheFieldWithTheLinksNumber) {
  for (const int band : {0, 1}) {
    dat::load(band, {{"Wds0Key", "a1;a2;a3;a4"},
                     {"Wds1Key", "b1;b2;b3;b4"},
                     {"Wds2Key", "c1;c2;c3;c4"},
                     {"Wds3Key", "d1;d2;d3;d4"}});
    const char* const expected[] = {"a1", "b2", "c3", "d4\n"};
    for (int link = 1; link <= 4; ++link) {
      char text[WIFIMGR_VALUE_SIZE] = "before";
      EXPECT_EQ(0, wifimgr_lib_get_wdskey(band, link, text, sizeof text));
      EXPECT_STREQ(expected[link - 1], text);
    }
  }
}

TEST(WdsKeyGetter, ReadsWhatWasSetForTheFirstLinkAlone) {
  load_with("WEP;WEP;WEP;WEP");
  for (int link = 1; link <= 4; ++link) {
    ASSERT_EQ(0U, wifimgr_lib_set_wdskey(0, link, "abcde"));
    char text[WIFIMGR_VALUE_SIZE] = "before";
    EXPECT_EQ(0, wifimgr_lib_get_wdskey(0, link, text, 151));
    EXPECT_STREQ(link == 1 ? "abcde" : "", text);
  }
}

TEST(WdsKeyGetter, RefusesWithTheBufferUntouched) {
  dat::load(0, {});
  char text[WIFIMGR_VALUE_SIZE] = "untouched";
  for (const int link : {0, -1, 5, INT32_MAX, INT32_MIN}) {
    for (const int band : {0, 2}) {
      EXPECT_THAT(
          seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_wdskey(band, link, text, sizeof text)); }),
          ElementsAre("[wifimgr_lib_get_wdskey]:===Fail Exit===The wdskey index is invalid, please input 1 to 4.\n"));
    }
  }
  for (const int band : {2, -1}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_wdskey(band, 1, text, sizeof text)); }),
                ElementsAre("[read_attr]:===Fail Exit===The wifi_type is wrong.\n"));
  }
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_wdskey(0, 1, text, 150)); }),
              ElementsAre("[read_attr]:===Fail Exit===The size of buffer is too small!\n"));
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(1, wifimgr_lib_get_wdskey(0, 9, nullptr, 160)); }),
              ElementsAre("[wifimgr_lib_get_wdskey]:===Enter===\n", "[wifimgr_lib_get_wdskey]:===Fail Exit===\n"));
  sandbox::load(0, sandbox::full_dat_without(0, "Wds3Key"));
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_wdskey(0, 4, text, sizeof text)); }),
              ElementsAre("[read_attr]:===Fail Exit===The attr_name do not exist.\n"));
  EXPECT_EQ("[wifimgr_lib_get_wdskey]:===Fail Exit===\n",
            seams::trace_of([&] { wifimgr_lib_get_wdskey(0, 4, text, sizeof text); }).back());
  EXPECT_STREQ("untouched", text);
}

}  // namespace
