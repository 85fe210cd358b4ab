// What reading and changing a value asks of the system: the look-up of the lock, P and V, and nothing else.
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <functional>
#include <string>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

constexpr char kDat[] = "BssidNum=2\nChannel=6\nHT_TxStream=1;1\nSSID1=home\n";

int all_calls() {
  return seams::semget_fault.calls + seams::semctl_fault.calls + seams::semop_fault.calls + seams::shmget_fault.calls +
         seams::shmat_fault.calls + seams::shmctl_fault.calls + seams::shmdt_fault.calls;
}

void expect_three_calls(const std::function<int()>& operation, const char* what) {
  SCOPED_TRACE(what);
  const int look_ups = seams::semget_fault.calls, steps = seams::semop_fault.calls, all = all_calls();
  operation();
  EXPECT_EQ(1, seams::semget_fault.calls - look_ups);
  EXPECT_EQ(2, seams::semop_fault.calls - steps);
  EXPECT_EQ(3, all_calls() - all);
}

int read(int index, const char* name, unsigned len = 160) {
  char buffer[160];
  return read_attr(0, index, name, buffer, len);
}

TEST(SystemCalls, OfEveryReadAndUpdateAreOneLookUpAndTwoSteps) {
  sandbox::load(0, kDat);
  expect_three_calls([] { return read(-1, "Channel"); }, "read");
  expect_three_calls([] { return read(2, "HT_TxStream"); }, "read by SSID");
  expect_three_calls([] { return read(1, "SSID1"); }, "read a single-value key");
  expect_three_calls([] { return read(9, "Channel"); }, "read, index");
  expect_three_calls([] { return read(-1, "none"); }, "read, missing");
  expect_three_calls([] { return read(-1, "Channel", 1); }, "read, buffer");
  expect_three_calls([] { return update_attr(0, -1, "Channel", "1"); }, "update");
  expect_three_calls([] { return update_attr(0, 2, "HT_TxStream", "1"); }, "update by SSID");
  expect_three_calls([] { return update_attr(0, 1, "SSID1", "a"); }, "update a single-value key");
  expect_three_calls([] { return update_attr(0, 9, "Channel", "1"); }, "update, index");
  expect_three_calls([] { return update_attr(0, -1, "none", "1"); }, "update, missing");
}

TEST(SystemCalls, OfARefusedBandOrNullAreNone) {
  sandbox::load(0, kDat);
  const int before = all_calls();
  char buffer[160];
  EXPECT_EQ(1, read_attr(2, -1, "Channel", buffer, sizeof buffer));
  EXPECT_EQ(1, read_attr(1, -1, "Channel", buffer, sizeof buffer));
  EXPECT_EQ(1, read_attr(0, -1, nullptr, buffer, sizeof buffer));
  EXPECT_EQ(1, update_attr(2, -1, "Channel", "1"));
  EXPECT_EQ(1, update_attr(1, -1, "Channel", "1"));
  EXPECT_EQ(1, update_attr(0, -1, "Channel", nullptr));
  EXPECT_EQ(before, all_calls());
}

TEST(SystemCalls, TheSizeOfTheSegmentIsAskedOnceAtAttach) {
  for (int band : {0, 1}) {
    SCOPED_TRACE(band);
    sandbox::write_file(sandbox::dat_path(band), kDat);
    const int before = seams::shmctl_fault.calls;
    ASSERT_EQ(0, init_shm(band));
    EXPECT_EQ(1, seams::shmctl_fault.calls - before);
    expect_three_calls(
        [=] {
          char buffer[160];
          return read_attr(band, -1, "Channel", buffer, sizeof buffer);
        },
        "the first read");
  }
}

// From here on every system call but these ends the process.
void allow_only_the_lock() {
  sock_filter program[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_semget, 3, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_semop, 2, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 1, 0),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog filter = {sizeof program / sizeof program[0], program};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) != 0)
    _exit(99);
}

TEST(SystemCalls, OfReadsAndUpdatesAreNoOthersOfTheKernel) {
  sandbox::load(0, kDat);
  const pid_t child = fork();
  if (child == 0) {
    allow_only_the_lock();
    int wrong = 0;
    for (int i = 0; i < 10; ++i) {
      wrong += read(-1, "Channel") + read(2, "HT_TxStream") + read(1, "SSID1") + (read(-1, "none") == 1 ? 0 : 1);
      wrong += update_attr(0, -1, "Channel", "1") + update_attr(0, 2, "HT_TxStream", "1") +
               update_attr(0, 1, "SSID1", "a") + (update_attr(0, 9, "Channel", "1") == 1 ? 0 : 1);
    }
    syscall(SYS_exit_group, wrong);
  }
  int status = -1;
  ASSERT_EQ(child, waitpid(child, &status, 0));
  EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
  EXPECT_EQ(0, WEXITSTATUS(status));
}

}  // namespace
