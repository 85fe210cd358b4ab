// The band's semaphore.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

int new_semaphore(int value = 0) {
  const int id = semget(IPC_PRIVATE, 1, 0666 | IPC_CREAT);
  EXPECT_GE(id, 0);
  EXPECT_EQ(0, semctl(id, 0, SETVAL, value));
  return id;
}

int value_of(int id) {
  return semctl(id, 0, GETVAL, 0);
}

template <typename Run>
int exit_status_of(Run run) {
  const pid_t child = fork();
  if (child == 0) _exit(run());
  int status = -1;
  EXPECT_EQ(child, waitpid(child, &status, 0));
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Semaphore, SetValueSetsTheValueOfSemaphoreZero) {
  const int id = new_semaphore();
  EXPECT_EQ(0, set_semvalue(id, 3));
  EXPECT_EQ(3, value_of(id));
}

TEST(Semaphore, SetValueTakesTheKernelsWholeRange) {
  const int id = new_semaphore();
  EXPECT_EQ(0, set_semvalue(id, 32767));
  EXPECT_EQ(32767, value_of(id));
  EXPECT_EQ(1, set_semvalue(id, 32768));
  EXPECT_EQ(1, set_semvalue(id, -1));
  EXPECT_EQ(32767, value_of(id));
}

TEST(Semaphore, SetValueOfNoSemaphoreFailsWithItsMessage) {
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, set_semvalue(-1, 1)); }),
              ElementsAre("[set_semvalue]:===Fail Exit===set_semvalue failed.\n"));
}

TEST(Semaphore, DeleteRemovesTheSet) {
  const int id = new_semaphore();
  EXPECT_EQ(0, del_semvalue(id));
  EXPECT_EQ(-1, value_of(id));
}

TEST(Semaphore, DeleteOfNoSemaphoreFailsWithItsMessage) {
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, del_semvalue(-1)); }),
              ElementsAre("[del_semvalue]:===Fail Exit===del_semvalue failed.\n"));
}

TEST(Semaphore, PTakesOneAndVGivesOne) {
  const int id = new_semaphore(2);
  EXPECT_EQ(0, semaphore_p(id));
  EXPECT_EQ(1, value_of(id));
  EXPECT_EQ(0, semaphore_p(id));
  EXPECT_EQ(0, value_of(id));
  EXPECT_EQ(0, semaphore_v(id));
  EXPECT_EQ(1, value_of(id));
  EXPECT_EQ(3, seams::semop_fault.calls);
}

TEST(Semaphore, PAndVOfNoSemaphoreFailWithTheirMessages) {
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, semaphore_p(-1)); }),
              ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n"));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, semaphore_v(-1)); }),
              ElementsAre("[semaphore_v]:===Fail Exit===seamphore_v failed.\n"));
}

TEST(Semaphore, AWaitEndedByASignalIsAFailure) {
  const int id = new_semaphore(1);
  seams::fail(seams::semop_fault, 1, EINTR);
  EXPECT_EQ(1, semaphore_p(id));
  EXPECT_EQ(1, seams::semop_fault.calls);
  seams::fail(seams::semop_fault, 1, EINTR);
  EXPECT_EQ(1, semaphore_v(id));
  EXPECT_EQ(1, value_of(id));
}

TEST(Semaphore, AProcessThatEndsGivesBackWhatItTook) {
  const int id = new_semaphore(1);
  EXPECT_EQ(0, exit_status_of([id] { return semaphore_p(id); }));
  EXPECT_EQ(1, value_of(id));
}

TEST(Semaphore, AProcessThatEndsTakesBackWhatItGave) {
  const int id = new_semaphore(1);
  EXPECT_EQ(0, exit_status_of([id] { return semaphore_v(id); }));
  EXPECT_EQ(1, value_of(id));
}

TEST(Semaphore, PWaitsUntilTheHolderGivesItBack) {
  const int id = new_semaphore(0);
  const pid_t waiter = fork();
  if (waiter == 0) _exit(semaphore_p(id));
  while (semctl(id, 0, GETNCNT, 0) == 0) {
    if (waitpid(waiter, nullptr, WNOHANG) != 0) FAIL() << "the waiter did not wait";
  }
  EXPECT_EQ(0, semaphore_v(id));
  int status = -1;
  EXPECT_EQ(waiter, waitpid(waiter, &status, 0));
  EXPECT_EQ(0, status);
}

TEST(Semaphore, EachOperationTracesEntryAndSuccess) {
  const int id = new_semaphore(1);
  EXPECT_THAT(seams::trace_of([id] { set_semvalue(id, 1), semaphore_p(id), semaphore_v(id), del_semvalue(id); }),
              ElementsAre("[set_semvalue]:===Enter===\n", "[set_semvalue]:===Success Exit===\n",
                          "[semaphore_p]:===Enter===\n", "[semaphore_p]:===Success Exit===\n",
                          "[semaphore_v]:===Enter===\n", "[semaphore_v]:===Success Exit===\n",
                          "[del_semvalue]:===Enter===\n", "[del_semvalue]:===Success Exit===\n"));
}

TEST(Semaphore, SuccessIsNotTracedBelowLevelEight) {
  const int id = new_semaphore(1);
  EXPECT_THAT(seams::trace_of([id] { semaphore_p(id), semaphore_v(id); }, 7), IsEmpty());
}

}  // namespace
