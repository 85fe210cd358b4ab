// Processes that find the store of earlier ones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/syscall.h>

#include <cerrno>
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

TEST(Processes, ThatAttachWhatCannotBeMeasuredFindNothingInIt) {
  sandbox::load(0, kDat);
  attach_without_initialising(0);
  seams::fail(seams::shmctl_fault, 1, EIDRM);
  char buffer[160] = "";
  EXPECT_EQ(1, read_attr(0, -1, "BssidNum", buffer, sizeof buffer));
  EXPECT_EQ(0, read_attr(0, -1, "BssidNum", buffer, sizeof buffer)) << "it is measured the next time";
}

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

// A segment of a foreign process with room for `records` records, and part of one more that has a key.
char* make_segment_with_room_for(int band, size_t records) {
  const char* const keys[] = {"A", "B", "C", "Behind"};
  char* const segment = ipc::make_segment(band, records * ipc::kRecordSize + 200, '\0');
  for (size_t i = 0; i < records; ++i) std::strcpy(segment + i * ipc::kRecordSize, keys[i]);
  std::strcpy(segment + records * ipc::kRecordSize, "Behind");
  return segment;
}

TEST(Processes, ThatAttachAreBoundedByTheSizeOfTheSegment) {
  for (int band : {0, 1}) {
    SCOPED_TRACE(band);
    char* const segment = make_segment_with_room_for(band, 3);
    ipc::make_semaphore(band, 1);
    (band == 0 ? shm_addr_2_4g : shm_addr_5g) = segment;
    char buffer[160] = "";
    unsigned found = 99;
    EXPECT_EQ(2, is_attr_exist(segment, "C", &found));
    EXPECT_EQ(2U, found);
    EXPECT_EQ(3, is_attr_exist(segment, "Behind", &found));
    EXPECT_EQ(1, update_common_attr(segment, 3, "Behind", "x"));
    EXPECT_EQ(0, read_attr(band, -1, "C", buffer, sizeof buffer));
    EXPECT_EQ(1, read_attr(band, -1, "Behind", buffer, sizeof buffer));
    EXPECT_EQ(1, update_attr(band, -1, "Behind", "x"));
    EXPECT_EQ(0, update_datafile_from_shm(band, 1));
    EXPECT_EQ("Default\nA=\nB=\nC=\n", sandbox::read_file(sandbox::dat_path(band)));
    EXPECT_EQ("A:\nB:\nC:\n", sandbox::stdout_of([=] { print_shm(band); }));
  }
}

TEST(Processes, ThatDetachAndAttachAnewAreBoundedByTheSizeOfTheNewSegment) {
  for (int band : {0, 1}) {
    for (size_t smaller : {size_t{0}, size_t{1}}) {
      SCOPED_TRACE(band * 10 + static_cast<int>(smaller));
      char*& address = band == 0 ? shm_addr_2_4g : shm_addr_5g;
      char buffer[160] = "";
      if (ipc::semaphore(band) < 0) ipc::make_semaphore(band, 1);
      address = make_segment_with_room_for(band, smaller != 0 ? 3 : 1);
      EXPECT_EQ(0, read_attr(band, -1, "A", buffer, sizeof buffer));
      EXPECT_EQ(smaller != 0 ? 0 : 1, read_attr(band, -1, "C", buffer, sizeof buffer));

      char* const old = address;
      ASSERT_EQ(0, shmctl(ipc::segment(band), IPC_RMID, nullptr));
      ASSERT_EQ(0, shmdt(old));
      address = nullptr;
      EXPECT_EQ(1, read_attr(band, -1, "A", buffer, sizeof buffer));

      char* const made = make_segment_with_room_for(band, smaller != 0 ? 1 : 3);
      ASSERT_EQ(0, shmdt(made));
      address = static_cast<char*>(shmat(ipc::segment(band), old, 0));
      ASSERT_EQ(old, address);
      EXPECT_EQ(0, read_attr(band, -1, "A", buffer, sizeof buffer));
      EXPECT_EQ(smaller != 0 ? 1 : 0, read_attr(band, -1, "C", buffer, sizeof buffer));
      EXPECT_EQ(1, read_attr(band, -1, "Behind", buffer, sizeof buffer));

      ASSERT_EQ(0, shmctl(ipc::segment(band), IPC_RMID, nullptr));
      ASSERT_EQ(0, shmdt(old));
      address = nullptr;
      EXPECT_EQ(1, read_attr(band, -1, "A", buffer, sizeof buffer));
    }
  }
}

// The objects' modes let everybody read and write; to ask for more would be refused to all but the superuser.
TEST(Processes, NeedNoCapabilityForAStoreThatIsThere) {
  sandbox::load(0, kDat);
  EXPECT_EQ(0, result_of(start([] {
              __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
              const __user_cap_data_struct none[2] = {};
              if (syscall(SYS_capset, &header, none) != 0) return 1;
              if (wifimgr_lib_init(0) != 0) return 2;
              char text[160] = "";
              return read_attr(0, -1, "Channel", text, sizeof text) == 0 && std::strcmp(text, "6\n") == 0 ? 0 : 3;
            })));
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
