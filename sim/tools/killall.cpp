// killall: signals processes of the simulation by name.
#include <cstdio>
#include <cstring>

#include "sim/records/journal.h"
#include "sim/tools/process.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

std::string effect(const std::string& name, pid_t pid, int number) {
  const char* signal_name = sigabbrev_np(number);
  return name + " (process " + std::to_string(pid) + "): sent SIG" + (signal_name != nullptr ? signal_name : "?");
}

}  // namespace

int killall(const Words& words) {
  int number = SIGTERM;
  bool quiet = false;
  std::vector<std::string> names;
  for (size_t i = 1; i < words.size(); ++i) {
    const bool takes_signal = words[i] == "-s" && i + 1 < words.size();
    if (words[i] == "-q") {
      quiet = true;
    } else if (takes_signal || (words[i].size() > 1 && words[i][0] == '-')) {
      number = signal_from(takes_signal ? words[++i] : words[i].substr(1));
    } else {
      names.push_back(words[i]);
    }
  }
  if (names.empty() || number < 0) {
    std::fprintf(stderr, "usage: killall [-q] [-SIGNAL] NAME...\n");
    record_call(words, {});
    return 1;
  }
  std::vector<std::string> changes;
  bool missed = false;
  for (const std::string& name : names) {
    const std::vector<pid_t> reached = kill_processes(name, number);
    for (const pid_t pid : reached) changes.push_back(effect(name, pid, number));
    if (!reached.empty()) continue;
    missed = true;
    if (!quiet) std::fprintf(stderr, "%s: no process found\n", name.c_str());
  }
  record_call(words, changes);
  return missed ? 1 : 0;
}

}  // namespace gateway::tools
