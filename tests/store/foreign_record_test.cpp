// Records that another program wrote to their full width, without a NUL.
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <string>
#include <thread>

#include "store/ipc_objects.h"
#include "support/sandbox.h"

namespace {

const std::string kWideKey(36, 'k');
const std::string kWideField(150, 'f');

class ForeignRecord : public testing::Test {
 protected:
  void SetUp() override {
    char* const segment = ipc::make_segment(0, 2 * ipc::kRecordSize, '\0');
    ipc::make_semaphore(0, 1);
    const wifimgr_attr_record records[] = {ipc::record(kWideKey, {kWideField, kWideField, "3"}),
                                           ipc::record("SSID1", {kWideField, "next"})};
    std::memcpy(segment, records, sizeof records);
    shm_addr_2_4g = segment;
  }
};

TEST_F(ForeignRecord, IsFoundByTheWholeWidthOfItsKey) {
  unsigned index = 77;
  EXPECT_EQ(2, is_attr_exist(shm_addr_2_4g, kWideKey.c_str(), &index));
  EXPECT_EQ(0U, index);
  EXPECT_EQ(3, is_attr_exist(shm_addr_2_4g, (kWideKey + "f").c_str(), &index));
  EXPECT_EQ(3, is_attr_exist(shm_addr_2_4g, kWideKey.substr(1).c_str(), &index));
}

TEST_F(ForeignRecord, IsReadByField) {
  char buffer[160];
  std::memset(buffer, 'x', sizeof buffer);
  EXPECT_EQ(0, read_attr(0, 2, kWideKey.c_str(), buffer, sizeof buffer));
  EXPECT_EQ(kWideField + std::string(10, 'x'), std::string(buffer, sizeof buffer));
  EXPECT_EQ(0, read_attr(0, 1, "SSID1", buffer, sizeof buffer));
  EXPECT_EQ(kWideField + std::string(10, '\0'), std::string(buffer, sizeof buffer));
}

TEST_F(ForeignRecord, IsJoinedWithinItsFields) {
  wifimgr_attr_record record = ipc::record("K", {kWideField, kWideField, "3"});
  char out[1300] = "";
  EXPECT_EQ(0, merge_para(&record, out, 8));
  EXPECT_EQ(std::string(149, 'f') + ";" + std::string(149, 'f') + ";3", out);
  wifimgr_attr_record one = ipc::record("K", {kWideField});
  out[0] = '\0';
  EXPECT_EQ(0, merge_para(&one, out, 8));
  EXPECT_EQ(std::string(149, 'f'), out);
}

// The text before the field ends in a line end, so that a length that was taken too late reaches back into it.
TEST(ChangingRecord, IsJoinedAsItIsAtOneMoment) {
  wifimgr_attr_record record = ipc::record(std::string(35, 'k') + "\n", {"a", "b"});
  std::atomic<bool> is_done = false;
  std::thread other([&] {
    volatile char* const first = &record.field[0][0];
    while (!is_done) *first = *first == '\0' ? 'a' : '\0';
  });
  for (int i = 0; i < 200000; ++i) {
    char out[1300] = "";
    merge_para(&record, out, 8);
    const std::string text = out;
    if (text != "" && text != "a;b") {
      ADD_FAILURE() << text;
      break;
    }
  }
  is_done = true;
  other.join();
}

TEST_F(ForeignRecord, IsTooLongToBeSavedWithItsKey) {
  sandbox::write_file(sandbox::dat_path(0), "old");
  EXPECT_EQ(1, update_datafile_from_shm(0, 1));
  EXPECT_EQ("old", sandbox::read_file(sandbox::dat_path(0)));
  EXPECT_EQ(0, update_datafile_from_shm(0, 0));
  EXPECT_EQ("Default\n" + kWideKey + "=\n", sandbox::read_file(sandbox::dat_path(0)));
}

TEST_F(ForeignRecord, IsDumpedWithinItsFields) {
  const std::string line = std::string(119, 'f') + "\n";
  std::string first = line;
  first[60] = '3';
  EXPECT_EQ(kWideKey + ":\n" + first + "SSID1:\n" + std::string(30, 'f') + "next" + std::string(85, 'f') + "\n",
            sandbox::stdout_of([] { print_shm(0); }));
}

TEST_F(ForeignRecord, IsChangedInItsFieldOnly) {
  std::string expected = sandbox::segment_bytes(0);
  expected.replace(36, 150, "new" + std::string(147, '\0'));
  EXPECT_EQ(0, update_attr(0, -1, kWideKey.c_str(), "new"));
  EXPECT_EQ(expected, sandbox::segment_bytes(0));
}

}  // namespace
