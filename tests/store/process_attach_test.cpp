// Processes that find the store of earlier ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "store/ipc_objects.h"
#include "store/processes.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using process::attach_without_initialising;
using process::result_of;
using process::start;
using testing::ElementsAre;

constexpr char kDat[] = "BssidNum=8\nChannel=6\nHT_TxStream=1;1;1;1;1;1;1;1\nSSID1=home\nWPAPSK1=secret\n";

TEST(Processes, ThatAttachWithoutInitialisingUseTheLiveStore) {
  for (int band : {0, 1}) {
    ASSERT_EQ(0, result_of(start([=] {
                sandbox::load(band, kDat);
                return update_attr(band, -1, "Channel", "unsaved");
              })));
    attach_without_initialising(band);
    char buffer[160] = "";
    EXPECT_EQ(0, read_attr(band, -1, "Channel", buffer, sizeof buffer));
    EXPECT_STREQ("unsaved", buffer);
    EXPECT_EQ(0, update_attr(band, 2, "HT_TxStream", "mine"));
    EXPECT_EQ(0, result_of(start([=] {
                attach_without_initialising(band);
                char text[160] = "";
                return read_attr(band, 2, "HT_TxStream", text, sizeof text) == 0 && std::strcmp(text, "mine") == 0 ? 0
                                                                                                                   : 1;
              })));
    EXPECT_EQ(0, wifimgr_lib_save_dataFile(band));
    EXPECT_EQ("Default\nBssidNum=8\nChannel=unsaved\nHT_TxStream=1;mine;1;1;1;1;1;1\nSSID1=home\nWPAPSK1=secret\n",
              sandbox::read_file(sandbox::dat_path(band)));
  }
}

TEST(Processes, ThatAttachAreBoundedByTheSizeOfTheSegment) {
  char* const segment = ipc::make_segment(0, 3 * ipc::kRecordSize + 200, '\0');
  const char* const keys[] = {"A", "B", "C", "Behind"};
  for (size_t i = 0; i < 4; ++i) std::strcpy(segment + i * ipc::kRecordSize, keys[i]);
  ipc::make_semaphore(0, 1);
  shm_addr_2_4g = segment;
  char buffer[160] = "";
  EXPECT_EQ(0, read_attr(0, -1, "C", buffer, sizeof buffer));
  EXPECT_EQ(1, read_attr(0, -1, "Behind", buffer, sizeof buffer));
  EXPECT_EQ(1, update_attr(0, -1, "Behind", "x"));
  EXPECT_EQ(0, update_datafile_from_shm(0, 1));
  EXPECT_EQ("Default\nA=\nB=\nC=\n", sandbox::read_file(sandbox::dat_path(0)));
  EXPECT_EQ("A:\nB:\nC:\n", sandbox::stdout_of([] { print_shm(0); }));
}

TEST(Processes, FindTheSegmentOfAnEarlierOneTooSmallForAGrownFile) {
  ASSERT_EQ(0, result_of(start([] {
              sandbox::load(0, "BssidNum=1\n");
              return 0;
            })));
  sandbox::write_file(sandbox::dat_path(0), kDat);
  const std::string before = sandbox::segment_bytes(0);
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_init(0)); }),
              ElementsAre("[init_shm]:===Fail Exit===Create share memory failed.\n",
                          "[creat_shm_from_datafile]:===Fail Exit===Initialize share memory for 2.4G failed.\n",
                          "[wifimgr_lib_init]:===Fail Exit===Initialize the share memory failed!\n"));
  EXPECT_EQ(before, sandbox::segment_bytes(0));
  ASSERT_EQ(0, shmctl(ipc::segment(0), IPC_RMID, nullptr));
  EXPECT_EQ(0, wifimgr_lib_init(0));
  EXPECT_EQ("home\n", sandbox::field(0, "SSID1", 1));
}

TEST(Processes, FindTheSegmentOfAnEarlierOneLargeEnoughForAShorterFile) {
  ASSERT_EQ(0, result_of(start([] {
              sandbox::load(0, kDat);
              return 0;
            })));
  const int id = ipc::segment(0);
  sandbox::load(0, "BssidNum=1\nLast=1\n");
  EXPECT_EQ(id, ipc::segment(0));
  char buffer[160];
  EXPECT_EQ(1, read_attr(0, -1, "SSID1", buffer, sizeof buffer));
}

TEST(Processes, LeaveTheStoreBehindWhenTheyEnd) {
  ASSERT_EQ(0, result_of(start([] {
              sandbox::load(0, kDat);
              return 0;
            })));
  EXPECT_EQ("6\n", sandbox::field(0, "Channel", 1));
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

}  // namespace
