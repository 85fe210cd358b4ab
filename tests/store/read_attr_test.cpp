// Reading a value of a band's store.
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
    "Default\nBssidNum=3\nChannel=6\nHT_TxStream=1;22;333;4;5;6;7;8\nSSID1=home\nSSID3=a guest\nWPAPSK2=secret pass\n"
    "APAifsn=3;7;1;1\nAccessPolicy0=0\nNothing=\n";

struct Read {
  int result;
  std::string buffer;  // all of it
};

Read read(int band, int index, const char* name, size_t len = 160, size_t size = 400) {
  Read read{0, std::string(size, 'x')};
  read.result = read_attr(band, index, name, read.buffer.data(), static_cast<unsigned>(len));
  return read;
}

// The bytes of a field's slot, and the untouched rest of the buffer.
std::string slot(const std::string& text, size_t size = 400) {
  return text + std::string(150 - text.size(), '\0') + std::string(size - 150, 'x');
}

std::vector<std::string> errors_of_read(int band, int index, const char* name, size_t len = 160) {
  return seams::errors_of([=] { EXPECT_EQ(1, read(band, index, name, len).result); });
}

class ReadAttribute : public testing::Test {
 protected:
  void SetUp() override {
    for (int band : {0, 1}) sandbox::load(band, kDat);
  }
};

TEST_F(ReadAttribute, CopiesTheWholeSlotOfTheField) {
  const struct {
    int index;
    const char* text;
  } rows[] = {{-1, "1"}, {1, "1"}, {2, "22"}, {3, "333"}, {4, "4"}, {5, "5"}, {6, "6"}, {7, "7"}, {8, "8\n"}};
  for (int band : {0, 1}) {
    for (const auto& row : rows) {
      const Read got = read(band, row.index, "HT_TxStream");
      EXPECT_EQ(0, got.result);
      EXPECT_EQ(slot(row.text), got.buffer) << row.index;
    }
  }
}

TEST_F(ReadAttribute, GivesTheStoredLineEnd) {
  EXPECT_EQ(slot("6\n"), read(0, -1, "Channel").buffer);
}

TEST_F(ReadAttribute, GivesAnEmptyFieldAsNuls) {
  EXPECT_EQ(slot(""), read(0, -1, "Nothing").buffer);
  EXPECT_EQ(slot(""), read(0, 2, "Channel").buffer);
}

TEST_F(ReadAttribute, WithAnotherIndexCopiesNothingAndSucceeds) {
  for (int index : {0, 9, -2, 2147483647, -2147483647 - 1}) {
    const Read got = read(0, index, "HT_TxStream");
    EXPECT_EQ(0, got.result) << index;
    EXPECT_EQ(std::string(400, 'x'), got.buffer) << index;
  }
}

TEST_F(ReadAttribute, WantsABufferOf151Bytes) {
  for (size_t len : {0U, 1U, 149U, 150U}) {
    EXPECT_THAT(errors_of_read(0, -1, "Channel", len),
                ElementsAre("[read_attr]:===Fail Exit===The size of buffer is too small!\n"));
    EXPECT_EQ(std::string(400, 'x'), read(0, -1, "Channel", len).buffer);
  }
  EXPECT_EQ(slot("6\n"), read(0, -1, "Channel", 151).buffer);
  EXPECT_EQ(slot("6\n"), read(0, -1, "Channel", 4294967295U).buffer);
}

TEST_F(ReadAttribute, FailsOnTheBufferBeforeTheIndex) {
  EXPECT_THAT(errors_of_read(0, 9, "Channel", 150),
              ElementsAre("[read_attr]:===Fail Exit===The size of buffer is too small!\n"));
}

TEST_F(ReadAttribute, OfASingleValueKeyGivesFieldOneWhateverTheIndex) {
  for (int index : {-1, 0, 1, 2, 3, 8, 9, -7}) {
    const Read got = read(0, index, "SSID3");
    EXPECT_EQ(0, got.result);
    EXPECT_EQ("a guest\n", std::string(got.buffer.c_str())) << index;
    EXPECT_EQ("0\n", std::string(read(0, index, "AccessPolicy0").buffer.c_str())) << index;
  }
}

TEST_F(ReadAttribute, OfASingleValueKeyIsBoundedByTheBufferAndFilled) {
  const std::string value = "secret pass\n";
  for (size_t len : {0U, 1U, 5U, 11U, 12U, 13U, 150U, 151U, 160U, 400U}) {
    const Read got = read(0, 2, "WPAPSK2", len);
    EXPECT_EQ(0, got.result);
    const std::string copied = value.substr(0, len);
    EXPECT_EQ(copied + std::string(len - copied.size(), '\0') + std::string(400 - len, 'x'), got.buffer) << len;
  }
}

TEST_F(ReadAttribute, OfTheWholeValueListsWantsTheLargeBuffer) {
  EXPECT_EQ(1, read(0, -1, "APAifsn", 150).result);
  EXPECT_EQ(slot("3;7;1;1"), read(0, -1, "APAifsn").buffer);
}

TEST_F(ReadAttribute, OfAMissingNameIsRefused) {
  for (const char* name : {"Channe", "Channels", "SSID2", ""}) {
    EXPECT_THAT(errors_of_read(0, -1, name), ElementsAre("[read_attr]:===Fail Exit===The attr_name do not exist.\n"));
    EXPECT_EQ(std::string(400, 'x'), read(0, -1, name).buffer);
  }
}

TEST_F(ReadAttribute, OfAMissingNameIsRefusedBeforeTheBuffer) {
  EXPECT_THAT(errors_of_read(0, -1, "none", 1),
              ElementsAre("[read_attr]:===Fail Exit===The attr_name do not exist.\n"));
}

TEST_F(ReadAttribute, OfAnotherBandIsRefused) {
  for (int band : {2, -1}) {
    EXPECT_THAT(errors_of_read(band, -1, "Channel"),
                ElementsAre("[read_attr]:===Fail Exit===The wifi_type is wrong.\n"));
    EXPECT_THAT(seams::errors_of([=] { EXPECT_EQ(1, read_attr(band, -1, nullptr, nullptr, 0)); }),
                ElementsAre("[read_attr]:===Fail Exit===The wifi_type is wrong.\n"));
  }
}

TEST_F(ReadAttribute, WhoseLockFailsCopiesNothing) {
  seams::fail(seams::semop_fault, 1, EINTR);
  EXPECT_THAT(errors_of_read(0, -1, "Channel"), ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n",
                                                            "[read_attr]:===Fail Exit===p operation failed.\n"));
  seams::fail(seams::semop_fault, 1, EINTR);
  EXPECT_EQ(std::string(400, 'x'), read(0, -1, "Channel").buffer);
}

TEST_F(ReadAttribute, WithoutASemaphoreFailsAtTheLock) {
  seams::fail(seams::semget_fault, 1, ENOENT);
  EXPECT_THAT(errors_of_read(0, -1, "Channel"), ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n",
                                                            "[read_attr]:===Fail Exit===p operation failed.\n"));
}

TEST_F(ReadAttribute, WhoseUnlockFailsIsAFailure) {
  seams::fail(seams::semop_fault, 2, ERANGE);
  EXPECT_THAT(errors_of_read(0, -1, "Channel"), ElementsAre("[semaphore_v]:===Fail Exit===seamphore_v failed.\n",
                                                            "[read_attr]:===Fail Exit===v operation failed.\n"));
  semctl(ipc::semaphore(0), 0, SETVAL, 1);
  seams::fail(seams::semop_fault, 2, ERANGE);
  EXPECT_EQ(slot("6\n"), read(0, -1, "Channel").buffer);
}

TEST_F(ReadAttribute, AFailedUnlockDoesNotHideAnEarlierReason) {
  seams::fail(seams::semop_fault, 2, ERANGE);
  EXPECT_THAT(errors_of_read(0, -1, "none"), ElementsAre("[semaphore_v]:===Fail Exit===seamphore_v failed.\n",
                                                         "[read_attr]:===Fail Exit===The attr_name do not exist.\n"));
}

TEST_F(ReadAttribute, GivesTheLockBackOnEveryPath) {
  read(0, -1, "Channel"), read(0, -1, "none"), read(0, -1, "Channel", 1), read(0, 9, "Channel"), read(0, 1, "SSID1");
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

TEST_F(ReadAttribute, ChangesNothing) {
  const std::string before = sandbox::segment_bytes(0);
  for (int index : {-1, 0, 1, 8, 9}) read(0, index, "HT_TxStream"), read(0, index, "SSID1"), read(0, index, "none");
  EXPECT_EQ(before, sandbox::segment_bytes(0));
}

TEST_F(ReadAttribute, OfNullIsAPlainFailure) {
  char buffer[160] = "old";
  EXPECT_THAT(seams::trace_of([&] { EXPECT_EQ(1, read_attr(0, -1, nullptr, buffer, sizeof buffer)); }),
              ElementsAre("[read_attr]:===Enter===\n", "[read_attr]:===Fail Exit===\n"));
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(1, read_attr(0, -1, "Channel", nullptr, 160)); }),
              ElementsAre("[read_attr]:===Enter===\n", "[read_attr]:===Fail Exit===\n"));
  EXPECT_STREQ("old", buffer);
}

TEST_F(ReadAttribute, TracesWhatItDoesInOrder) {
  EXPECT_THAT(seams::trace_of([] { read(0, -1, "Channel"); }),
              ElementsAre("[read_attr]:===Enter===\n", "[semaphore_p]:===Enter===\n",
                          "[semaphore_p]:===Success Exit===\n", "[is_attr_exist]:===Enter===\n",
                          "[is_attr_exist]:===Success Exit===\n", "[semaphore_v]:===Enter===\n",
                          "[semaphore_v]:===Success Exit===\n", "[read_attr]:===Success Exit===\n"));
}

TEST(ReadAttributeUnattached, IsRefused) {
  for (int band : {0, 1}) {
    EXPECT_THAT(errors_of_read(band, -1, "Channel"),
                ElementsAre("[read_attr]:===Fail Exit===The attr_name do not exist.\n"));
  }
}

TEST(ReadAttributeUnattached, OfOneBandIsRefusedWhileTheOtherIsLoaded) {
  sandbox::load(1, kDat);
  EXPECT_EQ(1, read(0, -1, "Channel").result);
  EXPECT_EQ(0, read(1, -1, "Channel").result);
}

}  // namespace
