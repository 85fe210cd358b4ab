// What a command does instead of its work when it has been told to go wrong.
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "sim/records/journal.h"
#include "sim/state/tool_faults.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

void wait_ms(long ms) {
  timespec left = {ms / 1000, ms % 1000 * 1000000};
  while (nanosleep(&left, &left) != 0 && errno == EINTR) continue;
}

[[noreturn]] void die_of(int number) {
  std::signal(number, SIG_DFL);
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, number);
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
  raise(number);
  _exit(128 + number);
}

}  // namespace

std::optional<int> fail_as_told(const Words& words) {
  const std::optional<ToolFault> fault = take_tool_fault(words);
  if (!fault) return {};
  if (!fault->text.empty()) std::fprintf(stderr, "%s\n", fault->text.c_str());
  wait_ms(fault->delay_ms);
  switch (fault->ending) {
    case FaultEnding::kWorks:
      return {};
    case FaultEnding::kExits:
      record_call(words, {"failed as told: exit " + std::to_string(fault->number)});
      return fault->number;
    case FaultEnding::kHangs:
      record_call(words, {"failed as told: hangs"});
      for (;;) pause();
    case FaultEnding::kDies:
      record_call(words, {std::string("failed as told: SIG") + sigabbrev_np(fault->number)});
      die_of(fault->number);
  }
  return {};
}

}  // namespace gateway::tools
