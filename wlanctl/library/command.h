// The commands that the library has run: each in a session of its own, out of the terminal's reach, with the signals as
// a program expects them, and not longer than allowed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wlanctl {

inline constexpr unsigned kCommandSeconds = 60;

enum class Ending {
  kByItself,
  kTooLong,      // its process group was ended
  kInterrupted,  // likewise
  kNotRun,       // what it belongs to was broken off before
};

struct Command {
  std::string line;
  Ending ending = Ending::kByItself;
  int status = 0;       // as waitpid tells it; never 0 when it did not end by itself
  std::string printed;  // its lines joined by "; ", the first few thousand characters

  bool failed() const { return status != 0; }
};

// How a command failed: "ended with status 1", with what it printed.
std::string account_of(const Command& command);

// Runs it and waits. What it prints comes out of this process's standard output. `line` names it in the list.
int run_command(const char* const* arguments, const std::string& line);

// For the processes that are forked off from now on: what this one leaves behind when it is killed, they can end, so that
// it changes nothing behind what they do.
void share_command_under_way();
void end_command_left_behind();

// Of all commands from now on.
void limit_commands(unsigned seconds);

// What an interrupt does to a work of several commands.
enum class AtInterrupt {
  kGoOn,
  kRunNoMore,  // the one under way is finished
  kEnd,        // it is ended, too
};

// While this lives, the commands are one work, which is broken off when its time is over, or by an interrupt where that
// is wanted: no further command runs then. The list begins anew.
class CommandRun {
 public:
  // On the clock since boot; 0 for no end.
  explicit CommandRun(int64_t deadline_ms = 0, AtInterrupt at_interrupt = AtInterrupt::kGoOn);
  CommandRun(const CommandRun&) = delete;
  CommandRun& operator=(const CommandRun&) = delete;
  ~CommandRun();
};

enum class BrokenOff { kNo, kTimeOver, kInterrupted };
BrokenOff is_broken_off();

// Those of the run so far.
const std::vector<Command>& commands_run();

// The last of them with this line that failed; null when there is none.
const Command* failed_command(const std::string& line);

}  // namespace wlanctl
