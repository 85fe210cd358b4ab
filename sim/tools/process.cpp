#include "sim/tools/process.h"

#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>
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

bool is_process(const std::string& name) {
  return std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

struct ProcessState {
  char letter = 'Z';
  pid_t parent = 0;
};

// A process that has ended meanwhile counts as one that nobody has waited for yet.
ProcessState state_of(pid_t pid) {
  ProcessState state;
  try {
    const std::string text = read_text(std::string(place::kProc) + "/" + std::to_string(pid) + "/stat");
    // The name, in parentheses, may hold anything.
    std::istringstream fields(text.substr(text.rfind(')') + 1));
    fields >> state.letter >> state.parent;
  } catch (const std::system_error&) {
    return {};
  }
  return state;
}

std::vector<pid_t> processes_to_end() {
  std::vector<pid_t> spared = {1};
  for (pid_t pid = getpid(); pid > 1; pid = state_of(pid).parent) spared.push_back(pid);
  std::vector<pid_t> found;
  for (const std::string& entry : names_in(place::kProc)) {
    if (!is_process(entry)) continue;
    const pid_t pid = static_cast<pid_t>(std::atoi(entry.c_str()));
    const bool is_spared = std::find(spared.begin(), spared.end(), pid) != spared.end();
    if (!is_spared && state_of(pid).letter != 'Z') found.push_back(pid);
  }
  return found;
}

bool is_at_rest(pid_t pid) {
  const char letter = state_of(pid).letter;
  return letter == 'T' || letter == 't' || letter == 'Z';
}

// Stops all of them, those that they start meanwhile too: who ends then, ends unseen by the others. What the kernel does
// not let be stopped for long is not waited for.
void freeze_processes() {
  constexpr timespec kPause = {0, 2000000};
  constexpr int kTries = 500;
  // A list may lack what was started while it was made.
  constexpr int kQuietLists = 2;
  int quiet = 0;
  for (int i = 0; i < kTries && quiet < kQuietLists; ++i) {
    bool is_any_moving = false;
    for (const pid_t pid : processes_to_end()) {
      if (is_at_rest(pid)) continue;
      is_any_moving = true;
      kill(pid, SIGSTOP);
    }
    quiet = is_any_moving ? 0 : quiet + 1;
    if (is_any_moving) nanosleep(&kPause, nullptr);
  }
}

// Waits for their end; tries that are used up end the waiting.
bool are_gone(int tries) {
  constexpr timespec kPause = {0, 10000000};
  for (; tries > 0; --tries) {
    if (processes_to_end().empty()) return true;
    nanosleep(&kPause, nullptr);
  }
  return false;
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
    if (!is_process(entry)) continue;
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

void end_processes(bool with_grace) {
  constexpr int kGraceTries = 300;
  constexpr int kMostRounds = 1000;
  if (with_grace) {
    for (const pid_t pid : processes_to_end()) kill(pid, SIGTERM);
    if (are_gone(kGraceTries)) return;
  } else {
    freeze_processes();
  }
  // Those that they start meanwhile are met in the next round.
  for (int round = 0; round < kMostRounds; ++round) {
    for (const pid_t pid : processes_to_end()) kill(pid, SIGKILL);
    if (are_gone(1)) return;
  }
  throw std::runtime_error("some processes cannot be ended");
}

}  // namespace gateway::tools
