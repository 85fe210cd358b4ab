// One wlanctl changes or applies at a time.
#pragma once

#include <string>

namespace wlanctl {

class Report;

// A file to be locked with flock, made where there is none; -1 when it cannot be had.
int open_lock_file(const std::string& path);

// Leaves this process's number in a lock file that it has locked.
void sign_lock_file(int file);

// The name of the processes that watch over a pending apply, as the kernel lists them.
inline constexpr char kGuardianName[] = "wlanctl-guard";

// Ends the process that has signed a lock file when it is a guardian, and stopped: it would hold everything up, and what
// it watched over is written down. True when one was ended.
bool end_stopped_guardian(int file);

class ToolLock {
 public:
  // Waits for another wlanctl to end, saying so on standard error; a problem when it does not within `seconds`.
  ToolLock(Report& report, unsigned seconds);
  // Takes it when it is free, without a word.
  ToolLock();
  ToolLock(const ToolLock&) = delete;
  ToolLock& operator=(const ToolLock&) = delete;
  ~ToolLock();

  explicit operator bool() const { return file_ >= 0; }

  // The program's, where it could not be taken.
  int exit_code() const { return exit_code_; }

  static bool is_held_here();

 private:
  int file_ = -1;
  int exit_code_ = 0;
};

}  // namespace wlanctl
