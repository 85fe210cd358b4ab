// The pieces of a saved line: joined fields and the numbers of keys.
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

std::string joined(const std::vector<std::string>& fields, int count, const char* before = "") {
  wifimgr_attr_record record = ipc::record("K", fields);
  char out[1400] = "";
  std::strcpy(out, before);
  EXPECT_EQ(0, merge_para(&record, out, count));
  return out;
}

TEST(Join, AppendsTheFirstFields) {
  const std::vector<std::string> fields = {"1", "2", "3", "4", "5", "6", "7", "8\n"};
  const struct {
    int count;
    const char* text;
  } rows[] = {{1, "1"},
              {2, "1;2"},
              {7, "1;2;3;4;5;6;7"},
              {8, "1;2;3;4;5;6;7;8"},
              {9, "1;2;3;4;5;6;7;8"},
              {2147483647, "1;2;3;4;5;6;7;8"}};
  for (const auto& row : rows) {
    EXPECT_EQ(row.text, joined(fields, row.count)) << row.count;
    EXPECT_EQ(std::string("Key=") + row.text, joined(fields, row.count, "Key=")) << row.count;
  }
}

TEST(Join, StopsAtTheFirstEmptyField) {
  EXPECT_EQ("1;2", joined({"1", "2", "", "4"}, 8));
  EXPECT_EQ("1", joined({"1"}, 8));
}

TEST(Join, DropsOneLineEndOfEachField) {
  EXPECT_EQ("1;2;3", joined({"1\n", "2", "3\n"}, 8));
  EXPECT_EQ("1\r;2\n", joined({"1\r\n", "2\n\n"}, 8));
  EXPECT_EQ("", joined({"\n"}, 8));
  EXPECT_EQ(";2", joined({"\n", "2"}, 8));
}

TEST(Join, WithNothingToAppendLeavesTheTextAsItWas) {
  for (int count : {0, -1, -2147483647}) EXPECT_EQ("Key=", joined({"1", "2"}, count, "Key=")) << count;
  EXPECT_EQ("Key=", joined({""}, 8, "Key="));
  EXPECT_EQ("", joined({"", "2"}, 8));
}

TEST(Join, TakesFieldsOfFullLength) {
  const std::string full(149, 'f');
  std::string all;
  for (int i = 0; i < 8; ++i) all += (i == 0 ? "" : ";") + full;
  EXPECT_EQ(all, joined(std::vector<std::string>(8, full), 8));
}

TEST(Join, LeavesTheRecordAsItIs) {
  wifimgr_attr_record record = ipc::record("K", {"1", "2\n"});
  const wifimgr_attr_record before = record;
  char out[64] = "";
  merge_para(&record, out, 8);
  EXPECT_EQ(0, std::memcmp(&before, &record, sizeof record));
}

TEST(Join, OfNullIsAFailure) {
  wifimgr_attr_record record = ipc::record("K", {"1"});
  char out[16] = "old";
  EXPECT_EQ(1, merge_para(nullptr, out, 1));
  EXPECT_EQ(1, merge_para(&record, nullptr, 1));
  EXPECT_STREQ("old", out);
}

TEST(KeyNumber, FollowsTheNameOfTheFamily) {
  const struct {
    const char* key;
    unsigned number;
  } rows[] = {{"SSID1", 1},    {"SSID8", 8},           {"SSID12", 12},     {"SSID", 0},
              {"SSIDTail", 0}, {"SSID3x", 3},          {"SSID07", 7},      {"RADIUS_Key2", 2},
              {"WPAPSK5", 5},  {"WscDefaultSSID4", 4}, {"Key1Str3", 3},    {"Key2Str4", 4},
              {"Key3Str5", 5}, {"Key4Str6", 6},        {"WSC_UUID_E2", 2}, {"WSC_UUID_Str3", 3}};
  for (const auto& row : rows) {
    unsigned number = 77;
    EXPECT_EQ(0, get_attr_num(row.key, row.key, &number)) << row.key;
    EXPECT_EQ(row.number, number) << row.key;
    EXPECT_EQ(1, get_attr_num_extended(row.key, row.key, &number)) << row.key;
    EXPECT_EQ(row.number, number) << row.key;
  }
}

TEST(KeyNumber, OfTheFamiliesNumberedFromZeroIsAnothersBusiness) {
  const struct {
    const char* key;
    unsigned number;
  } rows[] = {{"AccessPolicy0", 0},
              {"AccessPolicy7", 7},
              {"AccessControlList1", 1},
              {"AccessControlList15", 15},
              {"AccessPolicy", 0}};
  for (const auto& row : rows) {
    unsigned number = 77;
    EXPECT_EQ(0, get_attr_num_extended(row.key, row.key, &number)) << row.key;
    EXPECT_EQ(row.number, number) << row.key;
    EXPECT_EQ(1, get_attr_num(row.key, row.key, &number)) << row.key;
    EXPECT_EQ(row.number, number) << row.key;
  }
}

TEST(KeyNumber, StandsInTheLine) {
  unsigned number = 77;
  EXPECT_EQ(0, get_attr_num("SSID", "SSID4=name\n", &number));
  EXPECT_EQ(4U, number);
  EXPECT_EQ(0, get_attr_num_extended("AccessPolicy", "AccessPolicy3=0\n", &number));
  EXPECT_EQ(3U, number);
}

TEST(KeyNumber, OfOtherKeysIsNone) {
  for (const char* key : {"Channel", "HideSSID1", "ssid1", "SSI", "Key5Str1", "", "Access"}) {
    unsigned number = 77;
    EXPECT_EQ(1, get_attr_num(key, key, &number)) << key;
    EXPECT_EQ(1, get_attr_num_extended(key, key, &number)) << key;
    EXPECT_EQ(77U, number) << key;
  }
}

TEST(KeyNumber, OfNullIsAFailure) {
  unsigned number = 77;
  EXPECT_EQ(1, get_attr_num(nullptr, "SSID1", &number));
  EXPECT_EQ(1, get_attr_num("SSID1", nullptr, &number));
  EXPECT_EQ(1, get_attr_num("SSID1", "SSID1", nullptr));
  EXPECT_EQ(1, get_attr_num_extended(nullptr, "AccessPolicy0", &number));
  EXPECT_EQ(1, get_attr_num_extended("AccessPolicy0", nullptr, &number));
  EXPECT_EQ(1, get_attr_num_extended("AccessPolicy0", "AccessPolicy0", nullptr));
  EXPECT_EQ(77U, number);
}

TEST(KeyNumber, OfAnotherFamilyIsNoError) {
  unsigned number = 0;
  EXPECT_THAT(seams::errors_of([&] { get_attr_num("Channel", "Channel", &number); }), ElementsAre());
  EXPECT_THAT(seams::trace_of([&] { get_attr_num("Channel", "Channel", &number); }),
              ElementsAre("[get_attr_num]:===Enter===\n", "[get_attr_num]:===Fail Exit===\n"));
}

}  // namespace
