// The exported key tables as they lie in memory.
#include <dlfcn.h>
#include <elf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <link.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "params/key_table_rows.h"
#include "params/setting_checks.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using key_tables::Row;
using testing::ElementsAre;

struct Table {
  const char* name;
  wifimgr_key_setter* records;
  std::vector<Row> rows;
  size_t size;  // bytes, with the end record
};

template <size_t kRows>
std::vector<Row> list(const Row (&rows)[kRows]) {
  return std::vector<Row>(rows, rows + kRows);
}

std::vector<Table> tables() {
  return {
      {"wlan_common_default_parm", wlan_common_default_parm, list(key_tables::kCommon2_4G), 3960},
      {"wlan_ac_common_default_parm", wlan_ac_common_default_parm, list(key_tables::kCommon5G), 4608},
      {"wlan_entry_default_parm", wlan_entry_default_parm, list(key_tables::kEntry), 504},
      {"wlan_ac_entry_default_parm", wlan_ac_entry_default_parm, list(key_tables::kEntry), 504},
      {"wlan_script_com_attr_config", wlan_script_com_attr_config, list(key_tables::kScript2_4G), 1800},
      {"wlan_ac_script_com_attr_config", wlan_ac_script_com_attr_config, list(key_tables::kScript5G), 2376},
      {"wlan_global_script_com_attr", &wlan_global_script_com_attr, {}, 72},
  };
}

template <typename Check>
void for_each_table(Check check) {
  for (const Table& table : tables()) {
    SCOPED_TRACE(table.name);
    check(table);
  }
}

// Bytes of an object as the symbol table of its program has them; 0 for an unknown one.
size_t symbol_size(const void* object) {
  Dl_info info = {};
  void* symbol = nullptr;
  if (dladdr1(object, &info, &symbol, RTLD_DL_SYMENT) == 0 || info.dli_saddr != object || symbol == nullptr) return 0;
  return static_cast<const ElfW(Sym)*>(symbol)->st_size;
}

// A record as 64 characters and a pointer make it.
std::string record_bytes(const std::string& key, wifimgr_setter_t setter) {
  std::string bytes = key;
  bytes.resize(64, '\0');
  char pointer[sizeof setter];
  std::memcpy(pointer, &setter, sizeof setter);
  return bytes.append(pointer, sizeof pointer);
}

TEST(KeyTable, HasRecordsOfA64CharacterNameAndASetter) {
  EXPECT_EQ(72U, sizeof(wifimgr_key_setter));
  EXPECT_EQ(0U, offsetof(wifimgr_key_setter, name));
  EXPECT_EQ(64U, sizeof(wifimgr_key_setter::name));
  EXPECT_EQ(64U, offsetof(wifimgr_key_setter, setter));
}

TEST(KeyTable, HasTheRowsThatCallersCountOn) {
  EXPECT_EQ(54U, std::size(key_tables::kCommon2_4G));
  EXPECT_EQ(63U, std::size(key_tables::kCommon5G));
  EXPECT_EQ(6U, std::size(key_tables::kEntry));
  EXPECT_EQ(24U, std::size(key_tables::kScript2_4G));
  EXPECT_EQ(32U, std::size(key_tables::kScript5G));
}

TEST(KeyTable, IsDeclaredWithItsSize) {
  EXPECT_EQ(3960U, sizeof wlan_common_default_parm);
  EXPECT_EQ(4608U, sizeof wlan_ac_common_default_parm);
  EXPECT_EQ(504U, sizeof wlan_entry_default_parm);
  EXPECT_EQ(504U, sizeof wlan_ac_entry_default_parm);
  EXPECT_EQ(1800U, sizeof wlan_script_com_attr_config);
  EXPECT_EQ(2376U, sizeof wlan_ac_script_com_attr_config);
  EXPECT_EQ(72U, sizeof wlan_global_script_com_attr);
  EXPECT_EQ(160U, sizeof wlan_script_com_attr);
}

TEST(KeyTable, IsExportedWithItsSize) {
  for_each_table([](const Table& table) { EXPECT_EQ(table.size, symbol_size(table.records)); });
  EXPECT_EQ(160U, symbol_size(wlan_script_com_attr));
}

TEST(KeyTable, PairsEachKeyWithItsSetterInOrder) {
  for_each_table([](const Table& table) {
    for (size_t i = 0; i < table.rows.size(); ++i) {
      SCOPED_TRACE("row " + std::to_string(i + 1));
      EXPECT_STREQ(table.rows[i].key, table.records[i].name);
      EXPECT_TRUE(table.rows[i].setter == table.records[i].setter) << table.rows[i].key;
    }
  });
}

TEST(KeyTable, EndsWithAnEmptyNameAndANullSetter) {
  for_each_table([](const Table& table) {
    const wifimgr_key_setter& end = table.records[table.rows.size()];
    EXPECT_STREQ("", end.name);
    EXPECT_EQ(nullptr, end.setter);
  });
}

TEST(KeyTable, IsPaddedWithNulByteForByte) {
  for_each_table([](const Table& table) {
    std::string expected;
    for (const Row& row : table.rows) expected += record_bytes(row.key, row.setter);
    expected += record_bytes("", nullptr);
    ASSERT_EQ(table.size, expected.size());
    EXPECT_TRUE(expected == std::string(reinterpret_cast<const char*>(table.records), table.size));
  });
}

TEST(KeyTable, IsWritable) {
  for_each_table([](const Table& table) {
    for (size_t i = 0; i <= table.rows.size(); ++i) {
      std::memset(table.records[i].name, 'x', sizeof table.records[i].name);
      table.records[i].setter = wifimgr_lib_set_ssid;
      EXPECT_EQ(std::string(64, 'x'), std::string(table.records[i].name, sizeof table.records[i].name));
      EXPECT_TRUE(table.records[i].setter == wifimgr_lib_set_ssid);
    }
  });
}

TEST(KeyTable, OfOneBandIsNotThatOfTheOther) {
  wlan_entry_default_parm[0].name[0] = 'x';
  EXPECT_STREQ("NoForwarding", wlan_ac_entry_default_parm[0].name);
}

TEST(KeyTable, WritesEachOfItsKeysThroughItsRow) {
  settings::load_distinct();
  settings::Image image;
  const auto walk = [&image](const wifimgr_key_setter* record, int band, int index) {
    for (; record->name[0] != '\0'; ++record) {
      const std::string key = record->name;
      const bool is_list =
          key == "AckPolicy" || ((key.rfind("AP", 0) == 0 || key.rfind("BSS", 0) == 0) && key.rfind("APSD", 0) != 0);
      const std::string value = is_list ? "3;7;1;1" : key == "RekeyMethod" ? "TIME" : "1";
      // The rekey settings stand among the band-wide ones, but their setters want an SSID.
      const bool is_per_ssid = index != -1 || key == "RekeyMethod" || key == "RekeyInterval";
      if (record->setter == nullptr) continue;
      SCOPED_TRACE(key + " of band " + std::to_string(band));
      ASSERT_EQ(0U, record->setter(static_cast<uint32_t>(band), is_per_ssid ? 2 : -1, value.c_str()));
      image.set(band, key, is_per_ssid ? 2 : 1, value);
      ASSERT_EQ("", image.difference());
    }
  };
  walk(wlan_common_default_parm, 0, -1);
  walk(wlan_ac_common_default_parm, 1, -1);
  walk(wlan_entry_default_parm, 0, 2);
  walk(wlan_ac_entry_default_parm, 1, 2);
}

TEST(KeyTable, KeepsTheSetterOfA2_4GKeyThatRefuses5G) {
  settings::load_distinct();
  const settings::Image image;
  ASSERT_STREQ("CountryRegion", wlan_ac_script_com_attr_config[0].name);
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1U, wlan_ac_script_com_attr_config[0].setter(1, -1, "1")); }),
              ElementsAre(settings::failed("wifimgr_lib_set_countryRegion", "The input parameter is invalid.")));
  EXPECT_EQ("", image.difference());
}

}  // namespace
