#include "sim/tools/process.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include "sim/base/file.h"
#include "sim/base/places.h"

namespace gateway::tools {
namespace {

// The kernel keeps this much of a process's name.
constexpr size_t kNameLength = 15;

std::string name_of_process(const std::string& pid) {
  try {
    std::string name = read_text(std::string(place::kProc) + "/" + pid + "/comm");
    if (!name.empty() && name.back() == '\n') name.pop_back();
    return name;
  } catch (const std::system_error&) {
    return {};  // It has ended meanwhile.
  }
}

}  // namespace

int signal_from(std::string text) {
  if (!text.empty() && std::isdigit(static_cast<unsigned char>(text[0])) != 0) {
    const int number = std::atoi(text.c_str());
    return number < NSIG ? number : -1;
  }
  if (text.rfind("SIG", 0) == 0) text.erase(0, 3);
  for (int number = 1; number < NSIG; ++number) {
    const char* name = sigabbrev_np(number);
    if (name != nullptr && text == name) return number;
  }
  return -1;
}

std::vector<pid_t> processes_named(const std::string& name) {
  std::vector<pid_t> found;
  for (const std::string& entry : names_in(place::kProc)) {
    if (!std::all_of(entry.begin(), entry.end(), [](unsigned char c) { return std::isdigit(c) != 0; })) continue;
    const pid_t pid = static_cast<pid_t>(std::atoi(entry.c_str()));
    if (pid != 1 && pid != getpid() && name_of_process(entry) == name.substr(0, kNameLength)) found.push_back(pid);
  }
  return found;
}

std::vector<pid_t> kill_processes(const std::string& name, int signal_number) {
  std::vector<pid_t> reached = processes_named(name);
  const auto unreached = [&](pid_t pid) { return kill(pid, signal_number) != 0; };
  reached.erase(std::remove_if(reached.begin(), reached.end(), unreached), reached.end());
  return reached;
}

}  // namespace gateway::tools
