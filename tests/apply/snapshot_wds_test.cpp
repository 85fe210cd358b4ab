// The WDS part of the snapshot.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "apply/dat_text.h"

namespace {

using Snapshot = wifimgr_band_snapshot;

// With WDS on and the first SSID using WEP, so that everything is kept.
void load_with_wep(int band) {
  dat::load(band, {{"WdsEnable", "1"},
                   {"WdsEncrypType", "AES;TKIP;WEP;NONE"},
                   {"AuthMode", "WEPAUTO;OPEN"},
                   {"Wds0Key", "key-of-link-1"}});
}

Snapshot taken(uint32_t band) {
  Snapshot record{};
  EXPECT_EQ(0U, wds_store(&record, band));
  return record;
}

template <size_t kSize>
std::string all_of(const char (&field)[kSize]) {
  return std::string(field, kSize);
}

std::string padded(std::string text, size_t size) {
  text.resize(size, '\0');
  return text;
}

// A text of the record: its key, how many characters are kept, how to get at it.
struct Text {
  const char* key;
  size_t kept;
  size_t offset;
};

constexpr Text kTexts[] = {
    {"WdsEncrypType", 31, 121}, {"Wds0Key", 64, 153},  {"WdsList", 79, 218},  {"Key1Str1", 26, 298},
    {"Key2Str1", 26, 325},      {"Key3Str1", 26, 352}, {"Key4Str1", 26, 379},
};

std::string text_at(const Snapshot& record, const Text& text) {
  return std::string(reinterpret_cast<const char*>(&record) + text.offset, text.kept + 1);
}

TEST(SnapshotWds, KeepsAsManyCharactersAsThereIsRoomFor) {
  for (const uint32_t band : {0U, 1U}) {
    load_with_wep(static_cast<int>(band));
    for (const Text& text : kTexts) {
      for (const size_t length : {size_t{0}, size_t{1}, text.kept - 1, text.kept, text.kept + 1, size_t{149}}) {
        SCOPED_TRACE(std::string(text.key) + " of " + std::to_string(length) + " characters");
        const std::string value = std::string(length, 'k');
        dat::put(static_cast<int>(band), -1, text.key, value);
        EXPECT_EQ(padded(value.substr(0, text.kept), text.kept + 1), text_at(taken(band), text));
      }
    }
  }
}

TEST(SnapshotWds, TextsArePaddedWithNul) {
  load_with_wep(0);
  Snapshot record;
  std::memset(&record, 0x5a, sizeof record);
  wds_store(&record, 0);
  EXPECT_EQ(padded("AES;TKIP;WEP;NONE", 32), all_of(record.wds_encryp_type));
  EXPECT_EQ(padded("key-of-link-1", 65), all_of(record.wds_key));
  EXPECT_EQ(padded("key1-1", 27), all_of(record.wep_key[0]));
  EXPECT_EQ(padded("key4-1", 27), all_of(record.wep_key[3]));
  EXPECT_EQ(0x5a, record.filling[0]);
  EXPECT_EQ(0x5a5a5a5a, record.apsd_capable[0]);
}

TEST(SnapshotWds, DetectsAChangeWithinWhatIsKept) {
  for (const uint32_t band : {0U, 1U}) {
    load_with_wep(static_cast<int>(band));
    for (const Text& text : kTexts) {
      SCOPED_TRACE(text.key);
      std::string value(text.kept + 10, 'k');
      dat::put(static_cast<int>(band), -1, text.key, value);
      Snapshot record = taken(band);
      EXPECT_EQ(0U, wds_compare(&record, band));
      value[text.kept] = 'x';
      dat::put(static_cast<int>(band), -1, text.key, value);
      EXPECT_EQ(0U, wds_compare(&record, band)) << "behind what is kept";
      value[text.kept - 1] = 'x';
      dat::put(static_cast<int>(band), -1, text.key, value);
      EXPECT_EQ(1U, wds_compare(&record, band)) << "the last character kept";
      dat::put(static_cast<int>(band), -1, text.key, "k");
      EXPECT_EQ(1U, wds_compare(&record, band)) << "shorter";
    }
  }
}

TEST(SnapshotWds, LineEndsAreNeitherKeptNorADifference) {
  struct Case {
    const char* stored;
    const char* kept;
  };
  load_with_wep(0);
  for (const Text& text : kTexts) {
    for (const Case& c : std::initializer_list<Case>{{"abc\n", "abc"},
                                                     {"abc\r\n", "abc"},
                                                     {"abc\r", "abc"},
                                                     {"abc\n\n", "abc"},
                                                     {"abc\nX", "abc"},
                                                     {"abc\rX", "abc"},
                                                     {"abc\nXY", "abc\nXY"},
                                                     {"abc\n\r\n", "abc\n"},
                                                     {"a\n", "a"},
                                                     {"\nX", ""},
                                                     {"\n", ""},
                                                     {"\r", ""},
                                                     {"a", "a"},
                                                     {"", ""}}) {
      SCOPED_TRACE(std::string(text.key) + ": " + testing::PrintToString(c.stored));
      dat::put(0, -1, text.key, c.stored);
      Snapshot record = taken(0);
      EXPECT_EQ(padded(c.kept, text.kept + 1), text_at(record, text));
      EXPECT_EQ(0U, wds_compare(&record, 0));
      dat::put(0, -1, text.key, std::string(c.kept) + "\r\n");
      EXPECT_EQ(0U, wds_compare(&record, 0));
    }
  }
}

TEST(SnapshotWds, EnableIsTheLowByteOfItsNumber) {
  struct Case {
    const char* value;
    uint8_t kept;
  };
  dat::load(0, {});
  for (const Case& c : std::initializer_list<Case>{{"0", 0},
                                                   {"1", 1},
                                                   {"4", 4},
                                                   {"255", 255},
                                                   {"256", 0},
                                                   {"257", 1},
                                                   {"-1", 255},
                                                   {"", 0},
                                                   {"on", 0},
                                                   {"2\n", 2}}) {
    SCOPED_TRACE(c.value);
    dat::put(0, -1, "WdsEnable", c.value);
    Snapshot record = taken(0);
    EXPECT_EQ(c.kept, record.wds_enable);
    EXPECT_EQ(0U, wds_compare(&record, 0));
    ++record.wds_enable;
    EXPECT_EQ(1U, wds_compare(&record, 0));
  }
}

TEST(SnapshotWds, SwitchingOnOrOffIsAChange) {
  for (const int band : {0, 1}) {
    const uint32_t number = static_cast<uint32_t>(band);
    SCOPED_TRACE(band);
    dat::load(band, {});
    wifimgr_lib_wifi_config_oper(number, 0);
    dat::put(band, -1, "WdsEnable", "1");
    EXPECT_EQ(1U, wifimgr_lib_wifi_config_oper(number, 1));
    wifimgr_lib_wifi_config_oper(number, 0);
    dat::put(band, -1, "WdsEnable", "2");
    EXPECT_EQ(1U, wifimgr_lib_wifi_config_oper(number, 1));
    dat::put(band, -1, "WdsEnable", "0");
    EXPECT_EQ(1U, wifimgr_lib_wifi_config_oper(number, 1));
  }
}

TEST(SnapshotWds, WhileOffNothingElseIsAChange) {
  for (const char* off : {"0", "256", "", "off"}) {
    SCOPED_TRACE(off);
    load_with_wep(0);
    dat::put(0, -1, "WdsEnable", off);
    Snapshot record = taken(0);
    for (const Text& text : kTexts) dat::put(0, -1, text.key, "changed");
    EXPECT_EQ(0U, wds_compare(&record, 0));
  }
}

TEST(SnapshotWds, WhileOffTheTextsAreKeptButNoWepKeys) {
  load_with_wep(0);
  dat::put(0, -1, "WdsEnable", "0");
  Snapshot record;
  std::memset(&record, 0x5a, sizeof record);
  wds_store(&record, 0);
  EXPECT_STREQ("AES;TKIP;WEP;NONE", record.wds_encryp_type);
  EXPECT_STREQ("key-of-link-1", record.wds_key);
  EXPECT_EQ(std::string(108, 0x5a), std::string(record.wep_key[0], sizeof record.wep_key));
}

TEST(SnapshotWds, WepKeysAreKeptAndComparedOnlyWhenTheFirstSsidUsesWep) {
  struct Case {
    const char* modes;
    bool wep;
  };
  for (const Case& c : std::initializer_list<Case>{{"WEPAUTO;OPEN", true},
                                                   {"WEP;OPEN", true},
                                                   {"OPENWEP;OPEN", true},
                                                   {"SharedWEPRadius;OPEN", true},
                                                   {"OPEN;WEPAUTO", false},
                                                   {"wep;WEP", false},
                                                   {"WPA2PSK;WEP", false}}) {
    SCOPED_TRACE(c.modes);
    dat::load(0, {{"WdsEnable", "1"}, {"AuthMode", c.modes}});
    Snapshot record = taken(0);
    EXPECT_STREQ(c.wep ? "key2-1" : "", record.wep_key[1]);
    for (const char* key : {"Key1Str1", "Key2Str1", "Key3Str1", "Key4Str1"}) {
      const std::string old_value = sandbox::field(0, key, 1);
      dat::put(0, -1, key, "changed");
      EXPECT_EQ(c.wep ? 1U : 0U, wds_compare(&record, 0)) << key;
      dat::put(0, -1, key, old_value);
    }
    dat::put(0, -1, "Key1Str2", "changed");
    EXPECT_EQ(0U, wds_compare(&record, 0));
  }
}

TEST(SnapshotWds, OnlyTheKeyOfTheFirstLinkIsWatched) {
  load_with_wep(0);
  Snapshot record = taken(0);
  for (const char* key : {"Wds1Key", "Wds2Key", "Wds3Key", "WdsPhyMode"}) dat::put(0, -1, key, "changed");
  EXPECT_EQ(0U, wds_compare(&record, 0));
  dat::put(0, -1, "Wds0Key", "changed");
  EXPECT_EQ(1U, wds_compare(&record, 0));
}

TEST(SnapshotWds, TextThatCannotBeReadCountsAsEmpty) {
  for (const Text& text : kTexts) {
    SCOPED_TRACE(text.key);
    load_with_wep(0);
    Snapshot record = taken(0);
    std::string file = sandbox::read_file(sandbox::dat_path(0));
    const size_t start = file.find(std::string("\n") + text.key + "=") + 1;
    sandbox::load(0, file.erase(start, file.find('\n', start) + 1 - start));
    EXPECT_EQ(1U, wds_compare(&record, 0));
    record = taken(0);
    EXPECT_EQ(std::string(text.kept + 1, '\0'), text_at(record, text));
    EXPECT_EQ(0U, wds_compare(&record, 0));
  }
}

TEST(SnapshotWds, EnableThatCannotBeReadCountsAsOff) {
  sandbox::load(0, sandbox::full_dat_without(0, "WdsEnable"));
  Snapshot record = taken(0);
  EXPECT_EQ(0, record.wds_enable);
  EXPECT_EQ(0U, wds_compare(&record, 0));
  record.wds_enable = 1;
  EXPECT_EQ(1U, wds_compare(&record, 0));
}

TEST(SnapshotWds, PeerListIsWatchedOnlyWhileOn) {
  constexpr char kOther[] = "02:00:00:00:00:0a;02:00:00:00:00:0b;02:00:00:00:00:0c;02:00:00:00:00:0d";
  for (const char* enable : {"0", "1"}) {
    SCOPED_TRACE(enable);
    dat::load(1, {{"WdsEnable", enable}});
    wifimgr_lib_wifi_config_oper(1, 0);
    EXPECT_EQ(0U, wifimgr_lib_set_wdslist(1, -1, kOther));
    EXPECT_EQ(enable[0] == '1' ? 1U : 0U, wifimgr_lib_wifi_config_oper(1, 1));
  }
}

}  // namespace
