// Changing a value of a band's store.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

constexpr char kDat[] =
    "Default\nBssidNum=3\nChannel=6\nHT_TxStream=1;1;1\nSSID1=home\nSSID3=guest\nWPAPSK2=secret\nAccessPolicy0=0\n";

std::vector<std::string> errors_of_update(int band, int index, const char* name, const char* value = "9") {
  return seams::errors_of([=] { EXPECT_EQ(1, update_attr(band, index, name, value)); });
}

std::vector<std::string> fields(int band, const std::string& key, int count) {
  std::vector<std::string> texts;
  for (int i = 1; i <= count; ++i) texts.push_back(sandbox::field(band, key, i));
  return texts;
}

class UpdateAttribute : public testing::Test {
 protected:
  void SetUp() override {
    for (int band : {0, 1}) sandbox::load(band, kDat);
  }
};

TEST_F(UpdateAttribute, BandWideReplacesFieldOneAndKeepsTheOthers) {
  for (int band : {0, 1}) {
    EXPECT_EQ(0, update_attr(band, -1, "HT_TxStream", "2"));
    EXPECT_THAT(fields(band, "HT_TxStream", 4), ElementsAre("2", "1", "1\n", ""));
  }
}

TEST_F(UpdateAttribute, BySsidReplacesThatField) {
  EXPECT_EQ(0, update_attr(0, 2, "HT_TxStream", "2"));
  EXPECT_EQ(0, update_attr(0, 8, "HT_TxStream", "8"));
  EXPECT_THAT(fields(0, "HT_TxStream", 8), ElementsAre("1", "2", "1\n", "", "", "", "", "8"));
  EXPECT_EQ(0, update_attr(0, 1, "HT_TxStream", "7"));
  EXPECT_EQ("7", sandbox::field(0, "HT_TxStream", 1));
}

TEST_F(UpdateAttribute, OfASingleValueKeyReplacesFieldOneWhateverTheIndex) {
  for (int index : {-1, 1, 3, 8}) {
    const std::string value = std::to_string(index) + "x";
    EXPECT_EQ(0, update_attr(0, index, "SSID3", value.c_str()));
    EXPECT_THAT(fields(0, "SSID3", 8), ElementsAre(value, "", "", "", "", "", "", ""));
  }
}

TEST_F(UpdateAttribute, CutsTheValueTo149Characters) {
  EXPECT_EQ(0, update_attr(0, -1, "Channel", std::string(200, 'v').c_str()));
  EXPECT_EQ(std::string(149, 'v'), sandbox::field(0, "Channel", 1));
  EXPECT_EQ("", sandbox::field(0, "Channel", 2));
  EXPECT_EQ(0, update_attr(0, 3, "HT_TxStream", std::string(150, 'w').c_str()));
  EXPECT_EQ(std::string(149, 'w'), sandbox::field(0, "HT_TxStream", 3));
}

TEST_F(UpdateAttribute, TakesTheEmptyText) {
  EXPECT_EQ(0, update_attr(0, -1, "Channel", ""));
  EXPECT_EQ("", sandbox::field(0, "Channel", 1));
}

TEST_F(UpdateAttribute, ChangesNoOtherByte) {
  const std::string before = sandbox::segment_bytes(0);
  EXPECT_EQ(0, update_attr(0, 2, "HT_TxStream", "abc"));
  std::string expected = before;
  expected.replace(2 * ipc::kRecordSize + 36 + 150, 150, "abc" + std::string(147, '\0'));
  EXPECT_EQ(expected, sandbox::segment_bytes(0));
}

TEST_F(UpdateAttribute, WithAnotherIndexIsRefused) {
  const std::string before = sandbox::segment_bytes(0);
  for (int index : {0, 9, -2, 2147483647, -2147483647 - 1}) {
    EXPECT_THAT(errors_of_update(0, index, "Channel"),
                ElementsAre("[update_attr]:===Fail Exit===The index is invalid.\n"));
    EXPECT_THAT(errors_of_update(0, index, "SSID1"),
                ElementsAre("[update_attr]:===Fail Exit===The index is invalid.\n"));
  }
  EXPECT_EQ(before, sandbox::segment_bytes(0));
}

TEST_F(UpdateAttribute, OfAMissingNameIsRefusedBeforeTheIndex) {
  const std::string before = sandbox::segment_bytes(0);
  for (int index : {-1, 1, 0, 9}) {
    EXPECT_THAT(errors_of_update(0, index, "Channe"),
                ElementsAre("[update_attr]:===Fail Exit===The attr_name do not exist.\n"));
  }
  EXPECT_EQ(before, sandbox::segment_bytes(0));
}

TEST_F(UpdateAttribute, OfAnotherBandIsRefused) {
  for (int band : {2, -1}) {
    EXPECT_THAT(errors_of_update(band, 0, "none"),
                ElementsAre("[update_attr]:===Fail Exit===The wifi_type is wrong.\n"));
    EXPECT_THAT(seams::errors_of([=] { EXPECT_EQ(1, update_attr(band, 0, nullptr, nullptr)); }),
                ElementsAre("[update_attr]:===Fail Exit===The wifi_type is wrong.\n"));
  }
}

TEST_F(UpdateAttribute, WhoseLockFailsChangesNothing) {
  const std::string before = sandbox::segment_bytes(0);
  seams::fail(seams::semop_fault, 1, EINTR);
  EXPECT_THAT(errors_of_update(0, -1, "Channel"), ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n",
                                                              "[update_attr]:===Fail Exit===p operation is wrong.\n"));
  EXPECT_EQ(before, sandbox::segment_bytes(0));
}

TEST_F(UpdateAttribute, WithoutASemaphoreFailsAtTheLock) {
  seams::fail(seams::semget_fault, 1, ENOENT);
  EXPECT_THAT(errors_of_update(0, -1, "Channel"), ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n",
                                                              "[update_attr]:===Fail Exit===p operation is wrong.\n"));
}

TEST_F(UpdateAttribute, WhoseUnlockFailsIsAFailureThatHasChangedTheValue) {
  seams::fail(seams::semop_fault, 2, ERANGE);
  EXPECT_THAT(errors_of_update(0, -1, "Channel", "11"),
              ElementsAre("[semaphore_v]:===Fail Exit===seamphore_v failed.\n",
                          "[update_attr]:===Fail Exit===v operaion failed.\n"));
  EXPECT_EQ("11", sandbox::field(0, "Channel", 1));
}

TEST_F(UpdateAttribute, AFailedUnlockDoesNotHideAnEarlierReason) {
  seams::fail(seams::semop_fault, 2, ERANGE);
  EXPECT_THAT(errors_of_update(0, 9, "Channel"), ElementsAre("[semaphore_v]:===Fail Exit===seamphore_v failed.\n",
                                                             "[update_attr]:===Fail Exit===The index is invalid.\n"));
}

TEST_F(UpdateAttribute, GivesTheLockBackOnEveryPath) {
  update_attr(0, -1, "Channel", "1"), update_attr(0, 1, "SSID1", "a"), update_attr(0, 2, "HT_TxStream", "1");
  update_attr(0, -1, "none", "1"), update_attr(0, 9, "Channel", "1");
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

TEST_F(UpdateAttribute, OfNullIsAPlainFailure) {
  const std::string before = sandbox::segment_bytes(0);
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(1, update_attr(0, -1, nullptr, "1")); }),
              ElementsAre("[update_attr]:===Enter===\n", "[update_attr]:===Fail Exit===\n"));
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(1, update_attr(0, -1, "Channel", nullptr)); }),
              ElementsAre("[update_attr]:===Enter===\n", "[update_attr]:===Fail Exit===\n"));
  EXPECT_EQ(before, sandbox::segment_bytes(0));
}

TEST_F(UpdateAttribute, OfOneBandLeavesTheOtherAlone) {
  for (int band : {0, 1}) {
    const std::string other = sandbox::segment_bytes(1 - band);
    EXPECT_EQ(0, update_attr(band, -1, "Channel", "1"));
    EXPECT_EQ(0, update_attr(band, 2, "HT_TxStream", "1"));
    EXPECT_EQ(0, update_attr(band, 1, "SSID1", "new"));
    EXPECT_EQ(other, sandbox::segment_bytes(1 - band));
  }
}

TEST_F(UpdateAttribute, TracesWhatItDoesInOrder) {
  EXPECT_THAT(seams::trace_of([] { update_attr(0, -1, "Channel", "1"); }),
              ElementsAre("[update_attr]:===Enter===\n", "[semaphore_p]:===Enter===\n",
                          "[semaphore_p]:===Success Exit===\n", "[is_attr_exist]:===Enter===\n",
                          "[is_attr_exist]:===Success Exit===\n", "[update_common_attr]:===Enter===\n",
                          "[update_common_attr]:===Success Exit===\n", "[semaphore_v]:===Enter===\n",
                          "[semaphore_v]:===Success Exit===\n", "[update_attr]:===Success Exit===\n"));
  EXPECT_THAT(seams::trace_of([] { update_attr(0, 1, "Channel", "1"); }),
              testing::Contains("[update_attr_by_ssid]:===Success Exit===\n"));
}

TEST(UpdateAttributeUnattached, IsRefused) {
  for (int band : {0, 1}) {
    EXPECT_THAT(errors_of_update(band, -1, "Channel"),
                ElementsAre("[update_attr]:===Fail Exit===The attr_name do not exist.\n"));
  }
}

}  // namespace
