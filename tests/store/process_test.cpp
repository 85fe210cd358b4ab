// Several processes at work on one store.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <atomic>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "store/processes.h"
#include "support/sandbox.h"

namespace {

using process::attach_without_initialising;
using process::result_of;
using process::results_of;
using process::start;
using process::wait_until_waiting;
using testing::Each;

constexpr char kDat[] = "BssidNum=8\nChannel=6\nHT_TxStream=1;1;1;1;1;1;1;1\nSSID1=home\nWPAPSK1=secret\n";

// A value all of one letter whose length belongs to that letter, so that a mixture of two is seen.
std::string whole_value(unsigned number) {
  const unsigned letter = number % 26;
  return std::string(20 + letter * 5, static_cast<char>('a' + letter));
}

bool is_whole(const char (&buffer)[160]) {
  const std::string text(buffer, strnlen(buffer, 150));
  return !text.empty() && text == whole_value(static_cast<unsigned>(text[0] - 'a')) &&
         std::string(buffer + text.size(), 150 - text.size()) == std::string(150 - text.size(), '\0');
}

struct Target {
  const char* key;
  int index;
};

constexpr Target kTargets[] = {{"Channel", -1}, {"HT_TxStream", 3}, {"HT_TxStream", 8}, {"SSID1", 1}, {"WPAPSK1", -1}};

void make_all_whole(int band) {
  for (const Target& target : kTargets)
    ASSERT_EQ(0, update_attr(band, target.index, target.key, whole_value(0).c_str()));
}

int read_and_write(int band, int operations, unsigned seed) {
  std::mt19937 random(seed);
  for (int i = 0; i < operations; ++i) {
    const Target& target = kTargets[random() % std::size(kTargets)];
    if (random() % 2 == 0) {
      if (update_attr(band, target.index, target.key, whole_value(static_cast<unsigned>(random())).c_str()) != 0)
        return 1;
    } else {
      char buffer[160];
      std::memset(buffer, '!', sizeof buffer);
      if (read_attr(band, target.index, target.key, buffer, sizeof buffer) != 0) return 2;
      if (target.key[0] != 'S' && target.key[0] != 'W' && buffer[150] != '!') return 3;
      if (!is_whole(buffer)) return 4;
    }
  }
  return 0;
}

TEST(Processes, EightReadAndWriteOneBandAndSeeWholeValuesOnly) {
  sandbox::load(0, kDat);
  make_all_whole(0);
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::vector<pid_t> children;
  for (unsigned i = 0; i < 8; ++i) {
    children.push_back(start([=] {
      if (i % 2 != 0) attach_without_initialising(0);
      return read_and_write(0, 4000, seed + i);
    }));
  }
  EXPECT_THAT(results_of(children), Each(0));
  EXPECT_EQ(1, ipc::semaphore_value(0));
  EXPECT_EQ(0, read_and_write(0, 100, seed));
}

TEST(Processes, WaitForTheLockToReadChangeSaveAndLoad) {
  sandbox::load(0, kDat);
  const std::function<int()> operations[] = {
      [] {
        char buffer[160];
        return read_attr(0, -1, "Channel", buffer, sizeof buffer);
      },
      [] { return update_attr(0, -1, "Channel", "1"); },
      [] { return update_attr(0, 1, "SSID1", "x"); },
      [] { return update_datafile_from_shm(0, 8); },
      [] { return creat_shm_from_datafile(0); },
  };
  for (size_t i = 0; i < std::size(operations); ++i) {
    ASSERT_EQ(0, semaphore_p(ipc::semaphore(0)));
    const pid_t child = start(operations[i]);
    const std::string before = sandbox::segment_bytes(0);
    EXPECT_TRUE(wait_until_waiting(0, 1, child)) << i;
    EXPECT_EQ(before, sandbox::segment_bytes(0)) << i;
    ASSERT_EQ(0, semaphore_v(ipc::semaphore(0)));
    EXPECT_EQ(0, result_of(child)) << i;
  }
}

TEST(Processes, OfOneBandDoNotWaitForTheOther) {
  for (int band : {0, 1}) sandbox::load(band, kDat);
  for (int band : {0, 1}) {
    ASSERT_EQ(0, semaphore_p(ipc::semaphore(band)));
    EXPECT_EQ(0, update_attr(1 - band, -1, "Channel", "1"));
    EXPECT_EQ(0, update_datafile_from_shm(1 - band, 8));
    ASSERT_EQ(0, semaphore_v(ipc::semaphore(band)));
  }
}

TEST(Processes, ThatInitialiseWhileOthersWorkBreakNobody) {
  sandbox::load(0, kDat);
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  auto* const initialised = static_cast<std::atomic<bool>*>(
      mmap(nullptr, sizeof(std::atomic<bool>), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  ASSERT_NE(MAP_FAILED, static_cast<void*>(initialised));
  std::vector<pid_t> workers;
  for (unsigned i = 0; i < 6; ++i) {
    workers.push_back(start([=] {
      std::mt19937 random(seed + i);
      for (int operations = 0; operations < 2000 || !*initialised; ++operations) {
        const Target& target = kTargets[random() % std::size(kTargets)];
        const std::string value = whole_value(static_cast<unsigned>(random()));
        char buffer[160] = "";
        const int result = random() % 2 == 0 ? read_attr(0, target.index, target.key, buffer, sizeof buffer)
                                             : update_attr(0, target.index, target.key, value.c_str());
        if (result != 0 && result != 1) return 1;
        if (strnlen(buffer, 150) == 150) return 2;
      }
      return 0;
    }));
  }
  std::vector<pid_t> initialisers;
  for (int i = 0; i < 2; ++i) {
    initialisers.push_back(start([] {
      for (int round = 0; round < 200; ++round) {
        if (init_shm(0) != 0) return 3;
        if (creat_shm_from_datafile(0) != 0) return 4;
      }
      return 0;
    }));
  }
  EXPECT_THAT(results_of(initialisers), Each(0));
  *initialised = true;
  EXPECT_THAT(results_of(workers), Each(0));
  ASSERT_EQ(0, init_shm(0));
  ASSERT_EQ(0, wifimgr_lib_init(0));
  EXPECT_EQ(1, ipc::semaphore_value(0));
  EXPECT_EQ("home\n", sandbox::field(0, "SSID1", 1));
  EXPECT_EQ(0, update_datafile_from_shm(0, 8));
  EXPECT_EQ(std::string("Default\n") + kDat, sandbox::read_file(sandbox::dat_path(0)));
}

TEST(Processes, ThatInitialiseTakeTheUnsavedChangesOfAll) {
  sandbox::load(0, kDat);
  ASSERT_EQ(0, update_attr(0, -1, "Channel", "11"));
  EXPECT_EQ(0, result_of(start([] { return wifimgr_lib_init(0); })));
  EXPECT_EQ("6\n", sandbox::field(0, "Channel", 1));
}

}  // namespace
