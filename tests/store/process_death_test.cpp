// Processes that die or hang while they hold the lock.
#include <gtest/gtest.h>
#include <signal.h>

#include <functional>
#include <string>

#include "store/ipc_objects.h"
#include "store/processes.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using process::result_of;
using process::start;
using process::start_and_stop_at;
using process::wait_until_waiting;

constexpr char kDat[] = "BssidNum=8\nChannel=6\nHT_TxStream=1;1;1;1;1;1;1;1\nSSID1=home\nWPAPSK1=secret\n";

TEST(Processes, KilledInsideTheCriticalSectionGiveTheLockBack) {
  const struct {
    const char* message;
    std::function<void()> run;
  } rows[] = {
      {"[semaphore_p]:===Success Exit===\n", [] { semaphore_p(ipc::semaphore(0)); }},
      {"[is_attr_exist]:===Success Exit===\n",
       [] {
         char buffer[160];
         read_attr(0, -1, "Channel", buffer, sizeof buffer);
       }},
      {"[update_common_attr]:===Success Exit===\n", [] { update_attr(0, -1, "Channel", "11"); }},
      {"[merge_para]:===Enter===\n", [] { update_datafile_from_shm(0, 8); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.message);
    sandbox::load(0, kDat);
    const pid_t holder = start_and_stop_at(row.message, row.run);
    EXPECT_EQ(0, ipc::semaphore_value(0));
    const pid_t waiter = start([] { return update_attr(0, 1, "SSID1", "waited"); });
    EXPECT_TRUE(wait_until_waiting(0, 1, waiter));
    kill(holder, SIGKILL);
    EXPECT_EQ(-SIGKILL, result_of(holder));
    EXPECT_EQ(0, result_of(waiter));
    EXPECT_EQ("waited", sandbox::field(0, "SSID1", 1));
    EXPECT_EQ(1, ipc::semaphore_value(0));
  }
}

TEST(Processes, KilledInASaveLeaveTheStoreToSaveAgain) {
  sandbox::load(0, kDat);
  // The first pass over the records checks them, the second writes them.
  int passes = 0;
  const pid_t saver = start_and_stop_at("[semaphore_p]:===Success Exit===\n", [&] {
    const auto stop = seams::on_trace;
    seams::on_trace = [&, stop](const std::string& line) {
      if (line == "[semaphore_p]:===Success Exit===\n" && ++passes == 2) stop(line);
    };
    update_datafile_from_shm(0, 8);
  });
  EXPECT_EQ("", sandbox::read_file(sandbox::dat_path(0)));
  kill(saver, SIGKILL);
  EXPECT_EQ(-SIGKILL, result_of(saver));
  EXPECT_EQ(0, wifimgr_lib_save_dataFile(0));
  EXPECT_EQ(std::string("Default\n") + kDat, sandbox::read_file(sandbox::dat_path(0)));
}

TEST(Processes, AnEndlessHolderIsCuredByInitialising) {
  sandbox::load(0, kDat);
  const pid_t holder = start_and_stop_at("[semaphore_p]:===Success Exit===\n", [] { semaphore_p(ipc::semaphore(0)); });
  EXPECT_EQ(0, init_shm(0));
  EXPECT_EQ(1, ipc::semaphore_value(0));
  EXPECT_EQ(0, wifimgr_lib_init(0));
  kill(holder, SIGKILL);
  result_of(holder);
  EXPECT_EQ(1, ipc::semaphore_value(0)) << "what the dead holder took was given back already";
}

}  // namespace
