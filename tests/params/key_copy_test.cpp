// The functions that copy the key tables to a caller.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "params/key_table_rows.h"
#include "params/setting_checks.h"
#include "support/seams.h"

namespace {

using key_tables::Row;
using settings::entered;
using settings::failed;
using settings::succeeded;
using testing::ElementsAre;
using testing::IsEmpty;

struct Copy {
  const char* name;
  int (*call)(int type, wifimgr_key_setter* out);
  int type;
  std::vector<Row> rows;
  wifimgr_key_setter* table;

  std::string label() const { return std::string(name) + " of type " + std::to_string(type); }
};

template <size_t kRows>
std::vector<Row> list(const Row (&rows)[kRows]) {
  return std::vector<Row>(rows, rows + kRows);
}

#define COPY(suffix, type, rows, table) \
  { "wifimgr_lib_get_wlan_" #suffix, wifimgr_lib_get_wlan_##suffix, type, list(rows), table }

std::vector<Copy> copies() {
  return {
      COPY(attr, 0, key_tables::kCommon2_4G, wlan_common_default_parm),
      COPY(attr, 1, key_tables::kCommon5G, wlan_ac_common_default_parm),
      COPY(entry_attr, 0, key_tables::kEntry, wlan_entry_default_parm),
      COPY(entry_attr, 1, key_tables::kEntry, wlan_ac_entry_default_parm),
      COPY(script_com_attr_config, 0, key_tables::kScript2_4G, wlan_script_com_attr_config),
      COPY(script_com_attr_config, 1, key_tables::kScript5G, wlan_ac_script_com_attr_config),
  };
}

template <typename Check>
void for_each_copy(Check check) {
  for (const Copy& copy : copies()) {
    SCOPED_TRACE(copy.label());
    check(copy);
  }
}

// A caller's records, filled with 'Z' to show what was written; the last ones lie behind any table.
struct Out {
  Out() { std::memset(static_cast<void*>(records), 'Z', sizeof records); }
  std::string bytes(size_t from = 0) const {
    return std::string(reinterpret_cast<const char*>(records), sizeof records).substr(from * sizeof records[0]);
  }
  wifimgr_key_setter records[66];
};

// What a copied record is: the name, its end, what stood behind it, the setter.
std::string copied(const std::string& key, wifimgr_setter_t setter) {
  std::string bytes = key;
  bytes.push_back('\0');
  bytes.resize(64, 'Z');
  char pointer[sizeof setter];
  std::memcpy(pointer, &setter, sizeof setter);
  return bytes.append(pointer, sizeof pointer);
}

// An untouched caller's array with these records in front.
std::string array_with(const std::string& records) {
  return Out().bytes().replace(0, records.size(), records);
}

void fill_global(const std::string& name, wifimgr_setter_t setter) {
  std::memset(wlan_global_script_com_attr.name, 0, sizeof wlan_global_script_com_attr.name);
  name.copy(wlan_global_script_com_attr.name, sizeof wlan_global_script_com_attr.name);
  wlan_global_script_com_attr.setter = setter;
}

TEST(KeyCopy, GivesEveryRowAndTouchesNothingElse) {
  for_each_copy([](const Copy& copy) {
    Out out;
    EXPECT_EQ(static_cast<int>(copy.rows.size()), copy.call(copy.type, out.records));
    std::string expected;
    for (const Row& row : copy.rows) expected += copied(row.key, row.setter);
    EXPECT_TRUE(array_with(expected) == out.bytes());
  });
}

TEST(KeyCopy, CountsTheRecordsOfEachTable) {
  Out out;
  EXPECT_EQ(54, wifimgr_lib_get_wlan_attr(0, out.records));
  EXPECT_STREQ("BandSteering", out.records[39].name);
  EXPECT_EQ(nullptr, out.records[39].setter);
  EXPECT_EQ(63, wifimgr_lib_get_wlan_attr(1, out.records));
  EXPECT_EQ(6, wifimgr_lib_get_wlan_entry_attr(0, out.records));
  EXPECT_EQ(6, wifimgr_lib_get_wlan_entry_attr(1, out.records));
  EXPECT_EQ(24, wifimgr_lib_get_wlan_script_com_attr_config(0, out.records));
  EXPECT_EQ(32, wifimgr_lib_get_wlan_script_com_attr_config(1, out.records));
}

TEST(KeyCopy, NeedsNoRoomForTheEndRecord) {
  for_each_copy([](const Copy& copy) {
    std::vector<wifimgr_key_setter> out(copy.rows.size());
    EXPECT_EQ(static_cast<int>(copy.rows.size()), copy.call(copy.type, out.data()));
    EXPECT_STREQ(copy.rows.back().key, out.back().name);
  });
}

TEST(KeyCopy, LeavesTheTableAsItIs) {
  for_each_copy([](const Copy& copy) {
    const std::string before(reinterpret_cast<const char*>(copy.table), copy.rows.size() * 72 + 72);
    Out out;
    (void)copy.call(copy.type, out.records);
    EXPECT_TRUE(before == std::string(reinterpret_cast<const char*>(copy.table), before.size()));
  });
}

TEST(KeyCopy, GivesNothingOfAnUnknownType) {
  fill_global("Filled", wifimgr_lib_set_channel);
  for (const int type : {2, 3, -1, 4, 256, 65536, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(type);
    Out out;
    if (type != 2) {
      EXPECT_EQ(0, wifimgr_lib_get_wlan_attr(type, out.records));
    }
    EXPECT_EQ(0, wifimgr_lib_get_wlan_entry_attr(type, out.records));
    EXPECT_EQ(0, wifimgr_lib_get_wlan_script_com_attr_config(type, out.records));
    EXPECT_TRUE(Out().bytes() == out.bytes());
  }
}

TEST(KeyCopy, GivesNothingToANullPointer) {
  fill_global("Filled", wifimgr_lib_set_channel);
  for (const int type : {0, 1, 2, 3}) {
    EXPECT_EQ(0, wifimgr_lib_get_wlan_attr(type, nullptr));
    EXPECT_EQ(0, wifimgr_lib_get_wlan_entry_attr(type, nullptr));
    EXPECT_EQ(0, wifimgr_lib_get_wlan_script_com_attr_config(type, nullptr));
  }
}

TEST(KeyCopy, GivesNothingOfTheEmptyGlobalRecord) {
  Out out;
  EXPECT_EQ(0, wifimgr_lib_get_wlan_attr(2, out.records));
  fill_global("", wifimgr_lib_set_channel);
  EXPECT_EQ(0, wifimgr_lib_get_wlan_attr(2, out.records));
  EXPECT_TRUE(Out().bytes() == out.bytes());
}

TEST(KeyCopy, GivesTheGlobalRecordOnceACallerFilledIt) {
  for (const wifimgr_setter_t setter :
       {static_cast<wifimgr_setter_t>(wifimgr_lib_set_channel), static_cast<wifimgr_setter_t>(nullptr)}) {
    fill_global("Channel", setter);
    Out out;
    EXPECT_EQ(1, wifimgr_lib_get_wlan_attr(2, out.records));
    EXPECT_TRUE(array_with(copied("Channel", setter)) == out.bytes());
  }
}

TEST(KeyCopy, CutsANameWithoutAnEndTo63Characters) {
  const std::string longest = settings::repeat("n", 63);
  for (const std::string& name : {longest, longest + "n"}) {
    fill_global(name, wifimgr_lib_set_channel);
    Out out;
    EXPECT_EQ(1, wifimgr_lib_get_wlan_attr(2, out.records));
    EXPECT_TRUE(array_with(copied(longest, wifimgr_lib_set_channel)) == out.bytes());
  }
}

TEST(KeyCopy, TakesANameLiterally) {
  fill_global("%s%n%63d", nullptr);
  Out out;
  EXPECT_EQ(1, wifimgr_lib_get_wlan_attr(2, out.records));
  EXPECT_STREQ("%s%n%63d", out.records[0].name);
}

TEST(KeyCopy, FollowsWhatACallerWroteIntoATable) {
  for_each_copy([](const Copy& copy) {
    std::memset(copy.table[1].name, 0, sizeof copy.table[1].name);
    std::strcpy(copy.table[1].name, "Own");
    copy.table[1].setter = wifimgr_lib_set_ssid;
    copy.table[2].name[0] = '\0';
    Out out;
    EXPECT_EQ(2, copy.call(copy.type, out.records));
    EXPECT_TRUE(array_with(copied(copy.rows[0].key, copy.rows[0].setter) + copied("Own", wifimgr_lib_set_ssid)) ==
                out.bytes());
  });
}

TEST(KeyCopy, GivesNothingOfAnEmptiedTable) {
  for_each_copy([](const Copy& copy) {
    copy.table[0].name[0] = '\0';
    Out out;
    EXPECT_EQ(0, copy.call(copy.type, out.records));
    EXPECT_TRUE(Out().bytes() == out.bytes());
  });
}

TEST(KeyCopy, LeavesOutAnEndRecordThatACallerFilled) {
  for_each_copy([](const Copy& copy) {
    std::strcpy(copy.table[copy.rows.size()].name, "Last");
    std::vector<wifimgr_key_setter> out(copy.rows.size());
    EXPECT_EQ(static_cast<int>(copy.rows.size()), copy.call(copy.type, out.data()));
  });
}

TEST(KeyCopy, TracesAPlainExitForANullPointer) {
  for_each_copy([](const Copy& copy) {
    for (const int type : {copy.type, 2, 3}) {
      EXPECT_THAT(seams::trace_of([&] { (void)copy.call(type, nullptr); }),
                  ElementsAre(entered(copy.name), failed(copy.name)));
      EXPECT_THAT(seams::trace_of([&] { (void)copy.call(type, nullptr); }, 7), IsEmpty());
    }
  });
}

TEST(KeyCopy, TracesItsEntryAndItsSuccessForEveryType) {
  for_each_copy([](const Copy& copy) {
    for (const int type : {copy.type, 2, 3}) {
      Out out;
      EXPECT_THAT(seams::trace_of([&] { (void)copy.call(type, out.records); }),
                  ElementsAre(entered(copy.name), succeeded(copy.name)));
      EXPECT_THAT(seams::trace_of([&] { (void)copy.call(type, out.records); }, 7), IsEmpty());
    }
  });
}

}  // namespace
