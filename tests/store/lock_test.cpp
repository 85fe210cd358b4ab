// The band's semaphore.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ipc.h>
#include <sys/sem.h>

#include <cerrno>

#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

int new_semaphore() {
  const int id = semget(IPC_PRIVATE, 1, 0666 | IPC_CREAT);
  EXPECT_GE(id, 0);
  return id;
}

TEST(Semaphore, SetValueSetsTheValueOfSemaphoreZero) {
  const int id = new_semaphore();
  EXPECT_EQ(0, set_semvalue(id, 3));
  EXPECT_EQ(3, semctl(id, 0, GETVAL, 0));
}

TEST(Semaphore, SetValueOfNoSemaphoreFailsWithItsMessage) {
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, set_semvalue(-1, 1)); }),
              ElementsAre("[set_semvalue]:===Fail Exit===set_semvalue failed.\n"));
}

}  // namespace
