// Loading a band's dat file into its segment.
#include <dirent.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

void write_dat(int band, const std::string& text) {
  sandbox::write_file(sandbox::dat_path(band), text);
}

std::vector<std::string> errors_of_load(int band) {
  return seams::errors_of([=] { EXPECT_EQ(1, creat_shm_from_datafile(band)); });
}

// The keys of the table, up to the first empty one.
std::vector<std::string> keys(int band) {
  const std::string bytes = sandbox::segment_bytes(band);
  std::vector<std::string> found;
  for (size_t at = 0; at < bytes.size() && bytes[at] != '\0'; at += ipc::kRecordSize) {
    found.emplace_back(bytes.c_str() + at);
  }
  return found;
}

std::string bytes_of(const std::vector<wifimgr_attr_record>& records, size_t free_records) {
  const std::string used(reinterpret_cast<const char*>(records.data()), records.size() * ipc::kRecordSize);
  return used + std::string(free_records * ipc::kRecordSize, '\0');
}

int open_files() {
  int count = 0;
  DIR* const directory = opendir("/proc/self/fd");
  while (readdir(directory) != nullptr) ++count;
  closedir(directory);
  return count;
}

TEST(RecordCount, IsTheReadsAndFiveMore) {
  const struct {
    std::string text;
    int count;
  } rows[] = {{"", 5},
              {"a\n", 6},
              {"a", 6},
              {"\n\n\n\n\n\n\n\n\n\n", 15},
              {std::string(184, 'x') + "\n", 6},
              {std::string(185, 'x'), 6},
              {std::string(185, 'x') + "\n", 7},
              {std::string(186, 'x'), 7},
              {std::string(400, 'x') + "\n", 8},
              {std::string(370, 'x') + "\n", 8},
              {std::string(369, 'x') + "\n", 7}};
  for (int band : {0, 1}) {
    for (const auto& row : rows) {
      write_dat(band, row.text);
      EXPECT_EQ(row.count, get_dat_para_num(band)) << row.text;
    }
  }
}

TEST(RecordCount, OfAMissingFileOrAnotherBandIsZero) {
  for (int band : {0, 1, 2, -1}) EXPECT_EQ(0, get_dat_para_num(band));
}

TEST(RecordCount, NeedsNoMoreThanReading) {
  write_dat(0, "a\n");
  const std::string path = sandbox::dat_path(0);
  ASSERT_EQ(0, mount(path.c_str(), path.c_str(), nullptr, MS_BIND, nullptr));
  ASSERT_EQ(0, mount(nullptr, path.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
  EXPECT_EQ(6, get_dat_para_num(0));
}

TEST(Load, StoresTheRecordsInTheOrderOfTheLines) {
  for (int band : {0, 1}) {
    write_dat(band, "Default\n#x\n\nChannel=6\nHT_TxStream=1;;2\nDef\nZ\n");
    ASSERT_EQ(0, creat_shm_from_datafile(band));
    EXPECT_EQ(
        bytes_of({ipc::record("Channel", {"6\n"}), ipc::record("HT_TxStream", {"1", "2\n"}), ipc::record("Z\n", {})},
                 9),
        sandbox::segment_bytes(band));
  }
}

TEST(Load, OfTheSameFileReplacesEverything) {
  write_dat(0, "A=1;2;3\nB=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  std::memset(shm_addr_2_4g, 'x', 7 * ipc::kRecordSize);
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_EQ(bytes_of({ipc::record("A", {"1", "2", "3\n"}), ipc::record("B", {"1\n"})}, 5), sandbox::segment_bytes(0));
}

TEST(Load, InitialisesOnlyOnceInAProcess) {
  write_dat(0, "A=1\n");
  EXPECT_THAT(seams::trace_of([] { creat_shm_from_datafile(0); }), Contains("[init_shm]:===Enter===\n"));
  EXPECT_THAT(seams::trace_of([] { creat_shm_from_datafile(0); }), Not(Contains(HasSubstr("[init_shm]"))));
  EXPECT_EQ(1, seams::shmat_fault.calls);
}

TEST(Load, ReadsNoMoreLinesThanItHasRecords) {
  write_dat(0, "A=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  write_dat(0, "L0=\nL1=\nL2=\nL3=\nL4=\nL5=\nL6=\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  std::string bytes = sandbox::segment_bytes(0);
  ASSERT_EQ(6 * ipc::kRecordSize, bytes.size());
  EXPECT_EQ(std::string("L5"), bytes.c_str() + 5 * ipc::kRecordSize);
  unsigned index = 77;
  EXPECT_EQ(3, is_attr_exist(shm_addr_2_4g, "L6", &index));
}

TEST(Load, CountsLinesThatAreNoAttributesAsRead) {
  write_dat(0, "A=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  write_dat(0, "#\n#\n\nDefault\n#\nB=1\nC=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_THAT(keys(0), ElementsAre("B"));
}

TEST(Load, HidesWhatFollowsARecordWithoutAKey) {
  write_dat(0, "A=1\n=2\nB=3\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_THAT(keys(0), ElementsAre("A"));
  EXPECT_EQ(bytes_of({ipc::record("A", {"1\n"}), ipc::record("", {}), ipc::record("B", {"3\n"})}, 5),
            sandbox::segment_bytes(0));
}

TEST(Load, OfAnotherBandIsRefused) {
  for (int band : {2, -1}) {
    EXPECT_THAT(errors_of_load(band),
                ElementsAre("[creat_shm_from_datafile]:===Fail Exit===The wifi_type is wrong.\n"));
  }
}

TEST(Load, OfAMissingFileFailsAtInitialising) {
  EXPECT_THAT(errors_of_load(0),
              ElementsAre("[init_shm]:===Fail Exit===Create share memory failed.\n",
                          "[creat_shm_from_datafile]:===Fail Exit===Initialize share memory for 2.4G failed.\n"));
  EXPECT_THAT(errors_of_load(1),
              ElementsAre("[init_shm]:===Fail Exit===Create share memory failed.\n",
                          "[creat_shm_from_datafile]:===Fail Exit===Initialize share memory for 5G failed.\n"));
}

TEST(Load, OfAFileThatHasGoneIsRefusedAndLeavesTheStore) {
  for (int band : {0, 1}) {
    write_dat(band, "A=1\n");
    ASSERT_EQ(0, creat_shm_from_datafile(band));
    const std::string before = sandbox::segment_bytes(band);
    std::remove(sandbox::dat_path(band).c_str());
    EXPECT_THAT(errors_of_load(band), ElementsAre("[creat_shm_from_datafile]:===Fail Exit===Open the file " +
                                                  sandbox::dat_path(band) + " failed.\n"));
    EXPECT_EQ(before, sandbox::segment_bytes(band));
  }
}

TEST(Load, OfADirectoryIsRefused) {
  write_dat(1, "A=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(1));
  std::remove(sandbox::dat_path(1).c_str());
  for (int band : {0, 1}) ASSERT_EQ(0, mkdir(sandbox::dat_path(band).c_str(), 0755));
  EXPECT_THAT(errors_of_load(1),
              ElementsAre("[creat_shm_from_datafile]:===Fail Exit===Open the file /tmp/dat/5g.dat failed.\n"));
  // Its length cannot be read, so there is no segment for it.
  EXPECT_THAT(errors_of_load(0), Contains("[init_shm]:===Fail Exit===Create share memory failed.\n"));
}

TEST(Load, OfAReadOnlyFileIsRefused) {
  write_dat(0, "A=1\n");
  const std::string path = sandbox::dat_path(0);
  ASSERT_EQ(0, mount(path.c_str(), path.c_str(), nullptr, MS_BIND, nullptr));
  ASSERT_EQ(0, mount(nullptr, path.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
  EXPECT_THAT(errors_of_load(0),
              ElementsAre("[creat_shm_from_datafile]:===Fail Exit===Open the file /tmp/dat/2.4g.dat failed.\n"));
}

TEST(Load, WithoutAnAddressIsRefusedAfterTheFileIsOpen) {
  write_dat(0, "A=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  shm_addr_2_4g = nullptr;
  EXPECT_THAT(errors_of_load(0), ElementsAre("[creat_shm_from_datafile]:===Fail Exit===shm_tmp is NULL!\n"));
  std::remove(sandbox::dat_path(0).c_str());
  EXPECT_THAT(errors_of_load(0),
              ElementsAre("[creat_shm_from_datafile]:===Fail Exit===Open the file /tmp/dat/2.4g.dat failed.\n"));
}

TEST(Load, AfterAFailedAttachmentDoesNotInitialiseAgain) {
  write_dat(0, "A=1\n");
  seams::fail(seams::shmat_fault, 1, ENOMEM);
  EXPECT_EQ(1, creat_shm_from_datafile(0));
  EXPECT_THAT(errors_of_load(0), ElementsAre("[creat_shm_from_datafile]:===Fail Exit===shm_tmp is NULL!\n"));
  EXPECT_EQ(0, init_shm(0));
  EXPECT_EQ(0, creat_shm_from_datafile(0));
}

TEST(Load, WithoutASemaphoreFailsAtTheLock) {
  write_dat(0, "A=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  semctl(ipc::semaphore(0), 0, IPC_RMID);
  EXPECT_THAT(errors_of_load(0), ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n",
                                             "[creat_shm_from_datafile]:===Fail Exit===p operation failed.\n"));
}

TEST(Load, LocksForTheClearingAndForEachRecord) {
  write_dat(0, "#\nA=1\nDefault\nB=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  const int locks = seams::semop_fault.calls, look_ups = seams::semget_fault.calls;
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_EQ(6, seams::semop_fault.calls - locks);
  EXPECT_EQ(1, seams::semget_fault.calls - look_ups);
}

TEST(Load, EndsAtTheFirstLockThatFails) {
  const struct {
    int nth;
    const char* operation;
    std::vector<std::string> keys;
  } rows[] = {{1, "p", {"A", "B"}}, {2, "v", {}}, {3, "p", {}}, {4, "v", {"A"}}, {5, "p", {"A"}}, {6, "v", {"A", "B"}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.nth);
    write_dat(0, "A=1\nB=1\n");
    ASSERT_EQ(0, init_shm(0));
    ASSERT_EQ(0, creat_shm_from_datafile(0));
    const int files = open_files();
    seams::fail(seams::semop_fault, row.nth, EINVAL);
    const std::string letter = row.operation;
    EXPECT_THAT(errors_of_load(0),
                ElementsAre("[semaphore_" + letter + "]:===Fail Exit===seamphore_" + letter + " failed.\n",
                            "[creat_shm_from_datafile]:===Fail Exit===" + letter + " operation failed.\n"));
    EXPECT_EQ(row.keys, keys(0));
    EXPECT_EQ(files, open_files());
  }
}

TEST(Load, ClosesItsFiles) {
  write_dat(0, "A=1\n");
  const int files = open_files();
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_EQ(files, open_files());
  shm_addr_2_4g = nullptr;
  ASSERT_EQ(1, creat_shm_from_datafile(0));
  EXPECT_EQ(files, open_files());
}

TEST(Load, OfOneBandLeavesTheOtherAlone) {
  for (int band : {0, 1}) sandbox::load(band, sandbox::full_dat(band));
  const std::string before = sandbox::segment_bytes(1);
  write_dat(0, "A=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_EQ(before, sandbox::segment_bytes(1));
}

TEST(Load, TracesEntryAndSuccess) {
  write_dat(0, "");
  ASSERT_EQ(0, init_shm(0));
  EXPECT_THAT(seams::trace_of([] { creat_shm_from_datafile(0); }),
              ElementsAre("[creat_shm_from_datafile]:===Enter===\n", "[semaphore_p]:===Enter===\n",
                          "[semaphore_p]:===Success Exit===\n", "[semaphore_v]:===Enter===\n",
                          "[semaphore_v]:===Success Exit===\n", "[creat_shm_from_datafile]:===Success Exit===\n"));
}

}  // namespace
