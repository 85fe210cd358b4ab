#include "wlanctl/files/process.h"

#include <signal.h>

#include <cerrno>

#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"

namespace wlanctl {
namespace {

std::string told_of(pid_t process, const char* what) {
  return read_bytes("/proc/" + std::to_string(process) + "/" + what).value_or("");
}

// As the kernel abbreviates it, 'R' or 'Z'; NUL where that is not to be had.
char state_of(pid_t process) {
  const std::string text = told_of(process, "stat");
  // Behind the name, which may have brackets of its own.
  const size_t end = text.rfind(')');
  return end != std::string::npos && end + 2 < text.size() ? text[end + 2] : '\0';
}

}  // namespace

bool is_running(pid_t process) {
  return process > 0 && (kill(process, 0) == 0 || errno != ESRCH);
}

bool has_ended(pid_t process) {
  return !is_running(process) || state_of(process) == 'Z';
}

bool is_stopped(pid_t process) {
  if (process <= 0) return false;
  const char state = state_of(process);
  return state == 'T' || state == 't';
}

std::string name_of_process(pid_t process) {
  return without_line_end(told_of(process, "comm"));
}

std::string text_of_process(pid_t process) {
  const std::string name = name_of_process(process);
  return "process " + std::to_string(process) + (name.empty() ? "" : " (" + name + ")");
}

}  // namespace wlanctl
