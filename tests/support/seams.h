// The seams at which a test stands in for the platform: the imported trace functions, system, and the IPC calls. The test
// program defines these functions itself, so the library's calls arrive here.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace seams {

// ---- The platform's debug library ----

// Levels up to this are on; 0 (the start) is none.
extern int trace_level;
// How often the switch was asked.
extern int switch_calls;
// Every message that was printed, line ends included.
extern std::vector<std::string> trace;
// Called with each message as it is printed: the library is then in the midst of what it traces.
extern std::function<void(const std::string&)> on_trace;

// The messages of `run` with everything switched on, errors only, or the trace level's lines alone.
std::vector<std::string> trace_of(const std::function<void()>& run, int level = 8);
std::vector<std::string> errors_of(const std::function<void()>& run);

// ---- system ----

// Every command line that was to be run, in order. None is run, but for what `on_command` does.
extern std::vector<std::string> commands;
extern std::function<int(const std::string&)> on_command;

// Makes parse_driver find these chips: its command line writes them into "/tmp/devices".
void put_chips_on_the_bus(const std::vector<std::string>& chips);

// ---- SysV IPC ----

// Fails the n-th call from now on (1 is the next) of one function with `error`, once; n of 0 fails none.
struct Fault {
  int countdown = 0;
  int error = 0;
  int calls = 0;  // all calls so far
};
extern Fault semget_fault, semctl_fault, semop_fault, shmget_fault, shmat_fault, shmctl_fault, shmdt_fault;

void fail(Fault& fault, int nth, int error);

// ---- Files ----

// From now on no file of this process grows beyond `bytes`: what stands behind them is lost as on a full disk.
void limit_file_size(size_t bytes);

}  // namespace seams
