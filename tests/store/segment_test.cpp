// Initialising a band: its segment and its semaphore.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::Each;
using testing::ElementsAre;

const char* address_of(int band) {
  return band == 0 ? shm_addr_2_4g : shm_addr_5g;
}
int exported_semaphore(int band) {
  return band == 0 ? semid_2_4g : semid_5g;
}

void write_lines(int band, int lines) {
  std::string text;
  for (int i = 0; i < lines; ++i) text += "Key" + std::to_string(i) + "=a\n";
  sandbox::write_file(sandbox::dat_path(band), text);
}

std::vector<std::string> errors_of_init(int band, int result = 1) {
  return seams::errors_of([=] { EXPECT_EQ(result, init_shm(band)); });
}

TEST(Segment, NothingIsAttachedAtTheStart) {
  EXPECT_EQ(nullptr, shm_addr_2_4g);
  EXPECT_EQ(nullptr, shm_addr_5g);
  EXPECT_EQ(-1, semid_2_4g);
  EXPECT_EQ(-1, semid_5g);
  EXPECT_EQ(0, cfg_in_shm_count);
}

TEST(Segment, IsCreatedUnderItsKeyForTheLinesOfTheFileAndFiveMore) {
  for (int band : {0, 1}) {
    SCOPED_TRACE(band);
    const int lines = band == 0 ? 10 : 3;
    write_lines(band, lines);
    ASSERT_EQ(0, init_shm(band));
    const shmid_ds status = ipc::segment_status(band);
    EXPECT_EQ(static_cast<size_t>(lines + 5) * ipc::kRecordSize, status.shm_segsz);
    EXPECT_EQ(0666, status.shm_perm.mode & 0777);
    EXPECT_EQ(1U, status.shm_nattch);
  }
  EXPECT_NE(ipc::segment(0), ipc::segment(1));
}

TEST(Segment, ItsSemaphoreIsOneAndFree) {
  for (int band : {0, 1}) {
    write_lines(band, 1);
    ASSERT_EQ(0, init_shm(band));
    semid_ds status{};
    ASSERT_EQ(0, semctl(ipc::semaphore(band), 0, IPC_STAT, &status));
    EXPECT_EQ(1U, status.sem_nsems);
    EXPECT_EQ(0666, status.sem_perm.mode & 0777);
    EXPECT_EQ(1, ipc::semaphore_value(band));
    EXPECT_EQ(ipc::semaphore(band), exported_semaphore(band));
  }
}

TEST(Segment, ItsAddressIsExported) {
  for (int band : {0, 1}) {
    write_lines(band, 1);
    ASSERT_EQ(0, init_shm(band));
    ASSERT_NE(nullptr, address_of(band));
    std::strcpy(const_cast<char*>(address_of(band)), "seen");
    EXPECT_EQ(std::string("seen"), sandbox::segment_bytes(band).c_str());
  }
}

TEST(Segment, OfAnotherBandIsRefused) {
  for (int band : {2, -1, 0x12345, -2147483647}) {
    EXPECT_THAT(errors_of_init(band), ElementsAre("[init_shm]:===Fail Exit===The wifi_type is wrong.\n"));
  }
  EXPECT_EQ(0, seams::shmget_fault.calls + seams::semget_fault.calls);
}

TEST(Segment, ThatIsNewIsTraced) {
  write_lines(0, 1);
  EXPECT_THAT(
      seams::trace_of([] { init_shm(0); }),
      ElementsAre("[init_shm]:===Enter===\n", "[init_shm]:Share memory do not exist.\n", "[set_semvalue]:===Enter===\n",
                  "[set_semvalue]:===Success Exit===\n", "[semaphore_p]:===Enter===\n",
                  "[semaphore_p]:===Success Exit===\n", "[semaphore_v]:===Enter===\n",
                  "[semaphore_v]:===Success Exit===\n", "[init_shm]:===Success Exit===\n"));
}

TEST(Segment, ThatIsNewIsNoError) {
  write_lines(0, 1);
  EXPECT_THAT(seams::trace_of([] { init_shm(0); }, 7), ElementsAre());
}

TEST(Segment, ThatExistsIsLookedUpAndNotCreated) {
  write_lines(0, 1);
  ipc::make_segment(0, 6 * ipc::kRecordSize, 0);
  const int id = ipc::segment(0);
  const int look_ups = seams::shmget_fault.calls;
  EXPECT_THAT(seams::trace_of([] { EXPECT_EQ(0, init_shm(0)); }),
              testing::Not(testing::Contains("[init_shm]:Share memory do not exist.\n")));
  EXPECT_EQ(1, seams::shmget_fault.calls - look_ups);
  EXPECT_EQ(id, ipc::segment(0));
}

TEST(Segment, ThatExistsIsCleared) {
  write_lines(0, 1);
  ipc::make_segment(0, 6 * ipc::kRecordSize, 'x');
  ASSERT_EQ(0, init_shm(0));
  EXPECT_THAT(sandbox::segment_bytes(0), Each('\0'));
}

TEST(Segment, ThatIsLargerIsClearedAsFarAsThisProcessCounts) {
  write_lines(0, 1);
  const size_t counted = 6 * ipc::kRecordSize;
  ipc::make_segment(0, 9 * ipc::kRecordSize, 'x');
  ASSERT_EQ(0, init_shm(0));
  EXPECT_EQ(std::string(counted, '\0') + std::string(3 * ipc::kRecordSize, 'x'), sandbox::segment_bytes(0));
}

TEST(Segment, ThatIsTooSmallIsRefused) {
  write_lines(0, 1);
  ipc::make_segment(0, 6 * ipc::kRecordSize - 1, 'x');
  EXPECT_THAT(errors_of_init(0), ElementsAre("[init_shm]:===Fail Exit===Create share memory failed.\n"));
  EXPECT_EQ(std::string(6 * ipc::kRecordSize - 1, 'x'), sandbox::segment_bytes(0));
  EXPECT_EQ(nullptr, shm_addr_2_4g);
  shmctl(ipc::segment(0), IPC_RMID, nullptr);
  EXPECT_EQ(0, init_shm(0));
}

TEST(Segment, CountKeepsItsLargestValue) {
  write_lines(0, 20);
  ASSERT_EQ(0, init_shm(0));
  write_lines(0, 3);
  shm_addr_2_4g[25 * ipc::kRecordSize - 1] = 'x';
  ASSERT_EQ(0, init_shm(0));
  EXPECT_THAT(sandbox::segment_bytes(0), Each('\0'));
}

TEST(Segment, CountThatHasGrownBeyondTheSegmentIsRefusedFromThenOn) {
  write_lines(0, 3);
  ASSERT_EQ(0, init_shm(0));
  write_lines(0, 4);
  EXPECT_THAT(errors_of_init(0), ElementsAre("[init_shm]:===Fail Exit===Create share memory failed.\n"));
  write_lines(0, 3);
  EXPECT_EQ(1, init_shm(0));
}

TEST(Segment, OfAMissingFileCannotBeCreated) {
  EXPECT_THAT(errors_of_init(1), ElementsAre("[init_shm]:===Fail Exit===Create share memory failed.\n"));
}

TEST(Segment, ThatExistsIsAttachedAndLeftAloneWithoutAFile) {
  ipc::make_segment(0, 3 * ipc::kRecordSize, 'x');
  EXPECT_EQ(0, init_shm(0));
  EXPECT_THAT(sandbox::segment_bytes(0), Each('x'));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, creat_shm_from_datafile(0)); }),
              ElementsAre("[creat_shm_from_datafile]:===Fail Exit===Open the file /tmp/dat/2.4g.dat failed.\n"));
  EXPECT_THAT(sandbox::segment_bytes(0), Each('x'));
}

TEST(Segment, ThatCannotBeCreatedIsRefused) {
  write_lines(0, 1);
  seams::fail(seams::shmget_fault, 2, ENOSPC);
  EXPECT_THAT(errors_of_init(0), ElementsAre("[init_shm]:===Fail Exit===Create share memory failed.\n"));
  EXPECT_EQ(-1, ipc::semaphore(0));
}

TEST(Segment, ThatCannotBeAttachedIsRefused) {
  write_lines(0, 1);
  seams::fail(seams::shmat_fault, 1, ENOMEM);
  EXPECT_THAT(errors_of_init(0), ElementsAre("[init_shm]:===Fail Exit===Attach share memory failed.\n"));
  EXPECT_EQ(nullptr, shm_addr_2_4g);
  EXPECT_EQ(-1, ipc::semaphore(0));
}

TEST(Segment, WithoutASemaphoreIsRefused) {
  write_lines(0, 1);
  seams::fail(seams::semget_fault, 2, ENOSPC);
  EXPECT_THAT(errors_of_init(0), ElementsAre("[init_shm]:===Fail Exit===semget failed.\n"));
}

TEST(Segment, WhoseSemaphoreCannotBeSetIsRefused) {
  write_lines(0, 1);
  seams::fail(seams::semctl_fault, 1, EPERM);
  EXPECT_THAT(errors_of_init(0), ElementsAre("[set_semvalue]:===Fail Exit===set_semvalue failed.\n",
                                             "[init_shm]:===Fail Exit===Set sem value failed.\n"));
}

TEST(Segment, WhoseLockFailsIsNotCleared) {
  write_lines(0, 1);
  ipc::make_segment(0, 6 * ipc::kRecordSize, 'x');
  seams::fail(seams::semop_fault, 1, EINTR);
  EXPECT_THAT(errors_of_init(0), ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n",
                                             "[init_shm]:===Fail Exit===p operation failed.\n"));
  EXPECT_THAT(sandbox::segment_bytes(0), Each('x'));
}

TEST(Segment, WhoseUnlockFailsIsClearedAndAFailure) {
  write_lines(0, 1);
  ipc::make_segment(0, 6 * ipc::kRecordSize, 'x');
  seams::fail(seams::semop_fault, 2, ERANGE);
  EXPECT_THAT(errors_of_init(0), ElementsAre("[semaphore_v]:===Fail Exit===seamphore_v failed.\n",
                                             "[init_shm]:===Fail Exit===v operation failed.\n"));
  EXPECT_THAT(sandbox::segment_bytes(0), Each('\0'));
}

TEST(Segment, InitialisingSetsAHeldLockFree) {
  write_lines(0, 1);
  for (int value : {0, 1, 5}) {
    if (ipc::semaphore(0) < 0) ipc::make_semaphore(0, value);
    semctl(ipc::semaphore(0), 0, SETVAL, value);
    const int id = ipc::semaphore(0);
    EXPECT_EQ(0, init_shm(0));
    EXPECT_EQ(1, ipc::semaphore_value(0)) << value;
    EXPECT_EQ(id, ipc::semaphore(0));
    EXPECT_EQ(id, semid_2_4g);
  }
}

TEST(Segment, IsClearedUnderTheLock) {
  write_lines(0, 1);
  std::vector<int> values;
  seams::on_trace = [&](const std::string& line) {
    if (line == "[semaphore_v]:===Enter===\n") values.push_back(ipc::semaphore_value(0));
  };
  seams::trace_of([] { init_shm(0); });
  EXPECT_THAT(values, ElementsAre(0));
}

TEST(Segment, InitialisedAgainIsAttachedOnce) {
  write_lines(0, 1);
  ASSERT_EQ(0, init_shm(0));
  ASSERT_EQ(0, init_shm(0));
  EXPECT_EQ(2, seams::shmat_fault.calls);
  EXPECT_EQ(1, seams::shmdt_fault.calls);
  EXPECT_EQ(1U, ipc::segment_status(0).shm_nattch);
}

TEST(Segment, KeepsItsOldAttachmentWhenANewOneIsRefused) {
  write_lines(0, 1);
  ASSERT_EQ(0, init_shm(0));
  char* const old = shm_addr_2_4g;
  seams::fail(seams::shmat_fault, 1, ENOMEM);
  EXPECT_EQ(1, init_shm(0));
  EXPECT_EQ(old, shm_addr_2_4g);
  EXPECT_EQ(0, seams::shmdt_fault.calls);
  EXPECT_EQ(1U, ipc::segment_status(0).shm_nattch);
}

TEST(Segment, OfOneBandLeavesTheOtherAlone) {
  for (int band : {0, 1}) {
    write_lines(band, 2);
    ASSERT_EQ(0, creat_shm_from_datafile(band));
  }
  const std::string before = sandbox::segment_bytes(1);
  semctl(ipc::semaphore(1), 0, SETVAL, 0);
  ASSERT_EQ(0, init_shm(0));
  EXPECT_EQ(before, sandbox::segment_bytes(1));
  EXPECT_EQ(0, ipc::semaphore_value(1));
}

}  // namespace
