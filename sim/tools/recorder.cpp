// ifconfig and brctl.
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "sim/file.h"
#include "sim/journal.h"
#include "sim/network_state.h"
#include "sim/places.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

// Returns the wait status of the real tool, which has the caller's standard streams.
int run_real(const Words& words) {
  const std::string program = std::string(place::kRealTools) + "/" + name_of(words[0]);
  const pid_t child = fork();
  if (child < 0) fail("start " + program);
  if (child == 0) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(program.c_str(), arguments.data());
    _exit(127);
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) fail("wait for " + program);
  }
  return status;
}

}  // namespace

int record_real_tool(const Words& words) {
  int status = 0;
  {
    const StateLock lock;
    const NetworkState before = read_network_state();
    status = run_real(words);
    record_call(words, changes_between(before, read_network_state()));
  }
  if (!WIFSIGNALED(status)) return WEXITSTATUS(status);
  std::signal(WTERMSIG(status), SIG_DFL);
  raise(WTERMSIG(status));
  return 128 + WTERMSIG(status);
}

}  // namespace gateway::tools
