#include "soak/crowd.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>

#include "soak/operation.h"
#include "soak/world.h"

namespace soak {
namespace {

constexpr int kWorkers = 4;

struct Counts {
  std::atomic<long> succeeded;
  std::atomic<bool> is_over;
};

Counts* counts() {
  static Counts* const shared =
      static_cast<Counts*>(mmap(nullptr, sizeof(Counts), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  return shared;
}

// One process initialises, and not while others save: loads are no part of a crowd.
[[noreturn]] void work(unsigned seed) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int output = open("/tmp/output", O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  (void)dup2(output, STDOUT_FILENO);
  std::minstd_rand random(seed);
  while (!counts()->is_over) {
    const Operation& operation = kOperations[random() % static_cast<unsigned>(kOperationCount)];
    if (!operation.loads && operation.run(static_cast<int>(random() % kBands)) == 0) ++counts()->succeeded;
    if (random() % 64 == 0) (void)ftruncate(output, 0);
  }
  std::_Exit(0);
}

pid_t start(unsigned seed) {
  std::fflush(nullptr);
  const pid_t worker = fork();
  if (worker == 0) work(seed);
  if (worker < 0) {
    std::perror("soak: fork");
    std::exit(2);
  }
  return worker;
}

void wait_microseconds(long microseconds) {
  const timespec time = {0, microseconds * 1000};
  (void)nanosleep(&time, nullptr);
}

void check(const char* doing) {
  for (int band = 0; band < kBands; ++band) {
    if (!lock_is_free(band)) complain("the lock is free within a second", doing);
    if (stored_keys(band) != all_keys(band)) complain("every key is there once", doing);
    if (!store_is_terminated(band)) complain("every text of the store ends", doing);
  }
}

void finish(pid_t (&workers)[kWorkers]) {
  counts()->is_over = true;
  for (const pid_t worker : workers) {
    int status = 0;
    (void)waitpid(worker, &status, 0);
    if (status != 0) complain("a process of the crowd ends well", std::to_string(status));
  }
  check("a crowd, at its end");
  // The store is complete, so a save makes the file complete again.
  for (int band = 0; band < kBands; ++band) {
    const int save = 5;
    if (kOperations[save].run(band) != 0) complain("a store can be saved", "a crowd, at its end");
    const std::string file = file_text(band);
    if (file.size() < saved_text(band).size() / 2 || file.back() != '\n') complain("a saved file is whole", file);
  }
  restore_world();
}

void ignore(int) {}

}  // namespace

int kill_at_random(int kills, unsigned seed, bool (*is_over)()) {
  std::minstd_rand random(seed);
  counts()->is_over = false;
  pid_t workers[kWorkers];
  for (pid_t& worker : workers) worker = start(static_cast<unsigned>(random()));
  int killed = 0;
  while (killed < kills && !is_over()) {
    pid_t& victim = workers[random() % kWorkers];
    wait_microseconds(static_cast<long>(random() % 1500));
    (void)kill(victim, SIGKILL);
    (void)waitpid(victim, nullptr, 0);
    ++killed;
    check("a crowd, one of which was killed");
    victim = start(static_cast<unsigned>(random()));
  }
  finish(workers);
  return killed;
}

long interrupt(int milliseconds, unsigned seed) {
  counts()->is_over = false;
  counts()->succeeded = 0;
  pid_t workers[kWorkers];
  for (int i = 0; i < kWorkers; ++i) {
    std::fflush(nullptr);
    workers[i] = fork();
    if (workers[i] != 0) continue;
    struct sigaction action = {};
    action.sa_handler = ignore;
    action.sa_flags = i % 2 == 0 ? SA_RESTART : 0;
    (void)sigaction(SIGALRM, &action, nullptr);
    const itimerval every = {{0, 1000}, {0, 1000}};
    (void)setitimer(ITIMER_REAL, &every, nullptr);
    work(seed + static_cast<unsigned>(i));
  }
  for (int waited = 0; waited < milliseconds; ++waited) wait_microseconds(1000);
  const long succeeded = counts()->succeeded;
  finish(workers);
  if (succeeded == 0) complain("operations succeed between signals", "signals");
  return succeeded;
}

}  // namespace soak
