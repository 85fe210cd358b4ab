// Searching the table of a band and changing single records, below the lock.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

constexpr const char* kSingleValueKeys[] = {"SSID",       "RADIUS_Key",   "WscDefaultSSID", "WPAPSK",
                                            "Key1Str",    "Key2Str",      "Key3Str",        "Key4Str",
                                            "WSC_UUID_E", "WSC_UUID_Str", "AccessPolicy",   "AccessControlList"};

// A table outside the bands' segments, ended by an empty key.
class Table {
 public:
  explicit Table(std::vector<wifimgr_attr_record> records) : records_(std::move(records)) { records_.emplace_back(); }
  char* address() { return records_[0].key; }
  std::string field(int record, int number) const { return records_[static_cast<size_t>(record)].field[number - 1]; }
  std::string bytes() { return std::string(address(), records_.size() * sizeof(wifimgr_attr_record)); }

 private:
  std::vector<wifimgr_attr_record> records_;
};

Table small_table() {
  return Table({ipc::record("Channel", {"6\n"}), ipc::record("HT_TxStream", {"1", "2", "3\n"}),
                ipc::record("SSID3", {"name\n"}), ipc::record("Channel", {"11\n"})});
}

struct Found {
  int result;
  unsigned index;
};

Found find(Table& table, const std::string& name) {
  Found found{0, 77};
  found.result = is_attr_exist(table.address(), name.c_str(), &found.index);
  return found;
}

TEST(Search, GivesTwoAndThePositionOfTheFirstMatch) {
  Table table = small_table();
  const struct {
    const char* name;
    unsigned index;
  } rows[] = {{"Channel", 0}, {"HT_TxStream", 1}, {"SSID3", 2}};
  for (const auto& row : rows) {
    EXPECT_EQ(2, find(table, row.name).result) << row.name;
    EXPECT_EQ(row.index, find(table, row.name).index) << row.name;
  }
}

TEST(Search, MatchesTheWholeKeyOnly) {
  Table table = small_table();
  for (const char* name : {"Channe", "Channels", "channel", "Channel\n", "SSID", "SSID33", "", "C"}) {
    EXPECT_EQ(3, find(table, name).result) << name;
    EXPECT_EQ(77U, find(table, name).index) << name;
  }
}

TEST(Search, EndsAtTheFirstEmptyKey) {
  Table table({ipc::record("A", {}), ipc::record("", {"x"}), ipc::record("B", {})});
  EXPECT_EQ(2, find(table, "A").result);
  EXPECT_EQ(3, find(table, "B").result);
  Table empty({});
  EXPECT_EQ(3, find(empty, "A").result);
  EXPECT_EQ(3, find(empty, "").result);
}

TEST(Search, FindsAKeyOf35Characters) {
  const std::string key(35, 'k');
  Table table({ipc::record(key, {"x"})});
  EXPECT_EQ(2, find(table, key).result);
  EXPECT_EQ(3, find(table, std::string(34, 'k')).result);
  EXPECT_EQ(3, find(table, std::string(36, 'k')).result);
}

TEST(Search, OfABandsSegmentEndsWithTheSegment) {
  char* const segment = ipc::make_segment(0, 2 * ipc::kRecordSize + 100, '\0');
  for (int i = 0; i < 2; ++i) std::strcpy(segment + static_cast<size_t>(i) * ipc::kRecordSize, i == 0 ? "A" : "B");
  std::strcpy(segment + 2 * ipc::kRecordSize, "Behind");
  shm_addr_2_4g = segment;
  unsigned index = 77;
  EXPECT_EQ(2, is_attr_exist(segment, "B", &index));
  EXPECT_EQ(3, is_attr_exist(segment, "Behind", &index));
  EXPECT_EQ(1U, index);
}

// Seven records: more than are looked at in one step, and room behind them for two in the segment's last page.
constexpr unsigned kSeven = 7;

char* full_segment() {
  char* const segment = ipc::make_segment(0, kSeven * ipc::kRecordSize, '\0');
  for (unsigned i = 0; i < kSeven; ++i) {
    std::strcpy(segment + i * ipc::kRecordSize, (std::to_string(i) + " key number").c_str());
  }
  shm_addr_2_4g = segment;
  return segment;
}

TEST(Search, OfAFullSegmentLooksAtEachRecord) {
  char* const segment = full_segment();
  for (unsigned i = 0; i < kSeven; ++i) {
    unsigned index = 77;
    EXPECT_EQ(2, is_attr_exist(segment, (std::to_string(i) + " key number").c_str(), &index));
    EXPECT_EQ(i, index);
  }
}

TEST(Search, OfAFullSegmentEndsWithIt) {
  char* const segment = full_segment();
  std::strcpy(segment + kSeven * ipc::kRecordSize, "Behind");
  unsigned index = 77;
  EXPECT_EQ(3, is_attr_exist(segment, "Behind", &index));
}

TEST(Search, EndsAtAKeyWhoseFirstByteAloneIsEmpty) {
  char* const segment = full_segment();
  segment[ipc::kRecordSize] = '\0';
  unsigned index = 77;
  EXPECT_EQ(2, is_attr_exist(segment, "0 key number", &index));
  EXPECT_EQ(3, is_attr_exist(segment, "2 key number", &index));
}

TEST(Search, OfNullIsAFailure) {
  Table table = small_table();
  unsigned index = 77;
  EXPECT_EQ(1, is_attr_exist(nullptr, "Channel", &index));
  EXPECT_EQ(1, is_attr_exist(table.address(), nullptr, &index));
  EXPECT_EQ(1, is_attr_exist(table.address(), "Channel", nullptr));
  EXPECT_EQ(77U, index);
}

TEST(Search, IsTracedAndAMissIsNoError) {
  Table table = small_table();
  EXPECT_THAT(seams::trace_of([&] { find(table, "Channel"); }),
              ElementsAre("[is_attr_exist]:===Enter===\n", "[is_attr_exist]:===Success Exit===\n"));
  EXPECT_THAT(seams::errors_of([&] { find(table, "none"); }), ElementsAre());
}

TEST(UpdateCommon, ReplacesFieldOneOnly) {
  Table table = small_table();
  EXPECT_EQ(0, update_common_attr(table.address(), 1, "HT_TxStream", "9"));
  EXPECT_EQ("9", table.field(1, 1));
  EXPECT_EQ("2", table.field(1, 2));
  EXPECT_EQ("3\n", table.field(1, 3));
}

TEST(UpdateCommon, FillsTheRestWithNul) {
  Table table({ipc::record("A", {std::string(149, 'x'), "next"})});
  Table expected({ipc::record("A", {"y", "next"})});
  EXPECT_EQ(0, update_common_attr(table.address(), 0, "A", "y"));
  EXPECT_EQ(expected.bytes(), table.bytes());
  EXPECT_EQ(0, update_common_attr(table.address(), 0, "A", ""));
  EXPECT_EQ("", table.field(0, 1));
}

TEST(UpdateCommon, CutsTheValueTo149Characters) {
  for (size_t length : {148U, 149U, 150U, 151U, 200U, 5000U}) {
    Table table({ipc::record("A", {"x", "next"})});
    Table expected({ipc::record("A", {std::string(std::min<size_t>(length, 149), 'y'), "next"})});
    EXPECT_EQ(0, update_common_attr(table.address(), 0, "A", std::string(length, 'y').c_str()));
    EXPECT_EQ(expected.bytes(), table.bytes()) << length;
  }
}

TEST(UpdateCommon, OfARecordWithAnotherKeyIsRefused) {
  Table table = small_table();
  const std::string before = table.bytes();
  for (const char* name : {"HT_TxStream", "Channe", "Channels", ""}) {
    EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, update_common_attr(table.address(), 0, name, "1")); }),
                ElementsAre("[update_common_attr]:===Enter===\n", "[update_common_attr]:===Fail Exit===\n"))
        << name;
  }
  EXPECT_EQ(before, table.bytes());
}

TEST(UpdateCommon, OfARecordOutsideTheSegmentIsRefused) {
  sandbox::load(0, "BssidNum=1\n");
  const std::string before = sandbox::segment_bytes(0);
  for (int record : {-1, 6, 7, 2147483647}) {
    EXPECT_EQ(1, update_common_attr(shm_addr_2_4g, record, "BssidNum", "2")) << record;
    EXPECT_EQ(0, update_attr_by_ssid(shm_addr_2_4g, record, 1, "BssidNum", "2")) << record;
  }
  EXPECT_EQ(before, sandbox::segment_bytes(0));
}

TEST(UpdateBySsid, ReplacesTheFieldOfTheSsidOnly) {
  for (int index = 1; index <= 8; ++index) {
    Table table({ipc::record("A", {"1", "2", "3", "4", "5", "6", "7", "8"})});
    std::vector<std::string> fields = {"1", "2", "3", "4", "5", "6", "7", "8"};
    fields[static_cast<size_t>(index - 1)] = "new";
    Table expected({ipc::record("A", fields)});
    EXPECT_EQ(0, update_attr_by_ssid(table.address(), 0, index, "A", "new"));
    EXPECT_EQ(expected.bytes(), table.bytes()) << index;
  }
}

TEST(UpdateBySsid, ClearsTheFieldAndCutsTheValueTo149Characters) {
  for (size_t length : {0U, 1U, 149U, 150U, 200U}) {
    Table table({ipc::record("A", {"first", std::string(149, 'x'), "next"})});
    Table expected({ipc::record("A", {"first", std::string(std::min<size_t>(length, 149), 'y'), "next"})});
    EXPECT_EQ(0, update_attr_by_ssid(table.address(), 0, 2, "A", std::string(length, 'y').c_str()));
    EXPECT_EQ(expected.bytes(), table.bytes()) << length;
  }
}

TEST(UpdateBySsid, OfAnotherKeyOrIndexChangesNothingAndSucceeds) {
  Table table = small_table();
  const std::string before = table.bytes();
  EXPECT_EQ(0, update_attr_by_ssid(table.address(), 0, 1, "HT_TxStream", "x"));
  for (int index : {0, -1, 9, 2147483647}) {
    EXPECT_EQ(0, update_attr_by_ssid(table.address(), 1, index, "HT_TxStream", "x")) << index;
  }
  EXPECT_EQ(before, table.bytes());
}

TEST(UpdateBySsid, OfASingleValueKeyReplacesFieldOneWhateverTheIndex) {
  for (const char* family : kSingleValueKeys) {
    for (const char* number : {"", "1", "3", "12", "Tail"}) {
      const std::string key = std::string(family) + number;
      SCOPED_TRACE(key);
      for (int index : {1, 3, 8, 0, 9, -1}) {
        Table table({ipc::record(key, {"1", "2", "3"})});
        EXPECT_EQ(0, update_attr_by_ssid(table.address(), 0, index, key.c_str(), "new"));
        EXPECT_EQ("new", table.field(0, 1));
        EXPECT_EQ("2", table.field(0, 2));
        EXPECT_EQ("3", table.field(0, 3));
      }
    }
  }
}

TEST(UpdateBySsid, OfASingleValueKeyFailsLikeUpdateCommon) {
  Table table = small_table();
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, update_attr_by_ssid(table.address(), 0, 1, "SSID3", "x")); }),
              ElementsAre("[update_attr_by_ssid]:===Enter===\n", "[update_common_attr]:===Enter===\n",
                          "[update_common_attr]:===Fail Exit===\n", "[update_attr_by_ssid]:===Fail Exit===\n"));
}

TEST(UpdateBySsid, OfAKeyThatOnlyContainsAFamilyNameGoesByIndex) {
  for (const char* key : {"HideSSID", "ssid1", "SSI", "Key5Str1", "Key1Typ", "XWPAPSK1", "WPAPSX", "RADIUS_Server"}) {
    Table table({ipc::record(key, {"1", "2", "3"})});
    EXPECT_EQ(0, update_attr_by_ssid(table.address(), 0, 2, key, "new"));
    EXPECT_EQ("1", table.field(0, 1)) << key;
    EXPECT_EQ("new", table.field(0, 2)) << key;
  }
}

TEST(Update, OfNullIsAFailure) {
  Table table = small_table();
  const std::string before = table.bytes();
  EXPECT_EQ(1, update_common_attr(nullptr, 0, "Channel", "1"));
  EXPECT_EQ(1, update_common_attr(table.address(), 0, nullptr, "1"));
  EXPECT_EQ(1, update_common_attr(table.address(), 0, "Channel", nullptr));
  EXPECT_EQ(1, update_attr_by_ssid(nullptr, 0, 1, "Channel", "1"));
  EXPECT_EQ(1, update_attr_by_ssid(table.address(), 0, 1, nullptr, "1"));
  EXPECT_EQ(1, update_attr_by_ssid(table.address(), 0, 1, "Channel", nullptr));
  EXPECT_EQ(before, table.bytes());
}

TEST(Update, TakesNoLock) {
  Table table = small_table();
  unsigned index = 0;
  is_attr_exist(table.address(), "Channel", &index);
  update_common_attr(table.address(), 0, "Channel", "1");
  update_attr_by_ssid(table.address(), 1, 2, "HT_TxStream", "1");
  EXPECT_EQ(0, seams::semop_fault.calls + seams::semget_fault.calls);
}

}  // namespace
