// Processes of a test: started, waited for, stopped in the midst of what they do.
#pragma once

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace process {

inline pid_t start(const std::function<int()>& run) {
  const pid_t child = fork();
  if (child == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    _exit(run());
  }
  return child;
}

// The exit status; minus the signal that ended the process.
inline int result_of(pid_t child) {
  int status = 0;
  EXPECT_EQ(child, waitpid(child, &status, 0));
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

inline std::vector<int> results_of(const std::vector<pid_t>& children) {
  std::vector<int> results;
  for (pid_t child : children) results.push_back(result_of(child));
  return results;
}

// Until so many processes wait for the band's lock; false when `child` ended instead.
inline bool wait_until_waiting(int band, int count, pid_t child) {
  while (semctl(ipc::semaphore(band), 0, GETNCNT, 0) < count) {
    siginfo_t ended{};
    if (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) != 0 || ended.si_pid != 0) {
      return false;
    }
    sched_yield();
  }
  return true;
}

// Takes the store into use as a process does that must not clear it.
inline void attach_without_initialising(int band) {
  (band == 0 ? shm_addr_2_4g : shm_addr_5g) = ipc::attach(band);
}

// Starts a process that runs `run` with tracing on and stops for ever at `message`; returns once it has arrived there.
inline pid_t start_and_stop_at(const std::string& message, const std::function<void()>& run) {
  int arrival[2];
  EXPECT_EQ(0, pipe(arrival));
  const pid_t child = start([&] {
    seams::on_trace = [&](const std::string& line) {
      if (line != message) return;
      if (write(arrival[1], "x", 1) == 1) {
        while (true) pause();
      }
    };
    seams::trace_of(run);
    return 1;
  });
  close(arrival[1]);
  char seen = 0;
  EXPECT_EQ(1, read(arrival[0], &seen, 1)) << "never came to " << message;
  close(arrival[0]);
  return child;
}

}  // namespace process
