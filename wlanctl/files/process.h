// What the kernel says of a process.
#pragma once

#include <sys/types.h>

#include <string>

namespace wlanctl {

bool is_running(pid_t process);

// Whether it is at work no more: gone, or waited for by its parent.
bool has_ended(pid_t process);

// By SIGSTOP, a terminal or a debugger; false where that is not to be had.
bool is_stopped(pid_t process);

// "wlanctl"; "" when it is gone.
std::string name_of_process(pid_t process);

// "process 12 (wlanctl)"; without a name when it is gone.
std::string text_of_process(pid_t process);

}  // namespace wlanctl
